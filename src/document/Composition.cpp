#include "document/Composition.h"

#include <kiv/Error.h>

#include <algorithm>

#include "base/Blank.h"
#include "base/LineEnd.h"
#include "base/NameCharacter.h"
#include "base/ObjectName.h"
#include "base/Whitespace.h"
#include "document/StatementReader.h"

namespace kiv::detail {
namespace {

constexpr const char* kLineFeed = "a line feed would end the line";
constexpr const char* kName = "a name consists of letters, digits, blanks, '&', '.' and '_'";
constexpr const char* kNameBlanks = "a name has no outer blanks, and between words a single space";
constexpr const char* kValueBlanks = "a value has no outer blanks";
constexpr const char* kTextBlanks = "an action or a verbatim line has no outer blanks";
constexpr const char* kCommentBlanks = "a comment does not end in a blank";
constexpr const char* kHash = "a '#' would begin a comment";
constexpr const char* kCommentBackslash =
    "a comment that ends in a backslash would swallow the next line";
constexpr const char* kNoComment =
    "no comment can stand behind \"\\#\" or in a line that begins with '!'";
constexpr const char* kOther = "it would be read as something else";

bool isName(std::string_view text) {
    return std::all_of(text.begin(), text.end(), isNameCharacter);
}

bool hasOuterBlanks(std::string_view text) {
    return withoutOuterBlanks(text).size() != text.size();
}

bool isSimplified(std::string_view text) {
    return !hasOuterBlanks(text) && hasSimpleWhitespace(text);
}

/// Whether a comment can stand in no line with this text.
bool forbidsComment(std::string_view text) {
    return text.substr(0, 1) == "!" ||
           (text.find('#') != std::string_view::npos && !holdsComment(text));
}

/// Why a statement cannot say this. Whether it can is not decided here.
const char* reasonAgainst(const Meaning& meaning) {
    for (const std::string_view text : {meaning.first, meaning.second, meaning.comment})
        if (text.find('\n') != std::string_view::npos) return kLineFeed;
    const bool hasHalves =
        meaning.kind == MiniKDXParser::lineObject || meaning.kind == MiniKDXParser::lineParameter;
    if (hasHalves && !isName(meaning.first)) return kName;
    if (hasHalves && !isSimplified(meaning.first)) return kNameBlanks;
    if (meaning.kind == MiniKDXParser::lineParameter && hasOuterBlanks(meaning.second))
        return kValueBlanks;
    if (meaning.kind == MiniKDXParser::lineObject && !isSimplified(meaning.second))
        return kNameBlanks;
    const std::string_view text = hasHalves ? meaning.second : meaning.first;
    if (!meaning.comment.empty() && forbidsComment(text)) return kNoComment;
    if (holdsComment(text)) return kHash;
    if (!meaning.comment.empty() && meaning.comment.back() == '\\') return kCommentBackslash;
    if (hasOuterBlanks(meaning.comment)) return kCommentBlanks;
    if (!hasHalves && hasOuterBlanks(meaning.first)) return kTextBlanks;
    return kOther;
}

[[noreturn]] void refuse(const char* function, const Meaning& meaning) {
    throw data::invalid("KDXDocument", function,
                        std::string("KDX cannot carry this: ") + reasonAgainst(meaning) + '.',
                        errorTypeFailure);
}

/// Blanks behind the last word of a separator go where nothing follows.
std::string_view separator(std::string_view text, std::string_view behind) {
    return behind.empty() ? withoutTrailingBlanks(text) : text;
}

/// A name and what stands between it and its value.
std::string nameAndEquals(const Layout& layout, std::string_view name, std::string_view value) {
    std::string line = layout.indentation;
    line += name;
    if (name.empty()) return line.append(separator(withoutLeadingBlanks(layout.equals), value));
    if (layout.equalsColumn == 0) return line.append(separator(layout.equals, value));
    line.resize(std::max(line.size() + 1, layout.equalsColumn), ' ');
    return line.append(
        separator(std::string_view(layout.equals).substr(layout.equals.find('=')), value));
}

}  // namespace

bool readsBack(const Candidate& candidate) {
    // The last statement of a text may lack its line end, and may be open.
    const bool ended = !candidate.bytes.empty() && candidate.bytes.back() == '\n';
    if (ended) return readsBackAs(candidate.bytes, candidate.meaning);
    return readsBackAs(candidate.bytes + "\n", candidate.meaning) ||
           readsBackAs(candidate.bytes + "\n\n", candidate.meaning);
}

std::string firstThatReads(const char* function, const std::vector<Candidate>& candidates) {
    for (const Candidate& candidate : candidates)
        if (readsBack(candidate)) return candidate.bytes;
    refuse(function, candidates.front().meaning);
}

std::string parameterLine(const char* function, const Layout& layout, std::string_view name,
                          std::string_view value) {
    const Meaning meaning{MiniKDXParser::lineParameter, name, value, {}};
    const Meaning commented{MiniKDXParser::lineParameter, name, value, "#"};
    const std::string line = nameAndEquals(layout, name, value).append(value);
    return firstThatReads(
        function, {{line + layout.lineEnd, meaning}, {line + " #" + layout.lineEnd, commented}});
}

std::string valueText(const char* function, std::string_view name, std::string_view value) {
    const Layout layout;
    const std::string line = parameterLine(function, layout, name, value);
    const std::size_t begin = nameAndEquals(layout, name, value).size();
    return line.substr(begin, line.size() - begin - layout.lineEnd.size());
}

std::string objectLine(const char* function, const Layout& layout, std::string_view type,
                       std::string_view name) {
    const Meaning meaning{MiniKDXParser::lineObject, type, name, {}};
    const Meaning commented{MiniKDXParser::lineObject, type, name, "#"};
    const std::string line =
        (layout.indentation + std::string(type)).append(separator(layout.colon, name)).append(name);
    return firstThatReads(
        function, {{line + layout.lineEnd, meaning}, {line + " #" + layout.lineEnd, commented}});
}

std::string endComment(std::string_view type, std::string_view name) {
    std::string comment;
    appendEndComment(comment, type, name);
    return comment;
}

std::string endLine(const Layout& layout, std::string_view type, std::string_view name) {
    const std::string plain = layout.indentation + "END";
    if (!layout.commentEnds) return plain + layout.lineEnd;
    const std::string comment = endComment(type, name);
    const Candidate commented{plain + ' ' + comment + layout.lineEnd,
                              {MiniKDXParser::lineEnd, {}, {}, comment}};
    return readsBack(commented) ? commented.bytes : plain + layout.lineEnd;
}

std::string actionLine(const char* function, const Layout& layout, std::string_view text) {
    const std::string action = std::string(text.substr(0, 1) == ">" ? "" : ">").append(text);
    const std::string line = layout.indentation + action;
    return firstThatReads(
        function, {{line + layout.lineEnd, {MiniKDXParser::lineAction, action, {}, {}}},
                   {line + " #" + layout.lineEnd, {MiniKDXParser::lineAction, action, {}, "#"}}});
}

std::string commentLine(const char* function, const Layout& layout, std::string_view comment) {
    const std::string text = withHash(comment);
    return firstThatReads(function, {{layout.indentation + text + layout.lineEnd,
                                      {MiniKDXParser::lineBlank, {}, {}, text}}});
}

std::string withHash(std::string_view comment) {
    return std::string(comment.substr(0, 1) == "#" ? "" : "# ").append(comment);
}

std::string relaid(std::string_view bytes, std::string_view oldIndentation, const Layout& layout) {
    const StatementReader statement(bytes);
    std::string_view rest = withoutLineEnd(bytes);
    std::string text;
    while (!rest.empty()) {
        std::string_view line = rest.substr(0, std::min(rest.find('\n'), rest.size() - 1) + 1);
        rest.remove_prefix(line.size());
        if (line.substr(0, oldIndentation.size()) == oldIndentation) {
            line.remove_prefix(oldIndentation.size());
            if (!line.empty() && line.front() != '\n') text += layout.indentation;
        }
        text += line;
    }
    text += layout.lineEnd;
    return readsBack({text, meaningOf(*statement)}) ? text : closed(bytes, layout.lineEnd);
}

std::string closed(std::string_view lines, std::string_view lineEnd) {
    std::string text(lines);
    const bool open = isOpen(text);
    // A carriage return behind a backslash would keep it from continuing the line.
    if (lineEndOf(text).empty()) text += open ? "\n" : lineEnd;
    if (open) text += lineEnd;
    return text;
}

}  // namespace kiv::detail
