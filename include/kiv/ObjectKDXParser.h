#pragma once

#include <kiv/ArgumentTypes.h>
#include <kiv/KDXExport.h>
#include <kiv/MiniKDXParser.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace kiv {

/// Finds objects in KDX lines and hands back their text.
///
///     kiv::ObjectKDXParser parser({"Sample: s1", "Channel: A", "Gain = 2", "END", "END"});
///     parser.parseForObject("A", -1);
///     parser.getResults();  // "Channel:A", "  Gain = 2", "END"
///
/// The text is put together anew: object lines as "TYPE:NAME" without indentation, parameters as
/// "NAME = VALUE" behind two spaces at every depth, and "END"; no actions, no comments.
///
/// A match is the outermost object that fits: what is nested in it is part of its text and no match
/// of its own. It may stand at any depth; the objects around it are not in the text.
///
/// Depth limits: -1 takes everything nested in a match, n takes n levels of nested objects, 0 and
/// all other negative values the match's own parameters alone.
///
/// A move takes the results and the searched texts from the source, which keeps its lines.
class KIV_KDX_EXPORT ObjectKDXParser : public MiniKDXParser {
public:
    /// A parser of a copy of `lines`. Nothing is parsed yet.
    explicit ObjectKDXParser(const std::vector<std::string>& lines);

    ObjectKDXParser(const ObjectKDXParser& other);
    ObjectKDXParser(ObjectKDXParser&& other);
    ObjectKDXParser& operator=(const ObjectKDXParser& other);
    ObjectKDXParser& operator=(ObjectKDXParser&& other);
    ~ObjectKDXParser() override;

    /// Finds the objects with this name; an object without a name goes by its type. getResults()
    /// then holds the text of all matches, one after the other. What an earlier search by type
    /// found stays.
    ///
    /// @throws kiv::data::invalid for a line that is no KDX. What was collected until then stays in
    /// the results. So does the text of a match that is never closed, which is no error.
    void parseForObject(std::string name, int depthLimit);

    /// Finds the objects of this type. getTypeResults() then holds the text of each match under its
    /// key; a later match with the same key replaces the earlier one.
    ///
    /// The key is the match's own object line. With a `groupType`, it is the name of the innermost
    /// object of that type around the match, or the match itself, if there is one and it has a
    /// name.
    ///
    /// @throws kiv::data::invalid for a line that is no KDX. The matches closed until then stay in
    /// the results by type, the lines of an open one in getResults(), as at the end of the text.
    void parseForObjectsByType(std::string type, int depthLimit, std::string groupType);

    /// The lines found, for reading, change or taking. Every search clears them. The reference
    /// lives as long as the parser, as does that of getTypeResults().
    std::vector<std::string>& getResults();

    /// The lines found by type, under their keys. The next search by type clears them.
    std::map<std::string, std::vector<std::string>>& getTypeResults();

    // A null pointer, or 0, is no text: these do not compile.
    template <typename Name, typename = detail::IfNoText<Name>>
    void parseForObject(Name, int) = delete;
    template <typename Type, typename GroupType, typename = detail::IfNoText<Type, GroupType>>
    void parseForObjectsByType(Type, int, GroupType) = delete;

private:
    void newObject(const std::string& type, const std::string& name) override;
    void newParameter(const std::string& name, const std::string& value) override;
    void endObject() override;

    std::string searchName;
    std::string searchType;
    bool collecting = false;
    std::vector<std::string> results;
    std::map<std::string, std::vector<std::string>> typeResults;
    std::string matchKey;
    std::int32_t matchDepth = 0;
    std::int32_t depthLimit = -1;
    std::string groupType;
    bool byName = true;
    std::vector<std::size_t> openGroups;  // where on objectStack objects of the group type stand
};

}  // namespace kiv
