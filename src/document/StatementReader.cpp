#include "document/StatementReader.h"

namespace kiv::detail {
StatementReader::StatementReader(std::string_view bytes) : reader(bytes) {
    if (reader.hasByteOrderMark()) {  // which is none where the statement stands
        shifted.assign("\n").append(bytes);
        shift = 1;
        reader = KDXReader(shifted);
        reader.next();
    }
    reader.next();
}

KDXPlace StatementReader::placeOf(KDXReader::Part part, std::size_t byte) const {
    const KDXPlace place = reader.placeOf(part, byte);
    return {place.offset - shift, place.line - shift, place.column};
}

std::size_t StatementReader::endOf(KDXReader::Part part) const {
    return reader.placeOf(part, reader.part(part).size()).offset - shift;
}

}  // namespace kiv::detail
