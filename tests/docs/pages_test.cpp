// SPDX-License-Identifier: BSL-1.0

/// \file
/// Compares the pages on diagnostics and rules with the library's table of messages and with the
/// output that they show. check_documents.py compares that output with the programs.

#include <host_testing/printers.hpp>
#include <import/messages.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace lf::import {
namespace {

using Lines = std::vector<std::string>;

Lines readLines(std::string const& path) {
    std::ifstream stream(PROJECT_FOLDER "/" + path);
    Lines lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

constexpr std::string_view headingMark = "## ";

bool isHeading(std::string_view line) {
    return line.starts_with(headingMark);
}

bool isFence(std::string_view line) {
    return line.starts_with("```");
}

bool isRow(std::string_view line) {
    return line.starts_with("| ");
}

bool contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

Lines headingsOf(Lines const& page) {
    Lines headings;
    for (std::string const& line : page) {
        if (isHeading(line)) {
            headings.push_back(line.substr(headingMark.size()));
        }
    }
    return headings;
}

/// The lines below a heading, up to the next one.
Lines sectionOf(Lines const& page, std::string_view heading) {
    auto const begin =
        std::find(page.begin(), page.end(), std::string(headingMark).append(heading));
    if (begin == page.end()) {
        return {};
    }
    return {std::next(begin), std::find_if(std::next(begin), page.end(), isHeading)};
}

/// The lines of the code block after \p position, which is moved to its end.
Lines takeBlock(Lines const& page, Lines::const_iterator& position) {
    auto const fence = std::find_if(position, page.end(), isFence);
    auto const begin = fence == page.end() ? fence : std::next(fence);
    auto const end = std::find_if(begin, page.end(), isFence);
    position = end == page.end() ? end : std::next(end);
    return {begin, end};
}

std::string_view toText(Severity severity) {
    return severity == Severity::Error ? "error" : "warning";
}

std::string anchorOf(std::string_view key) {
    std::string anchor(key);
    std::transform(anchor.begin(), anchor.end(), anchor.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return anchor;
}

std::string linkTo(std::string_view key, std::string_view page = "") {
    return "[" + std::string(key) + "](" + std::string(page) + "#" + anchorOf(key) + ")";
}

Lines diagnosticsPage() {
    return readLines("docs/diagnostics.md");
}

TEST(DiagnosticsPage, HasASectionForEachKeyAndForNothingElse) {
    Lines keys;
    for (MessageKey const& message : messageKeys) {
        keys.emplace_back(message.key);
    }
    EXPECT_EQ(headingsOf(diagnosticsPage()), keys);
}

TEST(DiagnosticsPage, ListsEachKeyWithItsSeverity) {
    Lines rows;
    std::ranges::copy_if(diagnosticsPage(), std::back_inserter(rows), isRow);
    constexpr std::size_t rowsOfHeader = 2;
    ASSERT_EQ(rows.size(), rowsOfHeader + messageKeys.size());
    for (std::size_t index = 0; index < messageKeys.size(); ++index) {
        auto const& [key, severity, numberOfArguments] = messageKeys.at(index);
        std::string const begin =
            "| " + linkTo(key) + " | " + std::string(toText(severity)) + " | ";
        EXPECT_THAT(rows.at(rowsOfHeader + index), testing::StartsWith(begin));
    }
}

class DiagnosticsSection : public testing::TestWithParam<MessageKey> {};

TEST_P(DiagnosticsSection, SaysTheSeverity) {
    EXPECT_THAT(sectionOf(diagnosticsPage(), GetParam().key),
                testing::Contains("- **Severity:** " + std::string(toText(GetParam().severity))));
}

TEST_P(DiagnosticsSection, ExplainsEachArgument) {
    Lines const section = sectionOf(diagnosticsPage(), GetParam().key);
    bool const saysNone = std::ranges::count(section, "- **Arguments:** none") == 1;
    EXPECT_EQ(saysNone, GetParam().numberOfArguments == 0);
    for (std::size_t place = 1; place <= 3; ++place) {
        std::string const explained = "`{" + std::to_string(place) + "}` ";
        EXPECT_EQ(std::ranges::any_of(
                      section, [&](std::string const& line) { return contains(line, explained); }),
                  place <= GetParam().numberOfArguments)
            << explained;
    }
}

TEST_P(DiagnosticsSection, ShowsTheMessageAndThenInputWithoutOne) {
    Lines const section = sectionOf(diagnosticsPage(), GetParam().key);
    auto position = section.begin();
    Lines const block = takeBlock(section, position);
    EXPECT_THAT(block,
                testing::Contains(testing::AllOf(
                    testing::HasSubstr(": " + std::string(toText(GetParam().severity)) + ": "),
                    testing::EndsWith(" [" + std::string(GetParam().key) + "]"))));
    EXPECT_EQ(
        std::ranges::count_if(
            block, [](std::string const& line) { return line.starts_with("$ import_explorer "); }),
        2);
    ASSERT_FALSE(block.empty());
    EXPECT_THAT(block.back(), testing::HasSubstr(", 0 errors, 0 warnings, "));
}

INSTANTIATE_TEST_SUITE_P(Keys, DiagnosticsSection, testing::ValuesIn(messageKeys),
                         [](auto const& test) { return std::string(test.param.key); });

/// The texts in backquotes in the first cell of a table's row.
Lines examplesOf(std::string_view row) {
    Lines examples;
    std::string_view cell = row.substr(0, row.find(" | "));
    while (contains(cell, "`")) {
        cell.remove_prefix(cell.find('`') + 1);
        examples.emplace_back(cell.substr(0, cell.find('`')));
        cell.remove_prefix(std::min(cell.find('`') + 1, cell.size()));
    }
    return examples;
}

/// The key that a row refers to; empty if there is none.
std::string_view keyIn(std::string_view row) {
    for (MessageKey const& message : messageKeys) {
        if (contains(row, linkTo(message.key, "diagnostics.md"))) {
            return message.key;
        }
    }
    return {};
}

bool isDiagnostic(std::string_view line) {
    return contains(line, ": error: ") || contains(line, ": warning: ") ||
           contains(line, ": note: ");
}

/// Whether the line is one of the details that the explorer prints below a line of the script.
bool isDetail(std::string_view line) {
    auto const first = line.find_first_not_of(' ');
    return first != std::string_view::npos && line[first] == '|';
}

/// Whether \p block shows \p example below a diagnostic with \p key, or without a diagnostic if
/// \p key is empty.
bool shows(Lines const& block, std::string const& example, std::string_view key) {
    for (std::size_t index = 1; index < block.size(); ++index) {
        std::string const& before = block[index - 1];
        bool const isExample =
            !isDetail(block[index]) && contains(" " + block[index] + " ", " " + example + " ");
        bool const isAsSaid =
            key.empty() ? !isDiagnostic(before) : before.ends_with("[" + std::string(key) + "]");
        if (isExample && isAsSaid) {
            return true;
        }
    }
    return false;
}

TEST(RulesPage, ShowsTheExamplesOfEachTableInTheOutputBelowIt) {
    Lines const page = readLines("docs/rules.md");
    std::size_t examples = 0;
    for (auto position = page.begin(); position != page.end();) {
        position = std::find_if(position, page.end(), isRow);
        auto const endOfTable = std::find_if_not(position, page.end(), isRow);
        Lines const table(position, endOfTable);
        position = endOfTable;
        Lines const block = takeBlock(page, position);
        for (std::string const& row : table) {
            for (std::string const& example : examplesOf(row)) {
                EXPECT_TRUE(shows(block, example, keyIn(row))) << example << "\n" << row;
                ++examples;
            }
        }
    }
    EXPECT_GT(examples, 50U);
}

} // namespace
} // namespace lf::import
