#include "ExtendedAttributes.h"

namespace kdx {

bool copyExtendedAttributes(int /*from*/, int /*to*/) {
    return true;
}

}  // namespace kdx
