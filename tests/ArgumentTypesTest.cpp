// What compiles, and what must not: there is nothing to run.

#include "support/Library.h"

namespace {

using kiv::ActionBuilder;
using kiv::KDXBuilder;
using kiv::KDXToStringMapMap;
using kiv::StringMapMapToKDX;
using List = std::vector<std::string>;
using Null = std::nullptr_t;

/// Whether the call compiles with the argument. It stands in a lambda, where 0 is still a literal.
template <typename Argument, typename Call>
constexpr bool takes(Call /*call*/) {
    return std::is_invocable_v<Call, Argument>;
}
template <typename... Values, typename Call>
constexpr bool takesAll(Call call) {
    return (takes<Values>(call) && ...);
}
template <typename... Values, typename Call>
constexpr bool takesAny(Call call) {
    return (takes<Values>(call) || ...);
}

constexpr auto addParam = [](auto value) -> decltype(KDXBuilder().addParam("n", value)) {};
constexpr auto addParamToAction =
    [](auto value) -> decltype(ActionBuilder("a").addParam("n", value)) {};
constexpr auto addValueToAction = [](auto value) -> decltype(ActionBuilder("a").addParam(value)) {};

template <typename Call>
constexpr bool takesIntegersAndTexts(Call call) {
    return takesAll<bool, signed char, unsigned char, short, unsigned short, int, unsigned, long,
                    unsigned long, long long, unsigned long long, std::string, const char*>(call) &&
           !takesAny<char, wchar_t, char16_t, char32_t, Null, void*, List*>(call);
}
static_assert(takesIntegersAndTexts(addParam) && takesIntegersAndTexts(addParamToAction) &&
              takesIntegersAndTexts(addValueToAction));
static_assert(takesAll<float, double, List>(addParam));
static_assert(!takesAny<float, double, List>(addParamToAction));

template <typename Object, typename... Calls>
constexpr bool refusesAll(Calls... /*calls*/) {
    return !(std::is_invocable_v<Calls, Object> || ...);
}
static_assert(refusesAll<KDXBuilder>([](auto b) -> decltype(b.addParam(0, 1)) {},
                                     [](auto b) -> decltype(b.addParam(0, List())) {},
                                     [](auto b) -> decltype(b.addParam("n", 1.5, 0)) {},
                                     [](auto b) -> decltype(b.addParam("n", 'c', "mm")) {},
                                     [](auto b) -> decltype(b.pushObject(0)) {},
                                     [](auto b) -> decltype(b.pushObject("T", nullptr)) {},
                                     [](auto b) -> decltype(b.pushReplacedObject(0)) {},
                                     [](auto b) -> decltype(b.pushReplacedObject(0, "n")) {},
                                     [](auto b) -> decltype(b.pushRoot(0)) {},
                                     [](auto b) -> decltype(b.addAction(0)) {},
                                     [](auto b) -> decltype(b.addAction("a", 0)) {},
                                     [](auto b) -> decltype(b.addAction(0, List())) {}));
static_assert(refusesAll<ActionBuilder>([](auto b) -> decltype(b.addParam(0, 1)) {}));
static_assert(refusesAll<kiv::UserMsg>([](auto m) -> decltype(m.arg(0)) {}));
static_assert(refusesAll<kiv::ObjectKDXParser>(
    [](auto p) -> decltype(p.parseForObject(0, 1)) {},
    [](auto p) -> decltype(p.parseForObjectsByType("T", 1, 0)) {}));
static_assert(
    refusesAll<kiv::StringMapMap>([](auto m) -> decltype(KDXToStringMapMap::convert(0, m)) {}));
static_assert(refusesAll<std::string>(
    [](auto s) -> decltype(StringMapMapToKDX::convert(0, kiv::StringMapMap(), s)) {},
    [](auto s) -> decltype(kiv::MiniKDXParser::determineLineType(0, s, s)) {}));

using Document = kiv::KDXDocument;
constexpr Document::Where kWhere = Document::before(Document::Node::none);
static_assert(
    refusesAll<Document>([](auto d) -> decltype(d.setValue(Document::Node::none, 0)) {},
                         [](auto d) -> decltype(d.setName(Document::Node::none, nullptr)) {},
                         [](auto d) -> decltype(d.setType(Document::Node::none, nullptr)) {},
                         [](auto d) -> decltype(d.setText(Document::Node::none, nullptr)) {},
                         [](auto d) -> decltype(d.setComment(Document::Node::none, nullptr)) {},
                         [](auto d) -> decltype(d.addParameter(kWhere, "n", 0)) {},
                         [](auto d) -> decltype(d.addObject(kWhere, nullptr)) {},
                         [](auto d) -> decltype(d.addAction(kWhere, 0)) {},
                         [](auto d) -> decltype(d.addComment(kWhere, 0)) {},
                         [](auto d) -> decltype(d.addText(kWhere, nullptr)) {},
                         [](auto d) -> decltype(d.findParameters({}, 0)) {},
                         [](auto d) -> decltype(d.removeParameters({}, nullptr)) {},
                         [](auto d) -> decltype(d.set({}, "n", 0)) {}));
static_assert(refusesAll<std::vector<kiv::KDXTextEdit>>(
    [](auto edits) -> decltype(kiv::applyEdits(nullptr, edits)) {}));
static_assert(takes<Document>([](auto d) -> decltype(d.set({}, "n", std::string())) {}));
static_assert(takes<Document>([](auto d) -> decltype(d.addObject(kWhere, "T")) {}));

// What means a number or an empty text is taken.
static_assert(takes<KDXBuilder>([](auto b) -> decltype(b.addParam("n", 0)) {}));
static_assert(takes<KDXBuilder>([](auto b) -> decltype(b.addParam("n", 1, "mm")) {}));
static_assert(takes<KDXBuilder>([](auto b) -> decltype(b.addParam("n", {"a", "b", "c"})) {}));
static_assert(takes<KDXBuilder>([](auto b) -> decltype(b.pushObject("T", {})) {}));

template <typename Type, typename... More>
constexpr bool isMadeOfText =
    !std::is_constructible_v<Type, Null, More...> && !std::is_constructible_v<Type, int, More...> &&
    std::is_constructible_v<Type, const char*, More...>;
static_assert(isMadeOfText<kiv::KDXReader> && isMadeOfText<Document>);
static_assert(isMadeOfText<KDXBuilder> && isMadeOfText<ActionBuilder>);
static_assert(isMadeOfText<kiv::CleanKDXParamString> && isMadeOfText<kiv::KDXPath>);
static_assert(isMadeOfText<kiv::SystemMsg> && isMadeOfText<kiv::UserMsg, bool*>);
static_assert(isMadeOfText<KDXToStringMapMap::Except>);
static_assert(isMadeOfText<KDXToStringMapMap, kiv::StringMapMap&>);
static_assert(isMadeOfText<StringMapMapToKDX, const kiv::StringMapMap&, std::string&>);
static_assert(isMadeOfText<kiv::data::invalid, std::string, std::string, kiv::errorType>);
static_assert(isMadeOfText<kiv::internal::error, std::string, std::string, kiv::errorType>);

/// A function of one text.
template <typename Call>
constexpr bool takesText(Call call) {
    return takesAll<std::string, const char*>(call) && !takesAny<int, long, Null>(call);
}
static_assert(takesText([](auto s) -> decltype(kiv::KDXFormatting::removeComment(s)) {}));
static_assert(takesText([](auto s) -> decltype(kiv::KDXFormatting::formatKDX(s)) {}));
static_assert(takesText([](auto s) -> decltype(kiv::KDXCheck::check(s)) {}));
static_assert(takesText([](auto s) -> decltype(kiv::findNoUtf8(s)) {}));
static_assert(takesText([](auto s) -> decltype(kiv::visibleText(s)) {}));
static_assert(takesText([](auto s) -> decltype(kiv::readPath(s)) {}));
static_assert(takesText([](auto s) -> decltype(kiv::partFor(s, {})) {}));
static_assert(takesText([](auto s) -> decltype(kiv::writtenValue(s, s)) {}));
static_assert(takesText([](auto s) -> decltype(kiv::appendLevel(std::declval<std::string&>(), s,
                                                                s)) {}));
static_assert(takesText([](auto s) -> decltype(kiv::MiniKDXParser::determineLineType(s)) {}));
static_assert(takesText(
    [](auto s) -> decltype(kiv::ExtractActionOrStateFromKDX::extractActionOrStateFromKDX(s)) {}));
static_assert(takesText([](auto s) -> decltype(kiv::StringUtilities::removeWhitespace(s)) {}));
static_assert(takesText([](auto s) -> decltype(kiv::StringUtilities::stringToVector(s, ' ')) {}));

}  // namespace
