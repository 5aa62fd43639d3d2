#pragma once

#include <kiv/ArgumentTypes.h>
#include <kiv/KDXExport.h>
#include <kiv/MiniKDXParser.h>
#include <kiv/StringMapMap.h>

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace kiv {

/// Reads KDX text into a StringMapMap.
///
///     kiv::StringMapMap map;
///     kiv::KDXToStringMapMap::convert("Sample: s1\n  Rate = 10\nEND\n", map);
///     map.at("/Sample:s1").at("Rate");  // 10
///
/// The map is added to, never cleared. What is there first wins: a parameter that stands again in
/// the same object, in a second object of the same path, or that the map held before, keeps its
/// first value. Actions leave no trace. Objects that are never closed are no error.
class KIV_KDX_EXPORT KDXToStringMapMap : public MiniKDXParser {
public:
    /// What convert() and the constructors throw for a text that is well formed line by line, but
    /// not as a whole. It has no base class.
    class KIV_KDX_EXPORT Except {
    public:
        explicit Except(const std::string& message);
        Except(const Except&);
        Except& operator=(const Except&);
        ~Except();

        /// What is wrong, for a person to read. Lives as long as the exception.
        const std::string& message() const noexcept;

        template <typename Text, typename = detail::IfNoText<Text>>
        explicit Except(Text) = delete;

    private:
        std::string text;
    };

    /// Adds the objects and parameters of `text`, lines ended by line feeds, to `outputMap`.
    ///
    /// @param typeFilter top-level types; an empty set takes every object. A top-level object is
    /// taken or left with everything inside it.
    /// @param excludeTypes false takes the top-level objects whose type is in `typeFilter`, true
    /// takes all others.
    ///
    /// @throws kiv::data::invalid for a line that is no KDX.
    /// @throws Except "Too many ENDs in KDX" for an END while no object is open;
    /// "Attempt to add parameter before object opened" for a parameter while none is. Neither can
    /// happen inside an object that is left out. What was added before the failing line stays in
    /// the map, whatever is thrown.
    ///
    /// The text is not copied. Time is in proportion to it, times the depth of a search in the map
    /// for an object or a parameter that does not come right behind the one before.
    static void convert(const std::string& text, StringMapMap& outputMap,
                        const std::set<std::string>& typeFilter = noTypeFilter(),
                        bool excludeTypes = false);

    /// The same for a list of physical lines without line terminators.
    static void convert(const std::vector<std::string>& lines, StringMapMap& outputMap,
                        const std::set<std::string>& typeFilter = noTypeFilter(),
                        bool excludeTypes = false);

    /// Does what convert() does, and keeps a copy of the lines to parse() again, into the same map;
    /// an object left open, or left out, by one such walk is so in the next.
    /// `outputMap` and `typeFilter` must outlive the converter and its copies. The map may change
    /// between and during such walks, as long as the entries of open objects stay in it.
    KDXToStringMapMap(const std::string& text, StringMapMap& outputMap,
                      const std::set<std::string>& typeFilter = noTypeFilter(),
                      bool excludeTypes = false);
    KDXToStringMapMap(const std::vector<std::string>& lines, StringMapMap& outputMap,
                      const std::set<std::string>& typeFilter = noTypeFilter(),
                      bool excludeTypes = false);

    /// The copy writes into the same map.
    KDXToStringMapMap(const KDXToStringMapMap& other);
    KDXToStringMapMap& operator=(const KDXToStringMapMap&) = delete;
    ~KDXToStringMapMap() override;

    /// An empty set that lives as long as the program.
    static const std::set<std::string>& noTypeFilter();

    // A null pointer, or 0, is no text: these do not compile.
    template <typename Text, typename = detail::IfNoText<Text>>
    static void convert(Text, StringMapMap&, const std::set<std::string>& = noTypeFilter(),
                        bool = false) = delete;
    template <typename Text, typename = detail::IfNoText<Text>>
    KDXToStringMapMap(Text, StringMapMap&, const std::set<std::string>& = noTypeFilter(),
                      bool = false) = delete;

protected:
    void newObject(const std::string& type, const std::string& name) override;
    void newParameter(const std::string& name, const std::string& value) override;
    void endObject() override;

private:
    using Entry = StringMapMap::iterator;

    class Converter;

    Entry nextEntry;  // behind the one made last, or the end of the map
    StringMapMap& outputMap;
    const std::set<std::string>& typeFilter;
    std::string path;              // begins with the path of the innermost open object
    std::vector<Entry> pathStack;  // of the objects that are open and taken
    std::uint64_t skipDepth = 0;
    bool excludeTypes;
};

}  // namespace kiv
