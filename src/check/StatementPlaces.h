#pragma once

#include <kiv/KDXReader.h>

#include <string_view>

#include "base/Blank.h"
#include "base/ByteOrderMark.h"

namespace kiv::detail {

/// The blanks in front of a statement; a view without data for one of several lines, which tell
/// nothing of its depth.
inline std::string_view indentationOf(const KDXReader& reader) {
    if (reader.isContinued()) return {};
    const std::string_view source = reader.source();
    return source.substr(0, source.size() - withoutIndentation(source).size());
}

/// The same as reader.place(), where the indentation is known already.
inline KDXPlace placeOf(const KDXReader& reader, std::string_view text,
                        std::string_view indentation) {
    if (reader.isContinued()) return reader.place();
    const auto begin = static_cast<std::size_t>(reader.source().data() - text.data());
    return {begin + indentation.size(), reader.lineNumber(), indentation.size() + 1};
}

/// Where what the statement says ends.
inline KDXPlace endOf(const KDXReader& reader) {
    return reader.placeOf(KDXReader::Part::text, reader.text().size());
}

/// The same, where the place of its beginning is known already.
inline KDXPlace endOf(const KDXReader& reader, const KDXPlace& begin) {
    if (reader.isContinued()) return endOf(reader);
    const std::size_t length = reader.text().size();
    return {begin.offset + length, begin.line, begin.column + length};
}

/// The place so many bytes behind another one in the same line.
inline KDXPlace behind(KDXPlace place, std::size_t bytes) {
    return {place.offset + bytes, place.line, place.column + bytes};
}

}  // namespace kiv::detail
