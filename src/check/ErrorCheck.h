#pragma once

#include <kiv/KDXReader.h>

#include <cstddef>
#include <string_view>

#include "check/ProblemList.h"

namespace kiv::detail {

/// Finds what the readers refuse, and nesting that is deeper than allowed.
class ErrorCheck {
public:
    ErrorCheck(std::string_view givenText, const KDXReader& givenReader, ProblemList& givenProblems,
               std::size_t depthLimit)
        : wholeText(givenText),
          reader(givenReader),
          problems(givenProblems),
          maxDepth(depthLimit) {}

    /// Checks the reader's statement.
    void check() {
        switch (reader.kind()) {
            case MiniKDXParser::lineObject: return checkObject();
            case MiniKDXParser::lineParameter: return checkParameter();
            case MiniKDXParser::lineEnd: return checkEnd();
            case MiniKDXParser::lineUnrecognised: return checkUnrecognised();
            case MiniKDXParser::lineVerbatim:
            case MiniKDXParser::lineAction:
            case MiniKDXParser::lineBlank: return;
        }
    }

private:
    void checkObject() {
        if (openObjects++ == maxDepth) reportTooDeep();
    }
    void checkParameter() {
        if (openObjects == 0) reportNoObject();
    }
    void checkEnd() {
        if (openObjects == 0) return reportUnexpectedEnd();
        --openObjects;
    }
    void checkUnrecognised();
    void reportUnknownByte();
    void reportTextBehindEnd();
    void reportTooDeep();
    void reportNoObject();
    void reportUnexpectedEnd();
    bool canGo() const;

    std::string_view wholeText;
    const KDXReader& reader;
    ProblemList& problems;
    std::size_t maxDepth;
    std::size_t openObjects = 0;
};

}  // namespace kiv::detail
