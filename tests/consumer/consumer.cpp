// Catches by its type what the library throws, on the other side of the library's boundary.
#include <kiv/Error.h>
#include <kiv/KDXBuilder.h>
#include <kiv/KDXToStringMapMap.h>

#include <iostream>

#include "OwnMessages.h"

namespace {

template <typename Expected, typename Call>
int failures(const char* expectedName, Call call) {
    try {
        call();
    } catch (const Expected& thrown) {
        if (!thrown.message().empty()) return 0;
    } catch (...) {
    }
    std::cerr << "not thrown, or without a message: " << expectedName << '\n';
    return 1;
}

/// Whether the library has filled its messages by the program's own classes, where it has some.
int failuresOfOwnMessages() {
#ifdef OWN_EXTERNAL
    if (callsOfOwnArg() != 3) {
        std::cerr << "messages filled by the program's own classes: " << callsOfOwnArg() << '\n';
        return 1;
    }
#endif
    return 0;
}

void read(const std::string& text) {
    kiv::StringMapMap map;
    kiv::KDXToStringMapMap::convert(text, map);
}

void addActionInObject() {
    kiv::KDXBuilder("/A").addAction("Go");
}

}  // namespace

int main() {
    const int notThrown =
        failures<kiv::data::invalid>("kiv::data::invalid", [] { read("no KDX\n"); }) +
        failures<kiv::Error>("kiv::Error", [] { read("no KDX\n"); }) +
        failures<kiv::KDXToStringMapMap::Except>("Except", [] { read("END\n"); }) +
        failures<kiv::internal::error>("kiv::internal::error", addActionInObject);
    return notThrown + failuresOfOwnMessages();
}
