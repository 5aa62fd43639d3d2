#pragma once

#include <kiv/KDXText.h>

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
        return second == other.second && first == other.first;
    }
    bool operator<(const SeenName& other) const {
        const int order = second.compare(other.second);  // what mostly differs
        return order != 0 ? order < 0 : first < other.first;
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
        const std::size_t mark = markOf(name);
        for (const Entry& entry : few)
            if (entry.mark == mark && entry.name == name) return {entry.sighting, false};
        few.push_back({mark, name, now});
        if (few.size() == kMany) sortAll();
        return {now, true};
    }

    void clear() {
        few.clear();
        many.reset();
    }

private:
    struct Entry {
        std::size_t mark = 0;
        SeenName name;
        Sighting sighting;
    };

    static constexpr std::size_t kMany = 32;

    /// The same for the same name, and for few others.
    static std::size_t markOf(const SeenName& name) {
        const std::string_view text = name.second.empty() ? name.first : name.second;
        if (text.empty()) return 0;
        const auto first = static_cast<unsigned char>(text.front());
        const auto last = static_cast<unsigned char>(text.back());
        return text.size() << 16U ^ std::size_t{first} << 8U ^ last;
    }

    void sortAll() {
        many = std::make_unique<std::map<SeenName, Sighting>>();
        for (const Entry& entry : few) many->emplace(entry.name, entry.sighting);
        few = {};
    }

    // Nearly all objects hold few names, which are found faster one by one. A tree, because nobody
    // can choose names that make it slow, as they can with a hash table.
    std::vector<Entry> few;
    std::unique_ptr<std::map<SeenName, Sighting>> many;
};

}  // namespace kiv::detail
