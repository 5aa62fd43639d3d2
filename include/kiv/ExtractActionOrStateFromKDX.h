#pragma once

#include <kiv/ArgumentTypes.h>
#include <kiv/KDXExport.h>

#include <string>
#include <utility>
#include <vector>

/// Divides KDX text into what is to be done and what is to be set.
namespace kiv::ExtractActionOrStateFromKDX {

enum KDXLineType : int {
    Action = 0,  ///< action lines
    State = 1,   ///< all others: objects, parameters, ENDs, verbatim and unrecognised lines
};

/// The runs of action lines and the runs of all other lines of `text`, in its order. Kinds
/// alternate, and no run is empty.
///
/// Lines are joined where they were continued, trimmed, without comments, and separated by line
/// feeds; one that begins with '!' keeps its end as it is. Blank lines and lines of comment alone
/// are left out and end no run. Unlike in the parser, a backslash that blanks follow continues no
/// line.
///
///     extractActionOrStateFromKDX(">a\n>b\nSample: s1\n  x = 1 # c\nEND\n");
///     // {Action, ">a\n>b"}, {State, "Sample: s1\nx = 1\nEND"}
///
/// No text is refused, and nothing is thrown but what an allocation throws.
KIV_KDX_EXPORT std::vector<std::pair<KDXLineType, std::string>> extractActionOrStateFromKDX(
    const std::string& text);

// A null pointer, or 0, is no text: this does not compile.
template <typename Text, typename = detail::IfNoText<Text>>
std::vector<std::pair<KDXLineType, std::string>> extractActionOrStateFromKDX(Text) = delete;

}  // namespace kiv::ExtractActionOrStateFromKDX
