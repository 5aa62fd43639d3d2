// A text, a filter: the map, and what is read back from the map written as text.

#include <kiv/KDXToStringMapMap.h>
#include <kiv/StringMapMapToKDX.h>

#include "Support.h"

namespace {

// A map, and the message of what is thrown.
using Outcome = std::pair<kiv::StringMapMap, std::string>;

template <typename Read>
Outcome outcomeOf(Read read) {
    Outcome outcome;
    outcome.second = messageOf([&] { read(outcome.first); });
    return outcome;
}

// A path cannot tell a '/' inside a name from one that starts a component, and a final backslash
// would continue the line that is written.
bool canBeWritten(const std::vector<std::string>& lines) {
    fuzz::Events walk(lines);
    walk.read();
    return std::none_of(walk.list.begin(), walk.list.end(), [](const fuzz::Events::Event& event) {
        const bool slash = event.kind == 'o' && event.second.find('/') != std::string::npos;
        return slash || fuzz::endsInBackslash(event.second);
    });
}

void requireReadBack(const kiv::StringMapMap& map, unsigned options) {
    const kiv::StringMapMapToKDX::Format format(static_cast<int>(options % 5), options % 2 == 0,
                                                options % 3 == 0);
    std::string written;
    kiv::StringMapMapToKDX::convert(map, written, format);
    kiv::StringMapMap readBack;
    kiv::KDXToStringMapMap::convert(written, readBack);
    fuzz::require(readBack == map, "text, map, text, map");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const unsigned options = input.byte();
    std::set<std::string> types;
    if (options % 4 == 0) types.insert(input.until('\n'));
    if (options % 8 == 0) types.insert(input.until('\n'));
    const bool exclude = options % 16 < 8;
    const std::string text = input.all();
    const auto lines = fuzz::Input(text).lines();
    using Reader = kiv::KDXToStringMapMap;

    const Outcome outcome =
        outcomeOf([&](auto& map) { Reader::convert(text, map, types, exclude); });
    fuzz::require(
        outcome == outcomeOf([&](auto& map) { Reader::convert(lines, map, types, exclude); }),
        "list of lines and text give the same map");
    fuzz::require(
        outcome == outcomeOf([&](auto& map) { const Reader reader(text, map, types, exclude); }),
        "constructor and convert do the same");

    Outcome twice = outcome;
    if (outcome.second.empty()) Reader::convert(text, twice.first, types, exclude);
    fuzz::require(twice == outcome, "a second reading adds nothing");

    if (canBeWritten(lines)) requireReadBack(outcome.first, options);
    return 0;
}
