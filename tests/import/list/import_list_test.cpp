// SPDX-License-Identifier: BSL-1.0

#include <import/import_list.hpp>

#include <support/make_entries.hpp>

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace lf::import {
namespace {

using support::makeName;
using support::makePackage;
using support::makeWildcard;
using enum IImportList::CheckAncestorList;

static_assert(static_cast<int>(No) == 0);
static_assert(static_cast<int>(Yes) == 1);
static_assert(static_cast<int>(EntryOrigin::ThisList) == 0);
static_assert(static_cast<int>(EntryOrigin::Ancestor) == 1);
static_assert(sizeof(EntryOrigin) == 4);

static_assert(std::is_abstract_v<IImportList>);
static_assert(std::has_virtual_destructor_v<IImportList>);
static_assert(std::is_same_v<decltype(FoundImportEntry::entry), PackageImportEntry const&>);
static_assert(std::is_same_v<decltype(FoundFullyQualifiedName::rawArgument), std::u16string_view>);
static_assert(
    std::is_same_v<decltype(std::declval<IImportList&>().getWildcardImportEntries(No)),
                   ranges::any_view<WildcardImportEntry const&, ranges::category::forward>>);

class AnImportList : public testing::Test {
  protected:
    static std::shared_ptr<IImportList> makeList(std::shared_ptr<IImportList const> parent = {}) {
        return createImportList(std::move(parent));
    }

    // One entry of each kind.
    static void fill(IImportList& list) {
        ASSERT_FALSE(list.addStaticImportEntry(makeName(u"a.b")));
        ASSERT_FALSE(list.addStaticImportEntry(makeWildcard(u"c.*")));
        ASSERT_FALSE(list.addStaticImportEntry(makePackage(u"p")));
    }

    static constexpr auto otherValue = static_cast<IImportList::CheckAncestorList>(2);
};

TEST_F(AnImportList, IsCreatedEmpty) {
    auto const list = makeList();
    EXPECT_TRUE(list->isEmpty(No));
    EXPECT_TRUE(list->isEmpty(Yes));
    EXPECT_EQ(list->getNumberOfEntries(Yes), 0U);
    EXPECT_EQ(list->getParent(), nullptr);
}

TEST_F(AnImportList, IsNotEmptyWithAnEntryOfAnyKind) {
    for (ImportEntry const& entry :
         {ImportEntry(makeName(u"a.b")), ImportEntry(makeWildcard(u"a.*")),
          ImportEntry(makePackage(u"p"))}) {
        auto const list = makeList();
        ASSERT_FALSE(list->addDynamicImportEntry(ImportEntry(entry)));
        EXPECT_FALSE(list->isEmpty(No));
        EXPECT_FALSE(list->isEmpty(Yes));
        EXPECT_EQ(list->getNumberOfEntries(No), 1U);
    }
}

TEST_F(AnImportList, NamesItsParent) {
    auto const parent = makeList();
    auto const child = makeList(parent);
    EXPECT_EQ(child->getParent(), parent);
}

TEST_F(AnImportList, KeepsItsParentAlive) {
    auto parent = makeList();
    fill(*parent);
    auto const child = makeList(parent);
    std::weak_ptr<IImportList const> const watched = parent;
    parent.reset();
    EXPECT_FALSE(watched.expired());
    EXPECT_EQ(child->getNumberOfEntries(Yes), 3U);
}

TEST_F(AnImportList, GivesItsParentUpWhenItIsDestroyed) {
    auto parent = makeList();
    std::weak_ptr<IImportList const> const watched = parent;
    auto child = makeList(std::exchange(parent, nullptr));
    child.reset();
    EXPECT_TRUE(watched.expired());
}

TEST_F(AnImportList, ReleasesAllListsThatAForeignParentOwns) {
    auto const outermost = makeList();
    auto first = makeList(outermost);
    auto second = makeList(outermost);
    auto const owned = std::to_array<std::weak_ptr<IImportList const>>({first, second});
    // Like a foreign list, this one owns two lists.
    auto* const body = first.get();
    std::shared_ptr<IImportList const> owner(
        body, [held = std::pair{std::move(first), std::move(second)}](auto const*) {});
    auto child = makeList(makeList(std::move(owner)));
    child.reset();
    EXPECT_TRUE(owned[0].expired());
    EXPECT_TRUE(owned[1].expired());
    EXPECT_EQ(outermost.use_count(), 1);
}

TEST_F(AnImportList, LooksAtItsParentForEmptinessOnYesOnly) {
    auto const parent = makeList();
    fill(*parent);
    auto const child = makeList(parent);
    EXPECT_TRUE(child->isEmpty(No));
    EXPECT_FALSE(child->isEmpty(Yes));
    EXPECT_TRUE(child->isEmpty(otherValue));
}

TEST_F(AnImportList, CountsAncestorsOnYesOnly) {
    auto const grandparent = makeList();
    fill(*grandparent);
    auto const parent = makeList(grandparent);
    auto const child = makeList(parent);
    fill(*child);
    EXPECT_EQ(child->getNumberOfEntries(No), 3U);
    EXPECT_EQ(child->getNumberOfEntries(Yes), 6U) << "hidden entries count";
    EXPECT_EQ(child->getNumberOfEntries(otherValue), 3U);
    EXPECT_EQ(parent->getNumberOfEntries(Yes), 3U);
}

TEST_F(AnImportList, DoesNotCountWhatItRefusedOrSkipped) {
    auto const list = makeList();
    fill(*list);
    EXPECT_TRUE(list->addStaticImportEntry(makePackage(u"p")));
    EXPECT_FALSE(list->addStaticImportEntry(makeName(u"a.b")));
    EXPECT_EQ(list->getNumberOfEntries(No), 3U);
}

TEST_F(AnImportList, ClonesWithTheSameParent) {
    auto const parent = makeList();
    auto const list = makeList(parent);
    fill(*list);
    auto const copy = list->clone();
    EXPECT_EQ(copy->getParent(), parent);
    EXPECT_EQ(copy->getNumberOfEntries(No), 3U);
    EXPECT_TRUE(copy->findPackageImportEntry(u"p", No));
    EXPECT_TRUE(copy->findFullyQualifiedImportEntry(u"b", No));
    EXPECT_TRUE(copy->addStaticImportEntry(makePackage(u"c"))) << "root elements are copied";
    EXPECT_FALSE(copy->addStaticImportEntry(makeWildcard(u"c.*")));
    EXPECT_EQ(copy->getNumberOfEntries(No), 3U) << "raw arguments are copied";
}

// A large list also stores an index of its names.
TEST_F(AnImportList, ClonesAllThatALargeListKnowsOfNames) {
    auto const list = makeList();
    std::vector<std::u16string> names;
    for (char16_t unit = u'a'; unit <= u'z'; ++unit) {
        names.emplace_back(3, unit);
    }
    for (std::u16string const& name : names) {
        ASSERT_FALSE(list->addStaticImportEntry(makePackage(u"p_" + name)));
        ASSERT_FALSE(list->addStaticImportEntry(
            makeName(std::u16string(u"r_").append(name).append(u".").append(name))));
        ASSERT_FALSE(list->addStaticImportEntry(makeWildcard(u"w_" + name + u".*")));
    }
    auto const copy = list->clone();
    for (std::u16string const& name : names) {
        EXPECT_TRUE(copy->findPackageImportEntry(u"p_" + name, No));
        EXPECT_TRUE(copy->findFullyQualifiedImportEntry(name, No));
        EXPECT_TRUE(copy->addStaticImportEntry(makePackage(u"r_" + name))) << "a root element";
        EXPECT_TRUE(copy->addStaticImportEntry(makePackage(u"w_" + name))) << "a root element";
        EXPECT_FALSE(copy->addStaticImportEntry(makeWildcard(u"w_" + name + u".*")));
    }
    EXPECT_EQ(copy->getNumberOfEntries(No), 3 * names.size()) << "raw arguments are copied";
}

TEST_F(AnImportList, IsIndependentOfItsClones) {
    auto list = makeList();
    fill(*list);
    auto const copy = list->clone();
    ASSERT_FALSE(copy->addStaticImportEntry(makePackage(u"q")));
    ASSERT_FALSE(list->addStaticImportEntry(makePackage(u"r")));
    EXPECT_FALSE(list->findPackageImportEntry(u"q", No));
    EXPECT_FALSE(copy->findPackageImportEntry(u"r", No));
    list.reset();
    EXPECT_EQ(copy->findPackageImportEntry(u"p", No)->entry.getIntroducedName(), u"p");
}

} // namespace
} // namespace lf::import
