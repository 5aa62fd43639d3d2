#pragma once

#include <kiv/KDXReader.h>

#include <string>
#include <string_view>
#include <vector>

namespace kdx {

/// Reads a text statement by statement, and knows the path of the object around each, as a map has
/// it. The text must outlive the reader.
class PathReader {
public:
    explicit PathReader(std::string_view text) : reader(text) {}

    /// Goes on to the next statement. @return false at the end of the text.
    bool next();

    const kiv::KDXReader& statement() const { return reader; }

    /// The path of the innermost open object; empty at the top level. An object, and the END that
    /// closes it, count as being in it.
    const std::string& path() const { return pathText; }

private:
    kiv::KDXReader reader;
    std::string pathText;
    std::vector<std::size_t> lengths;  // of the paths around the open objects
};

}  // namespace kdx
