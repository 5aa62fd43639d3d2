#include <optional>
#include <utility>

#include "Commands.h"
#include "io/Source.h"
#include "maps/EventText.h"
#include "work/Work.h"

namespace kdx {
namespace {

Status run(const std::string& argument, const Settings& settings) {
    std::optional<Source> source;
    const auto read = [&](const std::string& file, std::size_t) {
        source = readSource(file);
        return Outcome();
    };
    const Status status = workOnFile(argument, settings, read);
    if (source) printEvents(*source);
    return status;
}

}  // namespace

void addEvents(Program& program) {
    Command command(program, "events", "Print every statement as one JSON object a line");
    command.file(command.onRun(run));
    command.footer(
        "Each has a kind: object, parameter, end, action, verbatim, comment, blank or\n"
        "unrecognised; its line, column and depth; what it says: type and name, name and value, "
        "or\n"
        "text, and a comment; and under source its bytes, line ends included. Where those are no\n"
        "UTF-8, sourceHex has them in hexadecimal digits, and the rest has replacement "
        "characters.\n"
        "kdx write --events makes the text of them again, byte for byte. No text is refused.\n\n"
        "Example:\n  kdx events set-up.kdx | jq -r 'select(.kind == \"action\").text'");
}

}  // namespace kdx
