#include "Differences.h"

#include <algorithm>
#include <tuple>
#include <unordered_map>

#include "CommonSequence.h"
#include "text/JsonText.h"

namespace kdx {
namespace {

using Kind = StatementTable::Kind;
using Number = StatementTable::Number;
using Content = StatementTable::Content;
using Statements = std::vector<Statement>;

/// What stands for a parameter whatever its value; for others, they themselves.
Number slotOf(Number statement, StatementTable& table) {
    Content content = table.content(statement);
    if (content.kind != Kind::lineParameter) return statement;
    content.kind = Kind::lineBlank;
    content.second = {};
    return table.add(content);
}

// ---- In the order of the texts.

std::vector<Number> numbersOf(const Statements& statements) {
    std::vector<Number> numbers;
    numbers.reserve(statements.size());
    for (const Statement& statement : statements) numbers.push_back(statement.number);
    return numbers;
}

/// Makes differences of the statements between the matches.
class Collector {
public:
    Collector(const Statements& statementsBefore, const Statements& statementsAfter,
              StatementTable& statements)
        : before(statementsBefore), after(statementsAfter), table(statements) {}

    std::vector<Difference> run(std::vector<Match> matches) {
        matches.push_back({before.size(), after.size()});
        Match begin;
        for (const Match& match : matches) {
            addGap(begin, match);
            begin = {match.before + 1, match.after + 1};
        }
        return std::move(list);
    }

private:
    void addGap(const Match& begin, const Match& end) {
        std::unordered_map<Number, std::vector<std::size_t>> partners;  // the first of them last
        if (begin.before < end.before)
            for (std::size_t i = end.after; i-- > begin.after;)
                partners[slotOf(after[i].number, table)].push_back(i);
        std::vector<bool> paired(end.after - begin.after);
        for (std::size_t i = begin.before; i < end.before; ++i) {
            list.push_back({&before[i], nullptr});
            const Number slot = slotOf(before[i].number, table);
            const auto found = partners.find(slot);
            const bool isParameter = slot != before[i].number;
            if (!isParameter || found == partners.end() || found->second.empty()) continue;
            list.back().after = &after[found->second.back()];
            paired[found->second.back() - begin.after] = true;
            found->second.pop_back();
        }
        for (std::size_t i = begin.after; i < end.after; ++i)
            if (!paired[i - begin.after]) list.push_back({nullptr, &after[i]});
    }

    const Statements& before;
    const Statements& after;
    StatementTable& table;
    std::vector<Difference> list;
};

// ---- In any order.

/// By what statements are sorted: the object that they are in, which goes first itself.
using SortKey = std::tuple<Number, Number, Number>;

SortKey sortKey(Number statement, StatementTable& table) {
    const Content content = table.content(statement);
    if (content.kind == Kind::lineObject) return {statement, StatementTable::kRoot, statement};
    return {content.container, slotOf(statement, table), statement};
}

bool isRepetition(Number earlier, Number later, StatementTable& table) {
    const Kind kind = table.content(later).kind;
    if (kind != Kind::lineObject && kind != Kind::lineParameter) return false;
    return slotOf(earlier, table) == slotOf(later, table);
}

/// Sorts the statements, and leaves of those that a map has once the first.
void forgetOrder(Statements& statements, StatementTable& table) {
    std::vector<std::pair<SortKey, Statement>> sorted;
    for (const Statement& statement : statements)
        sorted.emplace_back(sortKey(statement.number, table), statement);
    std::stable_sort(sorted.begin(), sorted.end(), [](const auto& a, const auto& b) {
        const auto& [groupA, slotA, numberA] = a.first;
        const auto& [groupB, slotB, numberB] = b.first;
        return std::tie(groupA, slotA) < std::tie(groupB, slotB);
    });
    statements.clear();
    for (const auto& [key, statement] : sorted)
        if (statements.empty() || !isRepetition(statements.back().number, statement.number, table))
            statements.push_back(statement);
}

const char* changeName(const Difference& difference) {
    if (difference.before == nullptr) return "added";
    return difference.after == nullptr ? "removed" : "changed";
}

/// The name that JSON has for what is neither an object nor a parameter.
const char* kindName(Kind kind) {
    switch (kind) {
        case Kind::lineAction: return "action";
        case Kind::lineVerbatim: return "verbatim";
        case Kind::lineObject:
        case Kind::lineParameter:
        case Kind::lineBlank:
        case Kind::lineEnd:
        case Kind::lineUnrecognised: break;
    }
    return "unrecognised";
}

}  // namespace

std::vector<Difference> differences(const Statements& before, const Statements& after,
                                    StatementTable& table) {
    return Collector(before, after, table).run(commonSequence(numbersOf(before), numbersOf(after)));
}

std::vector<Difference> differencesInAnyOrder(Statements& before, Statements& after,
                                              StatementTable& table) {
    forgetOrder(before, table);
    forgetOrder(after, table);
    std::vector<Match> matches;
    for (Match at; at.before < before.size() && at.after < after.size();) {
        const SortKey keyBefore = sortKey(before[at.before].number, table);
        const SortKey keyAfter = sortKey(after[at.after].number, table);
        if (keyBefore == keyAfter) matches.push_back(at);
        const bool takesAfter = keyAfter <= keyBefore;
        if (keyBefore <= keyAfter) ++at.before;
        if (takesAfter) ++at.after;
    }
    return Collector(before, after, table).run(std::move(matches));
}

DifferenceText::DifferenceText(const StatementTable& statements, const Settings& givenSettings,
                               std::string_view namedFile, std::size_t lastLine)
    : table(statements),
      settings(givenSettings),
      file(namedFile),
      width(std::to_string(lastLine).size()) {}

void DifferenceText::append(const Difference& difference) {
    if (settings.json) return appendJson(difference);
    if (difference.before != nullptr) appendStatement('-', *difference.before);
    if (difference.after != nullptr) appendStatement('+', *difference.after);
}

void DifferenceText::appendStatement(char mark, const Statement& statement) {
    const Content content = table.content(statement.number);
    const std::string line = std::to_string(statement.line);
    if (content.kind == Kind::lineObject) {
        head = statement.number;
        return appendLine(mark, line, pathOf(head));
    }
    if (content.container != head && content.container != StatementTable::kRoot)
        appendLine(' ', "", pathOf(content.container));
    head = content.container;
    std::string shownText(head == StatementTable::kRoot ? 0 : 2, ' ');
    if (content.kind == Kind::lineParameter) shownText.append(content.first).append(" = ");
    appendLine(mark, line, shownText.append(content.second));
}

void DifferenceText::appendLine(char mark, std::string_view lineNumber, std::string_view line) {
    const bool color = settings.outputColor && mark != ' ';
    if (color) text += mark == '-' ? "\033[31m" : "\033[32m";
    text.append(1, mark).append(1 + width - lineNumber.size(), ' ').append(lineNumber);
    text.append(1, ' ').append(line).append(color ? "\033[0m\n" : "\n");
}

void DifferenceText::appendJson(const Difference& difference) {
    const auto& [before, after] = difference;
    const Number number = before == nullptr ? after->number : before->number;
    const Content content = table.content(number);
    const Number object = content.kind == Kind::lineObject ? number : content.container;
    JsonMembers members{{"change", changeName(difference)}, {"path", pathOf(object)}};
    if (!file.empty()) members.insert(members.begin(), {"file", file});
    if (content.kind == Kind::lineParameter) {
        members.emplace_back("name", content.first);
        if (before != nullptr) members.emplace_back("before", content.second);
        if (after != nullptr) members.emplace_back("after", table.content(after->number).second);
    } else if (content.kind != Kind::lineObject) {
        members.emplace_back(kindName(content.kind), content.second);
    }
    if (before != nullptr) members.emplace_back("beforeLine", before->line);
    if (after != nullptr) members.emplace_back("afterLine", after->line);
    text += jsonText(members) + '\n';
}

const std::string& DifferenceText::pathOf(Number object) {
    if (object == pathOwner) return path;
    pathOwner = object;
    path = table.path(object);
    if (!ambiguousPath.empty()) return path;
    std::size_t depth = 0;
    for (Number step = object; step != StatementTable::kRoot; step = table.content(step).container)
        ++depth;
    if (static_cast<std::size_t>(std::count(path.begin(), path.end(), '/')) != depth)
        ambiguousPath = path;
    return path;
}

}  // namespace kdx
