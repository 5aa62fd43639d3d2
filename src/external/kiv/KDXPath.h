#pragma once

#include <kiv/ArgumentTypes.h>
#include <kiv/KDXExport.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace kiv {

/// The path of an object: one (type, name) component for each nesting level, outermost first.
///
/// Path text is what a StringMapMap has as keys: per component a "/" and a type, then ":" and a
/// name when the name is neither empty nor equal to the type.
///
///     kiv::KDXPath path("/Sample:s1/Filter");
///     path.numComponent();  // 2
///     path.getName(0);      // s1
///     path.getName(1);      // Filter, the type: the component was written without a name
class KIV_KDX_EXPORT KDXPath {
public:
    /// A path without components.
    KDXPath();

    /// Reads path text. Every "/" starts a component, and the first ":" of a component ends its
    /// type; text before the first "/" is read as if a "/" stood before it. The empty text has
    /// no components, "/" has one, of empty type. No text is refused.
    explicit KDXPath(const std::string& pathText);

    KDXPath(const KDXPath&);
    KDXPath& operator=(const KDXPath&);
    ~KDXPath();

    std::size_t numComponent() const;

    /// The type of the component at `index`, counted from 0. The reference lives until the path
    /// is assigned to or destroyed, as does that of getName().
    /// @throws std::out_of_range when `index` is not less than numComponent().
    const std::string& getType(std::size_t index) const;

    /// The name of the component at `index`; its type when it was written without a name.
    /// @throws std::out_of_range when `index` is not less than numComponent().
    const std::string& getName(std::size_t index) const;

    /// Path text of `count` components from index `first` on, of fewer where the path ends.
    /// @throws std::out_of_range when `first` is greater than numComponent().
    std::string getSubPath(std::size_t first, std::size_t count) const;

    /// Orders by component, in each by type, then by name, byte-wise. A path comes right before
    /// the paths that begin with its components. A strict weak ordering; paths with the same
    /// components are equivalent.
    bool operator<(const KDXPath& other) const;

    // A null pointer, or 0, is no text: this does not compile.
    template <typename Text, typename = detail::IfNoText<Text>>
    explicit KDXPath(Text) = delete;

private:
    std::vector<std::pair<std::string, std::string>> components;
};

}  // namespace kiv
