// SPDX-License-Identifier: BSL-1.0
#include <host/spelling.hpp>

#include <gtest/gtest.h>

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

} // namespace
} // namespace lf::import::host
