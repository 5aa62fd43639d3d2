#include "Statements.h"

#include <kiv/KDXDocument.h>
#include <kiv/KDXReader.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>

#include "base/Status.h"

// A key is the container's number, the kind, the first half, a '=' and the second half. No first
// half has a '=' in it.

namespace kdx {
namespace {

using Kind = StatementTable::Kind;
using Number = StatementTable::Number;

constexpr std::size_t kBlock = std::size_t{1} << 16U;
constexpr std::size_t kFirstSlots = std::size_t{1} << 10U;
constexpr std::size_t kMaxProbes = 64;

/// What the reader stands at, as it is compared.
StatementTable::Content contentOf(const kiv::KDXReader& reader, Number container) {
    switch (reader.kind()) {
        case Kind::lineObject: {
            const bool isNamed = reader.second() != reader.first();
            return {Kind::lineObject, container, reader.first(),
                    isNamed ? reader.second() : std::string_view()};
        }
        case Kind::lineParameter:
            return {Kind::lineParameter, container, reader.first(), reader.second()};
        case Kind::lineUnrecognised:
        case Kind::lineVerbatim:
        case Kind::lineBlank:
        case Kind::lineEnd:
        case Kind::lineAction: break;
    }
    return {reader.kind(), container, {}, reader.text()};
}

}  // namespace

Number StatementTable::add(const Content& content) {
    writeKey(content);
    // Texts that differ in little go through the numbers in their order.
    if (previous + 1 < keys.size() && keys[previous + 1] == key) return ++previous;
    if (2 * keys.size() >= slots.size()) grow();
    Number& number = numberOf(key);
    if (number == kNew) {
        number = static_cast<Number>(keys.size());
        keys.push_back(keep(key));
    }
    return previous = number;
}

void StatementTable::writeKey(const Content& content) {
    std::array<char, sizeof(Number)> container{};
    std::memcpy(container.data(), &content.container, container.size());
    key.assign(container.data(), container.size());
    key.append(1, static_cast<char>(content.kind));
    key.append(content.first).append(1, '=').append(content.second);
}

/// Where the number of a key is, or, when it is kNew, belongs. Keys that were made to collide cost
/// a search in a map, and no more.
Number& StatementTable::numberOf(std::string_view wanted) {
    const auto hash = static_cast<std::uint32_t>(std::hash<std::string_view>{}(wanted));
    for (std::size_t i = 0; i < kMaxProbes; ++i) {
        Slot& slot = slots[(hash + i) % slots.size()];
        if (slot.number == kNew) slot.hash = hash;
        if (slot.number == kNew || (slot.hash == hash && keys[slot.number] == wanted))
            return slot.number;
    }
    return crowded.try_emplace(std::string(wanted), kNew).first->second;
}

void StatementTable::grow() {
    slots.assign(std::max(kFirstSlots, 2 * slots.size()), {});
    crowded.clear();
    for (std::size_t number = 0; number < keys.size(); ++number)
        numberOf(keys[number]) = static_cast<Number>(number);
}

std::string_view StatementTable::keep(std::string_view text) {
    if (blocks.empty() || blocks.back().capacity() - blocks.back().size() < text.size())
        blocks.emplace_back().reserve(std::max(kBlock, text.size()));
    std::string& block = blocks.back();
    block.append(text);
    return std::string_view(block).substr(block.size() - text.size());
}

StatementTable::Content StatementTable::content(Number statement) const {
    std::string_view text = keys[statement];
    Content content;
    std::memcpy(&content.container, text.data(), sizeof(Number));
    content.kind = static_cast<Kind>(text[sizeof(Number)]);
    text.remove_prefix(sizeof(Number) + 1);
    content.first = text.substr(0, text.find('='));
    content.second = text.substr(content.first.size() + 1);
    return content;
}

std::string StatementTable::path(Number object) const {
    std::vector<Content> steps;
    for (Number step = object; step != kRoot; step = steps.back().container)
        steps.push_back(content(step));
    std::string path;
    for (auto step = steps.rbegin(); step != steps.rend(); ++step)
        kiv::appendLevel(path, step->first, step->second);
    return path;
}

std::vector<Statement> readStatements(std::string_view text, std::size_t maxDepth,
                                      StatementTable& table) {
    std::vector<Statement> statements;
    std::vector<Number> open{StatementTable::kRoot};
    kiv::KDXReader reader(text, maxDepth);
    while (reader.next()) {
        if (reader.kind() == Kind::lineBlank) continue;
        if (reader.kind() == Kind::lineEnd && open.size() > 1) {
            open.pop_back();
            continue;
        }
        const Number number = table.add(contentOf(reader, open.back()));
        statements.push_back({number, reader.lineNumber()});
        if (reader.kind() == Kind::lineObject) open.push_back(number);
    }
    if (reader.isTooDeep())
        throw Trouble("objects are nested deeper than " + std::to_string(maxDepth) +
                      " levels; --max-depth allows more");
    return statements;
}

}  // namespace kdx
