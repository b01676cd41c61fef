// SPDX-License-Identifier: BSL-1.0

#include <import_explorer/caret.hpp>

#include <support/row_name.hpp>

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>

namespace explorer {
namespace {

struct Row {
    std::string_view why;
    std::string before;
    std::string stretch;
    std::string after;
    std::string source;
    std::string caret;

    friend void PrintTo(Row const& row, std::ostream* stream) { *stream << row.why; }
};

class CaretBelow : public testing::TestWithParam<Row> {};

TEST_P(CaretBelow, TheStretch) {
    Row const& row = GetParam();
    std::string const line = row.before + row.stretch + row.after;
    Excerpt const excerpt =
        makeExcerpt(line, row.before.size(), row.before.size() + row.stretch.size(), 30);
    EXPECT_EQ(excerpt.source, row.source);
    EXPECT_EQ(excerpt.caret, row.caret);
}

std::string repeat(std::string_view text, std::size_t times) {
    std::string result;
    while (times-- > 0) {
        result += text;
    }
    return result;
}

INSTANTIATE_TEST_SUITE_P(
    Caret, CaretBelow,
    testing::Values(
        Row{"one character", "import ", "x", " y", "import x y", "       ^"},
        Row{"a run as long as the argument", "import ", "a.b", "", "import a.b", "       ^~~"},
        Row{"wide letters before it", "import 図 ", "a.b", "", "import 図 a.b", "          ^~~"},
        Row{"wide letters in it", "import ", "図形", "", "import 図形", "       ^~~~"},
        Row{"combining marks before it", "e\u0301 ", "ab", "", "e\u0301 ab", "  ^~"},
        Row{"combining marks in it", "", "e\u0301x", "", "e\u0301x", "^~"},
        Row{"tabs before it are repeated", "\timport\t", "ab", "", "\timport\tab", "\t      \t^~"},
        Row{"tabs in it are repeated", "", "\"a\tb\"", "", "\"a\tb\"", "^~\t~~"},
        Row{"a harmless name is longer", "\x1b ", "\x07x", "", "<U+001B> <U+0007>x",
            "         ^~~~~~~~~"},
        Row{"a stretch that takes no room", "ab", "", "", "ab", "  ^"},
        Row{"a line that just fits", std::string(28, '-'), "ab", "", std::string(28, '-') + "ab",
            std::string(28, ' ') + "^~"},
        Row{"a long line is cut behind", "import ", "ab", " " + std::string(40, '-'),
            "import ab " + std::string(20, '-') + "...", "       ^~"},
        Row{"a long line is cut before", std::string(40, '-') + " ", "ab", "",
            "..." + std::string(27, '-') + " ab", std::string(31, ' ') + "^~"},
        Row{"a stretch that ends with the window's last column", std::string(28, '-'), "ab", "+",
            std::string(28, '-') + "ab...", std::string(28, ' ') + "^~"},
        Row{"a stretch that ends one column behind it", std::string(29, '-'), "ab", "+",
            "..." + std::string(27, '-') + "ab+", std::string(30, ' ') + "^~"},
        Row{"what is behind the stretch just fits", std::string(40, '-'), "ab",
            std::string(18, '+'), "..." + std::string(10, '-') + "ab" + std::string(18, '+'),
            std::string(13, ' ') + "^~"},
        Row{"one column less would be in vain before it", std::string(40, '-'), "ab",
            std::string(17, '+'), "..." + std::string(11, '-') + "ab" + std::string(17, '+'),
            std::string(14, ' ') + "^~"},
        Row{"as much of a wide letter as fits is none", std::string(29, '-'), "図", "",
            "..." + std::string(28, '-') + "図", std::string(31, ' ') + "^~"},
        Row{"a long line is cut on both sides", std::string(40, '-'), "ab", std::string(40, '+'),
            "..." + std::string(10, '-') + "ab" + std::string(18, '+') + "...",
            std::string(13, ' ') + "^~"},
        Row{"a long stretch is cut", "import ", std::string(40, 'x'), " y",
            "import " + std::string(23, 'x') + "...", "       ^" + std::string(22, '~')},
        Row{"a cut does not split wide letters", repeat("図", 20), "ab", repeat("形", 20),
            "..." + repeat("図", 5) + "ab" + repeat("形", 9) + "...", std::string(13, ' ') + "^~"},
        Row{"a heap of marks cannot fill the screen", repeat("\u0301", 99), "ab", "",
            "..." + repeat("\u0301", 28) + "ab", "   ^~"}),
    support::RowName());

} // namespace
} // namespace explorer
