// A list of lines, re-indented: it must mean what it meant.

#include <kiv/KDXFormatting.h>

#include "Support.h"

namespace {

// Whether a continuation cuts an END, which is then no END to the indentation.
bool hasCutEnd(const fuzz::Events& walk, const std::vector<std::string>& lines) {
    return std::any_of(walk.list.begin(), walk.list.end(), [&](const auto& event) {
        return event.kind == 'e' && event.line > 0 &&
               lines[event.line - 1].find('\\') != std::string::npos;
    });
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto lines = fuzz::Input(data, size).lines();
    const auto indented = kiv::KDXFormatting::indentKDX(lines);
    fuzz::require(indented.size() <= lines.size(), "no line is added");

    auto line = lines.begin();
    for (const std::string& text : indented) {
        const std::string stripped = fuzz::withoutLeadingBlanks(text);
        line = std::find_if(line, lines.end(), [&](const std::string& candidate) {
            return fuzz::withoutLeadingBlanks(candidate) == stripped;
        });
        fuzz::require(line != lines.end(), "only leading blanks change");
        ++line;
    }

    fuzz::Events before(lines);
    if (indented.size() < lines.size() || !before.read()) return 0;
    fuzz::Events after(indented);
    fuzz::require(after.read() && after.list == before.list, "the events stay");
    fuzz::require(hasCutEnd(before, lines) || kiv::KDXFormatting::indentKDX(indented) == indented,
                  "once indented, a text stays");
    return 0;
}
