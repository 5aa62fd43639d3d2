#include <kiv/ObjectKDXParser.h>

#include <algorithm>
#include <utility>

#include "base/ObjectName.h"

namespace kiv {
namespace {

constexpr int kEveryLevel = -1;

/// Whether a search takes what is so deep in a match, whose own depth is 0.
bool isTaken(std::int32_t depth, std::int32_t limit) {
    return limit == kEveryLevel || depth <= std::max(limit, 0);
}

// Called before the groups are read or added to, and not at every END: what a walk that was broken
// off has left there is then forgotten, too.
void forgetClosed(std::vector<std::size_t>& groups, std::size_t openObjects) {
    while (!groups.empty() && groups.back() >= openObjects) groups.pop_back();
}

}  // namespace

ObjectKDXParser::ObjectKDXParser(const std::vector<std::string>& lines) : MiniKDXParser(lines) {}
ObjectKDXParser::ObjectKDXParser(const ObjectKDXParser&) = default;
ObjectKDXParser::ObjectKDXParser(ObjectKDXParser&&) = default;
ObjectKDXParser& ObjectKDXParser::operator=(const ObjectKDXParser&) = default;
ObjectKDXParser& ObjectKDXParser::operator=(ObjectKDXParser&&) = default;
ObjectKDXParser::~ObjectKDXParser() = default;

void ObjectKDXParser::parseForObject(std::string name, int limit) {
    searchName = std::move(name);
    byName = true;
    depthLimit = limit;
    collecting = false;
    results.clear();
    parse();
}

void ObjectKDXParser::parseForObjectsByType(std::string type, int limit, std::string group) {
    searchType = std::move(type);
    groupType = std::move(group);
    byName = false;
    depthLimit = limit;
    collecting = false;
    results.clear();
    typeResults.clear();
    parse();
}

std::vector<std::string>& ObjectKDXParser::getResults() {
    return results;
}

std::map<std::string, std::vector<std::string>>& ObjectKDXParser::getTypeResults() {
    return typeResults;
}

void ObjectKDXParser::newObject(const std::string& type, const std::string& name) {
    forgetClosed(openGroups, objectStack.size());
    if (!groupType.empty() && type == groupType) openGroups.push_back(objectStack.size());

    if (collecting) {
        ++matchDepth;
        if (isTaken(matchDepth, depthLimit)) results.push_back(type + ":" + name);
        return;
    }
    const bool matches = byName ? detail::nameOrType(type, name) == searchName : type == searchType;
    if (!matches) return;
    matchKey = type + ":" + name;
    collecting = true;
    matchDepth = 0;
    results.push_back(matchKey);
}

void ObjectKDXParser::newParameter(const std::string& name, const std::string& value) {
    if (!collecting || !isTaken(matchDepth, depthLimit)) return;
    results.push_back("  " + name + " = " + value);
}

void ObjectKDXParser::endObject() {
    if (!collecting) return;
    if (isTaken(matchDepth, depthLimit)) results.emplace_back("END");
    if (matchDepth != 0) {
        --matchDepth;
        return;
    }
    collecting = false;
    if (byName) return;
    forgetClosed(openGroups, objectStack.size());
    const std::string& group =
        openGroups.empty() ? matchKey : objectStack[openGroups.back()].second;
    const std::string& key = group.empty() ? matchKey : group;
    typeResults[key].swap(results);  // a key that cannot be made loses no line
    results.clear();
}

}  // namespace kiv
