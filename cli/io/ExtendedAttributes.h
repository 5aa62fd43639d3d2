#pragma once

namespace kdx {

/// Gives an open file the extended attributes of another one, its access control list among them,
/// and no others.
/// @return whether it has them.
bool copyExtendedAttributes(int from, int to);

}  // namespace kdx
