#include <kiv/StringMapMapToKDX.h>

#include <algorithm>
#include <array>
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

/// Appends to a string through a buffer, which takes half the time of appending every piece to the
/// string itself.
class Text {
public:
    explicit Text(std::string& target) : text(target) {}

    void append(std::string_view piece) {
        if (piece.size() > buffer.size() - used) return appendLarge(piece);
        std::memcpy(buffer.data() + used, piece.data(), piece.size());
        used += piece.size();
    }
    void appendBlanks(std::size_t count) {
        constexpr std::size_t usual = 16;
        if (count > usual) return appendManyBlanks(count);
        if (buffer.size() - used < usual) flush();
        std::memset(buffer.data() + used, ' ', usual);  // a fixed number: no call, no branch
        used += count;
    }
    void flush() {
        text.append(buffer.data(), used);
        used = 0;
    }

private:
    void appendLarge(std::string_view piece) {
        flush();
        text.append(piece);
    }
    void appendManyBlanks(std::size_t count) {
        flush();
        text.append(count, ' ');
    }

    std::string& text;
    std::size_t used = 0;
    std::array<char, 4096> buffer{};
};

/// What stands in for a Text to learn how much storage it needs.
class Length {
public:
    void append(std::string_view piece) { length += piece.size(); }
    void appendBlanks(std::size_t count) { length += count; }
    std::size_t bytes() const { return length; }

private:
    std::size_t length = 0;
};

/// Writes objects, which should come in path order: an object that others were put between is
/// opened twice.
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

    /// Writes an object whose path has so many bytes in common with the one before.
    void write(const StringMapMap::value_type& object, std::size_t shared) {
        const std::string_view path = object.first;
        std::size_t depth = sharedDepth(path, shared);
        std::size_t end = depth == 0 ? 0 : open[depth - 1].end;
        PathCursor cursor(path, end);
        PathComponent component;
        // Components may be the same without being written alike: "/A" and "/A:A".
        while (end != path.size()) {
            component = cursor.next();
            if (depth == open.size() || component != open[depth].component) break;
            end = open[depth++].end = cursor.position();
        }
        const bool samePath = end == path.size() && depth == open.size();
        if (samePath && depth != 0) return;

        closeDownTo(depth);
        if (markPending) startOpenPath();
        if (end != path.size()) openObject(component, cursor.position());
        while (!cursor.atEnd()) {
            component = cursor.next();
            openObject(component, cursor.position());
        }
        for (const auto& [name, value] : object.second) writeParameter(name, value);
    }

    void closeDownTo(std::size_t depth) {
        while (open.size() > depth) {
            const OpenObject object = open.back();
            open.pop_back();
            writeEnd(object);
        }
    }

private:
    struct OpenObject {
        PathComponent component;
        std::string_view shownName;  // empty where it is the type
        std::size_t end = 0;         // of the component in the previous path
    };

    /// How many components the path begins with that the previous path has, too, letter by letter.
    std::size_t sharedDepth(std::string_view path, std::size_t shared) const {
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

    void openObject(const PathComponent& object, std::size_t end) {
        const std::string_view shownName =
            object.name == object.type ? object.name.substr(0, 0) : object.name;
        writeMark(object);
        writeIndent();
        out.append(object.type);
        out.append(objectSeparator);
        out.append(shownName);
        out.append("\n");
        open.push_back({object, shownName, end});
    }

    void writeMark(const PathComponent& object) {
        if (!markPending) return;
        detail::appendComponent(openPath, object.type, object.name);
        if (openPath != replacePath) return;
        out.append(kReplaceMark);
        markPending = false;
    }

    void writeEnd(const OpenObject& object) {
        writeIndent();
        out.append("END");
        if (commentEnds) {
            out.append(" # ");
            out.append(object.component.type);
            out.append(":");
            out.append(object.shownName);
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

    void writeIndent() { out.appendBlanks(open.size() * indentWidth); }

    Output& out;
    const std::string& replacePath;
    std::size_t indentWidth;
    std::string_view objectSeparator;
    std::string_view parameterSeparator;
    bool commentEnds;
    bool markPending;
    std::string openPath;  // of the object to open, kept up while the mark is pending
    std::vector<OpenObject> open;
};

/// Objects to be written, and the bounds of the sorted runs in the list.
struct Objects {
    std::vector<const StringMapMap::value_type*> list;
    std::vector<std::size_t> runs;
};

bool comesBefore(const StringMapMap::value_type* left, const StringMapMap::value_type* right) {
    return detail::comparePaths(left->first, right->first) < 0;
}

/// The objects in the order of the map. On the way, which touches every parameter, they are
/// measured.
Objects collect(const StringMapMap& map, Writer<Length>& measure) {
    Objects objects{{}, {0}};
    objects.list.reserve(map.size());
    std::string_view previous;
    for (const auto& object : map) {
        const std::string_view path = object.first;
        const std::size_t shared = detail::commonLength(previous, path);
        if (detail::comparePaths(path, previous, shared) < 0)
            objects.runs.push_back(objects.list.size());
        objects.list.push_back(&object);
        measure.write(object, shared);
        previous = path;
    }
    measure.closeDownTo(0);
    objects.runs.push_back(objects.list.size());
    return objects;
}

/// Merges the sorted runs [begin, middle) and [middle, end). What already stands in its place is
/// left alone.
template <typename Iterator>
void mergeRuns(Iterator begin, Iterator middle, Iterator end) {
    begin = std::upper_bound(begin, middle, *middle, comesBefore);
    end = std::lower_bound(middle, end, *std::prev(middle), comesBefore);
    std::inplace_merge(begin, middle, end, comesBefore);
}

/// A stable merge sort of the runs. Byte order is nearly path order: few objects are out of place,
/// and not by far, which std::stable_sort cannot make use of.
void sortByPath(Objects& objects) {
    const auto at = [&objects](std::size_t index) {
        return objects.list.begin() + static_cast<std::ptrdiff_t>(index);
    };
    std::vector<std::size_t>& runs = objects.runs;
    while (runs.size() > 2) {
        std::size_t kept = 1;
        for (std::size_t i = 2; i < runs.size(); i += 2) {
            mergeRuns(at(runs[i - 2]), at(runs[i - 1]), at(runs[i]));
            runs[kept++] = runs[i];
        }
        if (runs.size() % 2 == 0) runs[kept++] = runs.back();
        runs.resize(kept);
    }
}

/// Appends the text of all objects of the map.
///
/// Storage for it is measured on the way through the map. That is of the right size where the map
/// is in path order, and else a little too large: an object that others were put between was
/// measured twice.
void appendObjects(std::string& out, const std::string& replacePath, const StringMapMap& map,
                   const StringMapMapToKDX::Format& format) {
    Length length;
    Writer<Length> measure(length, replacePath, format);
    Objects objects = collect(map, measure);
    sortByPath(objects);

    out.reserve(out.size() + length.bytes());
    Text text(out);
    Writer<Text> writer(text, replacePath, format);
    std::string_view previous;
    for (const auto* object : objects.list) {
        writer.write(*object, detail::commonLength(previous, object->first));
        previous = object->first;
    }
    writer.closeDownTo(0);
    text.flush();
}

/// With a negative width, all that can be written is what stands in front of the first object: the
/// parameters of the empty path.
void refuseIndentation(std::string& out, const StringMapMap& map,
                       const StringMapMapToKDX::Format& format) {
    StringMapMap withoutObject;
    const auto emptyPath = map.find("");
    if (emptyPath != map.end()) withoutObject.insert(*emptyPath);
    appendObjects(out, "", withoutObject, format);
    if (map.size() > withoutObject.size())
        throw std::length_error("StringMapMapToKDX: the indentation width must not be negative");
}

void convertTo(std::string& out, const std::string& replacePath, const StringMapMap& map,
               const StringMapMapToKDX::Format& format) {
    if (format.indentWidth < 0) return refuseIndentation(out, map, format);
    appendObjects(out, replacePath, map, format);
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
