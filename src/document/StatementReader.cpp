#include "document/StatementReader.h"

namespace kiv::detail {
namespace {

using Part = KDXReader::Part;

std::string_view textOf(const KDXReader& reader, Part part) {
    switch (part) {
        case Part::line: return reader.line();
        case Part::text: return reader.text();
        case Part::first: return reader.first();
        case Part::second: return reader.second();
        case Part::comment: return reader.comment();
    }
    return {};
}

}  // namespace

StatementReader::StatementReader(std::string_view bytes) : reader(bytes) {
    if (reader.hasByteOrderMark()) {  // which is none where the statement stands
        shifted.assign("\n").append(bytes);
        shift = 1;
        reader = KDXReader(shifted);
        reader.next();
    }
    reader.next();
}

KDXPlace StatementReader::placeOf(Part part, std::size_t byte) const {
    const KDXPlace place = reader.placeOf(part, byte);
    return {place.offset - shift, place.line - shift, place.column};
}

std::size_t StatementReader::endOf(Part part) const {
    return reader.placeOf(part, textOf(reader, part).size()).offset - shift;
}

}  // namespace kiv::detail
