#pragma once

#include <kiv/StringMapMap.h>

#include <iterator>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "Corpus.h"

namespace bench {

inline Counts countsOf(const kiv::StringMapMap& map) {
    Counts counts;
    counts.objects = map.size();
    for (const auto& object : map) {
        counts.parameters += object.second.size();
        for (const auto& parameter : object.second) counts.valueBytes += parameter.second.size();
    }
    return counts;
}

/// Counts what it is told, and touches every name and value at both ends.
class TouchSink {
public:
    void openObject(std::string_view key) {
        ++seen.objects;
        touch(key);
    }
    void openObject(std::string_view type, std::string_view name) {
        openObject(type);
        touch(name);
    }
    void parameter(std::string_view name, std::string_view value) {
        ++seen.parameters;
        seen.valueBytes += value.size();
        touch(name);
        touch(value);
    }
    void closeObject() {}

    Counts counts() const {
        [[maybe_unused]] static volatile std::uint64_t
            read;  // a sum nobody reads is a sum nobody computes
        read = ends;
        return seen;
    }

private:
    void touch(std::string_view text) {
        if (text.empty()) return;
        ends += static_cast<unsigned char>(text.front());
        ends += static_cast<unsigned char>(text.back());
    }

    Counts seen;
    std::uint64_t ends = 0;
};

/// Makes the map of maps by path, with hints: text mostly comes in the order of the map.
class MapSink {
public:
    /// @param key the object's component of the path: its type, ":" and its name.
    void openObject(std::string_view key) {
        startPath();
        path.append(key);
        makeEntry();
    }
    void openObject(std::string_view type, std::string_view name) {
        startPath();
        path.append(type).append(1, ':').append(name);
        makeEntry();
    }
    void parameter(std::string_view name, std::string_view value) {
        auto& parameters = open.back().entry->second;
        parameters.emplace_hint(parameters.end(), name, value);
    }
    void closeObject() { open.pop_back(); }

    Counts counts() const { return countsOf(map); }

private:
    struct OpenObject {
        kiv::StringMapMap::iterator entry;
        std::size_t pathLength;
    };

    void startPath() {
        path.resize(open.empty() ? 0 : open.back().pathLength);
        path.append(1, '/');
    }

    void makeEntry() {
        const auto hint = open.empty() ? map.end() : std::next(last);
        last = map.emplace_hint(hint, std::piecewise_construct, std::forward_as_tuple(path),
                                std::tuple<>());
        open.push_back({last, path.size()});
    }

    kiv::StringMapMap map;
    kiv::StringMapMap::iterator last;
    std::string path;
    std::vector<OpenObject> open;
};

}  // namespace bench
