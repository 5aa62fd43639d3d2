#pragma once

#include <kiv/KDXReader.h>

#include <cstddef>
#include <string>
#include <vector>

#include "OpenDocument.h"

namespace kdx::lsp {

/// Reads a text statement by statement, and knows the object around each.
class NestedReader {
public:
    struct Object {
        std::size_t begin = 0;
        std::string type;
        std::string name;
        std::string indentation;
    };

    explicit NestedReader(const OpenDocument& document) : reader(document.text().text()) {}

    /// @return false at the end, where what is never closed is still open.
    bool next() {
        if (reader.kind() == kiv::MiniKDXParser::lineObject) open();
        if (reader.kind() == kiv::MiniKDXParser::lineEnd && !objects.empty()) objects.pop_back();
        return reader.next();
    }

    const kiv::KDXReader& operator*() const { return reader; }
    const kiv::KDXReader* operator->() const { return &reader; }

    /// The innermost object around the statement, for an END the one that it closes; nothing at
    /// the top level.
    const Object* around() const { return objects.empty() ? nullptr : &objects.back(); }

    /// Where the statement begins.
    std::size_t begin() const { return reader.placeInSource(0).offset; }

private:
    void open() {
        const std::string_view source = reader.source();
        objects.push_back({begin(), std::string(reader.first()), std::string(reader.second()),
                           std::string(source.substr(0, source.find_first_not_of(" \t")))});
    }

    kiv::KDXReader reader;
    std::vector<Object> objects;
};

}  // namespace kdx::lsp
