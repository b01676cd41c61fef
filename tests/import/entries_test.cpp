// SPDX-License-Identifier: BSL-1.0

#include <import/entries.hpp>

#include <boost/exception_ptr.hpp>
#include <gtest/gtest.h>

#include <exception>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>

namespace lf::import {
namespace {

using Oxtavel::KeldarComponents::GetComponentVersionRangeFactory;
using Oxtavel::KeldarComponents::PackageSpecifier;
using resource_core::BaseMsgID;
using resource_core::GenericMsgIDHolder;

template <typename... Entries>
constexpr bool areValuesThatMoveWithoutThrowing = (... &&
                                                   (std::is_copy_constructible_v<Entries> &&
                                                    std::is_copy_assignable_v<Entries> &&
                                                    std::is_nothrow_move_constructible_v<Entries> &&
                                                    std::is_nothrow_move_assignable_v<Entries> &&
                                                    !std::is_default_constructible_v<Entries>));

static_assert(
    areValuesThatMoveWithoutThrowing<PackageImportEntry, FullyQualifiedImportEntry,
                                     WildcardImportEntry, InvalidImportEntry, ImportEntry>);

// Constructors that move from their arguments do not throw.
static_assert(std::is_nothrow_constructible_v<PackageImportEntry, PackageImportEntry&&,
                                              PackageNameImportArgument&&>);
static_assert(
    std::is_nothrow_constructible_v<FullyQualifiedImportEntry, FullyQualifiedImportArgument&&>);
static_assert(std::is_nothrow_constructible_v<WildcardImportEntry, WildcardImportArgument&&>);
static_assert(std::is_nothrow_constructible_v<InvalidImportEntry, InvalidImportArgument&&>);

// The constructors from texts are private.
static_assert(!std::is_constructible_v<PackageImportEntry, PackageSpecifier&&, std::u16string&&>);
static_assert(!std::is_constructible_v<FullyQualifiedImportEntry, std::u16string&&,
                                       std::u16string&&, std::u16string&&>);
static_assert(!std::is_constructible_v<WildcardImportEntry, std::u16string&&, std::u16string&&>);

static_assert(
    std::is_same_v<ImportEntry, std::variant<PackageImportEntry, FullyQualifiedImportEntry,
                                             WildcardImportEntry>>);

std::u16string const longName(100, u'n');

PackageImportEntry package(std::u16string const& name) {
    return PackageImportEntry(PackageNameImportArgument{name});
}

VersionedPackageImportArgument versioned(std::u16string const& text) {
    return {PackageSpecifier(text, GetComponentVersionRangeFactory())};
}

TEST(PackageImportEntry, IntroducesThePackagesOwnName) {
    PackageImportEntry const entry = package(u"p");
    EXPECT_EQ(entry.getIntroducedName(), u"p");
    EXPECT_EQ(entry.getPackageSpecifier().Name(), u"p");
}

TEST(PackageImportEntry, IntroducesTheNameWithoutTheVersion) {
    PackageImportEntry const entry(versioned(u"p.q@^1.2"));
    EXPECT_EQ(entry.getIntroducedName(), u"p.q");
    EXPECT_EQ(entry.getPackageSpecifier().ToString(), u"p.q@^1.2");
}

TEST(PackageImportEntry, OnlyReadsAPackageName) {
    PackageNameImportArgument argument{longName};
    PackageImportEntry const entry(std::move(argument));
    EXPECT_EQ(argument.name, longName);
}

TEST(PackageImportEntry, LetsTheRefusalOfANameThrough) {
    using Refusal = foundation::core::except::Exception<kpm::arguments::InvalidPackageSpecifier,
                                                        std::exception>;
    EXPECT_THROW(package(u"1p"), Refusal);
}

TEST(PackageImportEntry, TakesAnAliasAndKeepsThePackage) {
    PackageImportEntry original(versioned(u"p@2"));
    PackageImportEntry const aliased(std::move(original), PackageNameImportArgument{u"q"});
    EXPECT_EQ(aliased.getIntroducedName(), u"q");
    EXPECT_EQ(aliased.getPackageSpecifier().Name(), u"p");
    EXPECT_EQ(aliased.getPackageSpecifier().ToString(), u"p@2");
}

TEST(PackageImportEntry, LeavesTheOldIntroducedNameInTheEntryThatGetsAnAlias) {
    PackageImportEntry original = package(longName);
    PackageNameImportArgument alias{longName + u"2"};
    PackageImportEntry const aliased(std::move(original), std::move(alias));
    EXPECT_EQ(original.getIntroducedName(), longName);
    EXPECT_EQ(alias.name, u"");
}

TEST(PackageImportEntry, DoesNotCheckAnAlias) {
    PackageImportEntry const aliased(package(u"p"), PackageNameImportArgument{u"1 no name"});
    EXPECT_EQ(aliased.getIntroducedName(), u"1 no name");
}

TEST(FullyQualifiedImportEntry, TakesTheTextsAndLeavesTheWarning) {
    FullyQualifiedImportArgument argument{u"a", u"c", u"a.b.c",
                                          GenericMsgIDHolder(BaseMsgID{{}, "catalogue", "Key"})};
    FullyQualifiedImportEntry const entry(std::move(argument));
    EXPECT_EQ(entry.getRootElement(), u"a");
    EXPECT_EQ(entry.getIntroducedName(), u"c");
    EXPECT_EQ(entry.getRawArgument(), u"a.b.c");
    EXPECT_EQ(argument.rawArgument, u"");
    ASSERT_TRUE(argument.warning.has_value());
    EXPECT_EQ(argument.warning->getMsgID().key, "Key");
}

TEST(WildcardImportEntry, TakesTheTextsAndLeavesTheWarning) {
    WildcardImportArgument argument{u"1a", u"1a.*",
                                    GenericMsgIDHolder(BaseMsgID{{}, "catalogue", "Key"})};
    WildcardImportEntry const entry(std::move(argument));
    EXPECT_EQ(entry.getRootElement(), u"1a");
    EXPECT_EQ(entry.getRawArgument(), u"1a.*");
    EXPECT_EQ(argument.rawArgument, u"");
    EXPECT_EQ(argument.warning->getMsgID().key, "Key");
}

TEST(Entries, HaveEmptyTextsAfterAMove) {
    FullyQualifiedImportEntry name(FullyQualifiedImportArgument{longName, longName, longName, {}});
    FullyQualifiedImportEntry const movedName(std::move(name));
    EXPECT_EQ(movedName.getRawArgument(), longName);
    EXPECT_EQ(name.getRawArgument(), u"");
    EXPECT_EQ(name.getIntroducedName(), u"");
    EXPECT_EQ(name.getRootElement(), u"");

    WildcardImportEntry wildcard(WildcardImportArgument{longName, longName, {}});
    WildcardImportEntry const movedWildcard(std::move(wildcard));
    EXPECT_EQ(wildcard.getRawArgument(), u"");
    EXPECT_EQ(wildcard.getRootElement(), u"");

    PackageImportEntry packageEntry = package(longName);
    PackageImportEntry const movedPackage(std::move(packageEntry));
    EXPECT_EQ(packageEntry.getIntroducedName(), u"");
    EXPECT_EQ(packageEntry.getPackageSpecifier().Name(), u"");
}

TEST(Entries, AreIndependentOfTheirCopies) {
    PackageImportEntry original = package(longName);
    PackageImportEntry copy = original;
    original = package(u"other");
    EXPECT_EQ(copy.getIntroducedName(), longName);
    copy = original;
    EXPECT_EQ(copy.getPackageSpecifier(), original.getPackageSpecifier());
}

TEST(InvalidImportEntry, TakesTheMessageOfAnArgument) {
    InvalidImportArgument argument{GenericMsgIDHolder(BaseMsgID{{u"x"}, "catalogue", "Key"})};
    InvalidImportEntry const entry(std::move(argument));
    EXPECT_TRUE(argument.msgHolder.isEmpty());
    EXPECT_TRUE(entry.holdsMsgWithKey("Key"));
}

TEST(InvalidImportEntry, KeepsACopyOfAMessage) {
    BaseMsgID const message{{u"x", u"y"}, "catalogue", "Key"};
    InvalidImportEntry const entry(message);
    EXPECT_EQ(entry.getMsgHolder().getMsgID(), message);
    EXPECT_NE(&entry.getMsgHolder().getMsgID(), &message);
}

TEST(InvalidImportEntry, IsAWarningForTheTwoWarningKeysOnly) {
    struct {
        char const* key;
        bool isWarning;
        char const* why;
    } const rows[]{
        {"MalformedImportArgumentWarning", true, "the first key"},
        {"KeywordInImportArgumentWarning", true, "the second key"},
        {"InvalidImportArgument", false, "an error"},
        {"PackageRedeclared", false, "an error of lists"},
        {"SomethingWarning", false, "the ending alone does not matter"},
        {"MalformedImportArgumentWarnings", false, "longer than the key"},
        {"MalformedImportArgument", false, "shorter than the key"},
        {"malformedImportArgumentWarning", false, "keys are case-sensitive"},
        {"", false, "no key"},
    };

    for (auto const& [key, isWarning, why] : rows) {
        EXPECT_EQ(InvalidImportEntry(BaseMsgID{{u"x"}, "other catalogue", key}).isWarning(),
                  isWarning)
            << key << ": " << why;
    }
}

TEST(InvalidImportEntry, ComparesKeysWhole) {
    InvalidImportEntry const entry(BaseMsgID{{}, "catalogue", "InvalidImportArgument"});
    EXPECT_TRUE(entry.holdsMsgWithKey("InvalidImportArgument"));
    for (char const* other :
         {"invalidImportArgument", "InvalidImportArgumentX", "InvalidImport", ""}) {
        EXPECT_FALSE(entry.holdsMsgWithKey(other)) << other;
    }
}

class MovedFromInvalidImportEntry : public testing::Test {
  protected:
    InvalidImportEntry entry{BaseMsgID{{}, "catalogue", "Key"}};
    InvalidImportEntry taken{std::move(entry)};
};

TEST_F(MovedFromInvalidImportEntry, ShowsItsEmptyHolder) {
    EXPECT_TRUE(entry.getMsgHolder().isEmpty());
    EXPECT_TRUE(taken.holdsMsgWithKey("Key"));
}

TEST_F(MovedFromInvalidImportEntry, ThrowsWhenAskedForSeverityOrKey) {
    EXPECT_THROW(entry.isWarning(), GenericMsgIDHolder::EmptyGenericMsgIDHolder);
    EXPECT_THROW(entry.holdsMsgWithKey("Key"), GenericMsgIDHolder::EmptyGenericMsgIDHolder);
    EXPECT_THROW(entry.isWarning(), std::exception);
}

TEST_F(MovedFromInvalidImportEntry, ThrowsWhatBoostCanCopy) {
    boost::exception_ptr caught;
    try {
        entry.isWarning();
    } catch (...) {
        caught = boost::current_exception();
    }
    ASSERT_TRUE(caught);
    EXPECT_THROW(boost::rethrow_exception(caught), GenericMsgIDHolder::EmptyGenericMsgIDHolder);
}

} // namespace
} // namespace lf::import
