#include "ExtendedAttributes.h"

#include <sys/types.h>
#include <sys/xattr.h>

#include <algorithm>
#include <cerrno>
#include <map>
#include <optional>
#include <string>

namespace kdx {
namespace {

using Attributes = std::map<std::string, std::string>;

/// What `get` puts into a buffer, whose size it tells when it is given none.
template <typename Get>
std::optional<std::string> readWhole(Get get) {
    const ssize_t size = get(nullptr, 0);
    if (size < 0) return std::nullopt;
    std::string text(static_cast<std::size_t>(size), '\0');
    const ssize_t read = get(text.data(), text.size());
    if (read < 0) return std::nullopt;
    text.resize(static_cast<std::size_t>(read));
    return text;
}

std::optional<Attributes> attributesOf(int file) {
    const auto names =
        readWhole([&](char* buffer, std::size_t size) { return ::flistxattr(file, buffer, size); });
    Attributes attributes;
    if (!names && errno == ENOTSUP) return attributes;
    if (!names) return std::nullopt;
    for (std::size_t begin = 0; begin < names->size();) {
        const std::string name(names->c_str() + begin);
        begin += name.size() + 1;
        auto value = readWhole([&](char* buffer, std::size_t size) {
            return ::fgetxattr(file, name.c_str(), buffer, size);
        });
        if (!value) return std::nullopt;
        attributes.emplace(name, std::move(*value));
    }
    return attributes;
}

}  // namespace

bool copyExtendedAttributes(int from, int to) {
    const auto wanted = attributesOf(from);
    const auto own = attributesOf(to);
    if (!wanted || !own) return false;
    for (const auto& [name, value] : *own)
        if (wanted->count(name) == 0 && ::fremovexattr(to, name.c_str()) != 0) return false;
    return std::all_of(wanted->begin(), wanted->end(),
                       [&](const Attributes::value_type& attribute) {
                           const auto& [name, value] = attribute;
                           const auto found = own->find(name);
                           if (found != own->end() && found->second == value) return true;
                           return ::fsetxattr(to, name.c_str(), value.data(), value.size(), 0) == 0;
                       });
}

}  // namespace kdx
