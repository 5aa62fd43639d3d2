#include "parser/PhysicalLines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <string_view>

namespace {

std::string textOf(const kiv::detail::LineShape& shape) {
    return std::to_string(shape.spaces) + ' ' + std::to_string(shape.wordEnd) + ' ' +
           std::to_string(shape.nameEnd) + ' ' + std::to_string(shape.hash);
}

/// That a line is seen alike in blocks and byte by byte, alone and with text behind it.
void expectSameShape(const std::string& line) {
    const std::string text = line + "\n \\#";
    const std::string_view inText = std::string_view(text).substr(0, line.size());
    const std::string shape = textOf(kiv::detail::shapeByBytes(line));
    EXPECT_EQ(textOf(kiv::detail::shapeOf(line, line.size())), shape);
    EXPECT_EQ(textOf(kiv::detail::shapeOf(inText, text.size())), shape);
    const bool holdsBackslash = line.find('\\') != std::string::npos;
    EXPECT_EQ(kiv::detail::holdsBackslash(line, line.size()), holdsBackslash);
    EXPECT_EQ(kiv::detail::holdsBackslash(inText, text.size()), holdsBackslash);
}

/// That the marks of a text show its lines as they are.
void expectSameLines(const std::string& text) {
    kiv::detail::TextLines lines(text);
    std::size_t begin = 0;
    for (std::string_view line; lines.next(line); begin += line.size() + 1) {
        const std::string_view expected = std::string_view(text).substr(begin);
        ASSERT_EQ(line, expected.substr(0, expected.find('\n')));
        ASSERT_EQ(textOf(lines.shapeOf(line)), textOf(kiv::detail::shapeByBytes(line)));
    }
    EXPECT_GE(begin, text.size());
}

#ifdef __SSE2__
/// That blocks are marked alike in narrow and in wide steps.
void expectSameMarks(const std::string& text) {
    const std::size_t count =
        std::min(text.size() / kiv::detail::Marks::kBlock, kiv::detail::Marks::kBlocks);
    kiv::detail::StretchMarks narrow{};
    kiv::detail::StretchMarks wide{};
    kiv::detail::narrowMarkBlocks()(text.data(), 0, count, narrow);
    kiv::detail::widestMarkBlocks()(text.data(), 0, count, wide);
    EXPECT_EQ(std::memcmp(&narrow, &wide, sizeof narrow), 0);
}
#else
void expectSameMarks(const std::string& /*text*/) {}
#endif

}  // namespace

TEST(LineShape, isTheSameInBlocksAsByteByByte) {
    std::mt19937 random(9);
    const std::string_view often = "    abzAZ09&._#\\=:";
    std::string text;
    for (int i = 0; i < 100000 && !testing::Test::HasFailure(); ++i) {
        std::string line(random() % 40, ' ');
        for (std::size_t at = random() % 12; at < line.size(); ++at)
            line[at] = often[random() % often.size()];
        SCOPED_TRACE(line);
        expectSameShape(line);
        text.append(random() % 50 == 0 ? random() % 5000 : 0, 'a').append(line) += '\n';
        if (i % 1000 != 0) continue;
        text.resize(text.size() - random() % std::min<std::size_t>(text.size(), 130));
        expectSameLines(text);
        expectSameMarks(text);
        text.clear();
    }
    for (int byte = 0; byte < 256; ++byte) {
        expectSameShape(std::string(20, static_cast<char>(byte)));
        expectSameMarks(std::string(64, static_cast<char>(byte)));
    }
}
