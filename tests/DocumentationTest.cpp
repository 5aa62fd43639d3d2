#include <kiv/KDXFormatting.h>
#include <kiv/KDXToStringMapMap.h>

#include <filesystem>

#include "support/EventRecorder.h"
#include "support/Text.h"

// Holds that what the documentation shows is so. A block of "kdx" is read, and what comes out of it
// is the block of "events", "error", "indented", "formatted" or "refusal" behind it. A block of
// "cpp" stands in a program of the examples, one of "text" is what a program of the examples
// prints, one of "pycon" a session of Python: all are run by tests of their own.

namespace {

const std::string kProject = KIV_PROJECT "/";

struct Block {
    std::string kind, text;
};

std::vector<Block> blocksOf(const std::string& document) {
    std::vector<Block> blocks;
    bool inside = false;
    for (const std::string& line : linesOf(readFile(kProject + document))) {
        const bool fence = line.rfind("```", 0) == 0;
        if (fence && !inside) blocks.push_back({line.substr(3), ""});
        if (fence) inside = !inside;
        if (!fence && inside) blocks.back().text += line + '\n';
    }
    return blocks;
}

bool isInFileOf(const std::string& folder, const char* extension, const std::string& text) {
    for (const auto& entry : std::filesystem::directory_iterator(kProject + folder))
        if (entry.path().extension() == extension &&
            readFile(entry.path().string()).find(text) != std::string::npos)
            return true;
    return false;
}

/// Whether a block is what it should be, after the block of KDX before it.
void check(const Block& block, const std::string& kdx) {
    const auto& [kind, text] = block;
    if (kind == "events") {
        EXPECT_EQ(eventsOf(linesOf(kdx)), text) << kdx;
    } else if (kind == "error") {
        kiv::StringMapMap map;
        const auto read = [&] { kiv::KDXToStringMapMap::convert(kdx, map); };
        EXPECT_EQ(messageOf(read) + '\n', text) << kdx;
    } else if (kind == "indented") {
        EXPECT_EQ(kiv::KDXFormatting::indentKDX(linesOf(kdx)), linesOf(text)) << kdx;
    } else if (kind == "refusal") {
        EXPECT_EQ(messageOf([&] { kiv::KDXFormatting::formatKDX(kdx); }) + '\n', text) << kdx;
    } else if (kind == "formatted") {
        EXPECT_EQ(kiv::KDXFormatting::formatKDX(kdx), text) << kdx;
    } else if (kind == "cpp") {
        EXPECT_TRUE(isInFileOf("examples", ".cpp", text)) << text;
    } else if (kind == "text") {
        EXPECT_TRUE(isInFileOf("examples/expected", ".txt", text)) << text;
    } else {
        EXPECT_TRUE(kind == "kdx" || kind == "sh" || kind == "pycon") << kind;
    }
}

}  // namespace

TEST(Documentation, showsWhatIsSo) {
    for (const char* document :
         {"README.md", "docs/language.md", "docs/errors.md", "docs/guarantees.md"}) {
        SCOPED_TRACE(document);
        std::string kdx;
        const auto blocks = blocksOf(document);
        EXPECT_FALSE(blocks.empty());
        for (const Block& block : blocks) {
            check(block, kdx);
            if (block.kind == "kdx") kdx = block.text;
        }
    }
}
