#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/MachineWord.h"

// Path text is a sequence of components, each "/", a type and optionally ":" and a name:
//
//     /Sample:s1/Filter
//
// Every "/" starts a component. The first ":" of a component ends its type. Without a ":", or
// with nothing after it, the name is the type. The first "/" may be missing.
namespace kiv::detail {

/// The type and the name of one object, as views of its path text.
struct PathComponent {
    std::string_view type;
    std::string_view name;
};

inline bool operator==(const PathComponent& a, const PathComponent& b) {
    return a.name == b.name && a.type == b.type;  // names tell siblings apart
}
inline bool operator!=(const PathComponent& a, const PathComponent& b) {
    return !(a == b);
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
        const std::size_t begin = text[end] == '/' ? end + 1 : end;
        end = std::min(text.find('/', begin), text.size());
        const std::string_view component = text.substr(begin, end - begin);
        const std::size_t typeEnd = std::min(component.find(':'), component.size());
        const std::string_view type = component.substr(0, typeEnd);
        const std::string_view name = component.substr(std::min(typeEnd + 1, component.size()));
        return {type, name.empty() ? type : name};
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

/// comparePaths() for paths of which commonLength() does not tell the order.
int compareComponents(std::string_view left, std::string_view right, std::size_t same);

/// Orders path texts by component, in each by type, then by name, byte-wise; a path comes before
/// the paths that begin with its components. `same` is their commonLength().
/// @return less than, equal to or greater than 0.
inline int comparePaths(std::string_view left, std::string_view right, std::size_t same) {
    const auto isInside = [same](std::string_view path) {
        return same < path.size() && path[same] != '/' && path[same] != ':';
    };
    // Two letters of a type or of a name decide, which saves cutting out the components.
    if (isInside(left) && isInside(right))
        return static_cast<unsigned char>(left[same]) - static_cast<unsigned char>(right[same]);
    return compareComponents(left, right, same);
}

inline int comparePaths(std::string_view left, std::string_view right) {
    return comparePaths(left, right, commonLength(left, right));
}

/// Puts the path text of one component, in the form that the keys of a map have, behind the first
/// `length` bytes, and cuts off what follows. The type and the name must not lie in `pathText`.
inline void putComponent(std::string& pathText, std::size_t length, std::string_view type,
                         std::string_view name) {
    const bool named = !name.empty() && name != type;
    pathText.resize(length + 1 + type.size() + (named ? 1 + name.size() : 0));
    char* end = pathText.data() + length;
    *end++ = '/';
    end += type.copy(end, type.size());
    if (!named) return;
    *end++ = ':';
    name.copy(end, name.size());
}

}  // namespace kiv::detail
