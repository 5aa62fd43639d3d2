#include <kiv/StringMapMapToKDX.h>

#include <algorithm>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "base/ObjectName.h"
#include "base/PathText.h"

// An object is written as a line "TYPE: NAME", lines "NAME = VALUE" for its parameters, the objects
// inside it, and a line "END # TYPE:NAME". NAME is left out where it is TYPE. The blanks at
// separators, and the comment, may be left out.

namespace kiv {
namespace {

using detail::PathComponent;
using Format = StringMapMapToKDX::Format;
using Object = StringMapMap::value_type;
using Objects = std::vector<const Object*>;
using Parameters = StringMapMap::mapped_type;

constexpr std::string_view kReplaceMark = "&replace ";
constexpr const char* kNegativeWidth =
    "StringMapMapToKDX: the indentation width must not be negative";

// Of an object, besides type and name: the line feeds, the separators, "END" and " # ".
constexpr std::size_t kRoomForEnds = 11;

std::size_t lengthOf(const Parameters::value_type& parameter) {
    return parameter.first.size() + parameter.second.size();
}

/// Writes objects, which come in path order.
class Writer {
public:
    Writer(std::string& text, const std::string& pathToMark, const Format& layout)
        : out(text),
          replacePath(pathToMark),
          format(layout),
          indentWidth(static_cast<std::size_t>(std::max(layout.indentWidth, 0))),
          gap(layout.spaceSeparators ? 1 : 0),
          markPending(!pathToMark.empty()) {}

    /// How long the text of an object is, without the objects inside it; a few bytes more at most.
    std::size_t roomFor(const Object& object) const {
        const std::string_view path = object.first;
        std::size_t component = 0;
        std::size_t around = 0;
        std::size_t inside = 0;
        for (std::size_t slash = path.find('/'); slash != std::string_view::npos;
             slash = path.find('/', component)) {
            component = slash + 1;
            around = inside;
            inside += indentWidth;
        }
        return 2 * (around + path.size() - component) + kRoomForEnds +
               roomFor(object.second, inside);
    }

    void write(const Object& object) {
        const std::string_view path = object.first;
        std::size_t depth = sharedDepth(path);
        detail::PathCursor cursor(path, depth == 0 ? 0 : open[depth - 1].end);
        previousPath = path;
        bool isNew = open.empty();
        while (!cursor.atEnd()) {
            const PathComponent component = cursor.next();
            // Components may be the same without being written alike: "/A" and "/A:A".
            if (depth < open.size() && component == open[depth].component) {
                open[depth++].end = cursor.position();
                continue;
            }
            closeDownTo(depth++);
            openObject(component, cursor.position());
            isNew = true;
        }
        if (isNew) writeParameters(object.second);
    }

    void closeDownTo(std::size_t depth) {
        for (; open.size() > depth; open.pop_back()) writeEnd(open.back().component);
    }

private:
    struct OpenObject {
        PathComponent component;
        std::size_t end;         // of the component in the previous path
        std::size_t pathLength;  // in `openPath`
    };

    // Going on to the next parameter means to wait for memory: from both ends at once, two of these
    // waits overlap.
    std::size_t roomFor(const Parameters& parameters, std::size_t indentation) const {
        std::size_t room = parameters.size() * (indentation + 2 * gap + 2);
        auto front = parameters.begin();
        auto back = parameters.rbegin();
        if (parameters.size() % 2 != 0) room += lengthOf(*front++);
        for (std::size_t pairs = parameters.size() / 2; pairs > 0; --pairs)
            room += lengthOf(*front++) + lengthOf(*back++);
        return room;
    }

    /// How many components the path begins with that the previous path has, too, letter by letter.
    std::size_t sharedDepth(std::string_view path) const {
        const std::size_t shared = detail::commonLength(previousPath, path);
        const auto isShared = [path, shared](const OpenObject& object) {
            return object.end <= shared && (object.end == path.size() || path[object.end] == '/');
        };
        std::size_t depth = open.size();
        while (depth > 0 && !isShared(open[depth - 1])) --depth;
        return depth;
    }

    void openObject(const PathComponent& object, std::size_t end) {
        if (format.indentWidth < 0) throw std::length_error(kNegativeWidth);
        writeMark(object);
        const std::string_view name = detail::writtenName(object.type, object.name);
        const std::size_t length = object.type.size() + 1 + gap + name.size();
        char* const at = put(appendLine(indentation(), length), object.type);
        *at = ':';
        put(at + 1 + gap, name);
        open.push_back({object, end, openPath.size()});
    }

    void writeMark(const PathComponent& object) {
        if (!markPending) return;
        const std::size_t around = open.empty() ? 0 : open.back().pathLength;
        detail::putComponent(openPath, around, object.type, object.name);
        if (openPath != replacePath) return;
        out.append(kReplaceMark);
        markPending = false;
    }

    void writeEnd(const PathComponent& object) {
        const std::string_view name = detail::writtenName(object.type, object.name);
        const std::size_t comment = format.commentEnds ? 4 + object.type.size() + name.size() : 0;
        char* at = put(appendLine(indentation() - indentWidth, 3 + comment), "END");
        if (!format.commentEnds) return;
        at = put(put(at, " # "), object.type);
        *at = ':';
        put(at + 1, name);
    }

    void writeParameters(const Parameters& parameters) {
        const std::size_t blanks = indentation();
        char* at = append(roomFor(parameters, blanks));
        for (const auto& [name, value] : parameters) {
            at = put(at + blanks, name) + gap;
            *at = '=';
            at = put(at + 1 + gap, value);
            *at++ = '\n';
        }
    }

    std::size_t indentation() const { return open.size() * indentWidth; }

    /// Appends blanks to be written over, and a line feed. @return where to write.
    char* appendLine(std::size_t blanks, std::size_t length) {
        char* const at = append(blanks + length + 1) + blanks;
        at[length] = '\n';
        return at;
    }

    char* append(std::size_t length) {
        const std::size_t end = out.size();
        out.append(length, ' ');
        return out.data() + end;
    }

    /// @return where the piece ends.
    static char* put(char* at, std::string_view piece) { return at + piece.copy(at, piece.size()); }

    std::string& out;
    const std::string& replacePath;
    const Format& format;
    std::size_t indentWidth;
    std::size_t gap;  // blanks at a separator
    bool markPending;
    std::string openPath;  // of the object opened last, as long as the mark is pending
    std::string_view previousPath;
    std::vector<OpenObject> open;
};

bool comesBefore(const Object* left, const Object* right) {
    return detail::comparePaths(left->first, right->first) < 0;
}

/// Puts objects in path order among others, which are. Byte order is nearly path order, so that the
/// former are few.
void sortIn(Objects& sorted, Objects& others) {
    std::stable_sort(others.begin(), others.end(), comesBefore);
    Objects all;
    all.reserve(sorted.size() + others.size());
    auto from = sorted.begin();
    for (const Object* object : others) {
        const auto to = std::upper_bound(from, sorted.end(), object, comesBefore);
        all.insert(all.end(), from, to);
        all.push_back(object);
        from = to;
    }
    all.insert(all.end(), from, sorted.end());
    sorted.swap(all);
}

void convertTo(std::string& out, const std::string& replacePath, const StringMapMap& map,
               const Format& format) {
    Writer writer(out, replacePath, format);
    Objects objects;
    Objects late;  // behind one that they come before
    std::size_t room = 0;
    objects.reserve(map.size());
    for (const Object& object : map) {
        const bool isLate = !objects.empty() && comesBefore(&object, objects.back());
        (isLate ? late : objects).push_back(&object);
        room += writer.roomFor(object);
    }
    if (!late.empty()) sortIn(objects, late);

    out.reserve(out.size() + room);
    for (const Object* object : objects) writer.write(*object);
    writer.closeDownTo(0);
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
                                     const Format& format)
    : StringMapMapToKDX("", map, out, format) {}

void StringMapMapToKDX::convert(const std::string& replacePath, const StringMapMap& map,
                                std::string& out, const Format& format) {
    convertTo(out, replacePath, map, format);
}

void StringMapMapToKDX::convert(const StringMapMap& map, std::string& out, const Format& format) {
    convertTo(out, "", map, format);
}

}  // namespace kiv
