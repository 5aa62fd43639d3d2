#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace bench {

/// What every reader of the same content must see.
struct Counts {
    std::uint64_t objects = 0;
    std::uint64_t parameters = 0;
    std::uint64_t valueBytes = 0;

    bool operator==(const Counts& other) const {
        return objects == other.objects && parameters == other.parameters &&
               valueBytes == other.valueBytes;
    }
};

std::string toText(const Counts& counts);

/// One content in several formats: the files `directory`/`name`.FORMAT.
class Corpus {
public:
    Corpus(const std::string& directory, const std::string& name) : stem(directory + "/" + name) {}

    /// @throws std::runtime_error when there is no such file.
    std::string text(std::string_view format) const;
    bool has(std::string_view format) const;
    /// What a reader of that format must see. An INI file holds only the objects with parameters.
    Counts expected(std::string_view format) const;

private:
    std::string stem;
};

}  // namespace bench
