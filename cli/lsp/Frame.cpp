#include "Frame.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <utility>

#include "base/Status.h"

namespace kdx::lsp {
namespace {

constexpr std::string_view kLengthHeader = "content-length:";
constexpr std::size_t kLongestMessage = std::size_t{1} << 30;
constexpr std::size_t kLongestHeader = 4096;

constexpr const char* kNoLength = "standard input: a message without a Content-Length header";
constexpr const char* kBadLength = "standard input: a Content-Length that cannot be";
constexpr const char* kNoHeader = "standard input: a header that does not end";

bool isLengthHeader(std::string_view line) {
    std::string name(line.substr(0, kLengthHeader.size()));
    for (char& c : name) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return name == kLengthHeader;
}

std::size_t lengthIn(std::string_view line) {
    line.remove_prefix(kLengthHeader.size());
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    std::size_t length = 0;
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), length);
    if (error != std::errc() || end != line.data() + line.size() || length > kLongestMessage)
        throw Trouble(kBadLength);
    return length;
}

}  // namespace

void FrameReader::append(std::string_view bytes) {
    buffer.erase(0, std::exchange(begin, 0));
    buffer.append(bytes);
}

std::optional<std::string> FrameReader::next() {
    if (!inBody && !readHeaders()) return std::nullopt;
    if (buffer.size() - begin < *length) return std::nullopt;
    std::string message = buffer.substr(begin, *length);
    begin += *length;
    length.reset();
    inBody = false;
    return message;
}

/// @return whether the empty line behind the headers has come.
bool FrameReader::readHeaders() {
    for (;;) {
        const std::size_t end = buffer.find('\n', begin);
        if (std::min(end, buffer.size()) - begin > kLongestHeader) throw Trouble(kNoHeader);
        if (end == std::string::npos) return false;
        std::string_view line(buffer.data() + begin, end - begin);
        line.remove_suffix(line.size() - (line.find_last_not_of(" \t\r") + 1));
        begin = end + 1;
        if (isLengthHeader(line)) length = lengthIn(line);
        if (line.empty()) break;
    }
    if (!length) throw Trouble(kNoLength);
    return inBody = true;
}

std::string headerOf(std::string_view message) {
    return "Content-Length: " + std::to_string(message.size()) + "\r\n\r\n";
}

}  // namespace kdx::lsp
