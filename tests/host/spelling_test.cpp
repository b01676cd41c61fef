// SPDX-License-Identifier: BSL-1.0
#include <host/spelling.hpp>

#include <gtest/gtest.h>

// Needs what comes from GoogleTest.
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
    std::array const rows{
        SpellingRow{u"circel", {u"square", u"circle"}, 1, "two letters are swapped"},
        SpellingRow{u"circl", {u"circle"}, 0, "one is missing"},
        SpellingRow{u"ciircle", {u"circle"}, 0, "one is too many"},
        SpellingRow{u"cirkle", {u"circle"}, 0, "one is another"},
        SpellingRow{u"cirkel", {u"circle"}, 0, "two changes in six letters are the limit"},
        SpellingRow{u"zzrkel", {u"circle"}, {}, "more are another name"},
        SpellingRow{u"ab", {u"xy"}, {}, "nothing in common is no misspelling"},
        SpellingRow{u"a", {u"b"}, {}, "nor is another letter"},
        SpellingRow{u"ac", {u"ab", u"ad"}, 0, "of equals the first is taken"},
        SpellingRow{u"rendrer", {u"rander", u"renderer"}, 1, "the nearest is taken"},
        SpellingRow{u"x", {}, {}, "there may be no candidate"},
        SpellingRow{u"x", {u"xy"}, 0, "a letter may be a part of a name"},
        SpellingRow{u"", {u"a", u"ab"}, {}, "the empty name is like nothing"},
        SpellingRow{u"a", {u""}, {}, "nor is anything like it"},
        SpellingRow{u"図彩影", {u"図形影"}, 0, "letters beyond ASCII are compared as well"},
        SpellingRow{longest, {std::u16string_view(longest).substr(1)}, 0, "so long is compared"},
        SpellingRow{longest + u'n', {longest}, {}, "longer is not"},
        SpellingRow{longest, {}, {}, "of either"},
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

/// The table of distances between all beginnings, as it is defined.
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
