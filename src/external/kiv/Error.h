#pragma once

#include <kiv/ArgumentTypes.h>
#include <kiv/KDXExport.h>

#include <string>

namespace kiv {

/// The kind of a failure. Every failure of this library is of the one kind below.
enum errorType : int {
    errorTypeFailure = 4,
};

/// The root of what the parser and the builders throw.
///
/// It has no base class: a handler for `std::exception` does not catch it.
///
///     try {
///         parser.parse();
///     } catch (const kiv::Error& error) {
///         std::cerr << error.message() << '\n';
///     }
class KIV_KDX_EXPORT Error {
public:
    Error(const std::string& className, const std::string& functionName, const std::string& message,
          errorType type);
    Error(const Error&);
    Error& operator=(const Error&);
    virtual ~Error();

    /// The class that failed, for example "KDXBuilder". Lives as long as the exception does, like
    /// the other two texts.
    const std::string& className() const noexcept;
    /// The function that failed, for example "popObject".
    const std::string& functionName() const noexcept;
    /// What went wrong, for a person to read.
    const std::string& message() const noexcept;
    errorType type() const noexcept;

    // A null pointer, or 0, is no text: this does not compile.
    template <typename Class, typename Function, typename Message,
              typename = detail::IfNoText<Class, Function, Message>>
    Error(Class, Function, Message, errorType) = delete;

private:
    std::string classNameText;
    std::string functionNameText;
    std::string messageText;
    errorType errorKind;
};

namespace internal {

/// The program called a builder in an order or with an argument that makes no sense.
class KIV_KDX_EXPORT error : public Error {
public:
    error(const std::string& className, const std::string& functionName, const std::string& message,
          errorType type);
    error(const error&);
    error& operator=(const error&);
    ~error() override;

    // A null pointer, or 0, is no text: this does not compile.
    template <typename Class, typename Function, typename Message,
              typename = detail::IfNoText<Class, Function, Message>>
    error(Class, Function, Message, errorType) = delete;
};

}  // namespace internal

namespace data {

/// Something is wrong with the data that the program was given.
class KIV_KDX_EXPORT error : public Error {
public:
    error(const std::string& className, const std::string& functionName, const std::string& message,
          errorType type);
    error(const error&);
    error& operator=(const error&);
    ~error() override;

    // A null pointer, or 0, is no text: this does not compile.
    template <typename Class, typename Function, typename Message,
              typename = detail::IfNoText<Class, Function, Message>>
    error(Class, Function, Message, errorType) = delete;
};

/// The data breaks the rules of its language.
class KIV_KDX_EXPORT invalid : public error {
public:
    invalid(const std::string& className, const std::string& functionName,
            const std::string& message, errorType type);
    invalid(const invalid&);
    invalid& operator=(const invalid&);
    ~invalid() override;

    // A null pointer, or 0, is no text: this does not compile.
    template <typename Class, typename Function, typename Message,
              typename = detail::IfNoText<Class, Function, Message>>
    invalid(Class, Function, Message, errorType) = delete;
};

}  // namespace data
}  // namespace kiv
