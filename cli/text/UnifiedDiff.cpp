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

class UnifiedDiff {
public:
    UnifiedDiff(std::string& appended, std::string_view textBefore, std::string_view textAfter,
                bool withColor)
        : out(appended), before(linesOf(textBefore)), after(linesOf(textAfter)), color(withColor) {}

    void append() {
        for (std::size_t at = nextChange(0); at < before.size();) {
            const std::size_t begin = at - std::min(at, kContext);
            const std::size_t last = lastOfHunk(at);
            const std::size_t end = std::min(last + 1 + kContext, before.size());
            appendHunk(begin, end);
            at = nextChange(end);
        }
    }

private:
    bool isChanged(std::size_t at) const { return before[at] != after[at]; }

    std::size_t nextChange(std::size_t at) const {
        while (at < before.size() && !isChanged(at)) ++at;
        return at;
    }

    /// The last change whose context touches the context of the one before it.
    std::size_t lastOfHunk(std::size_t change) const {
        for (;;) {
            const std::size_t next = nextChange(change + 1);
            if (next == before.size() || next - change > 2 * kContext + 1) return change;
            change = next;
        }
    }

    void appendHunk(std::size_t begin, std::size_t end) {
        const std::string range = std::to_string(begin + 1) + ',' + std::to_string(end - begin);
        out.append("@@ -").append(range).append(" +").append(range).append(" @@\n");
        while (begin < end) {
            if (!isChanged(begin)) {
                appendLine(' ', before[begin++], "");
                continue;
            }
            std::size_t runEnd = begin;
            while (runEnd < end && isChanged(runEnd)) ++runEnd;
            for (std::size_t i = begin; i < runEnd; ++i) appendLine('-', before[i], "\033[31m");
            for (std::size_t i = begin; i < runEnd; ++i) appendLine('+', after[i], "\033[32m");
            begin = runEnd;
        }
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
    Lines before;
    Lines after;
    bool color;
};

}  // namespace

void appendUnifiedDiff(std::string& out, std::string_view name, std::string_view before,
                       std::string_view after, bool color) {
    // Without a tab behind it, patch takes a name to end at its first blank.
    const char* end = name.find(' ') == std::string_view::npos ? "\n" : "\t\n";
    out.append("--- ").append(name).append(end).append("+++ ").append(name).append(end);
    UnifiedDiff(out, before, after, color).append();
}

}  // namespace kdx
