#include <kiv/KDXToStringMapMap.h>
#include <kiv/StringUtilities.h>

#include <iterator>
#include <tuple>
#include <utility>

#include "base/PathText.h"
#include "parser/PhysicalLines.h"
#include "parser/Walk.h"

namespace kiv {
namespace {

constexpr const char* kTooManyEnds = "Too many ENDs in KDX";
constexpr const char* kParameterOutside = "Attempt to add parameter before object opened";

}  // namespace

KDXToStringMapMap::Except::Except(const std::string& message) : text(message) {}
KDXToStringMapMap::Except::Except(const Except&) = default;
KDXToStringMapMap::Except& KDXToStringMapMap::Except::operator=(const Except&) = default;
KDXToStringMapMap::Except::~Except() = default;

const std::string& KDXToStringMapMap::Except::message() const noexcept {
    return text;
}

KDXToStringMapMap::KDXToStringMapMap(StringMapMap& map, const std::set<std::string>& types,
                                     bool exclude)
    : currentEntry(map.end()),
      nextEntry(map.end()),
      outputMap(map),
      typeFilter(types),
      excludeTypes(exclude) {}

KDXToStringMapMap::KDXToStringMapMap(const std::string& text, StringMapMap& map,
                                     const std::set<std::string>& types, bool exclude)
    : KDXToStringMapMap(map, types, exclude) {
    getCommands() = StringUtilities::stringToVector(text, '\n');
    parse();
    converting = false;
}

KDXToStringMapMap::KDXToStringMapMap(const std::vector<std::string>& lines, StringMapMap& map,
                                     const std::set<std::string>& types, bool exclude)
    : KDXToStringMapMap(map, types, exclude) {
    setCommands(lines);
    parse();
    converting = false;
}

KDXToStringMapMap::KDXToStringMapMap(const KDXToStringMapMap&) = default;
KDXToStringMapMap::~KDXToStringMapMap() = default;

/// Takes what a walk finds without the copies that the callbacks of a parser need.
class KDXToStringMapMap::Converter {
public:
    Converter(StringMapMap& map, const std::set<std::string>& types, bool exclude)
        : target(map, types, exclude) {}

    template <typename Lines>
    void convert(const Lines& lines) {
        std::size_t lineNumber = 0;
        detail::walk(lines, *this, lineNumber);
    }

    void newObject(std::string_view type, std::string_view name) { target.openObject(type, name); }
    void newParameter(std::string_view name, std::string_view value) {
        target.addParameter(name, value);
    }
    void endObject() { target.closeObject(); }
    void newAction(std::string_view /*line*/) {}

private:
    KDXToStringMapMap target;
};

void KDXToStringMapMap::convert(const std::string& text, StringMapMap& map,
                                const std::set<std::string>& types, bool exclude) {
    Converter(map, types, exclude).convert(detail::TextLines(text));
}

void KDXToStringMapMap::convert(const std::vector<std::string>& lines, StringMapMap& map,
                                const std::set<std::string>& types, bool exclude) {
    Converter(map, types, exclude).convert(detail::ListedLines(lines));
}

const std::set<std::string>& KDXToStringMapMap::noTypeFilter() {
    static const std::set<std::string> everyType;
    return everyType;
}

void KDXToStringMapMap::newObject(const std::string& type, const std::string& name) {
    openObject(type, name);
}

void KDXToStringMapMap::newParameter(const std::string& name, const std::string& value) {
    addParameter(name, value);
}

void KDXToStringMapMap::endObject() {
    closeObject();
}

bool KDXToStringMapMap::isLeftOut(std::string_view type) const {
    if (typeFilter.empty()) return false;
    const bool listed = typeFilter.count(std::string(type)) != 0;
    return listed == excludeTypes;
}

void KDXToStringMapMap::openObject(std::string_view type, std::string_view name) {
    if (skipDepth != 0) {
        ++skipDepth;
        return;
    }
    if (pathStack.empty() && isLeftOut(type)) {
        skipDepth = 1;
        return;
    }
    detail::putComponent(path, pathStack.empty() ? 0 : pathStack.back().pathLength, type, name);
    currentEntry = enterPath();
    pathStack.push_back({currentEntry, path.size()});
}

void KDXToStringMapMap::addParameter(std::string_view name, std::string_view value) {
    if (skipDepth != 0) return;
    if (pathStack.empty()) throw Except(kParameterOutside);
    auto& parameters = currentEntry->second;
    parameters.emplace_hint(parameters.end(), name, value);
}

void KDXToStringMapMap::closeObject() {
    if (skipDepth != 0) {
        --skipDepth;
        return;
    }
    if (pathStack.empty()) throw Except(kTooManyEnds);
    pathStack.pop_back();
    if (pathStack.empty()) return;
    const OpenObject& enclosing = pathStack.back();
    currentEntry =
        converting ? enclosing.entry : outputMap.find(path.substr(0, enclosing.pathLength));
}

// Text mostly comes in the order of the map, so that an object belongs right behind the one before.
KDXToStringMapMap::Entry KDXToStringMapMap::enterPath() {
    if (!converting) return outputMap.try_emplace(path).first;
    // Unlike try_emplace(), this looks at the place just once when the object is new, as nearly all
    // are. For one that is there, an entry is made in vain.
    const auto entry = outputMap.emplace_hint(nextEntry, std::piecewise_construct,
                                              std::forward_as_tuple(path), std::tuple<>());
    nextEntry = std::next(entry);
    return entry;
}

}  // namespace kiv
