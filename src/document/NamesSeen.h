#pragma once

#include <kiv/KDXText.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv::detail {

/// The name of a parameter, or the type and the name of an object; a name that is the type is left
/// empty. The bytes must outlive it.
struct SeenName {
    std::string_view first;
    std::string_view second;

    bool operator==(const SeenName& other) const {
        return first == other.first && second == other.second;
    }
    bool operator<(const SeenName& other) const {
        const int order = first.compare(other.first);
        return order != 0 ? order < 0 : second < other.second;
    }
};

/// Where something was seen, and its number.
struct Sighting {
    KDXPlace place;
    std::size_t number = 0;
};

/// What was seen first under each name.
class NamesSeen {
public:
    /// What was seen first under this name, and whether that is `now`.
    std::pair<Sighting, bool> see(const SeenName& name, const Sighting& now) {
        if (many) {
            const auto [seen, isNew] = many->try_emplace(name, now);
            return {seen->second, isNew};
        }
        const auto seen = std::find_if(few.begin(), few.end(),
                                       [&name](const Entry& entry) { return entry.first == name; });
        if (seen != few.end()) return {seen->second, false};
        few.emplace_back(name, now);
        if (few.size() == kMany) sortAll();
        return {now, true};
    }

    void clear() {
        few.clear();
        many.reset();
    }

private:
    using Entry = std::pair<SeenName, Sighting>;

    static constexpr std::size_t kMany = 32;

    void sortAll() {
        many = std::make_unique<std::map<SeenName, Sighting>>(few.begin(), few.end());
        few = {};
    }

    // Nearly all objects hold few names, which are found faster one by one. A tree, because nobody
    // can choose names that make it slow, as they can with a hash table.
    std::vector<Entry> few;
    std::unique_ptr<std::map<SeenName, Sighting>> many;
};

}  // namespace kiv::detail
