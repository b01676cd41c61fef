// SPDX-License-Identifier: BSL-1.0

#include <import_explorer/spelling.hpp>

#include <gtest/gtest.h>

// Needs what comes from GoogleTest.
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace explorer {
namespace {

struct SpellingCase {
    std::string_view why;
    std::string_view name;
    std::vector<std::string_view> candidates;
    std::optional<std::size_t> nearest;

    friend std::ostream& operator<<(std::ostream& stream, SpellingCase const& example) {
        return stream << example.why;
    }
};

class Spelling : public testing::TestWithParam<SpellingCase> {};

TEST_P(Spelling, FindsTheNearestName) {
    EXPECT_EQ(findNearestSpelling(GetParam().name, GetParam().candidates), GetParam().nearest);
}

std::string const longName(longestComparedName, 'x');
std::string const longerName(longestComparedName + 1, 'x');

INSTANTIATE_TEST_SUITE_P(
    Names, Spelling,
    testing::Values(
        SpellingCase{"no candidates", "circle", {}, std::nullopt},
        SpellingCase{"a character too few", "crcle", {"square", "circle"}, 1},
        SpellingCase{"a character too many", "circcle", {"circle"}, 0},
        SpellingCase{"another character", "cirkle", {"circle"}, 0},
        SpellingCase{"two characters swapped count as one change", "abc", {"acb"}, 0},
        SpellingCase{"two changes in six characters", "xircly", {"circle"}, 0},
        SpellingCase{"three are too many", "xyrcly", {"circle"}, std::nullopt},
        SpellingCase{"the nearest of several", "circle", {"cicle5", "circles", "oricle"}, 1},
        SpellingCase{"the first of the equally near", "bat", {"cat", "hat"}, 0},
        SpellingCase{"one letter is not like another", "x", {"y"}, std::nullopt},
        SpellingCase{"but may be a part of a name", "x", {"xy"}, 0},
        SpellingCase{"the empty name is like nothing", "", {"a", "ab"}, std::nullopt},
        SpellingCase{"nor is anything like it", "a", {""}, std::nullopt},
        SpellingCase{"the longest names", std::string_view(longName).substr(1), {longName}, 0},
        SpellingCase{"a longer candidate", longName, {longerName}, std::nullopt},
        SpellingCase{"a longer name", longerName, {longName}, std::nullopt}));

TEST(Spelling, ComparesOnlySoManyNames) {
    std::vector<std::string_view> candidates(mostComparedNames, "square");
    candidates.back() = "circle";
    EXPECT_EQ(findNearestSpelling("circel", candidates), mostComparedNames - 1);
    candidates.insert(candidates.begin(), "square");
    EXPECT_EQ(findNearestSpelling("circel", candidates), std::nullopt);
}

/// The table of distances between all beginnings, as it is defined.
std::size_t distanceBetween(std::u32string const& left, std::u32string const& right) {
    std::vector<std::vector<std::size_t>> table(left.size() + 1,
                                                std::vector<std::size_t>(right.size() + 1));
    for (std::size_t row = 0; row <= left.size(); ++row) {
        for (std::size_t column = 0; column <= right.size(); ++column) {
            if (row == 0 || column == 0) {
                table[row][column] = row + column;
                continue;
            }
            std::size_t const replaced = left[row - 1] == right[column - 1] ? 0 : 1;
            std::size_t& distance = table[row][column];
            distance = std::min({table[row - 1][column] + 1, table[row][column - 1] + 1,
                                 table[row - 1][column - 1] + replaced});
            if (row > 1 && column > 1 && left[row - 1] == right[column - 2] &&
                left[row - 2] == right[column - 1]) {
                distance = std::min(distance, table[row - 2][column - 2] + 1);
            }
        }
    }
    return table[left.size()][right.size()];
}

std::string toUtf8(std::u32string const& text) {
    std::string result;
    for (char32_t const character : text) {
        result += character == U'é' ? "é" : std::string(1, static_cast<char>(character));
    }
    return result;
}

RC_GTEST_PROP(SpellingProperty, FindsANameExactlyWhenItIsNearEnough, ()) {
    auto const text = rc::gen::scale(
        0.3, rc::gen::container<std::u32string>(rc::gen::element(U'a', U'b', U'c', U'é')));
    std::u32string const name = *text;
    std::u32string const candidate = *text;
    RC_PRE(std::max(name.size(), candidate.size()) <= longestComparedName);
    std::size_t const distance = distanceBetween(name, candidate);
    bool const isNear =
        distance <= (name.size() + 2) / 3 && distance < std::max(name.size(), candidate.size());
    std::string const inUtf8 = toUtf8(candidate);
    std::vector<std::string_view> const candidates{inUtf8};
    RC_ASSERT(findNearestSpelling(toUtf8(name), candidates).has_value() == isNear);
}

} // namespace
} // namespace explorer
