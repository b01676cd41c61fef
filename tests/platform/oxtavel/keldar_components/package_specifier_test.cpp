// SPDX-License-Identifier: BSL-1.0
#include <fl/i18n/ustring_conversions.hpp>
#include <foundation/core/except/exception.hpp>
#include <kpm/arguments/invalid_package_specifier.hpp>
#include <oxtavel/keldar_components/package_specifier.hpp>

#include <support/random_check.hpp>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <unicode/regex.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <iomanip>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using namespace Oxtavel::KeldarComponents;
using namespace std::string_view_literals;
using fl::i18n::ustring_to_utf8;
using InvalidSpecifier =
    foundation::core::except::Exception<kpm::arguments::InvalidPackageSpecifier, std::exception>;

constexpr int randomCases = 2000;
constexpr std::size_t mebi = std::size_t{1} << 20U;

PackageSpecifier makeSpecifier(std::u16string_view text) {
    return {std::u16string(text), GetComponentVersionRangeFactory()};
}

std::optional<PackageSpecifier> tryToMakeSpecifier(std::u16string_view text) {
    try {
        return makeSpecifier(text);
    } catch (InvalidSpecifier const&) {
        return std::nullopt;
    }
}

std::string printed(PackageSpecifier const& specifier) {
    std::ostringstream stream;
    stream << specifier;
    return stream.str();
}

struct AcceptedRow {
    std::u16string_view text;
    std::u16string_view name;
    char const* why;
};

constexpr auto accepted = std::to_array<AcceptedRow>({
    {u"pkg", u"pkg", "a name alone"},
    {u"_", u"_", "the shortest name"},
    {u"a.b.c", u"a.b.c", "a dotted name"},
    {u"pkg@1", u"pkg", "a name and a version"},
    {u"pkg.sub@1.0", u"pkg.sub", "dots on both sides of the at sign"},
    {u"pkg@*", u"pkg", "any version, explicitly"},
    {u"pkg@>=1.2.3-rc.1+b.007,<2", u"pkg", "everything that a range can contain"},
    {u"p@999999999999999999999999999999", u"p", "a version beyond all integer types"},
    {u"for@1", u"for", "reserved words are valid names"},
    {u"as", u"as", "even the word of an alias clause"},
    {u"\u00FCber.\u540D\u524D@1", u"\u00FCber.\u540D\u524D", "letters outside ASCII"},
    {u"\U00010400\U0001D7D8@1", u"\U00010400\U0001D7D8", "letters and digits of two units"},
    {u"e\u0301@1", u"e\u0301", "a combining mark after its letter"},
});

TEST(PackageSpecifier, IsReadIntoNameAndRange) {
    for (AcceptedRow const& row : accepted) {
        auto const specifier = tryToMakeSpecifier(row.text);
        ASSERT_TRUE(specifier) << row.why;
        EXPECT_EQ(specifier->Name(), row.name) << row.why;
        EXPECT_EQ(specifier->ToString(), row.text) << row.why;
        EXPECT_EQ(printed(*specifier), ustring_to_utf8(row.text)) << row.why;
    }
}

struct RefusedRow {
    std::u16string_view text;
    char const* why;
};

constexpr auto refused = std::to_array<RefusedRow>({
    {u"", "nothing"},
    {u"@", "neither name nor range"},
    {u"@1", "no name"},
    {u"a@", "no range"},
    {u"a@@", "a second at sign instead of a range"},
    {u"a@1@2", "a second at sign after a range"},
    {u"a@1@", "a second at sign at the end"},
    {u".", "two empty segments"},
    {u".a", "an empty first segment"},
    {u"a.", "an empty last segment"},
    {u"a..b", "an empty segment between others"},
    {u"a.@1", "an empty last segment before a range"},
    {u".@1", "empty segments before a range"},
    {u"1a", "a segment that is not an identifier"},
    {u"a.1", "a later segment that is not an identifier"},
    {u"a-b", "a hyphen in a name"},
    {u"a,b", "a comma in a name"},
    {u"a b", "a blank in a name"},
    {u" a", "a blank before the name"},
    {u"a ", "a blank after the name"},
    {u"a @1", "a blank before the at sign"},
    {u"a@ 1", "a blank after the at sign"},
    {u"a@1 ", "a blank after the range"},
    {u"*", "an asterisk instead of a name"},
    {u"*@1", "an asterisk instead of a name, with a range"},
    {u"a.*", "a wildcard"},
    {u"a.*@1", "a wildcard with a range"},
    {u"a@b", "a range that is none"},
    {u"a@1,,2", "a range with an empty comparator"},
    {u"a@1.", "a range with an empty number"},
    {u"a@1-", "a range with an empty pre-release"},
    {u"a@1+", "a range with an empty build"},
    {u"a@01", "a range with a leading zero"},
    {u"\u0301a", "a combining mark at the start"},
    {u"a\0"sv, "a zero unit in a name"},
    {u"a\xD800", "a lone high surrogate in a name"},
    {u"\xDC00.a", "a lone low surrogate in a name"},
    {u"\xD800@1", "a lone high surrogate before the at sign"},
    {u"a@\xDC00", "a lone low surrogate after the at sign"},
    {u"a\xD800@\xDC00", "a pair split by the at sign"},
    {u"a.\xD800.\xDC00", "a pair split by a dot"},
    {u"\U0001F600", "an emoji"},
    {u"a\uFF201", "a full-width at sign"},
});

TEST(PackageSpecifier, IsRefusedWhenAnyPartIsWrong) {
    for (RefusedRow const& row : refused) {
        EXPECT_THROW(makeSpecifier(row.text), InvalidSpecifier) << row.why;
    }
}

TEST(PackageSpecifier, HasNoLimitOfLength) {
    // EXPECT_TRUE, since EXPECT_EQ would print the texts.
    std::u16string const longName(mebi, u'a');
    EXPECT_TRUE(makeSpecifier(longName).Name() == longName);
    EXPECT_THROW(makeSpecifier(longName + u'.'), InvalidSpecifier);

    std::u16string manyPieces = u"a";
    while (manyPieces.size() < mebi) {
        manyPieces += u".a";
    }
    std::u16string const text = manyPieces + u'@' + std::u16string(mebi, u'1');
    auto const specifier = makeSpecifier(text);
    EXPECT_TRUE(specifier.Name() == manyPieces);
    EXPECT_TRUE(specifier.ToString() == text);
    EXPECT_THROW(makeSpecifier(manyPieces + u".@1"), InvalidSpecifier);
    EXPECT_THROW(makeSpecifier(text + u'@'), InvalidSpecifier);
}

TEST(PackageSpecifier, IsEqualWhenNameAndRangeAre) {
    EXPECT_EQ(makeSpecifier(u"a@1"), makeSpecifier(u"a@1"));
    EXPECT_NE(makeSpecifier(u"a@1"), makeSpecifier(u"b@1"));
    EXPECT_NE(makeSpecifier(u"a@1"), makeSpecifier(u"a@2"));
    EXPECT_NE(makeSpecifier(u"a@*"), makeSpecifier(u"a")) << "what is said is kept";
    EXPECT_NE(makeSpecifier(u"a"), makeSpecifier(u"A"));
    EXPECT_NE(makeSpecifier(u"\u00E9"), makeSpecifier(u"e\u0301")) << "nothing is composed";
}

TEST(PackageSpecifier, IsAValueWithoutAnEmptyState) {
    static_assert(!std::is_default_constructible_v<PackageSpecifier>);
    static_assert(std::is_copy_constructible_v<PackageSpecifier>);
    static_assert(std::is_copy_assignable_v<PackageSpecifier>);
    static_assert(std::is_nothrow_move_constructible_v<PackageSpecifier>);
    static_assert(std::is_nothrow_move_assignable_v<PackageSpecifier>);
    static_assert(!std::is_polymorphic_v<PackageSpecifier>);
}

TEST(PackageSpecifier, IsCopiedInFull) {
    auto const original = makeSpecifier(u"pkg.sub@^1.2,<1.9");
    auto copy = makeSpecifier(u"other");
    copy = original;
    EXPECT_EQ(copy, original);
    EXPECT_EQ(copy.ToString(), u"pkg.sub@^1.2,<1.9");
}

TEST(PackageSpecifier, LeavesTheSourceOfAMoveWithoutAName) {
    for (std::u16string_view const text :
         {u"p@1"sv, u"a_name_that_does_not_fit_into_the_object@1"sv}) {
        auto source = makeSpecifier(text);
        PackageSpecifier constructed(std::move(source));
        EXPECT_EQ(constructed, makeSpecifier(text));
        EXPECT_EQ(source.Name(), u"");

        auto assigned = makeSpecifier(u"other");
        assigned = std::move(constructed);
        EXPECT_EQ(assigned, makeSpecifier(text));
        EXPECT_EQ(constructed.Name(), u"");
    }
}

TEST(PackageSpecifier, IsPaddedAsAWhole) {
    std::ostringstream stream;
    stream << std::setfill('.') << std::setw(9) << makeSpecifier(u"pkg@1.2") << makeSpecifier(u"p");
    EXPECT_EQ(stream.str(), "..pkg@1.2p");

    std::ostringstream left;
    left << std::left << std::setw(6) << makeSpecifier(u"p@1") << '|';
    EXPECT_EQ(left.str(), "p@1   |");
}

/// Accepts every range and records the texts.
class RecordingFactory final : public IComponentVersionRangeFactory {
  public:
    ComponentVersionRange Create(std::u16string_view text) const override {
        asked.emplace_back(text);
        return {};
    }

    mutable std::vector<std::u16string> asked;
};

/// Throws an exception of its own.
class FailingFactory final : public IComponentVersionRangeFactory {
  public:
    ComponentVersionRange Create(std::u16string_view) const override {
        throw std::runtime_error("no ranges today");
    }
};

TEST(PackageSpecifier, LeavesTheRangeToTheFactory) {
    RecordingFactory const factory;
    EXPECT_EQ(PackageSpecifier(u"a@anything@ at all", factory).Name(), u"a");
    EXPECT_EQ(factory.asked, (std::vector<std::u16string>{u"anything@ at all"}));
    EXPECT_THROW(PackageSpecifier(u"a@1", FailingFactory()), std::runtime_error);
}

TEST(PackageSpecifier, AsksTheFactoryOnlyForARangeBehindAGoodName) {
    RecordingFactory const factory;
    EXPECT_NO_THROW(PackageSpecifier(u"a.b", factory));
    EXPECT_THROW(PackageSpecifier(u"a.@1", factory), InvalidSpecifier);
    EXPECT_TRUE(factory.asked.empty());
}

// Random specifiers.

using Pieces = std::vector<std::u16string>;

/// Between `least` and `most` values of `piece`, separated by `separator`.
rc::Gen<std::u16string> joined(rc::Gen<std::u16string> const& piece,
                               std::u16string const& separator, std::size_t least,
                               std::size_t most) {
    auto const pieces =
        rc::gen::mapcat(rc::gen::inRange(least, most + 1), [piece](std::size_t count) {
            return rc::gen::container<Pieces>(count, piece);
        });
    return rc::gen::map(pieces, [separator](Pieces const& each) {
        std::u16string text;
        for (std::size_t index = 0; index < each.size(); ++index) {
            text += (index == 0 ? std::u16string() : separator) + each[index];
        }
        return text;
    });
}

rc::Gen<std::u16string> oneOf(Pieces const& choices) {
    return rc::gen::elementOf(choices);
}

rc::Gen<std::u16string> concatenated(rc::Gen<std::u16string> const& first,
                                     rc::Gen<std::u16string> const& second) {
    return rc::gen::map(rc::gen::pair(first, second),
                        [](auto const& both) { return both.first + both.second; });
}

rc::Gen<std::u16string> identifiers() {
    auto const start = oneOf({u"a", u"Z", u"_", u"\u00E9", u"\u540D", u"\U00010400"});
    auto const rest = oneOf({u"a", u"Z", u"_", u"0", u"9", u"\u0301", u"\u0661", u"\U0001D7D8"});
    return concatenated(start, joined(rest, u"", 0, 4));
}

rc::Gen<std::u16string> optional(std::u16string const& sign, rc::Gen<std::u16string> const& text) {
    return rc::gen::oneOf(rc::gen::just(std::u16string()),
                          rc::gen::map(text, [sign](auto const& each) { return sign + each; }));
}

rc::Gen<std::u16string> ranges() {
    auto const number = oneOf({u"0", u"1", u"10", u"2024", u"98765432109876543210987654321"});
    auto const preRelease = oneOf({u"0", u"7", u"rc", u"0a", u"-", u"a-b", u"00-"});
    auto const build = oneOf({u"0", u"007", u"b", u"-", u"a-b"});
    auto const version = concatenated(joined(number, u".", 1, 3),
                                      concatenated(optional(u"-", joined(preRelease, u".", 1, 3)),
                                                   optional(u"+", joined(build, u".", 1, 3))));
    auto const sign = oneOf({u"", u"=", u">", u">=", u"<", u"<=", u"^", u"~"});
    auto const comparator =
        rc::gen::oneOf(concatenated(sign, version), rc::gen::just(std::u16string(u"*")));
    return joined(comparator, u",", 1, 3);
}

rc::Gen<std::u16string> validSpecifiers() {
    return concatenated(joined(identifiers(), u".", 1, 3), optional(u"@", ranges()));
}

/// \p text with one unit inserted, removed or replaced.
std::u16string mutated(std::u16string text) {
    std::u16string const units = u"aZ_019@.,*+-<>=^~ !\u00E9\u0301\xD801\xDC00";
    auto const position = *rc::gen::inRange<std::size_t>(0, text.size() + 1);
    auto const unit = *rc::gen::elementOf(units);
    switch (*rc::gen::inRange(0, 3)) {
    case 0:
        return text.insert(position, 1, unit);
    case 1:
        return text.erase(position, 1);
    default:
        return text.replace(position, 1, 1, unit);
    }
}

TEST(PackageSpecifierProperty, EveryWellFormedTextIsAcceptedAndKept) {
    support::checkOnRandomCases(randomCases, [] {
        auto const text = *validSpecifiers();
        RC_LOG() << ustring_to_utf8(text) << '\n';
        auto const specifier = tryToMakeSpecifier(text);
        RC_ASSERT(specifier.has_value());
        RC_ASSERT(specifier->ToString() == text);
        RC_ASSERT(specifier->Name() == text.substr(0, text.find(u'@')));
    });
}

TEST(PackageSpecifierProperty, WhatIsAcceptedIsReadBackEqualAndPrintsAlikeInBothWidths) {
    int acceptedTexts = 0;
    support::checkOnRandomCases(randomCases, [&] {
        auto const text = mutated(*validSpecifiers());
        RC_LOG() << ustring_to_utf8(text) << '\n';
        auto const specifier = tryToMakeSpecifier(text);
        if (specifier) {
            ++acceptedTexts;
            RC_ASSERT(makeSpecifier(specifier->ToString()) == *specifier);
            RC_ASSERT(printed(*specifier) == ustring_to_utf8(specifier->ToString()));
        }
    });
    EXPECT_GT(acceptedTexts, randomCases / 10) << "too few for a meaningful test";
}

/// An independent grammar of specifiers, as a regular expression.
icu::UnicodeString grammar() {
    using Text = icu::UnicodeString;
    Text const identifier = u"[_\\p{XID_Start}]\\p{XID_Continue}*";
    Text const number = u"(0|[1-9][0-9]*)";
    Text const preRelease = u"(" + number + u"|[0-9]*[A-Za-z-][0-9A-Za-z-]*)";
    Text const build = u"[0-9A-Za-z-]+";
    auto const list = [](Text const& item, Text const& separator) {
        return item + u"(" + separator + item + u")*";
    };
    Text const version = number + u"(\\." + number + u"){0,2}(-" + list(preRelease, u"\\.") +
                         u")?(\\+" + list(build, u"\\.") + u")?";
    Text const comparator = u"(\\*|(>=|>|<=|<|=|\\^|~)?" + version + u")";
    return list(identifier, u"\\.") + u"(@" + list(comparator, u",") + u")?";
}

TEST(PackageSpecifierProperty, ExactlyTheGrammarIsAccepted) {
    UErrorCode status = U_ZERO_ERROR;
    icu::RegexMatcher matcher(grammar(), 0, status);
    ASSERT_TRUE(U_SUCCESS(status)) << u_errorName(status);

    support::checkOnRandomCases(randomCases, [&] {
        auto text = *validSpecifiers();
        for (int mutations = *rc::gen::inRange(0, 3); mutations > 0; --mutations) {
            text = mutated(text);
        }
        RC_LOG() << ustring_to_utf8(text) << '\n';
        icu::UnicodeString const input(text.data(), static_cast<std::int32_t>(text.size()));
        bool const isInGrammar = matcher.reset(input).matches(status) != 0;
        RC_ASSERT(U_SUCCESS(status));
        RC_ASSERT(tryToMakeSpecifier(text).has_value() == isInGrammar);
    });
}

} // namespace
