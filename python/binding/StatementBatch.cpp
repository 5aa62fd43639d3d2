#include "StatementBatch.h"

namespace kdx {
namespace {

constexpr std::size_t kStatements = 4096;

bool isKept(kiv::MiniKDXParser::lineType kind) {
    return kind == kiv::MiniKDXParser::lineObject || kind == kiv::MiniKDXParser::lineParameter ||
           kind == kiv::MiniKDXParser::lineEnd;
}

}  // namespace

bool StatementBatch::read(kiv::KDXReader& reader) {
    statements.clear();
    halves.clear();
    while (statements.size() < kStatements && reader.next()) {
        if (!isKept(reader.kind())) continue;
        statements.push_back({reader.kind(), reader.first().size(), reader.second().size()});
        halves.append(reader.first()).append(reader.second());
    }
    return !statements.empty();
}

}  // namespace kdx
