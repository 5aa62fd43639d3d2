#include "EditorConfig.h"

#include <editorconfig/editorconfig.h>

#include <charconv>
#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <string_view>

#include "base/Status.h"

namespace kdx {
namespace {

namespace fs = std::filesystem;

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

/// Whether a folder or one above it has settings.
bool findsSettings(fs::path folder) {
    std::error_code unknown;
    while (!fs::exists(folder / ".editorconfig", unknown)) {
        if (!folder.has_relative_path()) return false;
        folder = folder.parent_path();
    }
    return true;
}

/// The same, looked up once for each folder: where there are none, as is usual, looking for them at
/// each file would take a quarter of the time that a small one takes.
bool haveSettings(const fs::path& folder) {
    static std::mutex mutex;
    static std::map<std::string, bool> known;
    const std::lock_guard lock(mutex);
    const auto found = known.find(folder.string());
    if (found != known.end()) return found->second;
    return known.emplace(folder.string(), findsSettings(folder)).first->second;
}

}  // namespace

std::optional<std::size_t> configuredIndent(const std::string& path) {
    const fs::path whole = fs::absolute(path).lexically_normal();
    if (!haveSettings(whole.parent_path())) return std::nullopt;
    const Handle handle(editorconfig_handle_init());
    const int failure = editorconfig_parse(whole.string().c_str(), handle.get());
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
