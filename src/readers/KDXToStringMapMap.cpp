#include <kiv/KDXToStringMapMap.h>
#include <kiv/StringUtilities.h>

#include <iterator>

#include "external/PathText.h"

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
      lastEntry(map.end()),
      outputMap(map),
      typeFilter(types),
      excludeTypes(exclude) {}

KDXToStringMapMap::KDXToStringMapMap(const std::string& text, StringMapMap& map,
                                     const std::set<std::string>& types, bool exclude)
    : KDXToStringMapMap(map, types, exclude) {
    getCommands() = StringUtilities::stringToVector(text, '\n');
    parse();
}

KDXToStringMapMap::KDXToStringMapMap(const std::vector<std::string>& lines, StringMapMap& map,
                                     const std::set<std::string>& types, bool exclude)
    : KDXToStringMapMap(map, types, exclude) {
    setCommands(lines);
    parse();
}

KDXToStringMapMap::KDXToStringMapMap(const KDXToStringMapMap&) = default;
KDXToStringMapMap::~KDXToStringMapMap() = default;

void KDXToStringMapMap::convert(const std::string& text, StringMapMap& outputMap,
                                const std::set<std::string>& typeFilter, bool excludeTypes) {
    KDXToStringMapMap(outputMap, typeFilter, excludeTypes).parseText(text);
}

void KDXToStringMapMap::convert(const std::vector<std::string>& lines, StringMapMap& outputMap,
                                const std::set<std::string>& typeFilter, bool excludeTypes) {
    KDXToStringMapMap(outputMap, typeFilter, excludeTypes).parseLines(lines);
}

const std::set<std::string>& KDXToStringMapMap::noTypeFilter() {
    static const std::set<std::string> everyType;
    return everyType;
}

bool KDXToStringMapMap::isLeftOut(const std::string& type) const {
    if (typeFilter.empty()) return false;
    const bool listed = typeFilter.count(type) != 0;
    return listed == excludeTypes;
}

void KDXToStringMapMap::newObject(const std::string& type, const std::string& name) {
    if (skipDepth != 0) {
        ++skipDepth;
        return;
    }
    if (pathStack.empty() && isLeftOut(type)) {
        skipDepth = 1;
        return;
    }
    path.resize(pathStack.empty() ? 0 : pathStack.back().pathLength);
    detail::appendComponent(path, type, name);
    // Text mostly comes in the order of the map: an object's entry belongs right behind the one
    // made last, a top-level object's at the end. The entry made last is only known to be in the
    // map still while an object of this walk is open.
    const auto hint = objectStack.empty() ? outputMap.end() : std::next(lastEntry);
    currentEntry = lastEntry = outputMap.try_emplace(hint, path);
    pathStack.push_back({currentEntry, path.size()});
}

void KDXToStringMapMap::newParameter(const std::string& name, const std::string& value) {
    if (skipDepth != 0) return;
    if (pathStack.empty()) throw Except(kParameterOutside);
    auto& parameters = currentEntry->second;
    parameters.try_emplace(parameters.end(), name, value);
}

void KDXToStringMapMap::endObject() {
    if (skipDepth != 0) {
        --skipDepth;
        return;
    }
    if (pathStack.empty()) throw Except(kTooManyEnds);
    pathStack.pop_back();
    if (pathStack.empty()) return;
    const OpenObject& enclosing = pathStack.back();
    // An object that an earlier walk left open has no place on this walk's stack, and the caller
    // may have changed the map since.
    const bool openedEarlier = objectStack.size() < 2;
    currentEntry =
        openedEarlier ? outputMap.find(path.substr(0, enclosing.pathLength)) : enclosing.entry;
}

}  // namespace kiv
