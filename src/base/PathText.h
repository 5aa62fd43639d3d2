#pragma once

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/MachineWord.h"
#include "base/ObjectName.h"

// Path text is a sequence of components, each "/", a type and optionally ":" and a name:
//
//     /Sample:s1/Filter
//
// Every "/" starts a component. The first ":" of a component ends its type. The first "/" may be
// missing.
namespace kiv::detail {

/// The type of one object, and the name that it goes by, as views of its path text.
struct PathComponent {
    std::string_view type;
    std::string_view name;
};

inline bool operator==(const PathComponent& a, const PathComponent& b) {
    return a.name == b.name && a.type == b.type;  // names tell siblings apart
}

/// Cuts path text into its components, from left to right.
class PathCursor {
public:
    /// Begins at `begin`, where a component starts or the text ends.
    explicit PathCursor(std::string_view pathText, std::size_t begin = 0)
        : text(pathText), end(begin) {}

    bool atEnd() const { return end == text.size(); }

    /// The end of the last component in the text.
    std::size_t position() const { return end; }

    /// The next component. There must be one.
    PathComponent next() {
        assert(!atEnd());
        const std::size_t begin = text[end] == '/' ? end + 1 : end;
        end = std::min(text.find('/', begin), text.size());
        const std::string_view component = text.substr(begin, end - begin);
        const std::size_t typeEnd = std::min(component.find(':'), component.size());
        const std::string_view type = component.substr(0, typeEnd);
        const std::string_view name = component.substr(std::min(typeEnd + 1, component.size()));
        return {type, nameOrType(type, name)};
    }

private:
    std::string_view text;
    std::size_t end;
};

/// How many bytes two texts have in common at their beginnings.
inline std::size_t commonLength(std::string_view a, std::string_view b) {
    const std::size_t limit = std::min(a.size(), b.size());
    std::size_t length = 0;
    for (; limit - length >= 8; length += 8) {
        const std::uint64_t differences = wordAt(a.data() + length) ^ wordAt(b.data() + length);
        if (differences != 0) return length + firstByteSet(differences);
    }
    while (length < limit && a[length] == b[length]) ++length;
    return length;
}

inline int compare(const PathComponent& left, const PathComponent& right) {
    const int order = left.type.compare(right.type);
    return order != 0 ? order : left.name.compare(right.name);
}

/// Orders paths by component, in each by type, then by name, byte-wise; a path comes before the
/// paths that begin with its components.
/// @param left, right cursors, as PathCursor is one, at the beginning of a component.
/// @return less than, equal to or greater than 0.
template <typename Cursor>
int compareComponents(Cursor left, Cursor right) {
    while (!left.atEnd() && !right.atEnd()) {
        const int order = compare(left.next(), right.next());
        if (order != 0) return order;
    }
    return static_cast<int>(right.atEnd()) - static_cast<int>(left.atEnd());
}

/// The same for path texts. `same` is their commonLength().
inline int comparePaths(std::string_view left, std::string_view right, std::size_t same) {
    const auto isInside = [same](std::string_view path) {
        return same < path.size() && path[same] != '/' && path[same] != ':';
    };
    // Two letters of a type or of a name decide, which saves cutting out the components.
    if (isInside(left) && isInside(right))
        return static_cast<unsigned char>(left[same]) - static_cast<unsigned char>(right[same]);
    // The components in front of the last "/" in common are the same.
    const std::size_t slash = left.substr(0, same).rfind('/');
    const std::size_t begin = slash == std::string_view::npos ? 0 : slash;
    return compareComponents(PathCursor(left, begin), PathCursor(right, begin));
}

inline int comparePaths(std::string_view left, std::string_view right) {
    return comparePaths(left, right, commonLength(left, right));
}

/// Puts the path text of one component, in the form that the keys of a map have, behind the first
/// `length` bytes, and cuts off what follows. The type and the name must not lie in `pathText`.
inline void putComponent(std::string& pathText, std::size_t length, std::string_view type,
                         std::string_view name) {
    const std::string_view written = writtenName(type, name);
    pathText.resize(length + 1 + type.size() + (written.empty() ? 0 : 1 + written.size()));
    char* end = pathText.data() + length;
    *end++ = '/';
    end += type.copy(end, type.size());
    if (written.empty()) return;
    *end++ = ':';
    written.copy(end, written.size());
}

}  // namespace kiv::detail
