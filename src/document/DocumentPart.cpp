#include <kiv/KDXDocument.h>

#include <algorithm>
#include <array>

#include "base/ByteOrderMark.h"
#include "base/PathText.h"
#include "document/Composition.h"

// The part begins and ends in front of statements of the top level that say something. So many more
// of them stand in it on both sides of what a path leads to that the layout of an edit, and the
// comments that go with it, come out as in the whole text.

namespace kiv {
namespace detail {
namespace {

constexpr std::size_t kAround = kLookAround;

bool isExact(const KDXStep& step) {
    return !step.anyDepth && step.type && step.name;
}

/// Whether a part may begin or end in front of the statement. One that began with a byte order mark
/// would say something else.
bool isBoundary(const KDXReader& reader) {
    return reader.depth() == 0 && reader.kind() != MiniKDXParser::lineBlank &&
           reader.kind() != MiniKDXParser::lineEnd && !startsWithByteOrderMark(reader.source());
}

class PartFinder {
public:
    PartFinder(std::string_view searchedText, const KDXSteps& steps) : text(searchedText) {
        for (const KDXStep& step : steps) appendLevel(wanted, *step.type, *step.name);
        appendLevel(firstLevel, *steps.front().type, *steps.front().name);
    }

    void add(const KDXReader& reader) {
        if (!isBoundary(reader)) return;
        begins[count % begins.size()] =
            static_cast<std::size_t>(reader.source().data() - text.data());
        if (isNeeded(reader)) {
            begin = std::min(begin, beginAround());
            end = text.size();
            afterAround = count + kAround + 1;
        } else if (count == afterAround) {
            end = begins[count % begins.size()];
        }
        ++count;
    }

    /// What is not there is added at the end.
    std::string_view part() {
        if (isThere) return text.substr(begin, end - begin);
        if (count > 0) --count;
        return text.substr(std::min(begin, beginAround()));
    }

private:
    /// Whether an object's path begins the one that is wanted: as a level of it or, where a name
    /// holds a '/', as several.
    bool isNeeded(const KDXReader& reader) {
        const std::string_view type = reader.first();
        if (reader.kind() != MiniKDXParser::lineObject) return false;
        if (wanted.compare(1, type.size(), type) != 0) return false;
        putComponent(path, 0, type, reader.second());
        isThere = isThere || path == firstLevel;
        return wanted.compare(0, path.size(), path) == 0 &&
               (path.size() == wanted.size() || wanted[path.size()] == '/');
    }

    /// Where the statements begin that stand in front of the one that was added last.
    std::size_t beginAround() const {
        return count < kAround ? 0 : begins[(count - kAround) % begins.size()];
    }

    std::string_view text;
    std::string wanted;
    std::string firstLevel;
    std::string path;  // of the object in question
    std::array<std::size_t, kAround + 1> begins{};
    std::size_t count = 0;
    std::size_t afterAround = 0;
    std::size_t begin = KDXReader::kUnlimited;
    std::size_t end = 0;
    bool isThere = false;
};

}  // namespace
}  // namespace detail

std::string_view partFor(std::string_view text, const KDXSteps& path) {
    if (path.empty() || !std::all_of(path.begin(), path.end(), detail::isExact)) return text;
    detail::PartFinder finder(text, path);
    KDXReader reader(text);
    while (reader.next()) finder.add(reader);
    return finder.part();
}

}  // namespace kiv
