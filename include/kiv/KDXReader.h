#pragma once

#include <kiv/ArgumentTypes.h>
#include <kiv/KDXExport.h>
#include <kiv/KDXText.h>
#include <kiv/MiniKDXParser.h>

#include <cstddef>
#include <limits>
#include <memory>
#include <string_view>

namespace kiv {

/// Reads a whole KDX text statement by statement, and knows where each byte came from.
///
/// A statement is a logical line with all of its bytes: leading blanks, the lines that continue it,
/// comment and line end. Every byte of the text belongs to exactly one statement; the sources of
/// the statements, one behind the other, are the text. The one exception is a byte order mark in
/// front of it, which is passed over.
///
///     kiv::KDXReader reader(text);
///     while (reader.next())
///         if (reader.kind() == kiv::MiniKDXParser::lineParameter && reader.first() == "gain")
///             std::cout << reader.place().line << ": " << reader.second() << '\n';
///
/// Whatever the text says is reported and nothing is thrown for it: a line that is no KDX is a
/// statement of kind lineUnrecognised. Of the same lines, MiniKDXParser::parse() reports the same.
///
/// The text is not copied, apart from a last line without a line feed. It must outlive the reader,
/// and nothing behind it is looked at. Views live until the next call of next(). A reader is used
/// by one thread at a time. It can be moved: what it was moved from may be assigned to or
/// destroyed.
class KIV_KDX_EXPORT KDXReader {
public:
    /// The parts of a statement whose places can be asked for; each is what the accessor of the
    /// same name returns.
    enum class Part { line, text, first, second, comment };

    static constexpr std::size_t kUnlimited = std::numeric_limits<std::size_t>::max();

    /// Begins in front of the first statement.
    /// @param maxDepth so many objects may be open at a time; see isTooDeep().
    explicit KDXReader(std::string_view text, std::size_t maxDepth = kUnlimited);

    // A null pointer, or 0, is no text: this does not compile.
    template <typename Text, typename = detail::IfNoText<Text>>
    explicit KDXReader(Text, std::size_t = kUnlimited) = delete;

    KDXReader(KDXReader&& other) noexcept;
    KDXReader& operator=(KDXReader&& other) noexcept;
    KDXReader(const KDXReader&) = delete;
    KDXReader& operator=(const KDXReader&) = delete;
    ~KDXReader();

    /// Goes on to the next statement, in time proportional to its length.
    /// @return false at the end of the text, where all parts are empty and place() is the end; also
    /// at an object deeper than the limit, see isTooDeep().
    /// @throws std::bad_alloc alone; the reader is then as one that was moved from.
    bool next();

    /// What the statement is.
    MiniKDXParser::lineType kind() const noexcept { return current.kind; }

    /// The type of an object, with simplified whitespace; the name of a parameter, likewise; of an
    /// unrecognised line the name characters that it begins with; else empty.
    std::string_view first() const noexcept { return current.first; }

    /// The name of an object, with simplified whitespace; the value of a parameter, without outer
    /// blanks; else empty.
    std::string_view second() const noexcept { return current.second; }

    /// From the '#' on, without trailing blanks; empty when there is no comment.
    std::string_view comment() const noexcept;

    /// What stands in front of the comment, without outer blanks: of an action or a verbatim line
    /// what it says, with its '>', '!' or '$'.
    std::string_view text() const noexcept;

    /// The statement as one line: with leading blanks and comment, without line feeds, and with
    /// continued lines joined. A carriage return at its end stays. Of an action it is what
    /// MiniKDXParser::newAction() receives.
    std::string_view line() const noexcept { return current.line; }

    /// The part, as the accessor of its name returns it.
    std::string_view part(Part which) const noexcept;

    /// The bytes of the statement in the text, line ends included.
    std::string_view source() const noexcept { return current.source; }

    /// How the statement ends: "\n", "\r\n", or nothing at the end of a text.
    std::string_view lineEnd() const noexcept;

    /// Whether the statement consists of several lines.
    bool isContinued() const noexcept { return nextLine - firstLine > 1; }

    /// The number, from 1, of the line of the statement's first byte; place() may lie further down,
    /// behind a line with a backslash alone.
    std::size_t lineNumber() const noexcept { return firstLine + 1; }

    /// How many objects are open around the statement. An END stands as deep as the object that it
    /// closes; with nothing open, an END has depth 0 and closes nothing.
    std::size_t depth() const noexcept { return current.depth; }

    /// Whether a byte order mark stands in front of the text.
    bool hasByteOrderMark() const noexcept;

    /// Whether next() has stopped at an object that would lie deeper than the limit allows. The
    /// statement is the one with that object; there is no way behind it.
    bool isTooDeep() const noexcept { return tooDeep; }

    /// Where the statement begins, leading blanks passed over.
    KDXPlace place() const;

    /// Where a byte of a part comes from, or, for the length of the part, where it ends. For an
    /// empty part it is where it would begin. Takes time in proportion to the statement at most.
    /// @throws kiv::internal::error when `byte` is beyond the end of the part.
    KDXPlace placeOf(Part which, std::size_t byte = 0) const;

    /// The place of a byte of source(), counted from its beginning, or of its end.
    /// @throws kiv::internal::error when `byte` is beyond the end.
    KDXPlace placeInSource(std::size_t byte) const;

private:
    struct State;
    class Places;

    struct Statement {
        MiniKDXParser::lineType kind = MiniKDXParser::lineBlank;
        std::string_view first;
        std::string_view second;
        std::string_view line;
        std::size_t hash = 0;  // the first one in the line; its end when there is none
        std::string_view source;
        std::size_t depth = 0;
    };

    std::unique_ptr<State> state;
    Statement current;
    std::size_t firstLine = 0;  // of the statement, from 0
    std::size_t nextLine = 0;   // the first one behind it
    bool tooDeep = false;
};

}  // namespace kiv
