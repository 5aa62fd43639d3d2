#pragma once

#include <kiv/KDXReader.h>

#include <string>
#include <string_view>

namespace kiv::detail {

/// A reader on a statement, whose bytes must outlive it, and on which it stays.
class StatementReader {
public:
    explicit StatementReader(std::string_view bytes);

    const KDXReader& operator*() const { return reader; }
    const KDXReader* operator->() const { return &reader; }

    /// The place of a byte of a part in the bytes.
    KDXPlace placeOf(KDXReader::Part part, std::size_t byte) const;

    /// Where a part begins and ends in the bytes.
    std::size_t beginOf(KDXReader::Part part) const { return reader.placeOf(part).offset - shift; }
    std::size_t endOf(KDXReader::Part part) const;

private:
    std::string shifted;
    std::size_t shift = 0;
    KDXReader reader;
};

}  // namespace kiv::detail
