#include <kiv/StringUtilities.h>

#include <algorithm>

#include "base/Blank.h"
#include "base/Whitespace.h"

namespace kiv::StringUtilities {

std::string replaceSubstring(const std::string& text, const std::string& from,
                             const std::string& to) {
    if (from.empty()) return text;
    std::string result;
    std::size_t begin = 0;
    for (std::size_t found = text.find(from); found != std::string::npos;
         found = text.find(from, begin)) {
        result.append(text, begin, found - begin).append(to);
        begin = found + from.size();
    }
    return result.append(text, begin);
}

std::string removeWhitespace(const std::string& text) {
    return std::string(detail::withoutOuterBlanks(text));
}

std::string simplifyWhitespace(const std::string& text) {
    std::string storage;
    return std::string(detail::simplified(detail::withoutOuterBlanks(text), storage));
}

bool removeFromEnd(std::string& text, const std::string& suffix) {
    if (suffix.empty() || text.size() < suffix.size()) return false;
    const std::size_t rest = text.size() - suffix.size();
    if (text.compare(rest, suffix.size(), suffix) != 0) return false;
    text.resize(rest);
    return true;
}

std::vector<std::string> stringToVector(const std::string& text, char separator) {
    std::vector<std::string> pieces;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find(separator, begin), text.size());
        pieces.emplace_back(text, begin, end - begin);
        begin = end + 1;
    }
    return pieces;
}

std::string vectorToOneLineString(const std::vector<std::string>& pieces) {
    std::string line;
    if (!pieces.empty()) line = pieces.front();
    for (std::size_t i = 1; i < pieces.size(); ++i) line += detail::withoutLeadingBlanks(pieces[i]);
    return line;
}

}  // namespace kiv::StringUtilities
