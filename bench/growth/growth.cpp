// Runs one family of input at one size, for callgrind to count its instructions.
//
//   growth               lists the families, each with a size
//   growth FAMILY SIZE   runs one; prints the number of bytes that its cost should follow
#include <kiv/ActionBuilder.h>
#include <kiv/CleanKDXParamString.h>
#include <kiv/Error.h>
#include <kiv/ExtractActionOrStateFromKDX.h>
#include <kiv/KDXBuilder.h>
#include <kiv/KDXCheck.h>
#include <kiv/KDXDocument.h>
#include <kiv/KDXFormatting.h>
#include <kiv/KDXReader.h>
#include <kiv/KDXToStringMapMap.h>
#include <kiv/ObjectKDXParser.h>
#include <kiv/StringMapMapToKDX.h>

#include <functional>
#include <iostream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

using Lines = std::vector<std::string>;

namespace {

std::size_t bytes(const std::string& text) {
    return text.size();
}

std::size_t bytes(const Lines& lines) {
    std::size_t sum = 0;
    for (const std::string& line : lines) sum += line.size() + 1;
    return sum;
}

std::size_t bytes(const kiv::StringMapMap& map) {
    std::size_t sum = 0;
    for (const auto& [path, parameters] : map) {
        sum += path.size();
        for (const auto& [name, value] : parameters) sum += name.size() + value.size();
    }
    return sum;
}

std::string times(std::size_t count, const std::string& piece) {
    std::string text;
    for (; count > 0; --count) text += piece;
    return text;
}

Lines repeated(std::size_t count, const Lines& piece) {
    Lines lines;
    for (; count > 0; --count) lines.insert(lines.end(), piece.begin(), piece.end());
    return lines;
}

Lines together(Lines first, const Lines& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

Lines nested(std::size_t depth, const Lines& inside) {
    return together(together(repeated(depth, {"X: x"}), inside), repeated(depth, {"END"}));
}

/// `count` objects with names of one length each.
Lines objects(std::size_t count, const Lines& inside = {"v = 1"}) {
    Lines lines;
    for (; count > 0; --count) {
        lines.push_back("T: " + std::to_string(10000000 + count));
        lines.insert(lines.end(), inside.begin(), inside.end());
        lines.emplace_back("END");
    }
    return lines;
}

/// `count` parameters with names of one length each that begin with `start`.
Lines parameters(std::size_t count, const std::string& start) {
    Lines lines;
    for (; count > 0; --count) lines.push_back(start + std::to_string(10000000 + count) + " = v");
    return lines;
}

std::string joined(const Lines& lines) {
    std::string text;
    for (const std::string& line : lines) text.append(line).append("\n");
    return text;
}

/// What is measured; gives the number of bytes that its cost should be in proportion to.
using Call = std::function<std::size_t()>;

/// A text that is refused costs what it costs to find out.
Call parse(const Lines& lines) {
    auto parser = std::make_shared<kiv::MiniKDXParser>(lines);
    return [parser, size = bytes(lines)] {
        try {
            parser->parse();
        } catch (const kiv::data::invalid&) {
        }
        return size;
    };
}

kiv::StringMapMap converted(const std::string& text) {
    kiv::StringMapMap map;
    try {
        kiv::KDXToStringMapMap::convert(text, map);
    } catch (const kiv::data::invalid&) {
    }
    return map;
}

/// A text that ends without a line feed.
Call read(const Lines& lines) {
    return [text = joined(lines) + "x = 1"] {
        std::size_t seen = 0;
        for (kiv::KDXReader reader(text); reader.next();)
            seen += reader.placeOf(kiv::KDXReader::Part::second).line + reader.comment().size();
        return bytes(text) + (seen == 0 ? 1 : 0);
    };
}

Call check(const Lines& lines) {
    return [text = joined(lines)] {
        // So many problems take as long as their messages.
        return bytes(text) + 100 * kiv::KDXCheck::check(text).problems.size();
    };
}

using Node = kiv::KDXDocument::Node;

Call load(const Lines& lines) {
    return [text = joined(lines)] {
        const kiv::KDXDocument document(text);
        document.findParameters(kiv::readPath("/**/X:*/**"), "p");
        return document.text().size() + document.textEdits().size();
    };
}

/// Makes an edit at every statement of a text.
Call edit(const Lines& lines, const std::function<void(kiv::KDXDocument&, Node)>& change) {
    const std::string text = joined(lines);
    auto document = std::make_shared<kiv::KDXDocument>(text);
    std::vector<Node> nodes;
    for (Node n = document->next(document->root()); n != Node::none; n = document->next(n))
        if (document->kind(n) != kiv::MiniKDXParser::lineEnd) nodes.push_back(n);
    return [text, document, nodes, change] {
        for (const Node node : nodes) change(*document, node);
        return bytes(text) + document->textEdits().size();
    };
}

void setValue(kiv::KDXDocument& document, Node node) {
    document.setValue(node, "C:\\");
}
void setName(kiv::KDXDocument& document, Node node) {
    document.setName(node, "a name");
}
void addInside(kiv::KDXDocument& document, Node node) {
    document.addParameter(kiv::KDXDocument::firstIn(node), "p", "1");
}
void addBehind(kiv::KDXDocument& document, Node node) {
    document.addObject(kiv::KDXDocument::behind(node), "T", "t");
}
void moveToFront(kiv::KDXDocument& document, Node node) {
    document.move(node, kiv::KDXDocument::firstIn(document.parent(node)));
}
void removeNode(kiv::KDXDocument& document, Node node) {
    document.remove(node);
}
void setComment(kiv::KDXDocument& document, Node node) {
    document.setComment(node, "a comment");
}

Call addText(const Lines& lines) {
    return [text = joined(lines)] {
        kiv::KDXDocument document("A:\nEND\n");
        document.addText(kiv::KDXDocument::firstIn(document.firstChild(document.root())), text);
        return bytes(text) + document.text().size();
    };
}

/// Moves every statement at the top level into an object of another document.
Call moveFrom(const Lines& lines) {
    auto source = std::make_shared<kiv::KDXDocument>(joined(lines));
    return [source, size = bytes(lines)] {
        kiv::KDXDocument target("A:\nEND\n");
        const Node object = target.firstChild(target.root());
        for (Node n = source->firstChild(source->root()); n != Node::none;
             n = source->firstChild(source->root()))
            target.moveFrom(*source, n, kiv::KDXDocument::lastIn(object));
        return size + target.text().size();
    };
}

Call applyEdits(std::size_t count) {
    std::vector<kiv::KDXTextEdit> edits;
    for (std::size_t i = 0; i < count; ++i) edits.push_back({2 * i, 1, "new"});
    return [text = times(count, "a\n"), edits = std::move(edits)] {
        return bytes(text) + kiv::applyEdits(text, edits).size();
    };
}

Call convert(const Lines& lines) {
    return [text = joined(lines)] { return bytes(text) + bytes(converted(text)); };
}

/// Writes the map that the lines make.
Call write(const Lines& lines) {
    return [map = converted(joined(lines))] {
        std::string text;
        kiv::StringMapMapToKDX::convert(map, text);
        return bytes(map) + bytes(text);
    };
}

Call layOut(const Lines& lines, const kiv::KDXFormatting::Style& style) {
    return [text = joined(lines), style] {
        try {
            return bytes(text) + kiv::KDXFormatting::formatKDX(text, style).size();
        } catch (const kiv::data::invalid&) {
            return bytes(text);
        }
    };
}

Call format(const Lines& lines) {
    return layOut(lines, {});
}

Call formatWithEndComments(const Lines& lines) {
    kiv::KDXFormatting::Style style;
    style.endComments = kiv::KDXFormatting::Style::EndComments::added;
    return layOut(lines, style);
}

Call indent(Lines lines) {
    return [lines = std::move(lines)] {
        return bytes(lines) + bytes(kiv::KDXFormatting::indentKDX(lines));
    };
}

Call removeComment(std::string line) {
    return [line = std::move(line)] {
        return bytes(line) + bytes(kiv::KDXFormatting::removeComment(line));
    };
}

Call extract(std::string text) {
    return [text = std::move(text)] {
        kiv::ExtractActionOrStateFromKDX::extractActionOrStateFromKDX(text);
        return bytes(text);
    };
}

Call clean(std::string value) {
    return [value = std::move(value)] {
        return bytes(value) + bytes(kiv::CleanKDXParamString(value).str());
    };
}

Call addParam(std::string value) {
    return [value = std::move(value)] {
        kiv::ActionBuilder action("act");
        action.addParam("p", value);
        return bytes(action.getKDX());
    };
}

Call addParams(std::size_t count) {
    return [count] {
        kiv::ActionBuilder action("act");
        for (std::size_t i = 0; i < count; ++i) action.addParam("p", "v");
        return bytes(action.getKDX());
    };
}

Call pushObjects(std::size_t count) {
    return [count] {
        kiv::KDXBuilder builder;
        for (std::size_t i = 0; i < count; ++i) builder.pushObject("T", "n");
        builder.popAll();
        return bytes(builder.getKDX());
    };
}

Call search(const Lines& lines, const std::function<void(kiv::ObjectKDXParser&)>& run) {
    auto parser = std::make_shared<kiv::ObjectKDXParser>(lines);
    return [parser, run] {
        run(*parser);
        return bytes(parser->getCommands());
    };
}

Call findType(const Lines& lines, int depthLimit, const std::string& group) {
    return search(lines, [depthLimit, group](kiv::ObjectKDXParser& parser) {
        parser.parseForObjectsByType("T", depthLimit, group);
    });
}

Call findName(const Lines& lines, const std::string& name, int depthLimit) {
    return search(lines, [name, depthLimit](kiv::ObjectKDXParser& parser) {
        parser.parseForObject(name, depthLimit);
    });
}

constexpr std::size_t kMebi = 1 << 20;

struct Family {
    std::string name;
    std::size_t size;  // of the smaller one of the two inputs that are compared
    std::function<Call(std::size_t)> make;
};

struct Text {
    const char* name;
    std::size_t size;
    Lines (*make)(std::size_t);
};

/// Texts that make a map. Few levels where keys and blanks grow with the square of the depth.
const std::vector<Text> kDocuments = {
    {"nested", 4000, [](auto n) { return repeated(n, {"X: x"}); }},
    {"nested-and-ended", 4000, [](auto n) { return nested(n, {}); }},
    {"alternating-depth", 10000, [](auto n) { return repeated(n, nested(100, {})); }},
    {"empty-objects", 1000000, [](auto n) { return objects(n, {}); }},
    {"equal-objects", 1000000,
     [](auto n) {
         return repeated(n, {"T: t", "END"});
     }},
    {"long-common-paths", 10000, [](auto n) { return nested(250, objects(n)); }},
    {"parameters", 1000000, [](auto n) { return nested(1, parameters(n, "p")); }},
    {"equal-parameters", 1000000, [](auto n) { return nested(1, repeated(n, {"p = v"})); }},
    {"long-common-names", 10000, [](auto n) { return nested(1, parameters(n, times(1000, "p"))); }},
    {"continued-value", 1000000,
     [](auto n) { return nested(1, together({"a = \\"}, repeated(n, {"b\\"}))); }},
    {"open-kind", 1000000,
     [](auto n) { return nested(1, together(repeated(n, {"a\\"}), {"= 1"})); }},
    {"long-line", 32 * kMebi, [](auto n) { return nested(1, {"a = " + times(n, "a")}); }},
};

/// Texts that make none, or are refused.
const std::vector<Text> kOddTexts = {
    {"open-kind-blanks", 1000000, [](auto n) { return repeated(n, {"a  \\"}); }},
    {"long-action", 16 * kMebi, [](auto n) { return Lines{">a p=" + times(n, ",")}; }},
    {"blanks", 16 * kMebi, [](auto n) { return Lines{times(n, " ")}; }},
    {"blank-lines", 1000000, [](auto n) { return repeated(n, {" "}); }},
    {"backslashes", 16 * kMebi, [](auto n) { return Lines{times(n, "\\")}; }},
    {"backslash-lines", 1000000, [](auto n) { return repeated(n, {"\\"}); }},
    {"hashes", 16 * kMebi, [](auto n) { return Lines{times(n, "#")}; }},
    {"hash-lines", 1000000, [](auto n) { return repeated(n, {"#"}); }},
    {"commas", 16 * kMebi, [](auto n) { return Lines{times(n, ",")}; }},
};

/// Texts whose map would be too long.
const std::vector<Text> kDeepTexts = {
    {"deep", 50000, [](auto n) { return repeated(n, {"X: x"}); }},
    {"deep-and-ended", 50000, [](auto n) { return nested(n, {"p = v"}); }},
};

/// Families of calls that have inputs of their own.
const std::vector<Family> kFamilies = {
    {"parse-unopened-ends", 1000000, [](auto n) { return parse(repeated(n, {"END"})); }},
    // documents
    {"edit-values", 500000, [](auto n) { return edit(parameters(n, "p"), setValue); }},
    {"edit-long-value", 8 * kMebi,
     [](auto n) { return edit({"p = " + times(n, "\\ a")}, setValue); }},
    {"edit-continued-value", 100000,
     [](auto n) { return edit(together({"p = \\"}, repeated(n, {"b\\"})), setValue); }},
    {"edit-names-nested", 50000, [](auto n) { return edit(nested(n, {}), setName); }},
    {"edit-add-inside-nested", 2000, [](auto n) { return edit(nested(n, {}), addInside); }},
    {"edit-add-inside-unclosed", 2000,
     [](auto n) { return edit(repeated(n, {"X: x"}), addInside); }},
    {"edit-add-behind", 100000, [](auto n) { return edit(parameters(n, "p"), addBehind); }},
    {"edit-move", 100000, [](auto n) { return edit(parameters(n, "p"), moveToFront); }},
    {"edit-move-commented", 100000,
     [](auto n) {
         return edit(together(repeated(n, {"# c"}), {"x=1", "y=1"}), [](auto& document, Node node) {
             if (!document.isComment(node)) moveToFront(document, node);
         });
     }},
    {"edit-remove", 500000, [](auto n) { return edit(parameters(n, "p"), removeNode); }},
    {"edit-comments", 500000, [](auto n) { return edit(parameters(n, "p"), setComment); }},
    {"edit-add-text", 500000, [](auto n) { return addText(parameters(n, "p")); }},
    {"edit-add-nested-text", 4000, [](auto n) { return addText(nested(n, {})); }},
    {"edit-move-from", 100000, [](auto n) { return moveFrom(parameters(n, "p")); }},
    {"edit-apply", 500000, [](auto n) { return applyEdits(n); }},
    // layout
    {"format-end-comments", 1000000, [](auto n) { return formatWithEndComments(objects(n)); }},
    {"format-end-comments-deep", 50000,
     [](auto n) { return formatWithEndComments(nested(n, {})); }},
    // indentation
    {"indent-open-kind", 100000, [](auto n) { return indent(repeated(n, {"a\\"})); }},
    {"indent-open-kind-spaced", 100000, [](auto n) { return indent(repeated(n, {" a b \\"})); }},
    {"indent-open-kind-tabs", 100000,
     [](auto n) { return indent(together({"a" + times(n, "\t") + "\\"}, repeated(n, {"\\"}))); }},
    {"indent-open-end-tabs", 100000,
     [](auto n) { return indent(together({"END" + times(n, "\t") + "\\"}, repeated(n, {"\\"}))); }},
    {"indent-backslashes-and-empty-lines", 100000,
     [](auto n) { return indent(together({"a" + times(n, "\\")}, repeated(n, {""}))); }},
    {"indent-known-kind", 100000,
     [](auto n) { return indent(together({"a = \\"}, repeated(n, {"b\\"}))); }},
    {"indent-nested-objects", 8000, [](auto n) { return indent(nested(n, {})); }},
    {"indent-long-line", 16 * kMebi, [](auto n) { return indent({times(n, "a")}); }},
    {"indent-long-comment", 16 * kMebi, [](auto n) { return indent({"a = 1 #" + times(n, "#")}); }},
    {"indent-blanks", 16 * kMebi, [](auto n) { return indent({times(n, " ") + "x=1"}); }},
    {"indent-backslashes", 16 * kMebi, [](auto n) { return indent({times(n, "\\")}); }},
    {"remove-comment", 16 * kMebi, [](auto n) { return removeComment(times(n, "a") + " # c"); }},
    {"remove-long-comment", 16 * kMebi,
     [](auto n) { return removeComment("a #" + times(n, " ")); }},
    // searches
    {"find-name", 50000,
     [](auto n) {
         return findName(repeated(n, {"T: t", "END"}), "t", -1);
     }},
    {"find-name-nested", 50000, [](auto n) { return findName(nested(n, {}), "x", -1); }},
    {"find-name-beyond-limit", 50000, [](auto n) { return findName(nested(n, {}), "x", 1); }},
    {"find-type", 50000, [](auto n) { return findType(objects(n), -1, ""); }},
    {"find-type-missing-group", 50000,
     [](auto n) { return findType(nested(n, objects(n)), -1, "G"); }},
    {"find-type-distant-group", 50000,
     [](auto n) { return findType(together({"G: g"}, nested(n, objects(n))), -1, "G"); }},
    {"find-type-many-groups", 50000,
     [](auto n) { return findType(nested(n, objects(n)), -1, "X"); }},
    // extraction
    {"extract-alternating", 200000, [](auto n) { return extract(times(n, ">a\nx=1\n")); }},
    {"extract-one-run", 200000, [](auto n) { return extract(times(n, "  x=1 # c\n")); }},
    {"extract-continued", 200000, [](auto n) { return extract(times(n, "  a\\\n")); }},
    {"extract-backslashes", 16 * kMebi, [](auto n) { return extract(times(n, "\\")); }},
    // writers
    {"clean-backslashes", 16 * kMebi, [](auto n) { return clean(times(n, "\\")); }},
    {"action-commas", 1000000, [](auto n) { return addParam(times(n, ",")); }},
    {"action-parameters", 100000, [](auto n) { return addParams(n); }},
    {"build-nested-objects", 8000, [](auto n) { return pushObjects(n); }},
};

void cross(std::vector<Family>& families, const std::string& start, Call (*call)(const Lines&),
           const std::vector<Text>& texts) {
    for (const auto& [name, size, make] : texts)
        families.push_back({start + name, size,
                            [call, make = make](std::size_t count) { return call(make(count)); }});
}

const std::vector<std::pair<const char*, Call (*)(const Lines&)>> kTextCalls = {
    {"parse-", parse}, {"read-", read}, {"check-", check}, {"load-", load}, {"format-", format},
};

std::vector<Family> allFamilies() {
    std::vector<Family> families;
    for (const auto& [start, call] : kTextCalls)
        for (const auto* texts : {&kDocuments, &kOddTexts, &kDeepTexts})
            cross(families, start, call, *texts);
    cross(families, "convert-", convert, kDocuments);
    cross(families, "convert-", convert, kOddTexts);
    cross(families, "write-", write, kDocuments);
    families.insert(families.end(), kFamilies.begin(), kFamilies.end());
    return families;
}

}  // namespace

/// Callgrind counts while this runs.
extern "C" __attribute__((noinline)) std::size_t measured(const void* call) {
    return (*static_cast<const Call*>(call))();
}

int main(int argc, char* argv[]) {
    for (const auto& [name, size, make] : allFamilies()) {
        if (argc != 3) {
            std::cout << name << ' ' << size << '\n';
        } else if (argv[1] == name) {
            const Call call = make(std::stoul(argv[2]));
            std::cout << measured(&call) << '\n';
            return 0;
        }
    }
    return argc == 3 ? 2 : 0;
}
