// SPDX-License-Identifier: BSL-1.0
#include <host/spelling.hpp>

#include <gtest/gtest.h>

// Must be included after GoogleTest.
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lf::import::host {
namespace {

using Candidates = std::vector<std::u16string_view>;

struct SpellingRow {
    std::u16string name;
    Candidates candidates;
    std::optional<std::size_t> nearest;
    char const* why;
};

TEST(FindNearestSpelling, FindsWhatMayHaveBeenMeant) {
    std::u16string const longest(longestComparedName, u'n');
    std::u16string const tooLong = longest + u'n';
    std::array const rows{
        SpellingRow{u"circel", {u"square", u"circle"}, 1, "two letters are swapped"},
        SpellingRow{u"circl", {u"circle"}, 0, "a letter is missing"},
        SpellingRow{u"ciircle", {u"circle"}, 0, "there is an extra letter"},
        SpellingRow{u"cirkle", {u"circle"}, 0, "a letter is replaced"},
        SpellingRow{u"cirkel", {u"circle"}, 0, "the limit for six letters is two changes"},
        SpellingRow{u"zzrkel", {u"circle"}, {}, "too many changes"},
        SpellingRow{u"ab", {u"xy"}, {}, "no letter in common"},
        SpellingRow{u"a", {u"b"}, {}, "the only letter is replaced"},
        SpellingRow{u"ac", {u"ab", u"ad"}, 0, "the first of several nearest names"},
        SpellingRow{u"rendrer", {u"rander", u"renderer"}, 1, "the nearest name"},
        SpellingRow{u"x", {}, {}, "no candidates"},
        SpellingRow{u"x", {u"xy"}, 0, "one change in a name of one letter"},
        SpellingRow{u"", {u"a", u"ab"}, {}, "nothing resembles the empty name"},
        SpellingRow{u"a", {u""}, {}, "the empty name resembles nothing"},
        SpellingRow{u"図彩影", {u"図形影"}, 0, "letters beyond ASCII"},
        SpellingRow{longest, {std::u16string_view(longest).substr(1)}, 0, "the maximum length"},
        SpellingRow{tooLong, {longest}, {}, "longer names are not compared"},
        SpellingRow{longest, {tooLong}, {}, "longer candidates are not compared"},
    };
    for (auto const& [name, candidates, nearest, why] : rows) {
        EXPECT_EQ(findNearestSpelling(name, candidates), nearest) << why;
    }
}

TEST(FindNearestSpelling, LooksAtSoManyCandidatesOnly) {
    Candidates candidates(mostComparedNames, u"something");
    candidates.back() = u"circle";
    EXPECT_EQ(findNearestSpelling(u"circel", candidates), mostComparedNames - 1);
    candidates.insert(candidates.begin(), u"something");
    EXPECT_EQ(findNearestSpelling(u"circel", candidates), std::nullopt);
}

/// Computes the table of the distances between all prefixes by its definition.
std::size_t distanceBetween(std::u16string const& left, std::u16string const& right) {
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

RC_GTEST_PROP(FindNearestSpellingProperty, FindsANameExactlyWhenItIsNearEnough, ()) {
    auto const text = rc::gen::scale(
        0.3, rc::gen::container<std::u16string>(rc::gen::element(u'a', u'b', u'c', u'é')));
    std::u16string const name = *text;
    std::u16string const candidate = *text;
    RC_PRE(std::max(name.size(), candidate.size()) <= longestComparedName);
    std::size_t const distance = distanceBetween(name, candidate);
    bool const isNear =
        distance <= (name.size() + 2) / 3 && distance < std::max(name.size(), candidate.size());
    Candidates const candidates{candidate};
    RC_ASSERT(findNearestSpelling(name, candidates).has_value() == isNear);
}

} // namespace
} // namespace lf::import::host
