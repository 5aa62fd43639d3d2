// A list of lines: the events of a walk.

#include "Support.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string start = "Unknown KDX syntax found:\n";
    const auto lines = fuzz::Input(data, size).lines();
    fuzz::Events walk(lines);
    const bool complete = walk.read();
    fuzz::require(!complete || walk.getLineNumber() == lines.size(),
                  "a whole walk ends at the end");
    fuzz::require(complete || (walk.failure.compare(0, start.size(), start) == 0 &&
                               walk.failure.size() <= start.size() + 81),
                  "a failure shows at most 80 bytes");

    const auto events = walk.list;
    const auto failure = walk.failure;
    walk.read();
    fuzz::require(walk.list == events && walk.failure == failure, "a walk can be repeated");

    const bool continued = std::any_of(lines.begin(), lines.end(), [](const std::string& line) {
        return line.find('\\') != std::string::npos;
    });
    if (!complete || continued) return 0;
    for (std::string& line : walk.getCommands())
        if (line.find('>') == std::string::npos) line.insert(0, "\t").append("\r");
    walk.read();
    fuzz::require(walk.list == events, "outer blanks and carriage returns carry no meaning");
    return 0;
}
