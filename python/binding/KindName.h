#pragma once

#include <kiv/MiniKDXParser.h>

namespace kdx {

/// What Python calls a kind of statement.
inline const char* kindName(kiv::MiniKDXParser::lineType kind) {
    switch (kind) {
        case kiv::MiniKDXParser::lineUnrecognised: return "unrecognised";
        case kiv::MiniKDXParser::lineVerbatim: return "verbatim";
        case kiv::MiniKDXParser::lineBlank: return "blank";
        case kiv::MiniKDXParser::lineObject: return "object";
        case kiv::MiniKDXParser::lineParameter: return "parameter";
        case kiv::MiniKDXParser::lineEnd: return "end";
        case kiv::MiniKDXParser::lineAction: return "action";
    }
    return "";
}

}  // namespace kdx
