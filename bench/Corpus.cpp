#include "Corpus.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace bench {

std::string toText(const Counts& counts) {
    return std::to_string(counts.objects) + " objects, " + std::to_string(counts.parameters) +
           " parameters, " + std::to_string(counts.valueBytes) + " bytes of values";
}

std::string Corpus::text(std::string_view format) const {
    const std::string path = stem + '.' + std::string(format);
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("cannot read " + path);
    std::string bytes(std::filesystem::file_size(path), '\0');
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return bytes;
}

bool Corpus::has(std::string_view format) const {
    return std::ifstream(stem + '.' + std::string(format)).good();
}

Counts Corpus::expected(std::string_view format) const {
    Counts counts;
    std::uint64_t withParameters = 0;
    std::istringstream(text("counts")) >> counts.objects >> counts.parameters >>
        counts.valueBytes >> withParameters;
    if (format == "ini") counts.objects = withParameters;
    return counts;
}

}  // namespace bench
