// SPDX-License-Identifier: BSL-1.0

#include <import/import_list.hpp>

#include <support/make_entries.hpp>

#include <gtest/gtest.h>
#include <range/v3/range/concepts.hpp>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace lf::import {
namespace {

using support::makeName;
using support::makePackage;
using support::makeWildcard;
using enum IImportList::CheckAncestorList;

using NameView = ranges::any_view<FullyQualifiedImportEntry const&, ranges::category::forward>;
static_assert(ranges::forward_range<NameView>);
static_assert(!ranges::bidirectional_range<NameView>);
static_assert(!ranges::sized_range<NameView>);
static_assert(
    std::is_same_v<ranges::range_reference_t<NameView>, FullyQualifiedImportEntry const&>);

using Texts = std::vector<std::u16string>;

// Four nested scopes.
class Enumeration : public testing::Test {
  protected:
    std::shared_ptr<IImportList> outermost = createImportList(nullptr);
    std::shared_ptr<IImportList> grandparent = createImportList(outermost);
    std::shared_ptr<IImportList> parent = createImportList(grandparent);
    std::shared_ptr<IImportList> list = createImportList(parent);

    static void add(IImportList& target, ImportEntry entry) {
        ASSERT_FALSE(target.addDynamicImportEntry(std::move(entry)));
    }

    static Texts names(IImportList const& asked, IImportList::CheckAncestorList check = Yes) {
        Texts texts;
        for (FullyQualifiedImportEntry const& entry : asked.getFullyQualifiedImportEntries(check)) {
            texts.emplace_back(entry.getRawArgument());
        }
        return texts;
    }

    static Texts wildcards(IImportList const& asked, IImportList::CheckAncestorList check = Yes) {
        Texts texts;
        for (WildcardImportEntry const& entry : asked.getWildcardImportEntries(check)) {
            texts.emplace_back(entry.getRawArgument());
        }
        return texts;
    }

    static Texts packages(IImportList const& asked, IImportList::CheckAncestorList check = Yes) {
        Texts texts;
        for (PackageImportEntry const& entry : asked.getPackageImportEntries(check)) {
            texts.push_back(entry.getPackageSpecifier().ToString());
        }
        return texts;
    }
};

TEST_F(Enumeration, IsEmptyForEmptyLists) {
    EXPECT_EQ(names(*list), Texts());
    EXPECT_EQ(wildcards(*list), Texts());
    EXPECT_EQ(packages(*list), Texts());
    EXPECT_EQ(packages(*list, No), Texts());
}

TEST_F(Enumeration, KeepsTheOrderOfAddition) {
    for (auto const& target : {outermost, list}) {
        for (char16_t const letter : std::u16string(u"dacb")) {
            add(*target, makePackage(std::u16string(1, letter)));
            add(*target, makeName(std::u16string(u"r.x") + letter));
            add(*target, makeWildcard(std::u16string(u"r.") + letter + u".*"));
        }
        EXPECT_EQ(packages(*target, No), (Texts{u"d", u"a", u"c", u"b"}));
        EXPECT_EQ(names(*target, No), (Texts{u"r.xd", u"r.xa", u"r.xc", u"r.xb"}));
        EXPECT_EQ(wildcards(*target, No), (Texts{u"r.d.*", u"r.a.*", u"r.c.*", u"r.b.*"}));
    }
    EXPECT_EQ(packages(*outermost, Yes), packages(*outermost, No)) << "a list without parent";
}

TEST_F(Enumeration, GoesOutwardFromListToList) {
    add(*outermost, makeName(u"a.1"));
    add(*grandparent, makeName(u"a.2"));
    add(*grandparent, makeName(u"a.3"));
    add(*list, makeName(u"a.4"));
    EXPECT_EQ(names(*list), (Texts{u"a.4", u"a.2", u"a.3", u"a.1"}));
    EXPECT_EQ(names(*parent), (Texts{u"a.2", u"a.3", u"a.1"})) << "from an empty list on";
    EXPECT_EQ(names(*list, No), (Texts{u"a.4"}));
    EXPECT_EQ(names(*list, static_cast<IImportList::CheckAncestorList>(2)), (Texts{u"a.4"}));
}

TEST_F(Enumeration, HidesAnAncestorsPackageByAPackageOrANameThatIntroducesTheSame) {
    add(*parent, makePackage(u"p@1"));
    add(*parent, makePackage(u"q"));
    add(*parent, makePackage(u"r"));
    add(*list, makePackage(u"p@2"));
    add(*list, makeName(u"a.q"));
    add(*list, makeWildcard(u"a.r.*"));
    EXPECT_EQ(packages(*list), (Texts{u"p@2", u"r"}));
    EXPECT_EQ(names(*list), (Texts{u"a.q"}));
}

TEST_F(Enumeration, HidesAnAncestorsNameByAPackageThatIntroducesTheSame) {
    add(*parent, makeName(u"a.p"));
    add(*parent, makeName(u"a.q"));
    add(*list, makePackage(u"x", u"p"));
    EXPECT_EQ(names(*list), (Texts{u"a.q"}));
}

TEST_F(Enumeration, HidesAnAncestorsNameByTheSameRawArgumentOnly) {
    add(*parent, makeName(u"a.x"));
    add(*parent, makeName(u"b.x"));
    add(*list, makeName(u"b.x"));
    add(*list, makeName(u"c.x"));
    EXPECT_EQ(names(*list), (Texts{u"b.x", u"c.x", u"a.x"}));
}

TEST_F(Enumeration, HidesAnAncestorsWildcardByTheSameRawArgumentOnly) {
    add(*parent, makeWildcard(u"a.*"));
    add(*parent, makeWildcard(u"b.*"));
    add(*list, makeWildcard(u"b.*"));
    add(*list, makePackage(u"a"));
    add(*list, makeName(u"c.b"));
    EXPECT_EQ(wildcards(*list), (Texts{u"b.*", u"a.*"}));
}

TEST_F(Enumeration, ComparesRawArgumentsAcrossNamesAndWildcards) {
    add(*parent, makeWildcard(u"a.*"));
    add(*list, FullyQualifiedImportEntry(FullyQualifiedImportArgument{u"a", u"b", u"a.*", {}}));
    EXPECT_EQ(wildcards(*list), Texts());
}

TEST_F(Enumeration, ComparesRawArgumentsAcrossWildcardsAndNames) {
    add(*parent, FullyQualifiedImportEntry(FullyQualifiedImportArgument{u"a", u"b", u"a.*", {}}));
    add(*list, makeWildcard(u"a.*"));
    EXPECT_EQ(names(*list), Texts());
}

TEST_F(Enumeration, AppliesTheRulesOfEveryListOnTheWay) {
    add(*outermost, makePackage(u"p"));
    add(*outermost, makeName(u"a.x"));
    add(*outermost, makeWildcard(u"w.*"));
    add(*parent, makeName(u"b.p"));
    add(*parent, makePackage(u"x"));
    add(*parent, makeWildcard(u"w.*"));
    EXPECT_EQ(packages(*list), (Texts{u"x"})) << "hidden by the parent, not by the list";
    EXPECT_EQ(names(*list), (Texts{u"b.p"}));
    EXPECT_EQ(wildcards(*list), (Texts{u"w.*"}));
    EXPECT_EQ(packages(*grandparent), (Texts{u"p"}));
}

TEST_F(Enumeration, TellsManyNamesApart) {
    constexpr std::u16string_view letters = u"abcdefghijklmnopqrstuvwxyz";
    for (char16_t const first : letters) {
        for (char16_t const second : letters) {
            std::u16string const name{first, second};
            IImportList& holder = second % 2 == 0 ? *list : *parent;
            add(holder, makeName(u"root." + name));
            add(holder, makeWildcard(u"root." + name + u".*"));
            add(holder, makePackage(name + u"_"));
        }
    }
    std::size_t const numberOfNames = letters.size() * letters.size();
    EXPECT_EQ(names(*list).size(), numberOfNames);
    EXPECT_EQ(wildcards(*list).size(), numberOfNames);
    EXPECT_EQ(packages(*list).size(), numberOfNames);
}

TEST_F(Enumeration, LetsAHiddenEntryHide) {
    add(*outermost, makePackage(u"p@1"));
    add(*parent, makeName(u"a.p"));
    add(*list, makeName(u"a.p"));
    EXPECT_EQ(names(*list), (Texts{u"a.p"}));
    EXPECT_EQ(packages(*list), Texts());
}

TEST_F(Enumeration, NeverHidesTheListsOwnEntries) {
    add(*parent, makePackage(u"p"));
    add(*parent, makeName(u"a.x"));
    add(*parent, makeWildcard(u"w.*"));
    add(*list, makePackage(u"p"));
    add(*list, makeName(u"a.x"));
    add(*list, makeWildcard(u"w.*"));
    EXPECT_EQ(packages(*list), (Texts{u"p"}));
    EXPECT_EQ(&*list->getPackageImportEntries(Yes).begin(),
              &list->findPackageImportEntry(u"p", No)->entry);
    EXPECT_EQ(names(*list), (Texts{u"a.x"}));
    EXPECT_EQ(wildcards(*list), (Texts{u"w.*"}));
}

TEST_F(Enumeration, YieldsTheStoredEntriesThemselves) {
    add(*outermost, makePackage(u"p"));
    EXPECT_EQ(&*list->getPackageImportEntries(Yes).begin(),
              &outermost->findPackageImportEntry(u"p", No)->entry);
}

TEST_F(Enumeration, ReadsTheListsWhenItIsIterated) {
    auto visible = list->getPackageImportEntries(Yes);
    auto own = list->getPackageImportEntries(No);
    add(*list, makePackage(u"p"));
    add(*parent, makePackage(u"p@1"));
    add(*outermost, makePackage(u"q"));
    Texts texts;
    for (PackageImportEntry const& entry : visible) {
        texts.push_back(entry.getPackageSpecifier().ToString());
    }
    EXPECT_EQ(texts, (Texts{u"p", u"q"}));
    EXPECT_EQ(ranges::distance(own), 1);
}

TEST_F(Enumeration, CanBeIteratedAgainAndFromCopiedIterators) {
    add(*outermost, makeName(u"a.1"));
    add(*list, makeName(u"a.2"));
    add(*list, makeName(u"a.3"));
    auto visible = list->getFullyQualifiedImportEntries(Yes);
    auto first = visible.begin();
    auto second = first;
    EXPECT_TRUE(first == second);
    ++second;
    EXPECT_FALSE(first == second);
    EXPECT_EQ(first->getRawArgument(), u"a.2");
    EXPECT_EQ(second->getRawArgument(), u"a.3");
    ++first;
    EXPECT_TRUE(first == second);
    ++first;
    EXPECT_FALSE(first == second) << "the first entry of another list";
    EXPECT_EQ(ranges::distance(visible), 3);
    auto copy = visible;
    EXPECT_EQ(ranges::distance(copy), 3);
}

} // namespace
} // namespace lf::import
