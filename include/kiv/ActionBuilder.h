#pragma once

#include <kiv/KDXExport.h>

#include <string>

namespace kiv {

/// Writes one action line.
///
///     kiv::ActionBuilder action("start");
///     action.addParam("speed", "10");
///     action.addParam("fast");
///     action.getKDX();  // >start speed=10, fast
///
/// A copy is independent; a move leaves the source with an empty text.
class KIV_KDX_EXPORT ActionBuilder {
public:
    /// Begins the line with ">" and `action` as it is: nothing is trimmed, and a ">" in front of it
    /// is not looked for.
    explicit ActionBuilder(const std::string& action);

    ActionBuilder(const ActionBuilder& other);
    ActionBuilder(ActionBuilder&& other) noexcept;
    ActionBuilder& operator=(const ActionBuilder& other);
    ActionBuilder& operator=(ActionBuilder&& other) noexcept;
    ~ActionBuilder();

    /// Appends a parameter with a name. In the value, a backslash is put before every comma;
    /// otherwise name and value are written as they are.
    /// @throws kiv::internal::error when `name` is empty. The line is then unchanged, as it is when
    /// an allocation fails.
    void addParam(const std::string& name, const std::string& value);

    /// Appends a parameter without a name. A backslash is put before every comma.
    void addParam(const std::string& value);

    /// The line so far, without a line feed.
    std::string getKDX() const;

private:
    void addParamImpl(const std::string& name, const std::string& value);

    std::string text;
    bool firstParam = true;
};

}  // namespace kiv
