// SPDX-License-Identifier: BSL-1.0

#include <import_explorer/display_width.hpp>

#include <support/row_name.hpp>

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>

namespace explorer {
namespace {

struct Row {
    std::string_view why;
    std::string source;
    std::string shown;
    std::size_t width;

    friend void PrintTo(Row const& row, std::ostream* stream) { *stream << row.why; }
};

class DisplayedAs : public testing::TestWithParam<Row> {};

TEST_P(DisplayedAs, TextAndWidth) {
    DisplayedText const shown = displayText(GetParam().source, 40);
    EXPECT_EQ(shown.text, GetParam().shown);
    EXPECT_EQ(shown.width, GetParam().width);
}

std::string marks(std::size_t number) {
    std::string text;
    while (number-- > 0) {
        text += "\u0301";
    }
    return text;
}

INSTANTIATE_TEST_SUITE_P(
    DisplayWidth, DisplayedAs,
    testing::Values(
        Row{"nothing", "", "", 0}, Row{"letters take one column", "aé", "aé", 2},
        Row{"East Asian wide letters take two", "図形", "図形", 4},
        Row{"full width forms take two", "ＡＢ", "ＡＢ", 4},
        Row{"half width forms take one", "ｱｲ", "ｱｲ", 2}, Row{"pictures take two", "😀", "😀", 2},
        Row{"combining marks take none", "e\u0301", "e\u0301", 1},
        Row{"the later parts of a Hangul syllable take none", "\u1112\u1161\u11AB",
            "\u1112\u1161\u11AB", 2},
        Row{"the joiners take none", "a\u200D\u200Cb", "a\u200D\u200Cb", 2},
        Row{"an escape cannot command the terminal", "\x1b[31m", "<U+001B>[31m", 12},
        Row{"nor can an eight-bit control", "\u009B2J", "<U+009B>2J", 10},
        Row{"a delete is a control", "\x7F", "<U+007F>", 8},
        Row{"a tab has no width on its own", "a\tb", "a<U+0009>b", 10},
        Row{"the direction of writing cannot be turned", "\u202Ex", "<U+202E>x", 9},
        Row{"what is invisible is shown", "\u200B\u2028", "<U+200B><U+2028>", 16},
        Row{"unassigned and private characters may look like anything", "\uE000", "<U+E000>", 8},
        Row{"names are as long as needed", "\U000E0001", "<U+E0001>", 9},
        Row{"names of files need not be UTF-8", "a\xFFz", "a<FF>z", 6},
        Row{"what just fits is not cut", std::string(40, 'x'), std::string(40, 'x'), 40},
        Row{"what does not fit is cut", std::string(41, 'x'), std::string(37, 'x') + "...", 40},
        Row{"marks count where text is cut", "e" + marks(39), "e" + marks(39), 1},
        Row{"so that a heap of them is cut", "e" + marks(40), "e" + marks(36) + "...", 4},
        Row{"half a wide letter is not shown", "a" + std::string(38, 'x') + "図",
            "a" + std::string(36, 'x') + "...", 40}),
    support::RowName());

} // namespace
} // namespace explorer
