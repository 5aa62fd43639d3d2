#include "PathReader.h"

#include <kiv/KDXDocument.h>

namespace kdx {

bool PathReader::next() {
    using kiv::MiniKDXParser;
    if (reader.kind() == MiniKDXParser::lineEnd && !lengths.empty()) {
        pathText.resize(lengths.back());
        lengths.pop_back();
    }
    if (!reader.next()) return false;
    if (reader.kind() != MiniKDXParser::lineObject) return true;
    lengths.push_back(pathText.size());
    kiv::appendLevel(pathText, reader.first(), reader.second());
    return true;
}

}  // namespace kdx
