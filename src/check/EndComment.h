#pragma once

#include <string>
#include <string_view>

#include "check/NamesSeen.h"

namespace kiv::detail {

/// The comment by which writers say what an END closes: "# TYPE:NAME", "# TYPE:" where the name is
/// the type.
std::string endCommentOf(const SeenName& object);

/// Whether the comment of an END may stand at the END of an object: it names that object, give or
/// take blanks and what follows them, or does not look like the name of any.
bool fitsEndOf(std::string_view comment, const SeenName& object);

}  // namespace kiv::detail
