#include <kiv/KDXToStringMapMap.h>
#include <kiv/StringUtilities.h>

#include <iterator>
#include <tuple>
#include <utility>

#include "base/PathText.h"
#include "parser/PhysicalLines.h"
#include "parser/Walk.h"

namespace kiv {
namespace {

constexpr const char* kTooManyEnds = "Too many ENDs in KDX";
constexpr const char* kParameterOutside = "Attempt to add parameter before object opened";

}  // namespace

KDXToStringMapMap::Except::Except(const std::string& message) : text(message) {}
KDXToStringMapMap::Except::Except(const Except&) = default;
KDXToStringMapMap::Except& KDXToStringMapMap::Except::operator=(const Except&) = default;
KDXToStringMapMap::Except::~Except() = default;

const std::string& KDXToStringMapMap::Except::message() const noexcept {
    return text;
}

KDXToStringMapMap::KDXToStringMapMap(const std::string& text, StringMapMap& map,
                                     const std::set<std::string>& types, bool exclude)
    : KDXToStringMapMap(std::vector<std::string>(), map, types, exclude) {
    getCommands() = StringUtilities::stringToVector(text, '\n');
    parse();
}

KDXToStringMapMap::KDXToStringMapMap(const std::vector<std::string>& lines, StringMapMap& map,
                                     const std::set<std::string>& types, bool exclude)
    : MiniKDXParser(lines),
      nextEntry(map.end()),
      outputMap(map),
      typeFilter(types),
      excludeTypes(exclude) {
    parse();
}

KDXToStringMapMap::KDXToStringMapMap(const KDXToStringMapMap&) = default;
KDXToStringMapMap::~KDXToStringMapMap() = default;

/// Takes what a walk finds, also without the copies that the callbacks of a parser need.
class KDXToStringMapMap::Converter {
public:
    explicit Converter(KDXToStringMapMap& filled) : target(filled) {}

    void newObject(std::string_view type, std::string_view name) {
        if (target.skipDepth != 0 || (target.pathStack.empty() && isLeftOut(type))) {
            ++target.skipDepth;
            return;
        }
        const std::size_t enclosing = target.pathStack.empty() ? 0 : current()->first.size();
        detail::putComponent(target.path, enclosing, type, name);
        target.pathStack.push_back(enterPath());
    }

    void newParameter(std::string_view name, std::string_view value) {
        if (target.skipDepth != 0) return;
        if (target.pathStack.empty()) throw Except(kParameterOutside);
        auto& parameters = current()->second;
        parameters.emplace_hint(parameters.end(), name, value);
    }

    void endObject() {
        if (target.skipDepth != 0) {
            --target.skipDepth;
            return;
        }
        if (target.pathStack.empty()) throw Except(kTooManyEnds);
        target.pathStack.pop_back();
    }

    void newAction(std::string_view /*line*/) {}

private:
    Entry current() const { return target.pathStack.back(); }

    bool isLeftOut(std::string_view type) const {
        if (target.typeFilter.empty()) return false;
        const bool listed = target.typeFilter.count(std::string(type)) != 0;
        return listed == target.excludeTypes;
    }

    // Text mostly comes in the order of the map, so that an object belongs right behind the one
    // before. Unlike try_emplace(), this looks at the place just once when the object is new, as
    // nearly all are. For one that is there, an entry is made in vain.
    Entry enterPath() {
        const auto entry =
            target.outputMap.emplace_hint(target.nextEntry, std::piecewise_construct,
                                          std::forward_as_tuple(target.path), std::tuple<>());
        target.nextEntry = std::next(entry);
        return entry;
    }

    KDXToStringMapMap& target;
};

void KDXToStringMapMap::convert(const std::string& text, StringMapMap& map,
                                const std::set<std::string>& types, bool exclude) {
    KDXToStringMapMap target(std::vector<std::string>(), map, types, exclude);
    Converter converter(target);
    std::size_t lineNumber = 0;
    detail::walk(detail::TextLines(text), converter, lineNumber);
}

void KDXToStringMapMap::convert(const std::vector<std::string>& lines, StringMapMap& map,
                                const std::set<std::string>& types, bool exclude) {
    KDXToStringMapMap target(std::vector<std::string>(), map, types, exclude);
    Converter converter(target);
    std::size_t lineNumber = 0;
    detail::walk(detail::ListedLines(lines), converter, lineNumber);
}

const std::set<std::string>& KDXToStringMapMap::noTypeFilter() {
    static const std::set<std::string> everyType;
    return everyType;
}

void KDXToStringMapMap::newObject(const std::string& type, const std::string& name) {
    nextEntry = outputMap.end();  // the caller or a subclass may have taken entries out of the map
    Converter(*this).newObject(type, name);
}

void KDXToStringMapMap::newParameter(const std::string& name, const std::string& value) {
    Converter(*this).newParameter(name, value);
}

void KDXToStringMapMap::endObject() {
    Converter(*this).endObject();
}

}  // namespace kiv
