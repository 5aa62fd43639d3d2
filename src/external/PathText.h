#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

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
    return a.type == b.type && a.name == b.name;
}
inline bool operator!=(const PathComponent& a, const PathComponent& b) {
    return !(a == b);
}

/// Orders by type, then by name, byte-wise.
inline int compare(const PathComponent& a, const PathComponent& b) {
    const int order = a.type.compare(b.type);
    return order != 0 ? order : a.name.compare(b.name);
}

/// Cuts path text into its components, from left to right.
class PathCursor {
public:
    explicit PathCursor(std::string_view pathText) : rest(pathText) {}

    bool atEnd() const { return rest.empty(); }

    /// The next component. There must be one.
    PathComponent next() {
        if (rest.front() == '/') rest.remove_prefix(1);
        const std::string_view text = rest.substr(0, rest.find('/'));
        rest.remove_prefix(text.size());
        const std::size_t typeEnd = std::min(text.find(':'), text.size());
        const std::string_view type = text.substr(0, typeEnd);
        const std::string_view name = text.substr(std::min(typeEnd + 1, text.size()));
        return {type, name.empty() ? type : name};
    }

private:
    std::string_view rest;
};

/// Appends the path text of one component, in the form that the keys of a map have.
inline void appendComponent(std::string& pathText, std::string_view type, std::string_view name) {
    pathText.append(1, '/').append(type);
    if (!name.empty() && name != type) pathText.append(1, ':').append(name);
}

}  // namespace kiv::detail
