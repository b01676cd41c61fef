// SPDX-License-Identifier: BSL-1.0

#include <import/arguments.hpp>

#include <gtest/gtest.h>

#include <memory>
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

template <typename... Records>
constexpr bool areValuesThatMoveWithoutThrowing = (... &&
                                                   (std::is_copy_constructible_v<Records> &&
                                                    std::is_copy_assignable_v<Records> &&
                                                    std::is_nothrow_move_constructible_v<Records> &&
                                                    std::is_nothrow_move_assignable_v<Records> &&
                                                    std::is_nothrow_destructible_v<Records>));

static_assert(areValuesThatMoveWithoutThrowing<
              PackageNameImportArgument, VersionedPackageImportArgument,
              FullyQualifiedImportArgument, WildcardImportArgument, AsClauseImportArgument,
              IgnoredArgument, InvalidImportArgument, ParsedImportArgument>);

static_assert(std::is_default_constructible_v<PackageNameImportArgument>);
static_assert(!std::is_default_constructible_v<VersionedPackageImportArgument>);
static_assert(std::is_default_constructible_v<FullyQualifiedImportArgument>);
static_assert(std::is_default_constructible_v<WildcardImportArgument>);
static_assert(std::is_default_constructible_v<AsClauseImportArgument>);
static_assert(std::is_default_constructible_v<IgnoredArgument>);
static_assert(std::is_default_constructible_v<InvalidImportArgument>);
static_assert(std::is_empty_v<AsClauseImportArgument>);

static_assert(
    std::is_same_v<ParsedImportArgument,
                   std::variant<FullyQualifiedImportArgument, WildcardImportArgument,
                                PackageNameImportArgument, VersionedPackageImportArgument,
                                AsClauseImportArgument, InvalidImportArgument, IgnoredArgument>>);

// Too long for the small-string buffer, so that a move empties the source.
std::u16string const longText(100, u'x');

GenericMsgIDHolder message(std::string const& key) {
    return GenericMsgIDHolder(BaseMsgID{{longText}, "catalogue", key});
}

TEST(Records, AreEmptyByDefault) {
    EXPECT_EQ(PackageNameImportArgument{}.name, u"");
    EXPECT_EQ(FullyQualifiedImportArgument{}.rootElement, u"");
    EXPECT_EQ(FullyQualifiedImportArgument{}.introducedName, u"");
    EXPECT_EQ(FullyQualifiedImportArgument{}.rawArgument, u"");
    EXPECT_FALSE(FullyQualifiedImportArgument{}.warning.has_value());
    EXPECT_EQ(WildcardImportArgument{}.rootElement, u"");
    EXPECT_EQ(WildcardImportArgument{}.rawArgument, u"");
    EXPECT_FALSE(WildcardImportArgument{}.warning.has_value());
    EXPECT_EQ(IgnoredArgument{}.text, u"");
    EXPECT_TRUE(InvalidImportArgument{}.msgHolder.isEmpty());
}

TEST(Records, LeaveEmptyTextsBehindWhenMoved) {
    for (std::u16string const& text : {std::u16string(u"ab"), longText}) {
        PackageNameImportArgument package{text};
        EXPECT_EQ(PackageNameImportArgument(std::move(package)).name, text);
        EXPECT_EQ(package.name, u"");

        IgnoredArgument ignored{text};
        EXPECT_EQ(IgnoredArgument(std::move(ignored)).text, text);
        EXPECT_EQ(ignored.text, u"");

        FullyQualifiedImportArgument name{text, text, text, {}};
        EXPECT_EQ(FullyQualifiedImportArgument(std::move(name)).rawArgument, text);
        EXPECT_EQ(name.rootElement + name.introducedName + name.rawArgument, u"");

        WildcardImportArgument wildcard{text, text, {}};
        EXPECT_EQ(WildcardImportArgument(std::move(wildcard)).rawArgument, text);
        EXPECT_EQ(wildcard.rootElement + wildcard.rawArgument, u"");
    }
}

TEST(Records, LeaveEmptyTextsBehindWhenMoveAssigned) {
    for (std::u16string const& text : {std::u16string(u"ab"), longText}) {
        FullyQualifiedImportArgument name{text, text, text, message("Key")};
        FullyQualifiedImportArgument target{longText, longText, longText, message("Old")};
        target = std::move(name);
        EXPECT_EQ(target.introducedName, text);
        EXPECT_EQ(target.warning->getMsgID().key, "Key");
        EXPECT_EQ(name.rootElement + name.introducedName + name.rawArgument, u"");
    }
}

TEST(Records, LeaveAnEngagedEmptyWarningBehindWhenMoved) {
    FullyQualifiedImportArgument name{u"a", u"b", u"a.b", message("Key")};
    FullyQualifiedImportArgument const moved(std::move(name));
    EXPECT_EQ(moved.warning->getMsgID().key, "Key");
    ASSERT_TRUE(name.warning.has_value());
    EXPECT_TRUE(name.warning->isEmpty());
}

TEST(Records, CopyTheirWarningDeeply) {
    auto original = std::make_unique<FullyQualifiedImportArgument>(
        FullyQualifiedImportArgument{u"a", u"b", u"a.b", message("Key")});
    FullyQualifiedImportArgument const copy = *original;
    EXPECT_NE(&copy.warning->getMsgID(), &original->warning->getMsgID());
    original.reset();
    EXPECT_EQ(copy.warning->getMsgID(), message("Key").getMsgID());
}

TEST(Records, KeepAnIndependentMessageWhenCopyAssigned) {
    WildcardImportArgument const original{u"a", u"a.*", message("Key")};
    WildcardImportArgument copy{u"b", u"b.*", message("Old")};
    copy = original;
    EXPECT_EQ(copy.rawArgument, u"a.*");
    EXPECT_EQ(copy.warning->getMsgID(), original.warning->getMsgID());
    EXPECT_NE(&copy.warning->getMsgID(), &original.warning->getMsgID());
}

TEST(Records, KeepTheirSpecifierWhenCopied) {
    VersionedPackageImportArgument original{
        PackageSpecifier(u"averylongpackagename@^1", GetComponentVersionRangeFactory())};
    VersionedPackageImportArgument copy = original;
    EXPECT_EQ(copy.specifier, original.specifier);
    copy = std::move(original);
    EXPECT_EQ(copy.specifier.ToString(), u"averylongpackagename@^1");
}

TEST(AsClauseImportArgument, IsUnchangedByAssignment) {
    AsClauseImportArgument target;
    AsClauseImportArgument const source;
    EXPECT_EQ(&(target = source), &target);
}

TEST(InvalidImportArgument, CopiesAnEmptyHolderAsEmpty) {
    InvalidImportArgument const empty;
    EXPECT_TRUE(InvalidImportArgument(empty).msgHolder.isEmpty());
    InvalidImportArgument target{message("Old")};
    target = empty;
    EXPECT_TRUE(target.msgHolder.isEmpty());
}

TEST(InvalidImportArgument, LeavesTheSourceOfAMoveEmpty) {
    InvalidImportArgument source{message("Key")};
    InvalidImportArgument target(std::move(source));
    EXPECT_TRUE(source.msgHolder.isEmpty());
    InvalidImportArgument assigned{message("Old")};
    assigned = std::move(target);
    EXPECT_TRUE(target.msgHolder.isEmpty());
    EXPECT_EQ(assigned.msgHolder.getMsgID().key, "Key");
}

TEST(InvalidImportArgument, SurvivesAssignmentToItself) {
    InvalidImportArgument argument{message("Key")};
    InvalidImportArgument& alias = argument;
    argument = alias;
    EXPECT_EQ(argument.msgHolder.getMsgID().key, "Key");
    argument = std::move(alias);
    EXPECT_EQ(argument.msgHolder.getMsgID().key, "Key");
}

} // namespace
} // namespace lf::import
