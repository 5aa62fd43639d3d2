#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "check/NamesSeen.h"

namespace kiv::detail {

/// Finds what stands twice in the same object. Objects with the same path are one object.
class NameCheck {
public:
    /// Of which objects the names inside are remembered.
    enum class Memory {
        open,  ///< of those that are open, which is enough when no object appears twice
        all,
    };

    explicit NameCheck(Memory givenMemory) : memory(givenMemory) {}

    /// Opens an object. @return where it was opened first, when it was.
    std::optional<KDXPlace> open(const SeenName& name, const KDXPlace& place);

    /// Closes the innermost object; one must be open.
    void close() { openObjects.pop_back(); }

    /// Gives a parameter to the innermost object; one must be open.
    /// @return where it stood first, when it did.
    std::optional<KDXPlace> addParameter(const SeenName& name, const KDXPlace& place);

    /// Whether an object appeared twice, so that memory for open objects is not enough.
    bool isOutgrown() const { return outgrown; }

private:
    /// The names that stand directly in one object, or at the top level.
    struct NamesInside {
        NamesSeen objects;
        NamesSeen parameters;
    };

    NamesInside& innermost() { return inside[openObjects.empty() ? 0 : openObjects.back()]; }
    void makeRoom(std::size_t number);

    Memory memory;
    bool outgrown = false;
    std::vector<NamesInside> inside = std::vector<NamesInside>(1);  // 0 is the top level
    std::vector<std::size_t> openObjects;                           // indices, one for each path
};

}  // namespace kiv::detail
