#pragma once

#include <kiv/KDXToStringMapMap.h>
#include <kiv/MiniKDXParser.h>
#include <kiv/StringUtilities.h>

#include <string>
#include <vector>

#include "Sinks.h"

namespace bench {

/// The library's events, handed on to a TouchSink.
class TouchParser : public kiv::MiniKDXParser {
public:
    using MiniKDXParser::MiniKDXParser;

    TouchSink sink;

protected:
    void newObject(const std::string& type, const std::string& name) override {
        sink.openObject(type, name);
    }
    void newParameter(const std::string& name, const std::string& value) override {
        sink.parameter(name, value);
    }
    void endObject() override { sink.closeObject(); }
};

inline Counts countsOf(const std::vector<std::string>& lines) {
    TouchParser parser(lines);
    parser.parse();
    return parser.sink.counts();
}

inline std::vector<std::string> linesOf(const std::string& text) {
    return kiv::StringUtilities::stringToVector(text, '\n');
}

inline kiv::StringMapMap mapOf(const std::string& text) {
    kiv::StringMapMap map;
    kiv::KDXToStringMapMap::convert(text, map);
    return map;
}

}  // namespace bench
