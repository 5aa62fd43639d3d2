// Catches by its type what the library throws, on the other side of the library's boundary.
#include <kiv/Error.h>
#include <kiv/KDXBuilder.h>
#include <kiv/KDXToStringMapMap.h>

#include <iostream>

namespace {

void readMap(const std::string& text) {
    kiv::StringMapMap map;
    kiv::KDXToStringMapMap::convert(text, map);
}

template <typename Expected, typename Call>
int failures(const char* expectedName, Call call) {
    try {
        call();
        std::cerr << "nothing thrown instead of " << expectedName << '\n';
    } catch (const Expected& thrown) {
        if (!thrown.message().empty()) return 0;
        std::cerr << expectedName << " without a message\n";
    } catch (...) {
        std::cerr << "something else thrown than " << expectedName << '\n';
    }
    return 1;
}

}  // namespace

int main() {
    const auto readNoKdx = [] { readMap("no KDX\n"); };
    return failures<kiv::data::invalid>("kiv::data::invalid", readNoKdx) +
           failures<kiv::Error>("kiv::Error", readNoKdx) +
           failures<kiv::KDXToStringMapMap::Except>("Except", [] { readMap("END\n"); }) +
           failures<kiv::internal::error>("kiv::internal::error",
                                          [] { kiv::KDXBuilder().popObject(); });
}
