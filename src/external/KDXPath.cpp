#include <kiv/KDXPath.h>

#include <algorithm>
#include <stdexcept>

#include "base/PathText.h"

namespace kiv {
namespace {

/// Goes through the components of a path.
class ComponentCursor {
public:
    using Components = std::vector<std::pair<std::string, std::string>>;

    explicit ComponentCursor(const Components& components)
        : current(components.begin()), end(components.end()) {}

    bool atEnd() const { return current == end; }
    detail::PathComponent next() {
        const auto& [type, name] = *current++;
        return {type, name};
    }

private:
    Components::const_iterator current;
    Components::const_iterator end;
};

}  // namespace

KDXPath::KDXPath() = default;

KDXPath::KDXPath(const std::string& pathText) {
    for (detail::PathCursor cursor(pathText); !cursor.atEnd();) {
        const detail::PathComponent component = cursor.next();
        components.emplace_back(component.type, component.name);
    }
}

KDXPath::KDXPath(const KDXPath&) = default;
KDXPath& KDXPath::operator=(const KDXPath&) = default;
KDXPath::~KDXPath() = default;

std::size_t KDXPath::numComponent() const {
    return components.size();
}

const std::string& KDXPath::getType(std::size_t index) const {
    return components.at(index).first;
}

const std::string& KDXPath::getName(std::size_t index) const {
    return components.at(index).second;
}

std::string KDXPath::getSubPath(std::size_t first, std::size_t count) const {
    if (first > components.size()) throw std::out_of_range("KDXPath::getSubPath");
    const std::size_t end = first + std::min(count, components.size() - first);
    std::string pathText;
    for (std::size_t i = first; i < end; ++i)
        detail::putComponent(pathText, pathText.size(), components[i].first, components[i].second);
    return pathText;
}

bool KDXPath::operator<(const KDXPath& other) const {
    return detail::compareComponents(ComponentCursor(components),
                                     ComponentCursor(other.components)) < 0;
}

}  // namespace kiv
