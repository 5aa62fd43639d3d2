#pragma once

#include <kiv/Error.h>
#include <kiv/KDXToStringMapMap.h>

#include <string>
#include <typeinfo>

/// What `call` throws, as one text: "KDXBuilder::popObject (4): message". It must be an `Exception`
/// and nothing derived from it.
template <typename Exception, typename Call>
std::string failureOf(Call call) {
    try {
        call();
    } catch (const kiv::Error& error) {
        if (typeid(error) != typeid(Exception)) return typeid(error).name();
        return error.className() + "::" + error.functionName() + " (" +
               std::to_string(error.type()) + "): " + error.message();
    }
    return "nothing";
}

/// The message of what `call` throws because of the text that it reads; empty when it accepts it.
template <typename Call>
std::string messageOf(Call call) {
    try {
        call();
    } catch (const kiv::data::invalid& error) {
        return error.message();
    } catch (const kiv::KDXToStringMapMap::Except& exception) {
        return exception.message();
    }
    return "";
}
