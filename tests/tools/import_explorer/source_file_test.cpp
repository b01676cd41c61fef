// SPDX-License-Identifier: BSL-1.0

#include <import_explorer/source_file.hpp>

#include <support/row_name.hpp>

#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace explorer {
namespace {

struct Row {
    std::string_view why;
    std::string bytes;
    std::size_t offset;

    friend void PrintTo(Row const& row, std::ostream* stream) { *stream << row.why; }
};

class NoText : public testing::TestWithParam<Row> {};

TEST_P(NoText, IsRefusedAtItsFirstBadByte) {
    auto const made = makeSourceFile("name", GetParam().bytes);
    ASSERT_TRUE(std::holds_alternative<LoadFailure>(made));
    EXPECT_EQ(std::get<LoadFailure>(made).name, "name");
    EXPECT_EQ(std::get<LoadFailure>(made).offset, GetParam().offset);
}

INSTANTIATE_TEST_SUITE_P(
    SourceFile, NoText,
    testing::Values(Row{"a byte that no text has", "a\xFF", 1},
                    Row{"the inside of a character", "ab\x80", 2},
                    Row{"a character cut short by another", "\xC3(", 0},
                    Row{"a character cut short by the end", "abc\xE2\x82", 3},
                    Row{"an overlong form", "a\xC0\xAF", 1}, Row{"a surrogate", "é\xED\xA0\x80", 2},
                    Row{"a code point that is too large", "\xF4\x90\x80\x80", 0},
                    Row{"UTF-16",
                        std::string("\xFF\xFE"
                                    "a\0",
                                    4),
                        0},
                    Row{"a NUL", std::string("ab\0\xFF", 4), 2},
                    Row{"what comes first counts", std::string("a\xFF\0", 3), 1}),
    support::RowName());

TEST(SourceFile, TakesWellFormedText) {
    for (std::string const text : {"", "a", "é図😀", "\x7F", "\xEF\xBF\xBD", "\xF4\x8F\xBF\xBF"}) {
        EXPECT_TRUE(std::holds_alternative<SourceFile>(makeSourceFile("name", text))) << text;
    }
}

std::vector<std::string> linesOf(SourceFile const& file) {
    std::vector<std::string> lines;
    for (std::size_t number = 1; number <= file.numberOfLines(); ++number) {
        lines.emplace_back(file.line(number));
    }
    return lines;
}

TEST(SourceFile, CutsLinesAtLineFeedsAndCarriageReturns) {
    using Lines = std::vector<std::string>;
    EXPECT_EQ(linesOf(SourceFile("", "")), Lines{});
    EXPECT_EQ(linesOf(SourceFile("", "\n")), Lines{""});
    EXPECT_EQ(linesOf(SourceFile("", "a\n\nb")), (Lines{"a", "", "b"}));
    EXPECT_EQ(linesOf(SourceFile("", "a\r\nb\r\n")), (Lines{"a", "b"}));
    EXPECT_EQ(linesOf(SourceFile("", "a\rb\r")), (Lines{"a", "b"}));
    EXPECT_EQ(linesOf(SourceFile("", "a\r\r\nb\n\rc")), (Lines{"a", "", "b", "", "c"}));
}

TEST(SourceFile, LeavesAByteOrderMarkOutOfTheFirstLine) {
    SourceFile const file("", "\xEF\xBB\xBF"
                              "a\nb");
    EXPECT_EQ(linesOf(file), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(file.lineBegin(1), 3U);
    EXPECT_EQ(file.lineBegin(2), 5U);
}

TEST(SourceFile, SaysWhyAFileCannotBeRead) {
    auto const missing = loadSourceFile("/nowhere/at all");
    ASSERT_TRUE(std::holds_alternative<LoadFailure>(missing));
    EXPECT_EQ(std::get<LoadFailure>(missing).reason, "cannot open: No such file or directory");
    EXPECT_EQ(std::get<LoadFailure>(missing).offset, std::nullopt);
    auto const folder = loadSourceFile("/");
    ASSERT_TRUE(std::holds_alternative<LoadFailure>(folder));
    EXPECT_EQ(std::get<LoadFailure>(folder).reason, "cannot read: Is a directory");
}

} // namespace
} // namespace explorer
