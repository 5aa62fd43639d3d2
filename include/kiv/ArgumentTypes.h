#pragma once

#include <type_traits>

// Which arguments may not stand for a text, and which are integers. std::string would take nullptr
// or the number 0 for a null pointer, and a char would be written as a number.
namespace kiv::detail {

template <typename Argument, typename... Types>
constexpr bool kIsAnyOf = (... || std::is_same_v<Argument, Types>);

template <typename Argument>
constexpr bool kIsInteger =
    kIsAnyOf<Argument, bool, signed char, unsigned char, short, unsigned short, int, unsigned, long,
             unsigned long, long long, unsigned long long>;

template <typename Argument>
constexpr bool kIsNoText = std::is_null_pointer_v<Argument> || std::is_arithmetic_v<Argument>;

/// Neither a text nor a number: nullptr, and the types of characters.
template <typename Argument>
constexpr bool kIsNoValue = std::is_null_pointer_v<Argument> ||
                            (std::is_integral_v<Argument> && !kIsInteger<Argument>);

/// For a template that takes an integer of any type, bool among them.
template <typename Argument>
using IfInteger = std::enable_if_t<kIsInteger<Argument>, int>;

/// For a deleted overload: the best one where one of the arguments, all of which should be texts,
/// is none; no candidate otherwise.
template <typename... Texts>
using IfNoText = std::enable_if_t<(... || kIsNoText<Texts>)>;

/// The same for a parameter: its name, its value and other texts.
template <typename Name, typename Value, typename... Texts>
using IfNoParameter =
    std::enable_if_t<kIsNoText<Name> || kIsNoValue<Value> || (... || kIsNoText<Texts>)>;

}  // namespace kiv::detail
