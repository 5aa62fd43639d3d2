#pragma once

#include <kiv/ArgumentTypes.h>
#include <kiv/KDXExport.h>

#include <cstdint>
#include <string>

namespace kiv {

/// A message text with numbered tokens, and the number of arguments it was given so far.
struct MessageTemplate {
    std::int32_t count = 0;
    std::string text;
};

/// A message to the program's developer, built from a template with the tokens "%1" to "%99".
///
///     kiv::SystemMsg message("Current level = %1");
///     message.arg(2);
///     std::string text = message;  // Current level = 2
class KIV_KDX_EXPORT SystemMsg {
public:
    explicit SystemMsg(const std::string& text);

    /// Puts `argument`, in decimal, in place of every occurrence of the next token: "%1" at the
    /// first call, "%2" at the second. A template that lacks the token stays unchanged, and a
    /// warning goes to the standard error stream. Inserted text is not searched for tokens.
    SystemMsg& arg(std::int32_t argument);

    /// The text with the tokens of the arguments given so far replaced.
    operator std::string() const;

    // A null pointer, or 0, is no text: this does not compile.
    template <typename Text, typename = detail::IfNoText<Text>>
    explicit SystemMsg(Text) = delete;

private:
    MessageTemplate onlyText;
};

/// A message to the program's user, about the user's data. It carries its text twice: one to
/// show, one to log; both are filled alike.
class KIV_KDX_EXPORT UserMsg {
public:
    /// @param flag may be null; it is neither read nor written.
    UserMsg(const std::string& text, bool* flag);

    /// As SystemMsg::arg(), with a text, in both texts. A token missing from both warns twice.
    UserMsg& arg(std::string argument);

    /// The first text with the tokens of the arguments given so far replaced.
    operator std::string() const;

    // A null pointer, or 0, is no text: these do not compile.
    template <typename Text, typename = detail::IfNoText<Text>>
    UserMsg(Text, bool*) = delete;
    template <typename Argument, typename = detail::IfNoText<Argument>>
    UserMsg& arg(Argument) = delete;

private:
    MessageTemplate shownText;
    MessageTemplate loggedText;
};

}  // namespace kiv
