#pragma once

#include <kiv/ArgumentTypes.h>
#include <kiv/KDXExport.h>

#include <string>

namespace kiv {

/// A parameter value without the backslashes at its end, which would continue its line. The
/// writers do not clean values themselves:
///
///     builder.addParam("Path", kiv::CleanKDXParamString("C:\\data\\"));  // Path = C:\data
///
/// Only the last run of backslashes goes. Everything else stays, a backslash with blanks behind it
/// too, which continues the line as well. A copy is independent; a move leaves the source empty.
class KIV_KDX_EXPORT CleanKDXParamString {
public:
    explicit CleanKDXParamString(const std::string& value);

    CleanKDXParamString(const CleanKDXParamString& other);
    CleanKDXParamString(CleanKDXParamString&& other) noexcept;
    CleanKDXParamString& operator=(const CleanKDXParamString& other);
    CleanKDXParamString& operator=(CleanKDXParamString&& other) noexcept;
    ~CleanKDXParamString();

    /// The cleaned value. The reference lives as long as the object; assignment changes what it
    /// shows.
    const std::string& str() const;

    /// The same as str().
    operator const std::string&() const;

    // A null pointer, or 0, is no text: this does not compile.
    template <typename Value, typename = detail::IfNoText<Value>>
    explicit CleanKDXParamString(Value) = delete;

private:
    std::string text;
};

}  // namespace kiv
