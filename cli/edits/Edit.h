#pragma once

#include <kiv/KDXDocument.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/Status.h"

namespace kdx {

/// What an edit speaks of is not in the document.
class NotThere : public Trouble {
    using Trouble::Trouble;
};

/// The objects that a path or pattern matches, or the parameters of a name in them.
struct Target {
    kiv::KDXSteps path;
    std::optional<std::string> name;
};

/// Sets what readers see as the value of a parameter; makes the objects on the way. The side is for
/// a parameter that is not there yet.
struct SetEdit {
    enum class Side { usual, first, before, after };

    kiv::KDXSteps path;
    std::string name;
    std::string value;
    Side side = Side::usual;
    std::string neighbour = {};  ///< a parameter in the same object, or an object: TYPE:NAME
};

struct UnsetEdit {
    Target target;
};

/// Gives a parameter or an object another name, an object another type. What it would be merged
/// with is not touched: such an edit is refused.
struct RenameEdit {
    Target target;
    std::optional<std::string> name;
    std::optional<std::string> type;
};

/// Puts what the target is elsewhere, in its order. It is refused as for RenameEdit.
struct MoveEdit {
    enum class Side { into, firstInto, before, after };

    Target target;
    Side side = Side::into;
    kiv::KDXSteps place;  ///< an object; no step is the top level
};

/// A change of a document, as a user asks for it.
struct Edit {
    std::variant<SetEdit, UnsetEdit, RenameEdit, MoveEdit> change;
    std::size_t line = 0;  ///< in a list of edits, counted from 1; 0 without one
    /// Those of its paths that were given as text, which may be the path of another object, too.
    std::vector<kiv::KDXSteps> textPaths = {};
};

/// Reads the path of an object. @throws Trouble for the empty path, which names none.
kiv::KDXSteps readObjectPath(const std::string& path);

/// @throws NotThere when there is nothing to change; Trouble or kiv::Error when the edit is
/// refused. The document is then of no use. Whether renames and moves that follow each other merge
/// what was two is looked at behind the last of them, as it takes a walk over the document.
void applyEdits(kiv::KDXDocument& document, const std::vector<Edit>& edits);

/// The first of the edits of which a path given as text is that of an object with a '/' in a name.
/// It may be meant, but the steps of the path do not lead to it. None when there is none.
const Edit* findAmbiguous(std::string_view text, const std::vector<Edit>& edits);

/// The path by which all of the edits set, or all of them remove; nothing for other lists.
std::optional<kiv::KDXSteps> commonPath(const std::vector<Edit>& edits);

/// What an edit changes, for a message; the object where the parameter is missing, none where that
/// is missing, too.
kiv::KDXDocument::Node changedBy(const kiv::KDXDocument& document, const Edit& edit);

}  // namespace kdx
