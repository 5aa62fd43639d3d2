#include "PathText.h"

namespace kiv::detail {
namespace {

int compare(const PathComponent& left, const PathComponent& right) {
    const int order = left.type.compare(right.type);
    return order != 0 ? order : left.name.compare(right.name);
}

}  // namespace

int compareComponents(std::string_view left, std::string_view right, std::size_t same) {
    // The components in front of the last "/" in common are the same.
    const std::size_t slash = left.substr(0, same).rfind('/');
    const std::size_t begin = slash == std::string_view::npos ? 0 : slash;
    PathCursor leftCursor(left, begin);
    PathCursor rightCursor(right, begin);
    while (!leftCursor.atEnd() && !rightCursor.atEnd()) {
        const int order = compare(leftCursor.next(), rightCursor.next());
        if (order != 0) return order;
    }
    return static_cast<int>(rightCursor.atEnd()) - static_cast<int>(leftCursor.atEnd());
}

}  // namespace kiv::detail
