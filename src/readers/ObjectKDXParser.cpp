#include <kiv/ObjectKDXParser.h>

#include <utility>

#include "base/ObjectName.h"

namespace kiv {

ObjectKDXParser::ObjectKDXParser(const std::vector<std::string>& lines) : MiniKDXParser(lines) {}
ObjectKDXParser::ObjectKDXParser(const ObjectKDXParser&) = default;
ObjectKDXParser::ObjectKDXParser(ObjectKDXParser&&) = default;
ObjectKDXParser& ObjectKDXParser::operator=(const ObjectKDXParser&) = default;
ObjectKDXParser& ObjectKDXParser::operator=(ObjectKDXParser&&) = default;
ObjectKDXParser::~ObjectKDXParser() = default;

void ObjectKDXParser::parseForObject(std::string name, int limit) {
    searchName = std::move(name);
    byName = true;
    startSearch(limit);
}

void ObjectKDXParser::parseForObjectsByType(std::string type, int limit, std::string group) {
    searchType = std::move(type);
    groupType = std::move(group);
    byName = false;
    typeResults.clear();
    startSearch(limit);
}

void ObjectKDXParser::startSearch(int limit) {
    collecting = false;
    withinDepth = true;
    depthLimit = limit;
    results.clear();
    parse();
}

std::vector<std::string>& ObjectKDXParser::getResults() {
    return results;
}

std::map<std::string, std::vector<std::string>>& ObjectKDXParser::getTypeResults() {
    return typeResults;
}

void ObjectKDXParser::newObject(const std::string& type, const std::string& name) {
    forgetClosedGroups();
    if (!groupType.empty() && type == groupType) openGroups.push_back(objectStack.size());

    if (collecting) {
        ++matchDepth;
        withinDepth = isWithinDepth();
        if (withinDepth) results.push_back(type + ":" + name);
        return;
    }
    if (!isMatch(type, name)) return;
    matchKey = type + ":" + name;
    collecting = true;
    matchDepth = 0;
    results.push_back(matchKey);
}

void ObjectKDXParser::newParameter(const std::string& name, const std::string& value) {
    if (!collecting) return;
    if (!withinDepth && matchDepth != 0) return;
    results.push_back("  " + name + " = " + value);
}

void ObjectKDXParser::endObject() {
    if (!collecting) return;
    if (matchDepth != 0) {
        --matchDepth;
        if (withinDepth) results.emplace_back("END");
        withinDepth = isWithinDepth();
        return;
    }
    results.emplace_back("END");
    collecting = false;
    if (byName) return;
    forgetClosedGroups();
    typeResults[resultKey()].swap(results);  // a key that cannot be made loses no line
    results.clear();
}

bool ObjectKDXParser::isMatch(const std::string& type, const std::string& name) const {
    if (!byName) return type == searchType;
    return detail::nameOrType(type, name) == searchName;
}

bool ObjectKDXParser::isWithinDepth() const {
    return depthLimit == -1 || depthLimit >= matchDepth;
}

const std::string& ObjectKDXParser::resultKey() const {
    if (openGroups.empty()) return matchKey;
    const std::string& groupName = objectStack[openGroups.back()].second;
    return groupName.empty() ? matchKey : groupName;
}

// Called before openGroups is read or added to, and not at every END: what a walk that was broken
// off has left there is then forgotten, too.
void ObjectKDXParser::forgetClosedGroups() {
    while (!openGroups.empty() && openGroups.back() >= objectStack.size()) openGroups.pop_back();
}

}  // namespace kiv
