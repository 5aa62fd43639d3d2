#include "parser/LineShape.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>

namespace {

std::string textOf(const kiv::detail::LineShape& shape) {
    return std::to_string(shape.spaces) + ' ' + std::to_string(shape.wordEnd) + ' ' +
           std::to_string(shape.nameEnd) + ' ' + std::to_string(shape.hash) +
           (shape.hasBackslash ? " \\" : "");
}

/// That a line is seen alike in blocks and byte by byte, alone and with text behind it.
void expectSameShape(const std::string& line) {
    const std::string text = line + "\n \\#";
    const std::string_view inText = std::string_view(text).substr(0, line.size());
    const std::string shape = textOf(kiv::detail::shapeByBytes(line));
    EXPECT_EQ(textOf(kiv::detail::shapeOf(line, line.size())), shape);
    EXPECT_EQ(textOf(kiv::detail::shapeOf(inText, text.size())), shape);
    EXPECT_EQ(kiv::detail::findLineFeed(text), text.find('\n'));
}

}  // namespace

TEST(LineShape, isTheSameInBlocksAsByteByByte) {
    std::mt19937 random(9);
    const std::string_view often = "    abzAZ09&._#\\=:";
    for (int i = 0; i < 100000 && !testing::Test::HasFailure(); ++i) {
        std::string line(random() % 40, ' ');
        for (std::size_t at = random() % 12; at < line.size(); ++at)
            line[at] = often[random() % often.size()];
        SCOPED_TRACE(line);
        expectSameShape(line);
    }
    for (int byte = 0; byte < 256; ++byte)
        expectSameShape(std::string(20, static_cast<char>(byte)));
}
