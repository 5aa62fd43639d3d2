// A list of lines, a name or type, depths: the objects found.

#include <kiv/ObjectKDXParser.h>

#include "Support.h"

namespace {

using Lines = std::vector<std::string>;

// Where a search ends early, what was collected until then is looked at.
Lines found(kiv::ObjectKDXParser& parser, const std::string& name, int limit) {
    messageOf([&] { parser.parseForObject(name, limit); });
    return parser.getResults();
}

bool isPartOf(const Lines& part, const Lines& whole) {
    auto at = part.begin();
    for (const std::string& line : whole)
        if (at != part.end() && *at == line) ++at;
    return at == part.end();
}

void requireSameWhenSearchedAgain(const Lines& results, const std::string& name) {
    if (std::any_of(results.begin(), results.end(), fuzz::endsInBackslash)) return;
    kiv::ObjectKDXParser again(results);
    fuzz::require(found(again, name, -1) == results, "what was found is found in it");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const int limit = static_cast<int>(input.byte() % 8) - 2;
    const std::string name = input.until('\n');
    const std::string group = input.until('\n');
    kiv::ObjectKDXParser parser(input.lines());

    const Lines all = found(parser, name, -1);
    fuzz::require(all == found(parser, name, -1), "a search can be repeated");
    requireSameWhenSearchedAgain(all, name);
    fuzz::require(found(parser, name, -2) == found(parser, name, 0), "-2 and 0 are the same");
    const Lines some = found(parser, name, limit);
    fuzz::require(isPartOf(some, all), "a depth limit only leaves out");
    fuzz::require(limit == -1 || isPartOf(some, found(parser, name, limit + 1)),
                  "a deeper limit finds no less");

    const auto search = [&] { parser.parseForObjectsByType(name, limit, group); };
    messageOf(search);
    const auto byType = parser.getTypeResults();
    messageOf(search);
    fuzz::require(byType == parser.getTypeResults(), "a search can be repeated");
    for (const auto& [key, lines] : byType) {
        fuzz::require(lines.front().compare(0, name.size() + 1, name + ":") == 0,
                      "a match begins with its object line");
        fuzz::require(lines.back() == "END", "a match by type is closed");
        fuzz::require(!group.empty() || key == lines.front(),
                      "without a group, the line is the key");
    }

    kiv::ObjectKDXParser taken(std::move(parser));
    fuzz::require(taken.getTypeResults() == byType, "a move takes the results");
    return 0;
}
