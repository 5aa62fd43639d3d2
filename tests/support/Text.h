#pragma once

#include <gtest/gtest.h>
#include <kiv/StringMapMap.h>

#include <fstream>
#include <initializer_list>
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

/// The bytes of a file in tests/data.
inline std::string readData(const std::string& name) {
    std::ifstream file(KIV_TEST_DATA + name, std::ios::binary);
    if (!file) ADD_FAILURE() << "cannot read " << name;
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The text cut at its line feeds, by means that are not the library's.
inline std::vector<std::string> linesOf(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

/// A map as text, one line an object: "/Sample:s1 {Rate=10, Unit=Hz}\n".
inline std::string dump(const kiv::StringMapMap& map) {
    std::string text;
    for (const auto& [path, parameters] : map) {
        text += path + " {";
        const char* separator = "";
        for (const auto& [name, value] : parameters) {
            text.append(separator).append(name).append("=").append(value);
            separator = ", ";
        }
        text += "}\n";
    }
    return text;
}

/// Random texts, the same in every run.
class RandomText {
public:
    bool oneIn(unsigned n) { return engine() % n == 0; }

    /// Up to `most` of the pieces, end to end.
    std::string of(const std::vector<std::string_view>& pieces, unsigned most) {
        std::string text;
        for (auto count = engine() % (most + 1); count > 0; --count)
            text += pieces[engine() % pieces.size()];
        return text;
    }

private:
    std::mt19937 engine{20240611};
};
