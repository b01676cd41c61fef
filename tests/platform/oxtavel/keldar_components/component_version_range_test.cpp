// SPDX-License-Identifier: BSL-1.0
#include <foundation/core/except/exception.hpp>
#include <kpm/arguments/invalid_package_specifier.hpp>
#include <oxtavel/keldar_components/component_version_range.hpp>

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <exception>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace {

using namespace Oxtavel::KeldarComponents;
using namespace std::string_view_literals;
using InvalidSpecifier =
    foundation::core::except::Exception<kpm::arguments::InvalidPackageSpecifier, std::exception>;

constexpr std::size_t mebi = std::size_t{1} << 20U;

ComponentVersionRange makeRange(std::u16string_view text) {
    return GetComponentVersionRangeFactory().Create(text);
}

struct ReadRow {
    std::u16string_view text;
    std::vector<VersionComparator> comparators;
    char const* why;
};

TEST(ComponentVersionRange, IsReadIntoItsComparators) {
    using enum VersionRelation;
    std::vector<ReadRow> const rows{
        {u"*", {{Any, {}}}, "any version"},
        {u"1", {{Plain, {{u"1"}, u"", u""}}}, "one number"},
        {u"1.2", {{Plain, {{u"1", u"2"}, u"", u""}}}, "two numbers"},
        {u"1.2.3", {{Plain, {{u"1", u"2", u"3"}, u"", u""}}}, "three numbers"},
        {u"=1", {{Equal, {{u"1"}, u"", u""}}}, "equal"},
        {u">1", {{Greater, {{u"1"}, u"", u""}}}, "greater"},
        {u">=1", {{GreaterOrEqual, {{u"1"}, u"", u""}}}, "greater or equal, not greater"},
        {u"<1", {{Less, {{u"1"}, u"", u""}}}, "less"},
        {u"<=1", {{LessOrEqual, {{u"1"}, u"", u""}}}, "less or equal, not less"},
        {u"^1", {{Compatible, {{u"1"}, u"", u""}}}, "compatible"},
        {u"~1", {{Approximate, {{u"1"}, u"", u""}}}, "approximate"},
        {u"1-rc.1", {{Plain, {{u"1"}, u"rc.1", u""}}}, "a pre-release after one number"},
        {u"1.2+b7", {{Plain, {{u"1", u"2"}, u"", u"b7"}}}, "a build after two numbers"},
        {u"1.2.3-a+b", {{Plain, {{u"1", u"2", u"3"}, u"a", u"b"}}}, "both after three numbers"},
        {u"1+b-c", {{Plain, {{u"1"}, u"", u"b-c"}}}, "a hyphen in a build is not a pre-release"},
        {u"1-a-b", {{Plain, {{u"1"}, u"a-b", u""}}}, "a hyphen within a pre-release"},
        {u">=1,<2,*",
         {{GreaterOrEqual, {{u"1"}, u"", u""}}, {Less, {{u"2"}, u"", u""}}, {Any, {}}},
         "several comparators, in order"},
    };
    for (ReadRow const& row : rows) {
        EXPECT_EQ(makeRange(row.text), ComponentVersionRange{row.comparators}) << row.why;
        EXPECT_EQ(makeRange(row.text).ToString(), row.text) << row.why;
    }
}

struct Row {
    std::u16string_view text;
    char const* why;
};

constexpr auto accepted = std::to_array<Row>({
    {u"0", "zero"},
    {u"0.0.0", "zeros"},
    {u"10.20.30", "zeros inside numbers"},
    {u"18446744073709551616.340282366920938463463374607431768211456", "beyond all integer types"},
    {u"1.0.0-0", "a pre-release of zero"},
    {u"1.0.0-0a", "a leading zero before a letter"},
    {u"1.0.0-00a", "leading zeros before a letter"},
    {u"1.0.0--", "a pre-release of one hyphen"},
    {u"1.0.0-0-1", "a hyphen makes an identifier of digits alphanumeric"},
    {u"1.0.0-alpha.1.0.x", "many pre-release identifiers"},
    {u"1.0.0+001", "a build identifier may have leading zeros"},
    {u"1.0.0+-", "a build of one hyphen"},
    {u"1.0.0--+-", "hyphens everywhere"},
    {u"*,*", "any version twice"},
    {u"1,1", "the same comparator twice"},
    {u">=1.2.3-rc.1+build.007,<2,~1.4", "everything together"},
});

TEST(ComponentVersionRange, IsWrittenAsItWasRead) {
    for (Row const& row : accepted) {
        ASSERT_NO_THROW(makeRange(row.text)) << row.why;
        EXPECT_EQ(makeRange(row.text).ToString(), row.text) << row.why;
    }
}

constexpr auto refused = std::to_array<Row>({
    {u"", "nothing"},
    {u",", "two empty comparators"},
    {u"1,", "an empty comparator at the end"},
    {u",1", "an empty comparator at the start"},
    {u"1,,2", "an empty comparator between others"},
    {u"=", "an operator without a version"},
    {u">=", "an operator without a version"},
    {u"==1", "two operators"},
    {u"=>1", "an operator in the wrong order"},
    {u"<>1", "an unknown operator"},
    {u"!1", "an unknown operator"},
    {u"1=", "an operator after the version"},
    {u"=*", "no operator before the asterisk"},
    {u"**", "two asterisks"},
    {u"1.*", "no placeholder for a number"},
    {u"x", "no placeholder for a version"},
    {u"v1", "no letter before the number"},
    {u".", "two empty numbers"},
    {u"1.", "an empty second number"},
    {u".1", "an empty first number"},
    {u"1..2", "an empty number between others"},
    {u"1.2.", "an empty third number"},
    {u"1.2.3.4", "four numbers"},
    {u"1.2.3.", "an empty fourth number"},
    {u"01", "a leading zero"},
    {u"1.01", "a leading zero in the second number"},
    {u"1.2.00", "a leading zero before a zero"},
    {u"-1", "a pre-release without a number"},
    {u"+1", "a build without a number"},
    {u"1-", "an empty pre-release"},
    {u"1-.a", "an empty first pre-release identifier"},
    {u"1-a.", "an empty last pre-release identifier"},
    {u"1-a..b", "an empty pre-release identifier between others"},
    {u"1-01", "a leading zero in a numeric pre-release identifier"},
    {u"1-a.00", "the same in a later one"},
    {u"1-a_b", "no underscore in a pre-release identifier"},
    {u"1-\u00E4", "no letter outside ASCII in a pre-release identifier"},
    {u"1+", "an empty build"},
    {u"1-+a", "an empty pre-release before a build"},
    {u"1-a+", "an empty build after a pre-release"},
    {u"1+a..b", "an empty build identifier"},
    {u"1+a+b", "two builds"},
    {u"1+a_b", "no underscore in a build identifier"},
    {u" 1", "a leading blank"},
    {u"1 ", "a trailing blank"},
    {u">= 1", "a blank after an operator"},
    {u"1, 2", "a blank after a comma"},
    {u"1 2", "a blank instead of a comma"},
    {u"1@2", "a second at sign"},
    {u"\u0661", "a digit of another script"},
    {u"\uFF11", "a full-width digit"},
    {u"1\0"sv, "a zero unit after the version"},
    {u"1\xD800", "a lone high surrogate"},
    {u"1-\xDC00", "a lone low surrogate"},
    {u"\xD835", "a lone high surrogate in place of a version"},
    {u"\U0001D7D8", "a digit of two units"},
});

TEST(ComponentVersionRange, IsRefusedWhenAnyPartIsWrong) {
    for (Row const& row : refused) {
        EXPECT_THROW(makeRange(row.text), InvalidSpecifier) << row.why;
        EXPECT_THROW(makeRange(u"1," + std::u16string(row.text)), InvalidSpecifier)
            << row.why << ", as a later comparator";
    }
}

TEST(ComponentVersionRange, HasNoLimitOfLength) {
    // EXPECT_TRUE, since EXPECT_EQ would print the texts.
    std::u16string const digits(mebi, u'9');
    EXPECT_TRUE(makeRange(digits).ToString() == digits);
    EXPECT_THROW(makeRange(u'0' + digits), InvalidSpecifier);

    std::u16string pieces = u"1-0";
    std::u16string comparators = u"1";
    while (comparators.size() < mebi) {
        pieces += u".0";
        comparators += u",1";
    }
    EXPECT_TRUE(makeRange(pieces).ToString() == pieces);
    EXPECT_TRUE(makeRange(comparators).ToString() == comparators);
    EXPECT_THROW(makeRange(pieces + u".00"), InvalidSpecifier);
    EXPECT_THROW(makeRange(comparators + u",01"), InvalidSpecifier);
}

TEST(ComponentVersionRange, TellsApartWhatIsWrittenDifferently) {
    EXPECT_EQ(makeRange(u"1"), makeRange(u"1"));
    EXPECT_NE(makeRange(u"1"), makeRange(u"=1"));
    EXPECT_NE(makeRange(u"1"), makeRange(u"1.0"));
    EXPECT_NE(makeRange(u"1-a"), makeRange(u"1+a"));
    EXPECT_NE(makeRange(u"1,2"), makeRange(u"2,1"));
    EXPECT_NE(makeRange(u"*"), ComponentVersionRange());
}

TEST(ComponentVersionRange, IsAValue) {
    static_assert(std::is_copy_constructible_v<ComponentVersionRange>);
    static_assert(std::is_nothrow_move_constructible_v<ComponentVersionRange>);
    static_assert(std::is_nothrow_move_assignable_v<ComponentVersionRange>);
}

TEST(ComponentVersionRangeFactory, IsOneForTheWholeProcess) {
    EXPECT_EQ(&GetComponentVersionRangeFactory(), &GetComponentVersionRangeFactory());
}

} // namespace
