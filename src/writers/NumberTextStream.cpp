#include <locale>
#include <sstream>

#include "NumberText.h"

namespace kiv::detail {

std::string numberText(double value) {
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream.precision(kSignificantDigits);
    stream << value;
    return stream.str();
}

}  // namespace kiv::detail
