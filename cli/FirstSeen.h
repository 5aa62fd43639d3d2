#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace kdx {

/// What was seen under a name.
struct Sighting {
    std::size_t line = 0;
    std::size_t number = 0;
};

/// What was seen first under each name.
class FirstSeen {
public:
    /// What was seen first under this name, and whether that is `now`.
    std::pair<Sighting, bool> see(const std::string& name, const Sighting& now) {
        if (many) {
            const auto [seen, isNew] = many->try_emplace(name, now);
            return {seen->second, isNew};
        }
        const auto seen = std::find_if(few.begin(), few.end(),
                                       [&name](const Entry& entry) { return entry.first == name; });
        if (seen != few.end()) return {seen->second, false};
        few.emplace_back(name, now);
        if (few.size() == kMany) indexAll();
        return {now, true};
    }

    void clear() {
        few.clear();
        many.reset();
    }

private:
    using Entry = std::pair<std::string, Sighting>;

    static constexpr std::size_t kMany = 32;

    void indexAll() {
        many = std::make_unique<std::unordered_map<std::string, Sighting>>(few.begin(), few.end());
        few = {};
    }

    // Nearly all objects hold few names, which are found faster one by one: a table of all names
    // of a text took most of the time of a check, waiting for memory.
    std::vector<Entry> few;
    std::unique_ptr<std::unordered_map<std::string, Sighting>> many;
};

}  // namespace kdx
