#pragma once

#include <kiv/ArgumentTypes.h>
#include <kiv/KDXExport.h>
#include <kiv/KDXReader.h>
#include <kiv/KDXText.h>
#include <kiv/MiniKDXParser.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// One level of a path: an object's type and name. An empty name, or one that is the type, stands
/// for an object without a name of its own.
struct KDXStep {
    std::optional<std::string> type;  ///< nothing stands for any
    std::optional<std::string> name;  ///< nothing stands for any, or for none
    bool anyDepth = false;  ///< stands for any number of objects inside one another, also 0
};

/// A path from the top level down: where every step has a type and a name, of one object as a
/// reader sees it; else of all that it matches.
using KDXSteps = std::vector<KDXStep>;

/// Reads a path in the form that the keys of a StringMapMap have, such as "/Sample:s1/Channel", or
/// a pattern: "*" for a type or a name stands for any, a "*" alone for any object, "**" for any
/// number of levels, and "TYPE:**" for the objects of the type and all that is in them. No text is
/// refused; a type or a name that holds a '/' or is a "*" is for a list of steps made by hand.
///
///     readPath("/Sample:*/**/Channel:A");
KIV_KDX_EXPORT KDXSteps readPath(std::string_view path);

/// Appends the text of one more level to that of a path, in the form that the keys of a
/// StringMapMap have. The type and the name must not lie in the path.
///
///     std::string path = "/Sample:s1";
///     appendLevel(path, "Channel", "A");  // "/Sample:s1/Channel:A"
///
/// Nothing is escaped: a name that holds a '/' gives a text that reads back as several levels.
KIV_KDX_EXPORT void appendLevel(std::string& path, std::string_view type, std::string_view name);

/// The part of a text that is needed to find or change by a path: far less to load where the text
/// is large. It lies in the text and is made of whole statements.
///
///     const std::string_view part = kiv::partFor(text, path);
///     kiv::KDXDocument document{std::string(part)};
///     document.set(path, "Gain", "20");  // textEdits() count from the beginning of the part
///
/// Whatever finds by the path, and any number of calls of set() by it, do in a document of the part
/// what they do in one of the text; so does a call that removes by the path, and one that adds to
/// an object that the path leads to. Every object is in it whose path has the same text, or one
/// with which that begins, also where it is the '/' in a name that makes it so.
///
/// Where the path has no steps, or one without a type or a name, it is the whole text. Takes as
/// long as KDXReader takes for the text.
KIV_KDX_EXPORT std::string_view partFor(std::string_view text, const KDXSteps& path);

/// The value of a parameter as it must be written behind "NAME = ": as it is, or with a '#' behind
/// a backslash at its end, which would continue the line. For the writers, which write what they
/// get:
///
///     map["/Sample:s1"]["Folder"] = writtenValue("Folder", "C:\\data\\");  // C:\data\ #
///
/// @throws kiv::data::invalid for a name or a value that KDX cannot carry, as
/// KDXDocument::addParameter() does.
KIV_KDX_EXPORT std::string writtenValue(std::string_view name, std::string_view value);

// A null pointer, or 0, is no text: these do not compile.
template <typename Text, typename = detail::IfNoText<Text>>
std::string_view partFor(Text, const KDXSteps&) = delete;
template <typename Path, typename = detail::IfNoText<Path>>
KDXSteps readPath(Path) = delete;
template <typename... Texts, typename = detail::IfNoText<Texts...>>
std::string writtenValue(Texts...) = delete;
template <typename... Texts, typename = detail::IfNoText<Texts...>>
void appendLevel(std::string&, Texts...) = delete;

/// A KDX text that can be changed and keeps every byte that nobody changes.
///
///     kiv::KDXDocument document(text);
///     document.set(kiv::readPath("/Sample:s1/Channel:A"), "Gain", "20");
///     document.write(out);  // the text, with other bytes in one line
///
/// Any text can be loaded, right or wrong. It becomes a tree of statements, which are what
/// KDXReader reads: below the root stands what is in no object, below an object what is in it, its
/// END last. In text order a statement comes before those below it.
///
/// What is added is laid out like its neighbours; what is changed keeps its own blanks and its
/// comment; all else keeps its bytes, apart from the line end that is put behind the last statement
/// when something follows it, and an empty line where that one is open: ends in a backslash. A
/// statement is read back before it takes its place: what KDX cannot carry is refused with
/// kiv::data::invalid, before anything has changed.
///
/// Comments directly above a statement belong to it, and go and come with it. Directly above an END
/// they belong to the object around them, as do those that a blank line sets apart.
///
/// A call that throws leaves the document as it was, also when an allocation fails. A node that is
/// none of the document's, because it was removed or comes from another document, is refused with
/// kiv::internal::error; so are calls that make no sense for a node. A document is used by one
/// thread at a time; calls that are const may run together. A copy is independent, has the same
/// nodes by the same numbers, and is a way back. A document that was moved from may be assigned to
/// or destroyed.
class KIV_KDX_EXPORT KDXDocument {
public:
    /// The number of a statement. It stays good while other statements change, come and go.
    enum class Node : std::uint64_t { none = 0 };

    /// Where something is put.
    struct Where {
        enum class Side { before, behind, first, last };
        Side side;
        Node node;
    };

    /// In front of a statement and the comments that belong to it.
    static constexpr Where before(Node node) { return {Where::Side::before, node}; }
    /// Behind a statement and all that is in it; behind an END is behind the object that it closes.
    /// An object that is never closed has no place behind it: kiv::data::invalid.
    static constexpr Where behind(Node node) { return {Where::Side::behind, node}; }
    /// The first place in an object; in the root, behind comments at the head of the text that a
    /// blank line sets apart.
    static constexpr Where firstIn(Node object) { return {Where::Side::first, object}; }
    /// Behind the last thing in an object that is no comment and no blank line. Comments and blank
    /// lines themselves go behind everything.
    static constexpr Where lastIn(Node object) { return {Where::Side::last, object}; }

    /// An empty document.
    KDXDocument();

    /// Loads a text, in time proportional to it.
    /// @throws std::length_error for a text of 4 GiB or more.
    explicit KDXDocument(std::string text);

    KDXDocument(const KDXDocument& other);
    KDXDocument(KDXDocument&& other) noexcept;
    KDXDocument& operator=(const KDXDocument& other);
    KDXDocument& operator=(KDXDocument&& other) noexcept;
    ~KDXDocument();

    /// The text as it is now.
    std::string text() const&;
    /// The same, in the memory of the text that was loaded where it suffices. The document is then
    /// as one that was moved from, also when it throws.
    std::string text() &&;
    /// Appends it.
    void write(std::string& out) const;

    // ---- Going through. Each takes constant time, but next() takes time in proportion to the
    // depth behind an object that is never closed.

    /// What holds the statements that are in no object. It is no statement itself.
    Node root() const;
    Node parent(Node node) const;      ///< none for the root
    Node firstChild(Node node) const;  ///< none where there is none, like those below
    Node lastChild(Node node) const;
    Node nextSibling(Node node) const;
    Node previousSibling(Node node) const;
    Node next(Node node) const;     ///< in text order; the first statement for the root
    Node endOf(Node object) const;  ///< the END; none for an object that is never closed

    /// Whether the node is a statement of this document, or its root. Never throws.
    bool contains(Node node) const noexcept;

    /// Of the root: lineBlank.
    MiniKDXParser::lineType kind(Node node) const;
    /// Whether the statement is a comment alone.
    bool isComment(Node node) const;
    /// How many objects are around the statement; an END counts as its object. Takes time in
    /// proportion to the depth.
    std::size_t depth(Node node) const;

    /// The parts of a statement, as KDXReader has them. Each call reads the statement again.
    std::string first(Node node) const;
    std::string second(Node node) const;
    std::string comment(Node node) const;
    std::string lineText(Node node) const;  ///< KDXReader::text()

    /// The bytes of a statement, line end included, until the document changes.
    std::string_view source(Node node) const;

    /// Where a part of a statement stands in the text as it is now, as KDXReader::placeOf(). Takes
    /// time in proportion to the statement; once something was changed, to all in front of it.
    KDXPlace placeOf(Node node, KDXReader::Part part = KDXReader::Part::text,
                     std::size_t byte = 0) const;

    /// The place of a byte of source(), counted from its beginning, or of its end. Takes constant
    /// time and that to count the lines; once something was changed, as placeOf().
    /// @throws kiv::internal::error when `byte` is beyond the end.
    KDXPlace placeInSource(Node node, std::size_t byte = 0) const;

    /// The statement that holds a byte of the text as it is now; none behind the end and in a byte
    /// order mark. Takes logarithmic time; once something was changed, linear time.
    Node nodeAt(std::size_t offset) const;

    // ---- Finding, in text order. Takes time in proportion to the statements and the steps.

    /// All objects that a path or pattern matches; the root for no step.
    std::vector<Node> findObjects(const KDXSteps& path) const;
    /// All parameters of a name in those objects. The first is the one whose value readers see.
    std::vector<Node> findParameters(const KDXSteps& path, std::string_view name) const;

    // ---- Changing. Each takes time in proportion to what it changes; one that names a place, also
    // to the comments and blank lines next to it; a move, and what is put behind an object that is
    // never closed, also to the depth. All throw std::length_error when the edits add up to 4 GiB.

    /// @throws kiv::data::invalid for a text that KDX cannot carry as a value: one with a line
    /// feed, outer blanks, or a '#' that would begin a comment. A backslash at the end is carried:
    /// where it would continue the line, a '#' is put behind it. Where the value and the comment
    /// cannot stand in one line, the comment moves to a line of its own above.
    void setValue(Node parameter, std::string_view value);

    /// The name of a parameter or of an object. Where the END of the object names it in its
    /// comment, that follows.
    /// @throws kiv::data::invalid for other characters than a name may have, or outer blanks.
    void setName(Node node, std::string_view name);
    void setType(Node object, std::string_view type);  ///< the same for the type of an object

    /// What an action or a verbatim line says, its first character included.
    void setText(Node node, std::string_view text);

    /// The comment of a statement. "# " is put in front of a text that does not begin with '#'; an
    /// empty one removes the comment, of which a blank line remains where it stands alone. Behind a
    /// value that ends in a backslash a bare '#' stays.
    /// @throws kiv::data::invalid for a comment that ends in a backslash or in a blank, or where
    /// none can stand: behind a line that begins with '!', or behind "\#".
    void setComment(Node node, std::string_view comment);

    /// @return the node that was added.
    Node addParameter(Where where, std::string_view name, std::string_view value);
    Node addObject(Where where, std::string_view type, std::string_view name = {});
    Node addAction(Where where, std::string_view text);  ///< ">" is put in front if it is missing
    Node addComment(Where where, std::string_view comment);
    Node addBlankLine(Where where);

    /// Adds statements as they are written; a byte order mark in front of them is passed over, and
    /// a line end put behind the last one if it is missing. The text may be a view of this
    /// document.
    /// @return those that are in no other.
    /// @throws kiv::data::invalid for a line that is no KDX, an END too many or too few.
    std::vector<Node> addText(Where where, std::string_view text);

    /// Removes a statement, all that is in it, and the comments that belong to it. An END goes with
    /// its object; alone, only one that closes nothing can be removed.
    void remove(Node node);

    /// Removes all objects that a path or pattern matches, or all parameters of a name in them, as
    /// remove() does: none is left for readers to see.
    /// @return how many there were.
    std::size_t removeObjects(const KDXSteps& path);
    std::size_t removeParameters(const KDXSteps& path, std::string_view name);

    /// Puts a statement, all that is in it, and the comments that belong to it elsewhere; what is
    /// moved is indented like its new neighbours. An object that is never closed cannot be moved:
    /// kiv::data::invalid. Nodes stay good.
    void move(Node node, Where where);

    /// The same from another document, in which the node is removed.
    /// @return the node in this one.
    Node moveFrom(KDXDocument& other, Node node, Where where);

    /// Sets what readers see as the value of a parameter: changes the first one of that name in the
    /// objects of that path, or adds one to the first such object, or makes the objects, too.
    /// @return the parameter.
    /// @throws kiv::internal::error when a step is no type and name.
    Node set(const KDXSteps& path, std::string_view name, std::string_view value);

    // ---- What was changed.

    /// The edits that make the text as it was loaded into the text as it is now: one for each run
    /// of changed statements. Takes linear time.
    std::vector<KDXTextEdit> textEdits() const;

    // A null pointer, or a number, is no text: none of these compiles.
    template <typename Text, typename = detail::IfNoText<Text>>
    explicit KDXDocument(Text) = delete;
    template <typename Text, typename = detail::IfNoText<Text>>
    std::vector<Node> findParameters(const KDXSteps&, Text) const = delete;
    template <typename Text, typename = detail::IfNoText<Text>>
    std::size_t removeParameters(const KDXSteps&, Text) = delete;
    template <typename Text, typename = detail::IfNoText<Text>>
    void setValue(Node, Text) = delete;
    template <typename Text, typename = detail::IfNoText<Text>>
    void setName(Node, Text) = delete;
    template <typename Text, typename = detail::IfNoText<Text>>
    void setType(Node, Text) = delete;
    template <typename Text, typename = detail::IfNoText<Text>>
    void setText(Node, Text) = delete;
    template <typename Text, typename = detail::IfNoText<Text>>
    void setComment(Node, Text) = delete;
    template <typename Text, typename = detail::IfNoText<Text>>
    Node addAction(Where, Text) = delete;
    template <typename Text, typename = detail::IfNoText<Text>>
    Node addComment(Where, Text) = delete;
    template <typename Text, typename = detail::IfNoText<Text>>
    Node addText(Where, Text) = delete;
    template <typename... Texts, typename = detail::IfNoText<Texts...>>
    Node addParameter(Where, Texts...) = delete;
    template <typename... Texts, typename = detail::IfNoText<Texts...>>
    Node addObject(Where, Texts...) = delete;
    template <typename Name, typename Value, typename = detail::IfNoText<Name, Value>>
    Node set(const KDXSteps&, Name, Value) = delete;

    class Impl;

private:
    friend class KDXDocumentReader;

    std::unique_ptr<Impl> impl;
};

/// Reads the statements of a document one after the other, in text order, as KDXReader reads those
/// of a text: the quick way to see all of them, because none is copied and each is split once.
///
///     kiv::KDXDocumentReader reader(document);
///     while (reader.next())
///         if (reader.kind() == kiv::MiniKDXParser::lineParameter && reader.second().empty())
///             empty.push_back(reader.node());
///
/// The document must outlive the reader, stay where it is, and not change while it is read. Views
/// live until the next call of next(). A reader can be moved: what it was moved from may be
/// assigned to or destroyed.
class KIV_KDX_EXPORT KDXDocumentReader {
public:
    /// Begins in front of the first statement.
    explicit KDXDocumentReader(const KDXDocument& document);
    explicit KDXDocumentReader(KDXDocument&&) = delete;

    KDXDocumentReader(KDXDocumentReader&& other) noexcept;
    KDXDocumentReader& operator=(KDXDocumentReader&& other) noexcept;
    KDXDocumentReader(const KDXDocumentReader&) = delete;
    KDXDocumentReader& operator=(const KDXDocumentReader&) = delete;
    ~KDXDocumentReader();

    /// Goes on to the next statement, in time proportional to its length; behind an object that is
    /// never closed, also to the depth.
    /// @return false at the end, where there is no node and all parts are empty.
    /// @throws std::bad_alloc alone.
    bool next();

    KDXDocument::Node node() const noexcept { return current.node; }
    MiniKDXParser::lineType kind() const noexcept { return current.kind; }

    /// The halves of the statement, as KDXReader has them.
    std::string_view first() const noexcept { return current.first; }
    std::string_view second() const noexcept { return current.second; }

private:
    struct State;

    struct Statement {
        KDXDocument::Node node = KDXDocument::Node::none;
        MiniKDXParser::lineType kind = MiniKDXParser::lineBlank;
        std::string_view first;
        std::string_view second;
    };

    std::unique_ptr<State> state;
    Statement current;
};

}  // namespace kiv
