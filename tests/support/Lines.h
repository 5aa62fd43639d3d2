#pragma once

#include <string>
#include <vector>

/// Lists of lines written as one text in a table: "first|second".
inline std::vector<std::string> lines(const std::string& text) {
    std::vector<std::string> list(1);
    for (const char c : text) {
        if (c == '|')
            list.emplace_back();
        else
            list.back() += c;
    }
    return list;
}

inline std::string joined(const std::vector<std::string>& list) {
    std::string text;
    for (const std::string& line : list)
        text.append(&line == &list.front() ? "" : "|").append(line);
    return text;
}
