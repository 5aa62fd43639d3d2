#include "EditorConfig.h"

#include <editorconfig/editorconfig.h>

#include <charconv>
#include <filesystem>
#include <memory>
#include <string_view>

#include "base/Status.h"

namespace kdx {
namespace {

constexpr std::size_t kWidest = 64;

struct DestroyHandle {
    void operator()(void* handle) const { (void)editorconfig_handle_destroy(handle); }
};
using Handle = std::unique_ptr<void, DestroyHandle>;

/// The value of a setting, which the files may leave open.
std::string_view valueOf(const Handle& handle, std::string_view wanted) {
    std::string_view found;
    const int count = editorconfig_handle_get_name_value_count(handle.get());
    for (int i = 0; i < count; ++i) {
        const char* name = nullptr;
        const char* value = nullptr;
        editorconfig_handle_get_name_value(handle.get(), i, &name, &value);
        if (name == wanted) found = value;
    }
    return found;
}

std::optional<std::size_t> widthIn(std::string_view value) {
    std::size_t width = 0;
    const char* const end = value.data() + value.size();
    const auto [behind, error] = std::from_chars(value.data(), end, width);
    if (error != std::errc() || behind != end || width == 0 || width > kWidest) return std::nullopt;
    return width;
}

}  // namespace

std::optional<std::size_t> configuredIndent(const std::string& path) {
    const Handle handle(editorconfig_handle_init());
    const std::string whole = std::filesystem::absolute(path).lexically_normal().string();
    const int failure = editorconfig_parse(whole.c_str(), handle.get());
    if (failure > 0) {
        const std::string file = editorconfig_handle_get_err_file(handle.get());
        throw Trouble("cannot be laid out: line " + std::to_string(failure) + " of " + file +
                      " is no setting");
    }
    if (failure < 0) throw Trouble(editorconfig_get_error_msg(failure));
    const auto width = widthIn(valueOf(handle, "indent_size"));
    return width ? width : widthIn(valueOf(handle, "tab_width"));
}

}  // namespace kdx
