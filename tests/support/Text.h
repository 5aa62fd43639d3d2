#pragma once

#include <gtest/gtest.h>
#include <kiv/KDXText.h>
#include <kiv/StringMapMap.h>

#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

/// A row of a table: what goes in, and what should come out.
struct Case {
    const char *input, *result;
};

/// The bytes of a file.
inline std::string readFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) ADD_FAILURE() << "cannot read " << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The bytes of a file in tests/data.
inline std::string readData(const std::string& name) {
    return readFile(KIV_TEST_DATA + name);
}

/// The text cut at its line feeds, by means that are not the library's.
inline std::vector<std::string> linesOf(const std::string& text, char lineFeed = '\n') {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line, lineFeed);) lines.push_back(line);
    return lines;
}

/// Lists of lines written as one text in a table: "first|second".
inline std::vector<std::string> lines(const std::string& text) {
    return linesOf(text, '|');
}

/// A text as it stands in a row of a table: '|' for a line feed, '^' for a carriage return.
inline std::string unpacked(std::string row) {
    for (char& c : row) c = c == '|' ? '\n' : c == '^' ? '\r' : c;
    return row;
}

inline std::string joined(const std::vector<std::string>& list) {
    std::string text;
    for (const std::string& line : list)
        text.append(&line == &list.front() ? "" : "|").append(line);
    return text;
}

/// "3:7": line and column.
inline std::string placeText(const kiv::KDXPlace& place) {
    return std::to_string(place.line) + ':' + std::to_string(place.column);
}

/// A map as text, one line an object: "/Sample:s1 {Rate=10, Unit=Hz}\n".
inline std::string dump(const kiv::StringMapMap& map) {
    std::string text;
    for (const auto& [path, parameters] : map) {
        text += path + " {";
        for (const auto& [name, value] : parameters)
            text.append(text.back() == '{' ? "" : ", ").append(name + '=' + value);
        text += "}\n";
    }
    return text;
}
