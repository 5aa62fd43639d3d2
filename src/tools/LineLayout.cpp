#include "tools/LineLayout.h"

namespace kiv::detail {

using Separators = KDXFormatting::Style::Separators;

LineDivider::LineDivider(Separators style)
    : divides(style != Separators::unchanged), object{":", ":"}, parameter{"=", "="} {
    if (style != Separators::spaced) return;
    object = {": ", ":"};
    parameter = {" = ", " ="};
}

}  // namespace kiv::detail
