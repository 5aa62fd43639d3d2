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
    currentEntry = enterPath();
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
    currentEntry =
        converting ? enclosing.entry : outputMap.find(path.substr(0, enclosing.pathLength));
}

// Text mostly comes in the order of the map, so that an object belongs right behind the one before.
KDXToStringMapMap::Entry KDXToStringMapMap::enterPath() {
    if (!converting) return outputMap.try_emplace(path).first;
    const Entry entry = outputMap.try_emplace(nextEntry, path);
    nextEntry = std::next(entry);
    return entry;
}

}  // namespace kiv
