#include "UnifiedDiff.h"

#include <algorithm>
#include <vector>

namespace kdx {
namespace {

constexpr std::size_t kContext = 3;  // unchanged lines around a change

using Lines = std::vector<std::string_view>;

/// The lines of a text, line feeds included, so that a missing last one shows.
Lines linesOf(std::string_view text) {
    Lines lines;
    while (!text.empty()) {
        const std::size_t length = std::min(text.find('\n'), text.size() - 1) + 1;
        lines.push_back(text.substr(0, length));
        text.remove_prefix(length);
    }
    return lines;
}

/// Lines that give way to others.
struct Change {
    std::size_t begin;  // in the text before
    std::size_t end;
    std::size_t newBegin;  // in the text after
    std::size_t newEnd;
};
using Changes = std::vector<Change>;

bool isBlank(std::string_view line) {
    return line.find_first_not_of(" \t\r\n\v\f") == std::string_view::npos;
}

/// The runs of lines that are not the same in both, where blank lines alone may be missing from the
/// second.
Changes changesOf(const Lines& before, const Lines& after) {
    Changes changes;
    std::size_t j = 0;
    for (std::size_t i = 0; i < before.size(); ++i) {
        const bool isGone = j == after.size() || (isBlank(before[i]) && !isBlank(after[j]));
        if (!isGone && before[i] == after[j++]) continue;
        if (changes.empty() || changes.back().end != i)
            changes.push_back({i, i, j - (isGone ? 0 : 1), 0});
        changes.back().end = i + 1;
        changes.back().newEnd = j;
    }
    return changes;
}

std::size_t countLineFeeds(std::string_view text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

Changes changesOf(std::string_view before, const std::vector<kiv::KDXTextEdit>& edits) {
    Changes changes;
    std::size_t offset = 0;
    std::size_t line = 0;
    std::size_t newLine = 0;
    for (const kiv::KDXTextEdit& edit : edits) {
        const std::size_t kept = countLineFeeds(before.substr(offset, edit.offset - offset));
        const std::size_t length = linesOf(before.substr(edit.offset, edit.length)).size();
        const std::size_t newLength = linesOf(edit.replacement).size();
        line += kept;
        newLine += kept;
        changes.push_back({line, line + length, newLine, newLine + newLength});
        line += length;
        newLine += newLength;
        offset = edit.offset + edit.length;
    }
    return changes;
}

class UnifiedDiff {
public:
    UnifiedDiff(std::string& appended, const Lines& linesBefore, const Lines& linesAfter,
                bool withColor)
        : out(appended), before(linesBefore), after(linesAfter), color(withColor) {}

    void append(const Changes& changes) {
        for (std::size_t first = 0; first < changes.size();) {
            std::size_t last = first;
            while (last + 1 < changes.size() &&
                   changes[last + 1].begin - changes[last].end <= 2 * kContext)
                ++last;
            appendHunk(&changes[first], &changes[last]);
            first = last + 1;
        }
    }

private:
    void appendHunk(const Change* first, const Change* last) {
        const std::size_t lead = std::min(first->begin, kContext);
        const std::size_t tail = std::min(before.size() - last->end, kContext);
        const std::size_t begin = first->begin - lead;
        out.append("@@ -").append(range(begin, last->end + tail));
        out.append(" +").append(range(first->newBegin - lead, last->newEnd + tail));
        out.append(" @@\n");
        std::size_t at = begin;
        for (const Change* change = first; change <= last; ++change) {
            appendLines(' ', before, at, change->begin);
            appendLines('-', before, change->begin, change->end);
            appendLines('+', after, change->newBegin, change->newEnd);
            at = change->end;
        }
        appendLines(' ', before, at, last->end + tail);
    }

    /// Without a line, the one in front of it is named.
    static std::string range(std::size_t begin, std::size_t end) {
        return std::to_string(begin + (begin == end ? 0 : 1)) + ',' + std::to_string(end - begin);
    }

    void appendLines(char mark, const Lines& lines, std::size_t begin, std::size_t end) {
        const char* colorCode = mark == '-' ? "\033[31m" : "\033[32m";
        for (std::size_t i = begin; i < end; ++i) appendLine(mark, lines[i], colorCode);
    }

    void appendLine(char mark, std::string_view line, const char* colorCode) {
        const bool colored = color && mark != ' ';
        const bool ended = line.back() == '\n';
        if (ended) line.remove_suffix(1);
        out.append(colored ? colorCode : "").append(1, mark).append(line);
        out.append(colored ? "\033[0m" : "").append(1, '\n');
        if (!ended) out.append("\\ No newline at end of file\n");
    }

    std::string& out;
    const Lines& before;
    const Lines& after;
    bool color;
};

void appendHead(std::string& out, std::string_view name) {
    // Without a tab behind it, patch takes a name to end at its first blank.
    const char* end = name.find(' ') == std::string_view::npos ? "\n" : "\t\n";
    out.append("--- ").append(name).append(end).append("+++ ").append(name).append(end);
}

}  // namespace

void appendUnifiedDiff(std::string& out, std::string_view name, std::string_view before,
                       std::string_view after, bool color) {
    const Lines linesBefore = linesOf(before);
    const Lines linesAfter = linesOf(after);
    appendHead(out, name);
    UnifiedDiff(out, linesBefore, linesAfter, color).append(changesOf(linesBefore, linesAfter));
}

void appendUnifiedDiff(std::string& out, std::string_view name, std::string_view before,
                       const std::vector<kiv::KDXTextEdit>& edits, bool color) {
    const std::string after = kiv::applyEdits(before, edits);
    const Lines linesBefore = linesOf(before);
    const Lines linesAfter = linesOf(after);
    appendHead(out, name);
    UnifiedDiff(out, linesBefore, linesAfter, color).append(changesOf(before, edits));
}

}  // namespace kdx
