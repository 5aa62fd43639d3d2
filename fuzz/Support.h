#pragma once

#include <kiv/MiniKDXParser.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/Failure.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

/// What happens where a law does not hold: the end of the process, which a fuzzer takes for a
/// finding.
inline void (*onBrokenLaw)() = std::abort;

inline void require(bool holds, const char* law) {
    if (holds) return;
    std::cerr << "BROKEN LAW: " << law << '\n';
    onBrokenLaw();
}

/// Hands out the input piece by piece.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size)
        : Input({reinterpret_cast<const char*>(data), size}) {}
    explicit Input(std::string_view text) : rest(text) {}

    bool empty() const { return rest.empty(); }

    unsigned byte() {
        if (rest.empty()) return 0;
        const auto value = static_cast<unsigned char>(rest.front());
        rest.remove_prefix(1);
        return value;
    }

    /// The text up to the next `separator`, which is dropped.
    std::string until(char separator) {
        const std::string_view piece = rest.substr(0, rest.find(separator));
        rest.remove_prefix(std::min(piece.size() + 1, rest.size()));
        return std::string(piece);
    }

    std::string all() { return std::string(std::exchange(rest, {})); }

    std::vector<std::string> lines() {
        std::vector<std::string> lines;
        while (!rest.empty()) lines.push_back(until('\n'));
        return lines;
    }

private:
    std::string_view rest;
};

/// What the library throws for a call; empty when it accepts it.
template <typename Call>
std::string messageOfAnything(Call call) {
    try {
        call();
    } catch (const kiv::Error& error) {
        return error.message();
    }
    return "";
}

inline bool endsInBackslash(std::string_view text) {
    return !text.empty() && text.back() == '\\';
}

inline std::string withoutLeadingBlanks(const std::string& text) {
    return text.substr(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
}

/// Writes down what a walk reports, and holds the walk to what it promises.
class Events : public kiv::MiniKDXParser {
public:
    struct Event {
        char kind;
        std::string first;
        std::string second;
        std::size_t line;
        bool operator==(const Event& other) const {
            return kind == other.kind && first == other.first && second == other.second &&
                   line == other.line;
        }
    };

    using MiniKDXParser::getLineNumber;
    using MiniKDXParser::MiniKDXParser;

    std::vector<Event> list;
    std::string failure;

    /// @return whether every line was KDX.
    bool read() {
        list.clear();
        depth = 0;
        failure = messageOf([this] { parse(); });
        require(objectStack.size() == depth, "the stack holds what was opened and not closed");
        return failure.empty();
    }

private:
    void newObject(const std::string& type, const std::string& name) override {
        add('o', type, name);
        ++depth;
    }
    void newParameter(const std::string& name, const std::string& value) override {
        add('p', name, value);
    }
    void endObject() override {
        add('e', "", "");
        depth -= depth == 0 ? 0 : 1;
    }
    void newAction(const std::string& action) override {
        add('a', withoutLeadingBlanks(action), "");
    }

    void add(char kind, const std::string& first, const std::string& second) {
        require(objectStack.size() == depth, "the stack shows the objects around the event");
        require(getLineNumber() < getCommands().size(), "an event comes from a line");
        require(list.empty() || list.back().line < getLineNumber(), "events come line by line");
        list.push_back({kind, first, second, getLineNumber()});
    }

    std::size_t depth = 0;
};

}  // namespace fuzz
