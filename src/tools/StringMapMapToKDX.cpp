#include <kiv/StringMapMapToKDX.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "external/PathText.h"

namespace kiv {
namespace {

using detail::PathComponent;
using detail::PathCursor;

constexpr std::string_view kReplaceMark = "&replace ";

/// Writes into storage that is large enough.
class Text {
public:
    explicit Text(char* begin) : position(begin) {}

    void append(std::string_view piece) {
        if (!piece.empty()) std::memcpy(position, piece.data(), piece.size());
        position += piece.size();
    }
    void append(std::size_t count, char c) {
        std::memset(position, c, count);
        position += count;
    }

private:
    char* position;
};

/// What stands in for a Text to learn how much storage it needs.
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
          indentWidth(static_cast<std::size_t>(format.indentWidth)),
          objectSeparator(format.spaceSeparators ? ": " : ":"),
          parameterSeparator(format.spaceSeparators ? " = " : "="),
          commentEnds(format.commentEnds),
          markPending(!pathToMark.empty()) {}

    void write(const StringMapMap::value_type& object) {
        const std::string_view path = object.first;
        std::size_t depth = sharedDepth(path);
        PathCursor cursor(path, depth == 0 ? 0 : open[depth - 1].end);
        // Components may be the same without being written alike: "/A" and "/A:A".
        PathCursor behind = cursor;
        while (depth < open.size() && !cursor.atEnd() && cursor.next() == open[depth].component) {
            open[depth++].end = cursor.position();
            behind = cursor;
        }
        previousPath = path;
        const bool samePath = behind.atEnd() && depth == open.size();
        if (samePath && depth != 0) return;

        closeDownTo(depth);
        if (markPending) startOpenPath();
        while (!behind.atEnd()) {
            const PathComponent component = behind.next();
            openObject(component);
            open.push_back({component, behind.position()});
        }
        for (const auto& [name, value] : object.second) writeParameter(name, value);
    }

    void closeDownTo(std::size_t depth) {
        while (open.size() > depth) {
            const PathComponent object = open.back().component;
            open.pop_back();
            writeEnd(object);
        }
    }

private:
    struct OpenObject {
        PathComponent component;
        std::size_t end;  // of the component in the previous path
    };

    /// How many components the path begins with that the previous path has, too, letter by letter.
    std::size_t sharedDepth(std::string_view path) const {
        const std::size_t shared = detail::commonLength(previousPath, path);
        std::size_t depth = open.size();
        while (depth > 0 && !endsWithin(path, open[depth - 1].end, shared)) --depth;
        return depth;
    }

    static bool endsWithin(std::string_view path, std::size_t end, std::size_t shared) {
        return end <= shared && (end == path.size() || path[end] == '/');
    }

    void startOpenPath() {
        openPath.clear();
        for (const OpenObject& object : open)
            detail::appendComponent(openPath, object.component.type, object.component.name);
    }

    void openObject(const PathComponent& object) {
        writeMark(object);
        writeIndent();
        out.append(object.type);
        out.append(objectSeparator);
        writeNameUnlessType(object);
        out.append("\n");
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

    void writeIndent() { out.append(open.size() * indentWidth, ' '); }

    Output& out;
    const std::string& replacePath;
    std::size_t indentWidth;
    std::string_view objectSeparator;
    std::string_view parameterSeparator;
    bool commentEnds;
    bool markPending;
    std::string openPath;  // of the object to open, kept up while the mark is pending
    std::string_view previousPath;
    std::vector<OpenObject> open;
};

using Objects = std::vector<const StringMapMap::value_type*>;

bool comesBefore(const StringMapMap::value_type* left, const StringMapMap::value_type* right) {
    return detail::comparePaths(left->first, right->first) < 0;
}

/// Merges two neighbouring sorted runs. What already stands in its place is left alone.
void mergeRuns(Objects::iterator begin, Objects::iterator middle, Objects::iterator end) {
    begin = std::upper_bound(begin, middle, *middle, comesBefore);
    end = std::lower_bound(middle, end, *std::prev(middle), comesBefore);
    std::inplace_merge(begin, middle, end, comesBefore);
}

/// A stable merge sort that starts from the sorted runs it finds. Byte order is nearly path order:
/// few objects are out of place, and not by far, which std::stable_sort cannot make use of.
void sortByPath(Objects& objects) {
    std::vector<Objects::iterator> bounds = {objects.begin()};
    while (bounds.back() != objects.end())
        bounds.push_back(std::is_sorted_until(bounds.back(), objects.end(), comesBefore));
    while (bounds.size() > 2) {
        std::size_t kept = 1;
        for (std::size_t i = 2; i < bounds.size(); i += 2) {
            mergeRuns(bounds[i - 2], bounds[i - 1], bounds[i]);
            bounds[kept++] = bounds[i];
        }
        if (bounds.size() % 2 == 0) bounds[kept++] = bounds.back();
        bounds.resize(kept);
    }
}

template <typename Output>
void writeAll(const Objects& objects, Output& out, const std::string& replacePath,
              const StringMapMapToKDX::Format& format) {
    Writer<Output> writer(out, replacePath, format);
    for (const auto* object : objects) writer.write(*object);
    writer.closeDownTo(0);
}

/// Measures the text first, so that it is written in place, into storage of the right size.
void appendObjects(std::string& out, const std::string& replacePath, const Objects& objects,
                   const StringMapMapToKDX::Format& format) {
    Length length;
    writeAll(objects, length, replacePath, format);
    const std::size_t lengthBefore = out.size();
    out.resize(lengthBefore + length.bytes());
    Text text(out.data() + lengthBefore);
    writeAll(objects, text, replacePath, format);
}

/// With a negative width, all that can be written is what stands in front of the first object: the
/// parameters of the empty path.
void refuseIndentation(std::string& out, const Objects& objects,
                       const StringMapMapToKDX::Format& format) {
    if (objects.empty()) return;
    if (objects.front()->first.empty()) appendObjects(out, "", {objects.front()}, format);
    if (objects.back()->first.empty()) return;
    throw std::length_error("StringMapMapToKDX: the indentation width must not be negative");
}

void convertTo(std::string& out, const std::string& replacePath, const StringMapMap& map,
               const StringMapMapToKDX::Format& format) {
    Objects objects;
    objects.reserve(map.size());
    for (const auto& object : map) objects.push_back(&object);
    sortByPath(objects);
    if (format.indentWidth < 0) return refuseIndentation(out, objects, format);
    appendObjects(out, replacePath, objects, format);
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
