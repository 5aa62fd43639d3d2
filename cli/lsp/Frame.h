#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace kdx::lsp {

// A message on the wire: header lines "NAME: VALUE", an empty line, and so many bytes as the header
// Content-Length says. Lines end in CR LF; LF alone is taken, too.

/// Cuts a stream of bytes, which comes in pieces of any size, into messages.
class FrameReader {
public:
    /// Takes the next bytes of the stream.
    void append(std::string_view bytes);

    /// The next message, without its headers, when all of it has come.
    /// @throws Trouble when the stream is no longer in step: for headers without a length, and for
    /// a length beyond 1 GiB.
    std::optional<std::string> next();

private:
    bool readHeaders();

    std::string buffer;
    std::size_t begin = 0;              // of what has not been cut off yet
    std::optional<std::size_t> length;  // as the headers read so far say
    bool inBody = false;
};

/// What goes in front of a message.
std::string headerOf(std::string_view message);

}  // namespace kdx::lsp
