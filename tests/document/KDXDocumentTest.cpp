#include <kiv/KDXDocument.h>

#include <functional>

#include "support/Failure.h"
#include "support/Text.h"

using kiv::KDXDocument;
using kiv::readPath;
using Node = KDXDocument::Node;

namespace {

using Edit = std::function<void(KDXDocument&)>;

/// The first statement that contains a text; the root for none.
Node at(const KDXDocument& document, const char* row) {
    const std::string text = unpacked(row);
    return text.empty() ? document.root() : document.nodeAt(document.text().find(text));
}

using Text = std::string_view;
using Setter = void (KDXDocument::*)(Node, Text);
using Adder = Node (KDXDocument::*)(KDXDocument::Where, Text);
using PairAdder = Node (KDXDocument::*)(KDXDocument::Where, Text, Text);
using TextAdder = std::vector<Node> (KDXDocument::*)(KDXDocument::Where, Text);
constexpr Setter setValue = &KDXDocument::setValue, setName = &KDXDocument::setName,
                 setType = &KDXDocument::setType, setText = &KDXDocument::setText,
                 setComment = &KDXDocument::setComment;
constexpr Adder addAction = &KDXDocument::addAction, addComment = &KDXDocument::addComment;
constexpr PairAdder addParameter = &KDXDocument::addParameter, addObject = &KDXDocument::addObject;
constexpr TextAdder addText = &KDXDocument::addText;
constexpr auto addBlankLine = &KDXDocument::addBlankLine;
constexpr auto before = &KDXDocument::before, behind = &KDXDocument::behind,
               firstIn = &KDXDocument::firstIn, lastIn = &KDXDocument::lastIn;

/// An edit of the first statement that contains a text, or at a place next to it.
Edit edit(Setter set, const char* where, const char* text) {
    return [=](KDXDocument& document) { (document.*set)(at(document, where), unpacked(text)); };
}
template <typename Add, typename... Texts>
Edit edit(Add add, decltype(before) place, const char* where, Texts... texts) {
    return [=](KDXDocument& document) {
        (document.*add)(place(at(document, where)), unpacked(texts)...);
    };
}
Edit remove(const char* what) {
    return [=](KDXDocument& document) { document.remove(at(document, what)); };
}
Edit move(const char* what, decltype(before) place, const char* where) {
    return [=](KDXDocument& d) { d.move(at(d, what), place(at(d, where))); };
}
Edit moveFrom(const char* text, const char* what, decltype(before) place, const char* where) {
    return [=](KDXDocument& d) {
        KDXDocument other(unpacked(text));
        d.moveFrom(other, at(other, what), place(at(d, where)));
        EXPECT_EQ(other.text().find(unpacked(what)), std::string::npos);
    };
}
Edit set(const char* path, const char* name, const char* value) {
    return [=](KDXDocument& d) { d.set(readPath(path), name, value); };
}

/// The text may be a view of the document, whose bytes move.
void addOwnText(KDXDocument& d) {
    const Node y = d.addParameter(firstIn(d.root()), "y", "which takes memory of its own");
    d.addText(lastIn(d.root()), d.source(y));
}

struct EditRow {
    const char* before;
    Edit edit;
    const char* after;
};

const std::vector<EditRow> kEdits = {
    // A statement keeps its own blanks and its comment.
    {"  x   =  1   # c ^|", edit(setValue, "x", "20"), "  x   =  20   # c ^|"},
    {"x=|", edit(setValue, "x", "1"), "x=1|"},
    {"x   =|", edit(setValue, "x", "1"), "x   = 1|"},
    {"x =# c|", edit(setValue, "x", "1"), "x = 1 # c|"},
    {"S   :|END", edit(setName, "S", "1"), "S   : 1|END"},
    {"x = 1,\\| 2|", edit(setValue, "x", "1,2"), "x = 1,\\| 2|"},
    {"> go|", edit(setText, "go", "> C:\\"), "> C:\\ #|"},
    {"x = 1 # c|", edit(setValue, "x", ""), "x =  # c|"},
    // Lines that continue it go with what they say.
    {"x = 1,\\|    2 # c|y=1", edit(setValue, "x", "3"), "x = 3 # c|y=1"},
    {"x = \\|1 # c\\ |y=1", edit(setValue, "x", "2"), "x = \\|2 # c\\ |y=1"},
    // A backslash at the end is protected, a '#' behind one drives the comment away.
    {"q = 1|y=1", edit(setValue, "q", "C:\\d\\"), "q = C:\\d\\ #|y=1"},
    {"q = 1# c|", edit(setValue, "q", "C:\\"), "q = C:\\ # c|"},
    {"A:|  x = 1 # note|END|", edit(setValue, "x", "a\\#b"), "A:|  # note|  x = a\\#b|END|"},
    {"q = C:\\d\\ # c|y=1", edit(setComment, "q", ""), "q = C:\\d\\ #|y=1"},
    {"x = 1  # c|", edit(setComment, "x", ""), "x = 1|"},
    {"x = 1|", edit(setComment, "x", "note"), "x = 1 # note|"},
    {"x = 1  #a |", edit(setComment, "x", "#b"), "x = 1  #b|"},
    {"# a", edit(setComment, "a", ""), "|"},
    {"x=1|# a^|", edit(setComment, "a", ""), "x=1|^|"},
    {"  x = 1|", edit(setName, "x", "a b"), "  a b = 1|"},
    {"= 5|", edit(setName, "5", "x"), "x = 5|"},
    {"a  b = 1|", edit(setName, "1", "a b"), "a  b = 1|"},
    {"x=a\\", edit(setName, "x", "y"), "y=a\\"},
    {"> go # c|", edit(setText, "go", ">stop"), ">stop # c|"},
    // The END names the object as far as it did.
    {"A : a|END # A:a|A : a|END # x|",
     [](KDXDocument& d) {
         d.setName(d.firstChild(d.root()), "b");
         d.setType(d.firstChild(d.root()), "B");
     },
     "B : b|END # B:b|A : a|END # x|"},
    {"A: a|END # A:a|x=1", edit(setName, "A", "C:\\"), "A: C:\\ #|END|x=1"},
    {"A: a # c|END # A:a", edit(setName, "A", "\\#"), "# c|A: \\#|END # A:\\#"},
    // What is added looks like its neighbours.
    {"A:^|\tx=1^|END^|", edit(addParameter, lastIn, "A", "y", "2"), "A:^|\tx=1^|\ty=2^|END^|"},
    {"ab  = 1|x   = 2|", edit(addParameter, firstIn, "", "abc", "3"), "abc = 3|ab  = 1|x   = 2|"},
    {"A:a|    x = 1|END # A:a|", edit(addObject, lastIn, "", "B", "b"),
     "A:a|    x = 1|END # A:a|B:b|END # B:b|"},
    {"A:|    B:|    END|END|", edit(addParameter, firstIn, "B", "x", ""),
     "A:|    B:|        x =|    END|END|"},
    {"A: a", edit(addParameter, lastIn, "A", "x", "1"), "A: a|  x = 1"},
    {"x=1", edit(addAction, behind, "x", "go"), "x=1|>go"},
    {"x=1|>|>|>|>|>|>|>|>|>|", edit(addParameter, lastIn, "", "y", "2"),
     "x=1|>|>|>|>|>|>|>|>|>|y = 2|"},
    {"A:^|  x = 1^|    y=2|END|", edit(addParameter, lastIn, "A", "z", "3"),
     "A:^|  x = 1^|    y=2|    z=3|END|"},
    {"x=a\\", edit(addBlankLine, lastIn, ""), "x=a\\|||"},
    {"", edit(addComment, lastIn, "", "c"), "# c|"},
    {"A:|  x=1|  # a|END|", edit(addComment, lastIn, "A", "b"), "A:|  x=1|  # a|  # b|END|"},
    {"# licence|", set("", "x", "1"), "# licence|x = 1|"},
    // The nearest neighbour counts.
    {"A:|END # A:|C:|END|", edit(addObject, lastIn, "", "B", ""), "A:|END # A:|C:|END|B:|END|"},
    {"ab = 1|c  = 2|S:|  T:|  END|END|", edit(addParameter, firstIn, "S", "x", "3"),
     "ab = 1|c  = 2|S:|  x = 3|  T:|  END|END|"},
    {"x = 1|", edit(addParameter, lastIn, "", "", "2"), "x = 1|= 2|"},
    {"a=1^|b=2", edit(addText, lastIn, "", "x=1|"), "a=1^|b=2^|x=1|"},
    {"p=1|", edit(addText, firstIn, "", "y=1|x=a\\"), "y=1|x=a\\||p=1|"},
    {"p=1", edit(addText, lastIn, "", "\xEF\xBB\xBF"), "p=1"},
    // Comments stay with what they belong to.
    {"# licence||# of x|x=1|", edit(addParameter, firstIn, "", "y", "2"),
     "# licence||y=2|# of x|x=1|"},
    {"# of x|x=1|", edit(addParameter, before, "x=", "y", "2"), "y=2|# of x|x=1|"},
    {"A:|  x=1||  # of A|END|", edit(addParameter, lastIn, "A:", "y", "2"),
     "A:|  x=1|  y=2||  # of A|END|"},
    {"A:|  # of A|END|", edit(addText, before, "END", "B:| END"), "A:|  # of A|B:| END|END|"},
    {"x=1", edit(addText, behind, "x", "\xEF\xBB\xBFy=a\\"), "x=1|y=a\\||"},
    {"x=1", addOwnText, "y=which takes memory of its own|x=1|y=which takes memory of its own|"},
    // What goes or moves takes its comments along.
    {"# c||# of x|# too|x=1|y=1|", remove("x="), "# c||y=1|"},
    {"END|A:|  x=1|END # c|",
     [](KDXDocument& d) {
         d.remove(at(d, "END"));
         d.remove(at(d, "A"));
     },
     ""},
    {"A:|  # of x|  x=1,\\|    2|END|B:|\tC:|\tEND|END|", move("x=", firstIn, "C"),
     "A:|END|B:|\tC:|\t\t# of x|\t\tx=1,\\|\t\t  2|\tEND|END|"},
    {"A:|\tB:||\tEND|END|", move("B", lastIn, ""), "A:|END|B:||END|"},
    {"a=1^|foo?C\\", move("foo", before, "a"), "foo?C\\|^|a=1^|"},
    {"# of x|x=1|y=2", move("x=", lastIn, ""), "y=2|# of x|x=1"},
    {"x=1|y=2|", move("y", behind, "x"), "x=1|y=2|"},
    {"A:^| x=C:\\^|END^|", moveFrom("B:|   # of y|   y=1|   z=2|END|", "y=", lastIn, "A"),
     "A:^| x=C:\\^| # of y^| y=1^|END^|"},
    // By path, it is what readers see.
    {"A: s|  # of x|  x = 1|  x = 2|  y = 3|END|A: s|  x = 4|END|",
     [](KDXDocument& d) { EXPECT_EQ(d.removeParameters(readPath("/A:s"), "x"), 3U); },
     "A: s|  y = 3|END|A: s|END|"},
    {"A:|  A:|  END|END|B:|END|A:|",
     [](KDXDocument& d) { EXPECT_EQ(d.removeObjects(readPath("/**/A")), 3U); }, "B:|END|"},
    {"A: s|END|A: s|  x = 1|  x = 2|END|", set("/A:s", "x", "3"),
     "A: s|END|A: s|  x = 3|  x = 2|END|"},
    {"A: s|  x = 1|  B:|  END|END|", set("/A:s", "y", "3"), "A: s|  x = 1|  y = 3|  B:|  END|END|"},
    {"A: s|    x = 1|END|", set("/A:s/B:b/C", "y", "C:\\"),
     "A: s|    x = 1|    B: b|        C:|            y = C:\\ #|        END|    END|END|"},
    {"", set("", "x", "1"), "x = 1|"},
};

struct RefusalRow {
    const char* text;
    Edit edit;
    const char *function, *reason;
};
const char* const kElse = "it would be read as something else.";
const char* const kNoComment =
    "no comment can stand behind \"\\#\" or in a line that begins with '!'.";
const char* const kName = "a name consists of letters, digits, blanks, '&', '.' and '_'.";
const char* const kSpaces = "a name has no outer blanks, and between words a single space.";
const char* const kSwallows = "a comment that ends in a backslash would swallow the next line.";
const std::vector<RefusalRow> kCannotBeCarried = {
    {"x=1", edit(setValue, "x", "a|b"), "setValue", "a line feed would end the line."},
    {"x=1", edit(setValue, "x", "a #b"), "setValue", "a '#' would begin a comment."},
    {"x=1", edit(setValue, "x", " a"), "setValue", "a value has no outer blanks."},
    {"x=1", edit(setValue, "x", "a\\#b\\"), "setValue", kElse},
    {"x=1 # c", edit(setValue, "x", "a\\#b\\"), "setValue", kElse},
    {"x=1", edit(setName, "x", "a-b"), "setName", kName},
    {"A:|", edit(setName, "A", "a  b"), "setName", kSpaces},
    {"! foo # a", edit(setComment, "foo", "c"), "setComment", kNoComment},
    {"x=a\\#b", edit(setComment, "x", "c"), "setComment", kNoComment},
    {"x=1", edit(setComment, "x", "C:\\"), "setComment", kSwallows},
    {"x", edit(addComment, before, "x", "c "), "addComment", "a comment does not end in a blank."},
    {"x", edit(addAction, before, "x", "go "), "addAction",
     "an action or a verbatim line has no outer blanks."},
};
const char* const kNeverClosed = "The object is never closed: its END is missing.";
const char* const kNoKdx = "A line of the text is no KDX.";
const char* const kMark =
    "A line would come to stand at the beginning that is then read as a byte order mark.";
const std::vector<RefusalRow> kRefusedData = {
    {"A:|B:|END", edit(addBlankLine, behind, "A"), "addBlankLine", kNeverClosed},
    {"A:|", move("A", firstIn, ""), "move", kNeverClosed},
    {"", edit(addText, lastIn, "", "x=1|no KDX"), "addText", kNoKdx},
    {"", edit(addText, lastIn, "", "\xEF\xBB\xBF\xEF\xBB\xBFx=1"), "addText", kNoKdx},
    {"", moveFrom("|\xEF\xBB\xBFx", "x", lastIn, ""), "moveFrom", kNoKdx},
    {"", edit(addText, lastIn, "", "END"), "addText", "The text has an END that closes nothing."},
    {"", edit(addText, lastIn, "", "A:|B:|END"), "addText",
     "The text has an object that is never closed."},
    {"|\xEF\xBB\xBFx=1", remove("|"), "remove", kMark},
    {"", moveFrom("|\xEF\xBB\xBFx=1", "|", lastIn, ""), "moveFrom", kMark},
};
const char* const kEndStays = "The END of an object goes with the object.";
const char* const kNoPart = "A statement of this kind has no such part.";
const std::vector<RefusalRow> kRefusedCalls = {
    {"", [](auto& d) { d.removeObjects({}); }, "removeObjects", "The root is no statement."},
    {"A:|END", remove("END"), "remove", kEndStays},
    {"A:|END", move("END", firstIn, ""), "move", kEndStays},
    {"", moveFrom("A:|END", "END", lastIn, ""), "moveFrom", kEndStays},
    {"A:|B:|END|END", move("A", firstIn, "B"), "move", "A statement cannot be put inside itself."},
    {"x=1", edit(addBlankLine, firstIn, "x"), "addBlankLine", "The node is no object."},
    {"x=1", edit(addBlankLine, behind, ""), "addBlankLine", "The root is no statement."},
    {"A:", edit(setValue, "A", ""), "setValue", kNoPart},
    {"x=1", edit(setType, "x", ""), "setType", kNoPart},
    {"x=1", edit(setText, "x", ""), "setText", kNoPart},
    {">", edit(setName, ">", ""), "setName", kNoPart},
    {"", set("/A:*", "x", "1"), "set", "Every step needs a type and a name."},
    {"", set("/*:a", "x", "1"), "set", "Every step needs a type and a name."},
    {"x=1", [](auto& d) { d.placeInSource(at(d, "x"), 4); }, "placeInSource",
     "There is no byte at this position."},
    {"x=1", [](auto& d) { d.kind(Node::none); }, "kind", "The node is none of this document's."},
};

/// What is refused changes nothing.
template <typename Exception>
void expectRefusals(const std::vector<RefusalRow>& rows, const std::string& prefix = "") {
    for (const auto& [text, edit, function, reason] : rows) {
        KDXDocument document(unpacked(text));
        EXPECT_EQ(failureOf<Exception>([&, &call = edit] { call(document); }),
                  std::string("KDXDocument::") + function + " (4): " + prefix + reason);
        EXPECT_EQ(document.text(), unpacked(text)) << reason;
        EXPECT_TRUE(document.textEdits().empty());
    }
}

std::string textOf(const std::vector<kiv::KDXTextEdit>& edits) {
    std::string text;
    for (const kiv::KDXTextEdit& edit : edits)
        text += std::to_string(edit.offset) + '+' + std::to_string(edit.length) + " [" +
                edit.replacement + "]\n";
    return text;
}

}  // namespace

TEST(KDXDocument, editsWhatIsNamedAndNothingElse) {
    for (const EditRow& row : kEdits) {
        const std::string text = unpacked(row.before);
        KDXDocument document(text);
        row.edit(document);
        EXPECT_EQ(document.text(), unpacked(row.after)) << row.before;
        EXPECT_EQ(kiv::applyEdits(text, document.textEdits()), document.text());
    }
}

TEST(KDXDocument, refusesWhatIsWrong) {
    expectRefusals<kiv::data::invalid>(kCannotBeCarried, "KDX cannot carry this: ");
    expectRefusals<kiv::data::invalid>(kRefusedData);
    expectRefusals<kiv::internal::error>(kRefusedCalls);
}

TEST(KDXDocument, findsByPathAndPattern) {
    const KDXDocument document(
        "A: a\n  B:\n    A: a\n      x=1\n    END\n  END\n  x=2\nEND\nA:\n  x=3\nEND\nx=4");
    struct Row {
        const char* path;
        const char* values;
    };
    const std::vector<Row> rows = {
        {"", "4 "},          {"/A:a", "2 "},   {"/A", "3 "},          {"/A:*", "2 3 "},
        {"/*", "2 3 "},      {"/A:A", "3 "},   {"/**", "1 2 3 4 "},   {"/**/A:a", "1 2 "},
        {"/A:**", "1 2 3 "}, {"/*/*/*", "1 "}, {"/*:a/**/*:a", "1 "}, {"/B", ""},
    };
    for (const Row& row : rows) {
        std::string values;
        for (const Node node : document.findParameters(readPath(row.path), "x"))
            values += document.second(node) + ' ';
        EXPECT_EQ(values, row.values) << row.path;
    }
    EXPECT_EQ(document.findObjects(readPath("/**")).size(), 4U);
    EXPECT_EQ(document.findObjects({}), std::vector<Node>{document.root()});

    std::string path = "/A:a";
    for (const auto& [type, name] : {std::pair("B", "B"), {"C", ""}, {"D", "x/y"}})
        kiv::appendLevel(path, std::string(type), std::string(name));
    EXPECT_EQ(path, "/A:a/B/C/D:x/y");
}

TEST(KDXDocument, needsFewObjectsToChangeByAPath) {
    std::string text;
    for (char name = 'a'; name <= 'z'; ++name) text += std::string("A: ") + name + "\nEND\n";
    const auto namesIn = [&](const char* path) {
        std::string names;
        const KDXDocument part{std::string(kiv::partFor(text, readPath(path)))};
        for (const Node node : part.findObjects(readPath("/*"))) names += part.second(node);
        return names;
    };
    EXPECT_EQ(namesIn("/A:m"), "efghijklmnopqrstu");
    EXPECT_EQ(namesIn("/A:b/C"), "abcdefghij");
    EXPECT_EQ(namesIn("/A:none"), "rstuvwxyz");
    EXPECT_EQ(namesIn("/A:*").size(), 26U);
}

TEST(KDXDocument, writesValuesSoThatTheyReadBack) {
    using Row = std::pair<const char*, const char*>;
    for (const auto& [value, written] :
         {Row("", ""), Row("1", "1"), Row("C:\\", "C:\\ #"), Row("\\#", "\\#")})
        EXPECT_EQ(kiv::writtenValue("x", value), written) << value;
    for (const auto& [name, value] : {Row("x", "\\#\\"), Row("x", " 1"), Row("x-", "1")})
        EXPECT_THROW(kiv::writtenValue(name, value), kiv::data::invalid) << name << value;
}

TEST(KDXDocument, tellsWhatWasChangedInRuns) {
    KDXDocument document("\xEF\xBB\xBFx=1\ny=2\nz=3\nw=4\n");
    document.setValue(at(document, "x"), "5");
    document.addParameter(KDXDocument::behind(at(document, "x")), "v", "6");
    document.remove(at(document, "w"));
    EXPECT_EQ(textOf(document.textEdits()), "3+4 [x=5\nv=6\n]\n15+4 []\n");
    EXPECT_EQ(placeText(document.placeOf(at(document, "z"), kiv::KDXReader::Part::second)), "4:3");
    document.setValue(at(document, "x"), "1");
    document.remove(at(document, "v"));
    EXPECT_EQ(textOf(document.textEdits()), "15+4 []\n");
}

TEST(KDXDocument, refusesNodesThatAreGoneOrOfAnother) {
    KDXDocument document("x=1\ny=2\n");
    const Node x = at(document, "x");
    const KDXDocument copy = document;
    document.remove(x);
    const Node added = document.addBlankLine(KDXDocument::lastIn(document.root()));
    EXPECT_FALSE(document.contains(x));
    EXPECT_TRUE(copy.contains(x));
    EXPECT_FALSE(copy.contains(added));
    document = copy;
    EXPECT_FALSE(document.contains(added));
    EXPECT_NE(document.addBlankLine(KDXDocument::lastIn(document.root())), added);
    document.setValue(x, "3");
    EXPECT_EQ(document.text(), "x=3\ny=2\n\n");
    EXPECT_FALSE(KDXDocument("x=1\n").contains(x));
    document.moveFrom(document, x, behind(at(document, "y")));
    EXPECT_EQ(document.nodeAt(1000), Node::none);
    KDXDocument moved(std::move(document));
    EXPECT_EQ(moved.text(), "y=2\nx=3\n\n");
    document = KDXDocument();
    EXPECT_EQ(document.text(), "");
}

TEST(KDXDocument, showsTheTree) {
    const KDXDocument document("A: a\n  # c\n  x = 1 # d\nEND # e\nEND\n\n> go\nB:\n");
    const Node object = document.firstChild(document.root());
    EXPECT_EQ(document.parent(object), document.root());
    EXPECT_EQ(document.parent(document.root()), Node::none);
    EXPECT_EQ(document.endOf(object), document.lastChild(object));
    EXPECT_EQ(document.comment(document.endOf(object)), "# e");
    EXPECT_EQ(document.first(object) + std::string(document.source(document.next(object))),
              "A  # c\n");
    EXPECT_TRUE(document.isComment(document.firstChild(object)));
    EXPECT_EQ(document.depth(document.firstChild(object)), 1U);
    EXPECT_EQ(document.depth(document.endOf(object)), 0U);
    EXPECT_EQ(document.endOf(at(document, "B")), Node::none);
    EXPECT_EQ(document.endOf(document.root()), Node::none);
    EXPECT_EQ(document.depth(document.nextSibling(object)), 0U);
    EXPECT_EQ(document.previousSibling(object), Node::none);
    EXPECT_EQ(document.lineText(at(document, "go")), "> go");
    const kiv::KDXPlace place = document.placeOf(at(document, "x"), kiv::KDXReader::Part::second);
    EXPECT_EQ(std::to_string(place.offset) + ' ' + placeText(place), "17 3:7");
    EXPECT_EQ(document.nodeAt(17), at(document, "x"));
    EXPECT_EQ(document.placeInSource(at(document, "x")).offset, 11U);
    EXPECT_EQ(document.nodeAt(1000), Node::none);
}

TEST(KDXDocument, isReadLikeItsText) {
    const std::string deep(300, ' ');
    KDXDocument document("A  b:  n  m\n" + deep +
                         "x=1\nq = a\\\n b\n\tno KDX\nEND # c\nz =2 # d\ny= 2");
    document.setValue(at(document, "z"), "3");
    const std::string text = document.text();
    kiv::KDXReader expected(text);
    kiv::KDXDocumentReader moved(document);
    kiv::KDXDocumentReader reader(std::move(moved));
    reader = kiv::KDXDocumentReader(document);
    for (Node n = document.next(document.root()); expected.next(); n = document.next(n)) {
        SCOPED_TRACE(expected.line());
        ASSERT_TRUE(reader.next());
        EXPECT_EQ(reader.node(), n);
        EXPECT_EQ(reader.kind(), expected.kind());
        EXPECT_EQ(reader.first(), expected.first());
        EXPECT_EQ(reader.second(), expected.second());
    }
    EXPECT_FALSE(reader.next());
    EXPECT_EQ(reader.node(), Node::none);
}
