#pragma once

#include <kiv/ActionBuilder.h>
#include <kiv/ArgumentTypes.h>
#include <kiv/KDXExport.h>

#include <cstdint>
#include <string>
#include <vector>

namespace kiv {

/// Writes a KDX document, call by call.
///
///     kiv::KDXBuilder builder;
///     builder.addAction("Reset");
///     builder.pushObject("Sample", "s1");
///     builder.addParam("Volume", 2.5, "ml");
///     builder.popObject();
///     builder.getKDX();
///     // >Reset
///     // Sample: s1
///     //   Volume = 2.5 [ml]
///     // END
///
/// Types, names and values are written as they are, unless an operation says otherwise. What KDX
/// cannot carry is not guarded against: a line feed, a '#' or a final backslash in a value (see
/// CleanKDXParamString), in a type or a parameter's name a character that is no name character.
///
/// A call that throws leaves the builder unchanged, also when an allocation fails. A copy carries
/// on by itself from the same place. A move leaves the source without text or indentation at the
/// level that it had: good for assignment or destruction.
class KIV_KDX_EXPORT KDXBuilder {
public:
    /// An empty document.
    KDXBuilder();

    /// A document that begins with the objects of `rootPath` open, as pushRoot() opens them.
    explicit KDXBuilder(const std::string& rootPath);

    KDXBuilder(const KDXBuilder& other);
    KDXBuilder(KDXBuilder&& other) noexcept;
    KDXBuilder& operator=(const KDXBuilder& other);
    KDXBuilder& operator=(KDXBuilder&& other) noexcept;
    ~KDXBuilder();

    /// Opens an object inside the innermost open one: "TYPE: NAME".
    void pushObject(const std::string& type, const std::string& name);

    /// Opens an object without a name: "TYPE:".
    void pushObject(const std::string& type);

    /// Opens an object with the mark "&replace " in front of its type.
    void pushReplacedObject(const std::string& type, const std::string& name);
    void pushReplacedObject(const std::string& type);

    /// Opens one object for each component of a path such as "/Sample:s1/Channel", inside what is
    /// open. A component without a name of its own is opened without one.
    void pushRoot(const std::string& path);

    /// Closes the innermost open object.
    /// @throws kiv::internal::error when none is open.
    void popObject();

    /// Closes every open object, if any.
    void popAll();

    /// Adds a parameter, "NAME = VALUE", to the innermost open object; at the top level, too.
    void addParam(const std::string& name, const std::string& value);

    /// The values, separated by ", ".
    void addParam(const std::string& name, const std::vector<std::string>& values);

    /// An integer of any type, in decimal; true is 1 and false is 0.
    void addParam(const std::string& name, int value);
    template <typename Integer, detail::IfInteger<Integer> = 0>
    void addParam(const std::string& name, Integer value) {
        addParam(name, std::to_string(value));
    }

    /// The number in at most six significant digits, with an exponent where it is shorter (0.1,
    /// 1e-05, 1.23457e+06) and a decimal point in every locale.
    void addParam(const std::string& name, double value);

    /// The same with a unit in brackets, which need not be given: 2.5 [ml]. Blanks around the unit
    /// are dropped; if nothing is left of it, the number stands alone.
    void addParam(const std::string& name, double value, const std::string& unit);

    /// Adds an action line, ">ACTION ", at the top level. Blanks around the action are dropped, and
    /// a ">" in front of it need not be given.
    /// @throws kiv::internal::error when an object is open, or when nothing is left of the action.
    void addAction(const std::string& action);

    /// The same, with a text of parameters behind it, or with parameters separated by ",".
    void addAction(const std::string& action, const std::string& params);
    void addAction(const std::string& action, const std::vector<std::string>& params);

    /// Adds the line that `action` built, as it is.
    /// @throws kiv::internal::error when an object is open.
    void addAction(const ActionBuilder& action);

    /// The document so far. The reference lives as long as the builder and shows its later changes.
    /// @throws kiv::internal::error when an object is open.
    const std::string& getKDX() const;

    // A null pointer, or 0, is no text, and a character no number: these do not compile.
    template <typename Path, typename = detail::IfNoText<Path>>
    explicit KDXBuilder(Path) = delete;
    template <typename... Texts, typename = detail::IfNoText<Texts...>>
    void pushObject(Texts...) = delete;
    template <typename... Texts, typename = detail::IfNoText<Texts...>>
    void pushReplacedObject(Texts...) = delete;
    template <typename Path, typename = detail::IfNoText<Path>>
    void pushRoot(Path) = delete;
    template <typename Name, typename Value, typename... Unit,
              typename = detail::IfNoParameter<Name, Value, Unit...>>
    void addParam(Name, Value, Unit...) = delete;
    template <typename... Texts, typename = detail::IfNoText<Texts...>>
    void addAction(Texts...) = delete;

private:
    template <typename Change>
    void changeWholly(Change change);

    std::int32_t level = 0;
    std::string indentStep;
    std::string indent;
    std::string text;
};

}  // namespace kiv
