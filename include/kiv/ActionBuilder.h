#pragma once

#include <kiv/ArgumentTypes.h>
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

    /// The same with an integer of any type, in decimal; true is 1 and false is 0.
    template <typename Integer, detail::IfInteger<Integer> = 0>
    void addParam(const std::string& name, Integer value) {
        addParam(name, std::to_string(value));
    }
    template <typename Integer, detail::IfInteger<Integer> = 0>
    void addParam(Integer value) {
        addParam(std::to_string(value));
    }

    /// The line so far, without a line feed.
    std::string getKDX() const;

    // A null pointer, or 0, is no text, and a character no number: these do not compile.
    template <typename Action, typename = detail::IfNoText<Action>>
    explicit ActionBuilder(Action) = delete;
    template <typename Name, typename Value, typename = detail::IfNoParameter<Name, Value>>
    void addParam(Name, Value) = delete;
    template <typename Value, typename = detail::IfNoParameter<std::string, Value>>
    void addParam(Value) = delete;

private:
    std::string text;
    bool firstParam = true;
};

}  // namespace kiv
