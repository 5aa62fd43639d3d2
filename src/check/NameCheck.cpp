#include "check/NameCheck.h"

namespace kiv::detail {

std::optional<KDXPlace> NameCheck::open(const SeenName& name, const KDXPlace& place) {
    const std::size_t next = memory == Memory::open ? openObjects.size() + 1 : inside.size();
    const auto [object, isNew] = innermost().objects.see(name, {place, next});
    openObjects.push_back(object.number);
    if (isNew) {
        makeRoom(next);
        return std::nullopt;
    }
    outgrown = memory == Memory::open;
    return object.place;
}

void NameCheck::makeRoom(std::size_t number) {
    if (number == inside.size()) inside.emplace_back();
    inside[number].objects.clear();
    inside[number].parameters.clear();
}

std::optional<KDXPlace> NameCheck::addParameter(const SeenName& name, const KDXPlace& place) {
    const auto [parameter, isNew] = innermost().parameters.see(name, {place, 0});
    return isNew ? std::nullopt : std::optional(parameter.place);
}

}  // namespace kiv::detail
