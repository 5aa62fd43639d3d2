#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>

/// That copies of a value are whole and go their own ways, and that a move takes the text which
/// `textOf` makes of it, with `left` as what is promised of the value moved from.
template <typename Value, typename TextOf>
void expectValueSemantics(const Value& source, const Value& other, const TextOf& textOf,
                          const std::string& left) {
    const std::string text = textOf(source);
    Value copy(source);
    EXPECT_EQ(textOf(copy), text);
    copy = other;
    EXPECT_EQ(textOf(copy), textOf(other));
    EXPECT_EQ(textOf(source), text);
    copy = source;
    copy = static_cast<const Value&>(copy);
    EXPECT_EQ(textOf(copy), text);
    // NOLINTBEGIN(bugprone-use-after-move): what a move leaves behind is promised.
    Value moved(std::move(copy));
    EXPECT_EQ(textOf(moved) + "\n" + textOf(copy), text + "\n" + left);
    copy = std::move(moved);
    EXPECT_EQ(textOf(copy) + "\n" + textOf(moved), text + "\n" + left);
    // NOLINTEND(bugprone-use-after-move)
}
