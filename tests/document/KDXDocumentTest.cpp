#include <gtest/gtest.h>
#include <kiv/Error.h>
#include <kiv/KDXDocument.h>

#include <functional>
#include <string>
#include <vector>

#include "support/Failure.h"

using kiv::KDXDocument;
using kiv::readPath;
using Node = KDXDocument::Node;

namespace {

using Edit = std::function<void(KDXDocument&)>;

/// The first statement that contains a text; the root for none.
Node at(const KDXDocument& document, std::string_view text) {
    if (text.empty()) return document.root();
    Node node = document.next(document.root());
    while (document.source(node).find(text) == std::string_view::npos) node = document.next(node);
    return node;
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
    return [=](KDXDocument& document) { (document.*set)(at(document, where), text); };
}
template <typename Add, typename... Texts>
Edit edit(Add add, decltype(before) place, const char* where, Texts... texts) {
    return [=](KDXDocument& document) { (document.*add)(place(at(document, where)), texts...); };
}

struct EditRow {
    const char* before;
    Edit edit;
    const char* after;
};

const std::vector<EditRow> kValues = {
    // A statement keeps its own blanks and its comment.
    {"  x   =  1   # c \r\n", edit(setValue, "x", "20"), "  x   =  20   # c \r\n"},
    {"x=\n", edit(setValue, "x", "1"), "x=1\n"},
    {"x   =\n", edit(setValue, "x", "1"), "x   = 1\n"},
    {"x =# c\n", edit(setValue, "x", "1"), "x = 1 # c\n"},
    {"S   :\nEND", edit(setName, "S", "1"), "S   : 1\nEND"},
    {"x = 1,\\\n 2\n", edit(setValue, "x", "1,2"), "x = 1,\\\n 2\n"},
    {"> go\n", edit(setText, "go", "> C:\\"), "> C:\\ #\n"},
    {"x = # c\n", edit(setValue, "x", "1"), "x = 1 # c\n"},
    {"x = 1 # c\n", edit(setValue, "x", ""), "x =  # c\n"},
    // Lines that continue it go with what they say.
    {"x = 1,\\\n    2 # c\ny=1", edit(setValue, "x", "3"), "x = 3 # c\ny=1"},
    {"x = \\\n1 # c\\ \ny=1", edit(setValue, "x", "2"), "x = \\\n2 # c\\ \ny=1"},
    // A backslash at the end is protected, a '#' behind one drives the comment away.
    {"q = 1\ny=1", edit(setValue, "q", "C:\\d\\"), "q = C:\\d\\ #\ny=1"},
    {"q = 1# c\n", edit(setValue, "q", "C:\\"), "q = C:\\ # c\n"},
    {"q=1", edit(setValue, "q", "C:\\"), "q=C:\\ #"},
    {"a=1\n    x = 1 # note\n", edit(setValue, "x", "\\#"), "a=1\n    # note\n    x = \\#\n"},
    {"A:\n  x = 1 # note\nEND\n", edit(setValue, "x", "a\\#b"), "A:\n  # note\n  x = a\\#b\nEND\n"},
    {"q = C:\\d\\ # c\ny=1", edit(setComment, "q", ""), "q = C:\\d\\ #\ny=1"},
    {"x = 1  # c\n", edit(setComment, "x", ""), "x = 1\n"},
    {"x = 1\n", edit(setComment, "x", "note"), "x = 1 # note\n"},
    {"x = 1  #a \n", edit(setComment, "x", "#b"), "x = 1  #b\n"},
    {"# a", edit(setComment, "a", ""), "\n"},
    {"  x = 1\n", edit(setName, "x", "a b"), "  a b = 1\n"},
    {"= 5\n", edit(setName, "5", "x"), "x = 5\n"},
    {"> go # c\n", edit(setText, "go", ">stop"), ">stop # c\n"},
    // The END names the object as far as it did.
    {"A : a\nEND # A:a\nA : a\nEND # x\n",
     [](KDXDocument& d) {
         d.setName(d.firstChild(d.root()), "b");
         d.setType(d.firstChild(d.root()), "B");
     },
     "B : b\nEND # B:b\nA : a\nEND # x\n"},
    {"A: a\nEND # A:a\nx=1", edit(setName, "A", "C:\\"), "A: C:\\ #\nEND\nx=1"},
};

const std::vector<EditRow> kAdditions = {
    // What is added looks like its neighbours.
    {"A:\r\n\tx=1\r\nEND\r\n", edit(addParameter, lastIn, "A", "y", "2"),
     "A:\r\n\tx=1\r\n\ty=2\r\nEND\r\n"},
    {"ab  = 1\nx   = 2\n", edit(addParameter, firstIn, "", "abc", "3"),
     "abc = 3\nab  = 1\nx   = 2\n"},
    {"A:a\n    x = 1\nEND # A:a\n", edit(addObject, lastIn, "", "B", "b"),
     "A:a\n    x = 1\nEND # A:a\nB:b\nEND # B:b\n"},
    {"A:\n    B:\n    END\nEND\n", edit(addParameter, firstIn, "B", "x", ""),
     "A:\n    B:\n        x =\n    END\nEND\n"},
    {"A: a", edit(addParameter, lastIn, "A", "x", "1"), "A: a\n  x = 1"},
    {"x=1", edit(addAction, behind, "x", "go"), "x=1\n>go"},
    {"x=a\\", edit(addBlankLine, lastIn, ""), "x=a\\\n\n\n"},
    {"", edit(addComment, lastIn, "", "c"), "# c\n"},
    {"A:\n  x=1\n  # a\nEND\n", edit(addComment, lastIn, "A", "b"),
     "A:\n  x=1\n  # a\n  # b\nEND\n"},
    {"# licence\n", [](KDXDocument& d) { d.set({}, "x", "1"); }, "# licence\nx = 1\n"},
    // The nearest neighbour counts.
    {"A:\nEND # A:\nC:\nEND\n", edit(addObject, lastIn, "", "B", ""),
     "A:\nEND # A:\nC:\nEND\nB:\nEND\n"},
    {"ab = 1\nc  = 2\nS:\n  T:\n  END\nEND\n", edit(addParameter, firstIn, "S", "x", "3"),
     "ab = 1\nc  = 2\nS:\n  x = 3\n  T:\n  END\nEND\n"},
    {"x = 1\n", edit(addParameter, lastIn, "", "", "2"), "x = 1\n= 2\n"},
    {"a=1\r\nb=2", edit(addText, lastIn, "", "x=1\n"), "a=1\r\nb=2\r\nx=1\n"},
    {"p=1\n", edit(addText, firstIn, "", "y=1\nx=a\\"), "y=1\nx=a\\\n\np=1\n"},
    {"p=1", edit(addText, lastIn, "", "\xEF\xBB\xBF"), "p=1"},
    // Comments stay with what they belong to.
    {"# licence\n\n# of x\nx=1\n", edit(addParameter, firstIn, "", "y", "2"),
     "# licence\n\ny=2\n# of x\nx=1\n"},
    {"# of x\nx=1\n", edit(addParameter, before, "x=", "y", "2"), "y=2\n# of x\nx=1\n"},
    {"A:\n  x=1\n\n  # of A\nEND\n", edit(addParameter, lastIn, "A:", "y", "2"),
     "A:\n  x=1\n  y=2\n\n  # of A\nEND\n"},
    {"A:\n  # of A\nEND\n", edit(addText, before, "END", "B:\n END"),
     "A:\n  # of A\nB:\n END\nEND\n"},
    {"x=1", edit(addText, behind, "x", "\xEF\xBB\xBFy=a\\"), "x=1\ny=a\\\n\n"},
};

const std::vector<EditRow> kMoves = {
    {"# c\n\n# of x\n# too\nx=1\ny=1\n", [](KDXDocument& d) { d.remove(at(d, "x=")); },
     "# c\n\ny=1\n"},
    {"END\nA:\n  x=1\nEND # c\n",
     [](KDXDocument& d) {
         d.remove(at(d, "END"));
         d.remove(at(d, "A"));
     },
     ""},
    {"A:\n  # of x\n  x=1,\\\n    2\nEND\nB:\n\tC:\n\tEND\nEND\n",
     [](KDXDocument& d) { d.move(at(d, "x="), d.firstIn(at(d, "C"))); },
     "A:\nEND\nB:\n\tC:\n\t\t# of x\n\t\tx=1,\\\n\t\t  2\n\tEND\nEND\n"},
    {"A:\n\tB:\n\n\tEND\nEND\n", [](KDXDocument& d) { d.move(at(d, "B"), d.lastIn(d.root())); },
     "A:\nEND\nB:\n\nEND\n"},
    {"a=1\r\nfoo?C\\", [](KDXDocument& d) { d.move(at(d, "foo"), d.before(at(d, "a"))); },
     "foo?C\\\n\r\na=1\r\n"},
    {"# of x\nx=1\ny=2", [](KDXDocument& d) { d.move(at(d, "x="), d.lastIn(d.root())); },
     "y=2\n# of x\nx=1"},
    {"x=1\ny=2\n", [](KDXDocument& d) { d.move(at(d, "y"), d.behind(at(d, "x"))); }, "x=1\ny=2\n"},
    {"A:\r\n x=C:\\\r\nEND\r\n",
     [](KDXDocument& d) {
         KDXDocument other("B:\n   # of y\n   y=1\n   z=2\nEND\n");
         d.moveFrom(other, at(other, "y="), d.lastIn(at(d, "A")));
         EXPECT_EQ(other.text(), "B:\n   z=2\nEND\n");
     },
     "A:\r\n x=C:\\\r\n # of y\r\n y=1\r\nEND\r\n"},
};

const std::vector<EditRow> kPaths = {
    {"A: s\n  # of x\n  x = 1\n  x = 2\n  y = 3\nEND\nA: s\n  x = 4\nEND\n",
     [](KDXDocument& d) { EXPECT_EQ(d.removeParameters(readPath("/A:s"), "x"), 3U); },
     "A: s\n  y = 3\nEND\nA: s\nEND\n"},
    {"A:\n  A:\n  END\nEND\nB:\nEND\nA:\n",
     [](KDXDocument& d) { EXPECT_EQ(d.removeObjects(readPath("/**/A")), 3U); }, "B:\nEND\n"},
    {"A: s\nEND\nA: s\n  x = 1\n  x = 2\nEND\n",
     [](KDXDocument& d) { d.set(readPath("/A:s"), "x", "3"); },
     "A: s\nEND\nA: s\n  x = 3\n  x = 2\nEND\n"},
    {"A: s\n  x = 1\n  B:\n  END\nEND\n", [](KDXDocument& d) { d.set(readPath("/A:s"), "y", "3"); },
     "A: s\n  x = 1\n  y = 3\n  B:\n  END\nEND\n"},
    {"A: s\n    x = 1\nEND\n", [](KDXDocument& d) { d.set(readPath("/A:s/B:b/C"), "y", "C:\\"); },
     "A: s\n    x = 1\n    B: b\n        C:\n            y = C:\\ #\n        END\n    END\nEND\n"},
    {"", [](KDXDocument& d) { d.set({}, "x", "1"); }, "x = 1\n"},
};

void expectEdits(const std::vector<EditRow>& rows) {
    for (const EditRow& row : rows) {
        KDXDocument document{std::string(row.before)};
        row.edit(document);
        EXPECT_EQ(document.text(), row.after) << row.before;
        EXPECT_EQ(kiv::applyEdits(row.before, document.textEdits()), row.after);
    }
}

struct RefusalRow {
    const char* text;
    Edit edit;
    const char* failure;
};
const std::vector<RefusalRow> kRefusedData = {
    {"x=1", edit(setValue, "x", "a\nb"),
     "setValue (4): KDX cannot carry this: a line feed would end the line."},
    {"x=1", edit(setValue, "x", "a #b"),
     "setValue (4): KDX cannot carry this: a '#' would begin a comment."},
    {"x=1", edit(setValue, "x", " a"),
     "setValue (4): KDX cannot carry this: a value has no outer blanks."},
    {"x=1", edit(setValue, "x", "a\\#b\\"),
     "setValue (4): KDX cannot carry this: it would be read as something else."},
    {"x=1", edit(setName, "x", "a-b"),
     "setName (4): KDX cannot carry this: a name consists of letters, digits, blanks, '&', '.' and "
     "'_'."},
    {"A:\n", edit(setName, "A", "a  b"),
     "setName (4): KDX cannot carry this: a name has no outer blanks, and between words a single "
     "space."},
    {"x=1 # c", edit(setValue, "x", "a\\#b\\"),
     "setValue (4): KDX cannot carry this: it would be read as something else."},
    {"! foo # a", edit(setComment, "foo", "c"),
     "setComment (4): KDX cannot carry this: no comment can stand behind \"\\#\" or in a line that "
     "begins with '!'."},
    {"x=a\\#b", edit(setComment, "x", "c"),
     "setComment (4): KDX cannot carry this: no comment can stand behind \"\\#\" or in a line that "
     "begins with '!'."},
    {"x=1", edit(setComment, "x", "C:\\"),
     "setComment (4): KDX cannot carry this: a comment that ends in a backslash would swallow the "
     "next line."},
    {"x=1", edit(addComment, before, "x", "c "),
     "addComment (4): KDX cannot carry this: a comment does not end in a blank."},
    {"x=1", edit(addAction, before, "x", "go "),
     "addAction (4): KDX cannot carry this: an action or a verbatim line has no outer blanks."},
    {"A:\nB:\nEND", edit(addBlankLine, behind, "A"),
     "addBlankLine (4): The object is never closed: its END is missing."},
    {"A:\n", [](KDXDocument& d) { d.move(at(d, "A"), d.firstIn(d.root())); },
     "move (4): The object is never closed: its END is missing."},
    {"", edit(addText, lastIn, "", "x=1\nno KDX"), "addText (4): A line of the text is no KDX."},
    {"",
     [](KDXDocument& d) {
         KDXDocument other("\n\xEF\xBB\xBFx");
         d.moveFrom(other, at(other, "x"), d.lastIn(d.root()));
     },
     "moveFrom (4): A line of the text is no KDX."},
    {"", edit(addText, lastIn, "", "END"), "addText (4): The text has an END that closes nothing."},
    {"", edit(addText, lastIn, "", "A:\nB:\nEND"),
     "addText (4): The text has an object that is never closed."},
    {"\n\xEF\xBB\xBFx=1", [](KDXDocument& d) { d.remove(d.next(d.root())); },
     "remove (4): A line would come to stand at the beginning that is then read as a byte order "
     "mark."},
};
const std::vector<RefusalRow> kRefusedCalls = {
    {"", [](KDXDocument& d) { d.removeObjects({}); },
     "removeObjects (4): The root is no statement."},
    {"A:\nEND", [](KDXDocument& d) { d.remove(at(d, "END")); },
     "remove (4): The END of an object goes with the object."},
    {"A:\nEND", [](KDXDocument& d) { d.move(at(d, "END"), d.firstIn(d.root())); },
     "move (4): The END of an object goes with the object."},
    {"A:\nB:\nEND\nEND", [](KDXDocument& d) { d.move(at(d, "A"), d.firstIn(at(d, "B"))); },
     "move (4): A statement cannot be put inside itself."},
    {"x=1", edit(addBlankLine, firstIn, "x"), "addBlankLine (4): The node is no object."},
    {"x=1", edit(addBlankLine, behind, ""), "addBlankLine (4): The root is no statement."},
    {"A:", edit(setValue, "A", ""), "setValue (4): A statement of this kind has no such part."},
    {"x=1", edit(setType, "x", ""), "setType (4): A statement of this kind has no such part."},
    {"x=1", edit(setText, "x", ""), "setText (4): A statement of this kind has no such part."},
    {">", edit(setName, ">", ""), "setName (4): A statement of this kind has no such part."},
    {"", [](KDXDocument& d) { d.set(readPath("/A:*"), "x", "1"); },
     "set (4): Every step needs a type and a name."},
    {"x=1", [](KDXDocument& d) { d.kind(Node::none); },
     "kind (4): The node is none of this document's."},
};

/// What is thrown, without the class name; what is refused changes nothing.
template <typename Exception>
void expectRefusals(const std::vector<RefusalRow>& rows) {
    for (const RefusalRow& row : rows) {
        KDXDocument document{std::string(row.text)};
        EXPECT_EQ(failureOf<Exception>([&] { row.edit(document); }),
                  std::string("KDXDocument::") + row.failure)
            << row.text;
        EXPECT_EQ(document.text(), row.text);
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

TEST(KDXDocument, rewritesAStatementAndNothingElse) {
    expectEdits(kValues);
}
TEST(KDXDocument, laysOutWhatIsAddedLikeItsNeighbours) {
    expectEdits(kAdditions);
}
TEST(KDXDocument, takesCommentsAlong) {
    expectEdits(kMoves);
}
TEST(KDXDocument, setsWhatReadersSee) {
    expectEdits(kPaths);
}
TEST(KDXDocument, refusesWhatKdxCannotCarry) {
    expectRefusals<kiv::data::invalid>(kRefusedData);
}
TEST(KDXDocument, refusesCallsThatMakeNoSense) {
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
}

TEST(KDXDocument, tellsWhatWasChangedInRuns) {
    KDXDocument document("\xEF\xBB\xBFx=1\ny=2\nz=3\nw=4\n");
    document.setValue(at(document, "x"), "5");
    document.addParameter(KDXDocument::behind(at(document, "x")), "v", "6");
    document.remove(at(document, "w"));
    EXPECT_EQ(textOf(document.textEdits()), "3+4 [x=5\nv=6\n]\n15+4 []\n");
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
    EXPECT_TRUE(document.isComment(document.firstChild(object)));
    EXPECT_EQ(document.depth(document.firstChild(object)), 1U);
    EXPECT_EQ(document.depth(document.endOf(object)), 0U);
    EXPECT_EQ(document.endOf(at(document, "B")), Node::none);
    EXPECT_EQ(document.endOf(document.root()), Node::none);
    EXPECT_EQ(document.depth(document.nextSibling(object)), 0U);
    EXPECT_EQ(document.previousSibling(object), Node::none);
    EXPECT_EQ(document.lineText(at(document, "go")), "> go");
    const kiv::KDXPlace place = document.placeOf(at(document, "x"), kiv::KDXReader::Part::second);
    EXPECT_EQ(std::to_string(place.offset) + ' ' + std::to_string(place.line) + ':' +
                  std::to_string(place.column),
              "17 3:7");
    EXPECT_EQ(document.nodeAt(17), at(document, "x"));
    EXPECT_EQ(document.nodeAt(1000), Node::none);
}

TEST(KDXDocument, isReadLikeItsText) {
    const std::string deep(300, ' ');
    KDXDocument document("A  b:  n  m\n" + deep +
                         "x=1\nq = a\\\n b\n\tno KDX\nEND # c\nz =2 # d\ny= 2");
    document.setValue(at(document, "z"), "3");
    const std::string text = document.text();
    kiv::KDXReader expected(text);
    kiv::KDXDocumentReader reader(document);
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
