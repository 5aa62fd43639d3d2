#include <kiv/StringMapMapToKDX.h>

#include <algorithm>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "external/PathText.h"

namespace kiv {
namespace {

using detail::PathComponent;
using detail::PathCursor;

constexpr std::string_view kReplaceMark = "&replace ";

/// A string to append to.
class Text {
public:
    explicit Text(std::string& target) : text(target) {}
    void append(std::string_view piece) { text.append(piece); }
    void append(std::size_t count, char c) { text.append(count, c); }

private:
    std::string& text;
};

/// What stands in for a Text to learn how long it will be.
class Length {
public:
    void append(std::string_view piece) { length += piece.size(); }
    void append(std::size_t count, char /*c*/) { length += count; }
    std::size_t bytes() const { return length; }

private:
    std::size_t length = 0;
};

/// Writes objects, which must come in path order.
template <typename Output>
class Writer {
public:
    Writer(Output& output, const std::string& pathToMark, const StringMapMapToKDX::Format& format)
        : out(output),
          replacePath(pathToMark),
          indentWidth(format.indentWidth),
          objectSeparator(format.spaceSeparators ? ": " : ":"),
          parameterSeparator(format.spaceSeparators ? " = " : "="),
          commentEnds(format.commentEnds),
          markPending(!pathToMark.empty()) {}

    void write(const StringMapMap::value_type& object) {
        std::size_t depth = 0;
        PathCursor cursor(object.first);
        PathCursor fromHere = cursor;
        while (depth < open.size() && !cursor.atEnd() && cursor.next() == open[depth]) {
            fromHere = cursor;
            ++depth;
        }
        const bool samePath = fromHere.atEnd() && depth == open.size();
        if (samePath && depth != 0) return;

        closeDownTo(depth);
        if (markPending) startOpenPath();
        while (!fromHere.atEnd()) openObject(fromHere.next());
        for (const auto& [name, value] : object.second) writeParameter(name, value);
    }

    void closeDownTo(std::size_t depth) {
        while (open.size() > depth) {
            const PathComponent object = open.back();
            open.pop_back();
            writeEnd(object);
        }
    }

private:
    void startOpenPath() {
        openPath.clear();
        for (const PathComponent& object : open)
            detail::appendComponent(openPath, object.type, object.name);
    }

    void openObject(const PathComponent& object) {
        if (indentWidth < 0) throw std::length_error("StringMapMapToKDX: negative indentWidth");
        writeMark(object);
        writeIndent();
        out.append(object.type);
        out.append(objectSeparator);
        writeNameUnlessType(object);
        out.append("\n");
        open.push_back(object);
    }

    void writeMark(const PathComponent& object) {
        if (!markPending) return;
        detail::appendComponent(openPath, object.type, object.name);
        if (openPath != replacePath) return;
        out.append(kReplaceMark);
        markPending = false;
    }

    void writeEnd(const PathComponent& object) {
        writeIndent();
        out.append("END");
        if (commentEnds) {
            out.append(" # ");
            out.append(object.type);
            out.append(":");
            writeNameUnlessType(object);
        }
        out.append("\n");
    }

    void writeParameter(std::string_view name, std::string_view value) {
        writeIndent();
        out.append(name);
        out.append(parameterSeparator);
        out.append(value);
        out.append("\n");
    }

    void writeNameUnlessType(const PathComponent& object) {
        if (object.name != object.type) out.append(object.name);
    }

    void writeIndent() { out.append(open.size() * static_cast<std::size_t>(indentWidth), ' '); }

    Output& out;
    const std::string& replacePath;
    std::int32_t indentWidth;
    std::string_view objectSeparator;
    std::string_view parameterSeparator;
    bool commentEnds;
    bool markPending;
    std::string openPath;  // of the object to open, kept up while the mark is pending
    std::vector<PathComponent> open;
};

bool comesBefore(std::string_view left, std::string_view right) {
    PathCursor leftCursor(left);
    PathCursor rightCursor(right);
    while (!leftCursor.atEnd() && !rightCursor.atEnd()) {
        const int order = detail::compare(leftCursor.next(), rightCursor.next());
        if (order != 0) return order < 0;
    }
    return leftCursor.atEnd() && !rightCursor.atEnd();
}

using Objects = std::vector<const StringMapMap::value_type*>;

/// The objects of the map in path order, equivalent paths in the order of the map.
Objects objectsInPathOrder(const StringMapMap& map) {
    Objects objects;
    objects.reserve(map.size());
    for (const auto& object : map) objects.push_back(&object);
    const auto inOrder = [](const auto* left, const auto* right) {
        return comesBefore(left->first, right->first);
    };
    if (!std::is_sorted(objects.begin(), objects.end(), inOrder))
        std::stable_sort(objects.begin(), objects.end(), inOrder);
    return objects;
}

template <typename Output>
void writeAll(const Objects& objects, Output& out, const std::string& replacePath,
              const StringMapMapToKDX::Format& format) {
    Writer<Output> writer(out, replacePath, format);
    for (const auto* object : objects) writer.write(*object);
    writer.closeDownTo(0);
}

void convertTo(std::string& out, const std::string& replacePath, const StringMapMap& map,
               const StringMapMapToKDX::Format& format) {
    const Objects objects = objectsInPathOrder(map);
    if (format.indentWidth >= 0) {
        Length length;
        writeAll(objects, length, replacePath, format);
        out.reserve(out.size() + length.bytes());
    }
    Text text(out);
    writeAll(objects, text, replacePath, format);
}

}  // namespace

StringMapMapToKDX::Format::Format() = default;
StringMapMapToKDX::Format::Format(std::int32_t width, bool spaces, bool comments)
    : indentWidth(width), spaceSeparators(spaces), commentEnds(comments) {}

StringMapMapToKDX::StringMapMapToKDX(const std::string& replacePath, const StringMapMap& map,
                                     std::string& out, const Format& format) {
    convertTo(out, replacePath, map, format);
}
StringMapMapToKDX::StringMapMapToKDX(const StringMapMap& map, std::string& out,
                                     const Format& format) {
    convertTo(out, "", map, format);
}

void StringMapMapToKDX::convert(const std::string& replacePath, const StringMapMap& map,
                                std::string& out, const Format& format) {
    convertTo(out, replacePath, map, format);
}

void StringMapMapToKDX::convert(const StringMapMap& map, std::string& out, const Format& format) {
    convertTo(out, "", map, format);
}

}  // namespace kiv
