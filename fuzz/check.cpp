// The check of a text: what it tells is right, and a safe fix mends one thing and breaks none.

#include <kiv/KDXCheck.h>
#include <kiv/KDXFormatting.h>
#include <kiv/KDXReader.h>
#include <kiv/KDXToStringMapMap.h>

#include <map>
#include <optional>

#include "Support.h"

namespace {

namespace check = kiv::KDXCheck;

/// How many problems there are of each rule.
using Counts = std::map<std::string_view, int>;

Counts countsOf(const check::Report& report) {
    Counts counts;
    for (const check::Problem& problem : report.problems) ++counts[problem.rule];
    return counts;
}

/// What a reader reads: the kind, the halves, and what actions and verbatim lines say.
std::vector<std::string> eventsOf(std::string_view text, bool withStrayEnds) {
    std::vector<std::string> events;
    std::size_t openObjects = 0;
    for (kiv::KDXReader reader(text); reader.next();) {
        const auto kind = reader.kind();
        const bool stray = kind == kiv::MiniKDXParser::lineEnd && openObjects == 0;
        if (kind == kiv::MiniKDXParser::lineObject) ++openObjects;
        if (kind == kiv::MiniKDXParser::lineEnd && !stray) --openObjects;
        if (kind == kiv::MiniKDXParser::lineBlank || (stray && !withStrayEnds)) continue;
        const bool hasHalves =
            kind != kiv::MiniKDXParser::lineAction && kind != kiv::MiniKDXParser::lineVerbatim;
        events.push_back(std::to_string(kind) + '|' +
                         std::string(hasHalves ? reader.first() : reader.text()) + '|' +
                         std::string(reader.second()));
    }
    return events;
}

bool isPlain(char c) {
    return static_cast<unsigned char>(c) >= ' ' && c != '\x7F';
}

bool isInText(const kiv::KDXPlace& place, std::string_view text) {
    if (place.offset > text.size()) return false;
    const std::string_view before = text.substr(0, place.offset);
    const std::size_t feed = before.rfind('\n');
    std::size_t lineBegin = feed == std::string_view::npos ? 0 : feed + 1;
    // Columns are counted behind a byte order mark; what stands in it is in column 1.
    if (lineBegin == 0 && kiv::KDXReader(text).hasByteOrderMark()) lineBegin = 3;
    const auto feeds = static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
    return place.line == 1 + feeds &&
           place.column == 1 + place.offset - std::min(lineBegin, place.offset);
}

void requireSound(const check::Report& report, std::string_view text) {
    std::size_t last = 0;
    for (const check::Problem& problem : report.problems) {
        fuzz::require(isInText(problem.begin, text) && isInText(problem.end, text) &&
                          problem.begin.offset <= problem.end.offset &&
                          (!problem.reference || isInText(*problem.reference, text)),
                      "a problem lies in the text");
        fuzz::require(problem.begin.offset >= last, "problems are in order");
        fuzz::require(std::all_of(problem.message.begin(), problem.message.end(), isPlain),
                      "a message can be shown");
        last = problem.begin.offset;
    }
}

/// A text without errors is one that can be read into a map.
void requireErrors(const check::Report& report, const std::string& text) {
    kiv::StringMapMap map;
    const std::string failure = messageOf([&] { kiv::KDXToStringMapMap::convert(text, map); });
    fuzz::require(failure.empty() == (report.errors == 0), "errors are what the readers refuse");
}

void requireFixes(const check::Report& report, std::string_view text) {
    const Counts before = countsOf(report);
    for (const check::Problem& problem : report.problems) {
        if (!problem.fix) continue;
        const std::string mended = kiv::applyEdits(text, problem.fix->edits);
        if (!problem.fix->safe) continue;
        const bool isEnd = problem.rule == "unexpected-end";
        fuzz::require(eventsOf(text, !isEnd) == eventsOf(mended, !isEnd),
                      "a safe fix changes no event");
        const Counts after = countsOf(check::check(mended));
        for (const auto& [rule, count] : after) {
            const auto found = before.find(rule);
            const int limit = found == before.end() ? 0 : found->second;
            fuzz::require(count <= limit - (rule == problem.rule ? 1 : 0),
                          "a safe fix removes its problem and brings no other");
        }
    }
}

/// A right text that is laid out contradicts its nesting nowhere. Lines that are continued are left
/// out: what is made of them depends on where each of them begins.
void requireLayout(const std::string& text) {
    if (text.find('\\') != std::string::npos) return;
    std::string laidOut;
    for (const std::string& line : kiv::KDXFormatting::indentKDX(fuzz::Input(text).lines()))
        laidOut.append(line).append("\n");
    check::Options options;
    options.rules = {"indentation"};
    fuzz::require(check::check(laidOut, options).warnings == 0, "a layout fits the nesting");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // On the heap and of exactly this size, so that a look behind it is noticed.
    const std::vector<char> bytes(data, data + size);
    const std::string_view text(bytes.data(), bytes.size());
    const check::Report report = check::check(text);
    requireSound(report, text);
    const std::size_t begin = kiv::KDXReader(text).hasByteOrderMark() ? 3 : 0;
    requireErrors(report, std::string(text.substr(begin)));
    if (report.errors == 0) requireLayout(std::string(text.substr(begin)));
    check::Options errorsAlone;
    errorsAlone.warnings = false;
    const check::Report errors = check::check(text, errorsAlone);
    fuzz::require(errors.errors == report.errors && errors.problems.size() == errors.errors,
                  "errors are found without the warnings");
    requireFixes(report, text);
    return 0;
}
