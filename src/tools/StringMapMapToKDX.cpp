#include <kiv/StringMapMapToKDX.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "base/ObjectName.h"
#include "base/PathText.h"

namespace kiv {
namespace {

using detail::PathComponent;
using detail::PathCursor;

constexpr std::string_view kReplaceMark = "&replace ";

/// A text of at most four bytes, which are copied as one machine word: a third of the instructions
/// that a text of any length takes.
class ShortText {
public:
    constexpr ShortText(std::string_view text) : length(text.size()) {
        for (std::size_t i = 0; i < length; ++i) bytes[i] = text[i];
    }

    std::size_t size() const { return length; }
    static constexpr std::size_t copiedSize() { return sizeof bytes; }
    void copyTo(char* target) const { std::memcpy(target, bytes.data(), sizeof bytes); }

private:
    std::size_t length;
    std::array<char, 4> bytes{};
};

constexpr ShortText kLineEnd("\n");
constexpr ShortText kEnd("END");
constexpr ShortText kComment(" # ");
constexpr ShortText kNameMark(":");

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
    void append(const ShortText& piece) {
        if (buffer.size() - used < ShortText::copiedSize()) flush();
        piece.copyTo(buffer.data() + used);
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
    template <typename Piece>
    void append(const Piece& piece) {
        length += piece.size();
    }
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
            indentation -= indentWidth;
            writeEnd(open.back());
            open.pop_back();
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
            detail::putComponent(openPath, openPath.size(), object.component.type,
                                 object.component.name);
    }

    void openObject(const PathComponent& object, std::size_t end) {
        const std::string_view shownName = detail::writtenName(object.type, object.name);
        writeMark(object);
        out.appendBlanks(indentation);
        out.append(object.type);
        out.append(objectSeparator);
        out.append(shownName);
        out.append(kLineEnd);
        open.push_back({object, shownName, end});
        indentation += indentWidth;
    }

    void writeMark(const PathComponent& object) {
        if (!markPending) return;
        detail::putComponent(openPath, openPath.size(), object.type, object.name);
        if (openPath != replacePath) return;
        out.append(kReplaceMark);
        markPending = false;
    }

    void writeEnd(const OpenObject& object) {
        out.appendBlanks(indentation);
        out.append(kEnd);
        if (commentEnds) {
            out.append(kComment);
            out.append(object.component.type);
            out.append(kNameMark);
            out.append(object.shownName);
        }
        out.append(kLineEnd);
    }

    void writeParameter(std::string_view name, std::string_view value) {
        out.appendBlanks(indentation);
        out.append(name);
        out.append(parameterSeparator);
        out.append(value);
        out.append(kLineEnd);
    }

    Output& out;
    const std::string& replacePath;
    std::size_t indentWidth;
    std::size_t indentation = 0;
    ShortText objectSeparator;
    ShortText parameterSeparator;
    bool commentEnds;
    bool markPending;
    std::string openPath;  // of the object to open, kept up while the mark is pending
    std::vector<OpenObject> open;
};

/// An object to be written.
struct Entry {
    const StringMapMap::value_type* object;
    const StringMapMap::value_type* previous;  // in the map
    std::size_t shared;                        // by the paths of the two

    /// How many bytes the path has in common with that of the object written before.
    std::size_t sharedWith(const StringMapMap::value_type* writtenBefore) const {
        if (writtenBefore == previous) return shared;
        if (writtenBefore == nullptr) return 0;
        return detail::commonLength(writtenBefore->first, object->first);
    }
};

/// Objects to be written, and the bounds of the sorted runs in the list.
struct Objects {
    std::vector<Entry> list;
    std::vector<std::size_t> runs;
};

bool comesBefore(const Entry& left, const Entry& right) {
    return detail::comparePaths(left.object->first, right.object->first) < 0;
}

/// The objects in the order of the map. On the way, which touches every parameter, they are
/// measured.
Objects collect(const StringMapMap& map, Writer<Length>& measure) {
    Objects objects{{}, {0}};
    objects.list.reserve(map.size());
    const StringMapMap::value_type* previous = nullptr;
    for (const auto& object : map) {
        const std::string_view path = object.first;
        const std::string_view pathBefore =
            previous == nullptr ? "" : std::string_view(previous->first);
        const std::size_t shared = detail::commonLength(pathBefore, path);
        if (detail::comparePaths(path, pathBefore, shared) < 0)
            objects.runs.push_back(objects.list.size());
        objects.list.push_back({&object, previous, shared});
        measure.write(object, shared);
        previous = &object;
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
    const StringMapMap::value_type* previous = nullptr;
    for (const Entry& entry : objects.list) {
        writer.write(*entry.object, entry.sharedWith(previous));
        previous = entry.object;
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
