#pragma once

#include <kiv/Error.h>

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
