#include "PathText.h"

namespace kiv::detail {
namespace {

bool isSeparator(char c) {
    return c == '/' || c == ':';
}

int compareComponents(const PathComponent& left, const PathComponent& right) {
    const int order = left.type.compare(right.type);
    return order != 0 ? order : left.name.compare(right.name);
}

}  // namespace

int comparePaths(std::string_view left, std::string_view right) {
    return comparePaths(left, right, commonLength(left, right));
}

int comparePaths(std::string_view left, std::string_view right, std::size_t same) {
    const bool bothGoOn = same < left.size() && same < right.size();
    // Two letters of a type or of a name decide, which saves cutting out the components.
    if (bothGoOn && !isSeparator(left[same]) && !isSeparator(right[same]))
        return static_cast<unsigned char>(left[same]) - static_cast<unsigned char>(right[same]);

    // The components in front of the last "/" in common are the same.
    const std::size_t slash = left.substr(0, same).rfind('/');
    const std::size_t begin = slash == std::string_view::npos ? 0 : slash;
    PathCursor leftCursor(left, begin);
    PathCursor rightCursor(right, begin);
    while (!leftCursor.atEnd() && !rightCursor.atEnd()) {
        const int order = compareComponents(leftCursor.next(), rightCursor.next());
        if (order != 0) return order;
    }
    return static_cast<int>(rightCursor.atEnd()) - static_cast<int>(leftCursor.atEnd());
}

}  // namespace kiv::detail
