#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "check/OpenObject.h"

namespace kiv::detail {

/// Whether a line certainly stands less deep than another: the other begins with its blanks.
/// An indentation without data is not known.
inline bool isLessDeep(std::string_view indentation, std::string_view other) {
    return indentation.size() < other.size() && indentation.data() != nullptr &&
           other.substr(0, indentation.size()) == indentation;
}

inline bool isAsDeep(std::string_view indentation, std::string_view other) {
    return indentation.data() != nullptr && other.data() != nullptr && indentation == other;
}

/// The nesting as the indentation shows it, next to the one that the ENDs make.
///
/// Where a statement stands no deeper than an object around it, the END of that object seems to be
/// missing in front of it, and the object counts as closed from there on: one mistake is told once.
/// A text without indentation contradicts nothing, nor does one of tabs and spaces where it cannot
/// be said which of two lines stands deeper.
class IndentationCheck {
public:
    /// The innermost object that a statement with this indentation contradicts; nullptr when there
    /// is none. `isEnd` tells of the statement.
    const OpenObject* contradicted(std::string_view indentation, bool isEnd) const {
        if (levels.empty()) return nullptr;
        const Level& level = levels.back();
        if (isLessDeep(indentation, level.object.indentation)) return &level.object;
        const bool besides =
            !isEnd && level.hasDeeperContent && isAsDeep(indentation, level.object.indentation);
        return besides ? &level.object : nullptr;
    }

    /// Takes that object for closed.
    void leave() { levels.pop_back(); }

    /// The object that was closed already and under which an END with this indentation stands;
    /// nothing when there is none.
    std::optional<KDXPlace> closedAbove(std::string_view indentation) const;

    void open(const OpenObject& object);
    void close(std::string_view indentation);
    void parameter(std::string_view indentation) {
        if (levels.empty() || levels.back().hasDeeperContent) return;
        Level& level = levels.back();
        level.hasDeeperContent = isLessDeep(level.object.indentation, indentation);
    }

    /// No object is open any longer.
    void clear() { levels.clear(); }

private:
    struct Level {
        OpenObject object;
        bool hasDeeperContent = false;
        std::string_view closedIndentation;  // of the object closed last in this one
        KDXPlace closed;
    };

    std::vector<Level> levels;
};

}  // namespace kiv::detail
