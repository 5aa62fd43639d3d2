#include <gtest/gtest.h>
#include <kiv/Error.h>
#include <kiv/KDXFormatting.h>
#include <kiv/KDXToStringMapMap.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "support/EventRecorder.h"
#include "support/Text.h"

// Holds that what the documentation shows is so. A block of "kdx" is read, and what comes out of it
// is the block of "events", "error" or "indented" behind it. A block of "cpp" stands in a program
// of the examples, one of "text" is what a program of the examples prints: both are run by tests
// of their own.

namespace fs = std::filesystem;

namespace {

const fs::path kProject = KIV_PROJECT;

std::string read(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

struct Block {
    std::string kind, text;
};

std::vector<Block> blocksOf(const fs::path& document) {
    std::vector<Block> blocks;
    bool inside = false;
    for (const std::string& line : linesOf(read(document))) {
        const bool fence = line.rfind("```", 0) == 0;
        if (fence && !inside) blocks.push_back({line.substr(3), ""});
        if (fence) inside = !inside;
        if (!fence && inside) blocks.back().text += line + '\n';
    }
    return blocks;
}

std::string eventsOf(const std::string& text) {
    EventRecorder recorder(linesOf(text));
    recorder.parse();
    return recorder.events;
}

std::string errorOf(const std::string& text) {
    kiv::StringMapMap map;
    try {
        kiv::KDXToStringMapMap::convert(text, map);
    } catch (const kiv::KDXToStringMapMap::Except& exception) {
        return exception.message() + '\n';
    } catch (const kiv::data::invalid& error) {
        return error.message() + '\n';
    }
    return "";
}

std::string indented(const std::string& text) {
    std::string result;
    for (const std::string& line : kiv::KDXFormatting::indentKDX(linesOf(text)))
        result += line + '\n';
    return result;
}

bool isInExample(const std::string& text, const fs::path& folder, const char* extension) {
    for (const auto& entry : fs::directory_iterator(kProject / folder))
        if (entry.path().extension() == extension &&
            read(entry.path()).find(text) != std::string::npos)
            return true;
    return false;
}

/// Whether a block is what it should be, after the block of KDX before it.
void check(const Block& block, const std::string& kdx) {
    if (block.kind == "events") {
        EXPECT_EQ(eventsOf(kdx), block.text) << kdx;
    } else if (block.kind == "error") {
        EXPECT_EQ(errorOf(kdx), block.text) << kdx;
    } else if (block.kind == "indented") {
        EXPECT_EQ(indented(kdx), block.text) << kdx;
    } else if (block.kind == "cpp") {
        EXPECT_TRUE(isInExample(block.text, "examples", ".cpp")) << block.text;
    } else if (block.kind == "text") {
        EXPECT_TRUE(isInExample(block.text, "examples/expected", ".txt")) << block.text;
    } else {
        EXPECT_TRUE(block.kind == "kdx" || block.kind == "sh") << block.kind;
    }
}

}  // namespace

TEST(Documentation, showsWhatIsSo) {
    for (const char* document :
         {"README.md", "docs/language.md", "docs/errors.md", "docs/guarantees.md"}) {
        SCOPED_TRACE(document);
        std::string kdx;
        const auto blocks = blocksOf(kProject / document);
        EXPECT_FALSE(blocks.empty());
        for (const Block& block : blocks) {
            check(block, kdx);
            if (block.kind == "kdx") kdx = block.text;
        }
    }
}
