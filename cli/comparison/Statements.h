#pragma once

#include <kiv/MiniKDXParser.h>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace kdx {

/// The statements of several texts by what they say and in which object, each with a number of its
/// own. Two objects of the same type and name in the same object are the same; one without a name
/// is the same as one whose name is its type, as in the paths of a map.
class StatementTable {
public:
    using Kind = kiv::MiniKDXParser::lineType;
    using Number = std::uint32_t;

    static constexpr Number kRoot = 0;  ///< stands for the object around all

    struct Content {
        Kind kind = Kind::lineBlank;
        Number container = kRoot;
        std::string_view first;   ///< the type of an object, the name of a parameter
        std::string_view second;  ///< the name of an object, a value, or what else a line says
    };

    StatementTable() { add({}); }

    /// The number of a statement, which is a new one when it has not been added before.
    Number add(const Content& content);

    /// Lives as long as the table.
    Content content(Number statement) const;

    /// The path of an object, as the keys of a map are; empty for the root.
    std::string path(Number object) const;

private:
    static constexpr Number kNew = static_cast<Number>(-1);

    struct Slot {
        std::uint32_t hash = 0;
        Number number = kNew;
    };

    void writeKey(const Content& content);
    Number& numberOf(std::string_view wanted);
    void grow();
    std::string_view keep(std::string_view text);

    std::string key;                        // of the statement that is added
    std::deque<std::string> blocks;         // hold the keys
    std::vector<std::string_view> keys;     // by number
    std::vector<Slot> slots;                // of a hash table
    std::map<std::string, Number> crowded;  // what finds no slot near its own
    Number previous = kRoot;
};

struct Statement {
    StatementTable::Number number = StatementTable::kRoot;
    std::size_t line = 0;  ///< of its first byte, from 1
};

/// The statements of a text without comments, blank lines and ENDs. Any text is read: an END that
/// closes nothing, and what is no KDX, are statements like others.
/// @throws Trouble when objects are nested deeper than `maxDepth`.
std::vector<Statement> readStatements(std::string_view text, std::size_t maxDepth,
                                      StatementTable& table);

}  // namespace kdx
