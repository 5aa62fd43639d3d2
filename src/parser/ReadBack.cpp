#include "parser/ReadBack.h"

#include "base/Blank.h"

namespace kiv::detail {
namespace {

constexpr std::string_view kStatementBehind = "behind = 1\n";

}  // namespace

Meaning meaningOf(const KDXReader& reader) {
    const bool hasHalves =
        reader.kind() != MiniKDXParser::lineAction && reader.kind() != MiniKDXParser::lineVerbatim;
    return {reader.kind(), hasHalves ? reader.first() : withoutTrailingBlanks(reader.text()),
            reader.second(), reader.comment()};
}

bool readsBackAs(std::string_view statement, const Meaning& meaning) {
    const std::string text = std::string(statement).append(kStatementBehind);
    KDXReader reader(text);
    if (!reader.next() || reader.source() != statement || !(meaningOf(reader) == meaning))
        return false;
    return reader.next() && reader.source() == kStatementBehind;
}

}  // namespace kiv::detail
