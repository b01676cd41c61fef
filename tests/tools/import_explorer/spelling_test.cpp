// SPDX-License-Identifier: BSL-1.0

#include <import_explorer/spelling.hpp>

#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace explorer {
namespace {

struct SpellingCase {
    std::string_view why;
    std::u16string_view name;
    std::vector<std::u16string_view> candidates;
    std::optional<std::size_t> nearest;

    friend std::ostream& operator<<(std::ostream& stream, SpellingCase const& example) {
        return stream << example.why;
    }
};

class Spelling : public testing::TestWithParam<SpellingCase> {};

TEST_P(Spelling, FindsTheNearestName) {
    EXPECT_EQ(findNearestSpelling(GetParam().name, GetParam().candidates), GetParam().nearest);
}

std::u16string const longName(longestComparedName, u'x');
std::u16string const longerName(longestComparedName + 1, u'x');

INSTANTIATE_TEST_SUITE_P(
    Names, Spelling,
    testing::Values(
        SpellingCase{"no candidates", u"circle", {}, std::nullopt},
        SpellingCase{"a character too few", u"crcle", {u"square", u"circle"}, 1},
        SpellingCase{"a character too many", u"circcle", {u"circle"}, 0},
        SpellingCase{"another character", u"cirkle", {u"circle"}, 0},
        SpellingCase{"two characters swapped count as one change", u"abc", {u"acb"}, 0},
        SpellingCase{"two changes in six characters", u"xircly", {u"circle"}, 0},
        SpellingCase{"three are too many", u"xyrcly", {u"circle"}, std::nullopt},
        SpellingCase{"the nearest of several", u"circle", {u"cicle5", u"circles", u"oricle"}, 1},
        SpellingCase{"the first of the equally near", u"bat", {u"cat", u"hat"}, 0},
        SpellingCase{"one letter is not like another", u"x", {u"y"}, std::nullopt},
        SpellingCase{"but may be a part of a name", u"x", {u"xy"}, 0},
        SpellingCase{"the empty name is like nothing", u"", {u"a", u"ab"}, std::nullopt},
        SpellingCase{"nor is anything like it", u"a", {u""}, std::nullopt},
        SpellingCase{"the longest names", std::u16string_view(longName).substr(1), {longName}, 0},
        SpellingCase{"a longer candidate", longName, {longerName}, std::nullopt},
        SpellingCase{"a longer name", longerName, {longName}, std::nullopt}));

TEST(Spelling, ComparesOnlySoManyNames) {
    std::vector<std::u16string_view> candidates(mostComparedNames, u"square");
    candidates.back() = u"circle";
    EXPECT_EQ(findNearestSpelling(u"circel", candidates), mostComparedNames - 1);
    candidates.insert(candidates.begin(), u"square");
    EXPECT_EQ(findNearestSpelling(u"circel", candidates), std::nullopt);
}

} // namespace
} // namespace explorer
