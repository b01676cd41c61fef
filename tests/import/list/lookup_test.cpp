// SPDX-License-Identifier: BSL-1.0

#include <import/import_list.hpp>

#include <support/make_entries.hpp>

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace lf::import {
namespace {

using support::makeName;
using support::makePackage;
using support::makeWildcard;
using enum IImportList::CheckAncestorList;
using enum EntryOrigin;

// Four nested scopes.
class Lookup : public testing::Test {
  protected:
    std::shared_ptr<IImportList> outermost = createImportList(nullptr);
    std::shared_ptr<IImportList> grandparent = createImportList(outermost);
    std::shared_ptr<IImportList> parent = createImportList(grandparent);
    std::shared_ptr<IImportList> list = createImportList(parent);

    static void add(IImportList& target, ImportEntry entry) {
        ASSERT_FALSE(target.addStaticImportEntry(std::move(entry)));
    }

    void expectPackage(std::u16string_view name, std::u16string const& specifier,
                       EntryOrigin origin) const {
        auto const found = list->findPackageImportEntry(name, Yes);
        ASSERT_TRUE(found.has_value());
        EXPECT_EQ(found->entry.getPackageSpecifier().ToString(), specifier);
        EXPECT_EQ(found->origin, origin);
    }

    void expectName(std::u16string_view name, std::u16string_view rawArgument,
                    EntryOrigin origin) const {
        auto const found = list->findFullyQualifiedImportEntry(name, Yes);
        ASSERT_TRUE(found.has_value());
        EXPECT_EQ(found->rawArgument, rawArgument);
        EXPECT_EQ(found->origin, origin);
    }
};

TEST_F(Lookup, FindsWhatThisListIntroduces) {
    add(*list, makePackage(u"p@1", u"q"));
    add(*list, makeName(u"a.b.c"));
    expectPackage(u"q", u"p@1", ThisList);
    expectName(u"c", u"a.b.c", ThisList);
    EXPECT_EQ(list->findPackageImportEntry(u"q", No)->origin, ThisList);
    EXPECT_EQ(list->findFullyQualifiedImportEntry(u"c", No)->origin, ThisList);
}

TEST_F(Lookup, FindsTheStoredEntryItself) {
    add(*list, makePackage(u"p"));
    add(*list, makePackage(u"q"));
    EXPECT_EQ(&list->findPackageImportEntry(u"q", No)->entry,
              &*ranges::next(list->getPackageImportEntries(No).begin()));
}

TEST_F(Lookup, FindsByTheIntroducedNameOnly) {
    add(*list, makePackage(u"p", u"q"));
    add(*list, makeName(u"a.b.c"));
    add(*list, makeWildcard(u"d.e.*"));
    for (std::u16string_view const name :
         {u"p", u"a", u"b", u"a.b.c", u"d", u"e", u"*", u"d.e.*"}) {
        EXPECT_FALSE(list->findPackageImportEntry(name, Yes));
        EXPECT_FALSE(list->findFullyQualifiedImportEntry(name, Yes));
    }
}

TEST_F(Lookup, ComparesNamesUnitByUnit) {
    add(*list, makePackage(u"p"));
    add(*list, makeName(u"a.\u00E9"));
    EXPECT_FALSE(list->findPackageImportEntry(u"P", Yes));
    EXPECT_FALSE(list->findPackageImportEntry(u"p ", Yes));
    EXPECT_FALSE(list->findFullyQualifiedImportEntry(u"e\u0301", Yes)) << "the decomposed form";
    EXPECT_TRUE(list->findFullyQualifiedImportEntry(u"\u00E9", Yes));
}

TEST_F(Lookup, KeepsTheKindsApart) {
    add(*list, makePackage(u"p"));
    add(*list, makeName(u"a.b"));
    EXPECT_FALSE(list->findFullyQualifiedImportEntry(u"p", Yes));
    EXPECT_FALSE(list->findPackageImportEntry(u"b", Yes));
}

TEST_F(Lookup, LooksAtAncestorsOnYesOnly) {
    add(*parent, makePackage(u"p"));
    add(*parent, makeName(u"a.b"));
    expectPackage(u"p", u"p", Ancestor);
    expectName(u"b", u"a.b", Ancestor);
    for (auto const other : {No, static_cast<IImportList::CheckAncestorList>(2),
                             static_cast<IImportList::CheckAncestorList>(-1)}) {
        EXPECT_FALSE(list->findPackageImportEntry(u"p", other));
        EXPECT_FALSE(list->findFullyQualifiedImportEntry(u"b", other));
    }
}

TEST_F(Lookup, DoesNotCountTheLevelsToAnAncestor) {
    add(*outermost, makePackage(u"p"));
    add(*outermost, makeName(u"a.b"));
    expectPackage(u"p", u"p", Ancestor);
    expectName(u"b", u"a.b", Ancestor);
}

TEST_F(Lookup, TakesTheNearestOfSeveral) {
    for (auto const& [target, version] :
         {std::pair(outermost, u"p@1"), {grandparent, u"p@2"}, {parent, u"p@3"}}) {
        add(*target, makePackage(version));
    }
    add(*outermost, makeName(u"a.x"));
    add(*grandparent, makeName(u"b.x"));
    expectPackage(u"p", u"p@3", Ancestor);
    expectName(u"x", u"b.x", Ancestor);
    add(*list, makePackage(u"p@4"));
    expectPackage(u"p", u"p@4", ThisList);
}

TEST_F(Lookup, TakesTheFirstNameOfSeveralInOneList) {
    add(*parent, makeName(u"a.x"));
    add(*parent, makeName(u"b.x"));
    expectName(u"x", u"a.x", Ancestor);
}

TEST_F(Lookup, HidesAncestorsByTheOtherKindInTheListThatIsAsked) {
    add(*parent, makePackage(u"x"));
    add(*list, makeName(u"a.x"));
    EXPECT_FALSE(list->findPackageImportEntry(u"x", Yes));
    expectName(u"x", u"a.x", ThisList);

    add(*parent, makeName(u"a.y"));
    add(*list, makePackage(u"y"));
    EXPECT_FALSE(list->findFullyQualifiedImportEntry(u"y", Yes));
    expectPackage(u"y", u"y", ThisList);
}

TEST_F(Lookup, DoesNotHideByTheOtherKindInAnIntermediateAncestor) {
    add(*grandparent, makePackage(u"x"));
    add(*parent, makeName(u"a.x"));
    EXPECT_FALSE(parent->findPackageImportEntry(u"x", Yes)) << "hidden from the parent itself";
    expectPackage(u"x", u"x", Ancestor);
    expectName(u"x", u"a.x", Ancestor);

    add(*grandparent, makeName(u"a.y"));
    add(*parent, makePackage(u"y"));
    EXPECT_FALSE(parent->findFullyQualifiedImportEntry(u"y", Yes));
    expectName(u"y", u"a.y", Ancestor);
}

TEST_F(Lookup, FindsTheEmptyNameOnlyWhereItIsIntroduced) {
    EXPECT_FALSE(list->findPackageImportEntry(u"", Yes));
    EXPECT_FALSE(list->findFullyQualifiedImportEntry(std::u16string_view(), Yes));
    add(*parent, makeName(u"a."));
    add(*parent, makePackage(u"p"));
    expectName(u"", u"a.", Ancestor);
    expectName(std::u16string_view(), u"a.", Ancestor);
    EXPECT_FALSE(list->findPackageImportEntry(u"", Yes));
    add(*list, makePackage(u"p", u""));
    expectPackage(u"", u"p", ThisList);
}

TEST_F(Lookup, TakesViewsIntoTheMiddleOfATextAndNamesWithZeros) {
    std::u16string const text = u"xxnamexx";
    add(*list, makePackage(u"name"));
    EXPECT_TRUE(list->findPackageImportEntry(std::u16string_view(text).substr(2, 4), No));
    add(*list, makePackage(u"p", std::u16string(u"a\0b", 3)));
    EXPECT_TRUE(list->findPackageImportEntry(std::u16string_view(u"a\0b", 3), No));
    EXPECT_FALSE(list->findPackageImportEntry(u"a", No));
}

} // namespace
} // namespace lf::import
