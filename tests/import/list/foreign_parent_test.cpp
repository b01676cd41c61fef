// SPDX-License-Identifier: BSL-1.0

/// \file
/// Which questions a list of the library asks a foreign parent, and what happens if the parent
/// throws.

#include <support/foreign_import_list.hpp>
#include <support/make_entries.hpp>
#include <support/observed_entries.hpp>
#include <support/row_name.hpp>

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace lf::import {
namespace {

using support::DelegatingImportList;
using support::ForeignImportList;
using support::makeName;
using support::makePackage;
using support::makeWildcard;
using enum IImportList::CheckAncestorList;
using enum DelegatingImportList::Question;

using Asks = std::optional<DelegatingImportList::Question>;

/// A list that imports something of each kind.
void fill(IImportList& list) {
    ASSERT_FALSE(list.addStaticImportEntry(makeName(u"a.b")));
    ASSERT_FALSE(list.addStaticImportEntry(makeWildcard(u"c.*")));
    ASSERT_FALSE(list.addStaticImportEntry(makePackage(u"p")));
}

/// A question to a list, and the question that the list then asks its parent, if any.
struct Row {
    std::string why;
    void (*ask)(IImportList& list);
    Asks asks;
    bool isFilled = true;

    friend void PrintTo(Row const& row, std::ostream* stream) { *stream << row.why; }
};

void add(IImportList& list, ImportEntry entry) {
    list.addStaticImportEntry(std::move(entry));
}

constexpr auto nothing = std::nullopt;

// clang-format off
std::vector<Row> const rows{
    {"find a package: this list does not have it",            [](IImportList& list) { list.findPackageImportEntry(u"x", Yes); },        FindPackage},
    {"find a package: in this list alone",                    [](IImportList& list) { list.findPackageImportEntry(u"x", No); },         nothing},
    {"find a package: this list has it",                      [](IImportList& list) { list.findPackageImportEntry(u"p", Yes); },        nothing},
    {"find a package: this list hides it",                    [](IImportList& list) { list.findPackageImportEntry(u"b", Yes); },        nothing},
    {"find a name: this list does not have it",               [](IImportList& list) { list.findFullyQualifiedImportEntry(u"x", Yes); }, FindFullyQualified},
    {"find a name: in this list alone",                       [](IImportList& list) { list.findFullyQualifiedImportEntry(u"x", No); },  nothing},
    {"find a name: this list has it",                         [](IImportList& list) { list.findFullyQualifiedImportEntry(u"b", Yes); }, nothing},
    {"find a name: this list hides it",                       [](IImportList& list) { list.findFullyQualifiedImportEntry(u"p", Yes); }, nothing},

    {"get names",                                             [](IImportList& list) { list.getFullyQualifiedImportEntries(Yes); },      GetFullyQualified},
    {"get names: of this list",                               [](IImportList& list) { list.getFullyQualifiedImportEntries(No); },       nothing},
    {"get wildcards",                                         [](IImportList& list) { list.getWildcardImportEntries(Yes); },            GetWildcards},
    {"get wildcards: of this list",                           [](IImportList& list) { list.getWildcardImportEntries(No); },             nothing},
    {"get packages",                                          [](IImportList& list) { list.getPackageImportEntries(Yes); },             GetPackages},
    {"get packages: of this list",                            [](IImportList& list) { list.getPackageImportEntries(No); },              nothing},

    {"emptiness: of an empty list",                           [](IImportList& list) { list.isEmpty(Yes); },                             IsEmpty, false},
    {"emptiness: of an empty list alone",                     [](IImportList& list) { list.isEmpty(No); },                              nothing, false},
    {"emptiness: of a list that is not empty",                [](IImportList& list) { list.isEmpty(Yes); },                             nothing},
    {"count",                                                 [](IImportList& list) { list.getNumberOfEntries(Yes); },                  GetNumberOfEntries},
    {"count: of this list",                                   [](IImportList& list) { list.getNumberOfEntries(No); },                   nothing},

    {"add a name: its root element is looked up",             [](IImportList& list) { add(list, makeName(u"x.y")); },                   FindPackage},
    {"add a name: already in this list",                      [](IImportList& list) { add(list, makeName(u"a.b")); },                   nothing},
    {"add a name: a package of this list introduces it",      [](IImportList& list) { add(list, makeName(u"x.p")); },                   nothing},
    {"add a name: its root element is a package here",        [](IImportList& list) { add(list, makeName(u"p.y")); },                   nothing},
    {"add a name: its root element is hidden here",           [](IImportList& list) { add(list, makeName(u"b.y")); },                   nothing},
    {"add a wildcard: its root element is looked up",         [](IImportList& list) { add(list, makeWildcard(u"x.*")); },               FindPackage},
    {"add a wildcard: already in this list",                  [](IImportList& list) { add(list, makeWildcard(u"c.*")); },               nothing},
    {"add a package: only this list is checked for conflicts", [](IImportList& list) { add(list, makePackage(u"x")); },                  nothing},
};

// clang-format on

class ForeignParent : public testing::TestWithParam<Row> {
  protected:
    std::shared_ptr<DelegatingImportList> const parent =
        std::make_shared<DelegatingImportList>(createImportList(nullptr));
};

/// Asks \p list the row's question and expects at most one question to \p parent.
void expectOneQuestion(Row const& row, IImportList& list, DelegatingImportList const& parent) {
    if (row.isFilled) {
        fill(list);
    }
    auto expected = parent.questions();
    if (row.asks) {
        ++expected[{*row.asks, Yes}];
    }
    row.ask(list);
    EXPECT_EQ(parent.questions(), expected);
}

TEST_P(ForeignParent, IsAskedAtMostOnceAndAlwaysForItsAncestorsToo) {
    expectOneQuestion(GetParam(), *createImportList(parent), *parent);
}

TEST_P(ForeignParent, IsAskedAtMostOnceFromFurtherIn) {
    std::shared_ptr<IImportList const> const between = createImportList(createImportList(parent));
    expectOneQuestion(GetParam(), *createImportList(between), *parent);
}

TEST_P(ForeignParent, ThatFailsMakesTheQuestionFail) {
    auto const list = createImportList(parent);
    if (GetParam().isFilled) {
        fill(*list);
    }
    parent->stopAnswering();
    if (GetParam().asks) {
        EXPECT_THROW(GetParam().ask(*list), DelegatingImportList::NoAnswer);
    } else {
        EXPECT_NO_THROW(GetParam().ask(*list));
    }
}

INSTANTIATE_TEST_SUITE_P(EveryQuestion, ForeignParent, testing::ValuesIn(rows), support::RowName{});

template <typename Entry>
void expectFailureToAdd(Entry const& entry, IImportList& list) {
    ImportEntry handedOver = entry;
    EXPECT_THROW(list.addStaticImportEntry(std::move(handedOver)), DelegatingImportList::NoAnswer);
    EXPECT_THROW(list.addDynamicImportEntry(std::move(handedOver)), DelegatingImportList::NoAnswer);
    EXPECT_EQ(support::describe(std::get<Entry>(handedOver)), support::describe(entry));
}

TEST_F(ForeignParent, ThatFailsLeavesListAndEntryAsTheyWere) {
    auto const list = createImportList(parent);
    fill(*list);
    parent->stopAnswering();

    expectFailureToAdd(makeName(u"x.y"), *list);
    expectFailureToAdd(makeWildcard(u"x.*"), *list);

    EXPECT_EQ(list->getNumberOfEntries(No), 3U);
    EXPECT_FALSE(list->findFullyQualifiedImportEntry(u"y", No));
    // The root element of the refused entry was not stored.
    EXPECT_FALSE(list->addStaticImportEntry(makePackage(u"x")));
}

TEST_F(ForeignParent, AnswersWithWhatItHoldsAsAnAncestor) {
    fill(*parent);
    auto const list = createImportList(createImportList(parent));

    auto const package = list->findPackageImportEntry(u"p", Yes);
    ASSERT_TRUE(package);
    EXPECT_EQ(&package->entry, &parent->findPackageImportEntry(u"p", Yes)->entry);
    EXPECT_EQ(package->origin, EntryOrigin::Ancestor);
    auto const name = list->findFullyQualifiedImportEntry(u"b", Yes);
    ASSERT_TRUE(name);
    EXPECT_EQ(name->rawArgument, u"a.b");
    EXPECT_EQ(name->origin, EntryOrigin::Ancestor);
    EXPECT_FALSE(list->isEmpty(Yes));
    EXPECT_TRUE(list->isEmpty(No));
    EXPECT_EQ(list->getNumberOfEntries(Yes), 3U);
    EXPECT_TRUE(list->addStaticImportEntry(makeName(u"p.x"))) << "its package counts";
}

TEST_F(ForeignParent, ThatHoldsNoEntryIsPassedByOnTheWayToItsOwnParent) {
    std::shared_ptr<IImportList> const outermost = createImportList(nullptr);
    fill(*outermost);
    auto const silent = std::make_shared<ForeignImportList>(
        outermost, model::ForeignManners{.asksParent = false, .namesParent = true});
    auto const outer = std::make_shared<ForeignImportList>(
        silent, model::ForeignManners{.asksParent = false, .namesParent = true});
    auto const list = createImportList(outer);

    ASSERT_TRUE(list->findPackageImportEntry(u"p", Yes));
    EXPECT_EQ(list->findPackageImportEntry(u"p", Yes)->origin, EntryOrigin::Ancestor);
    ASSERT_TRUE(list->findFullyQualifiedImportEntry(u"b", Yes));
    EXPECT_EQ(list->findFullyQualifiedImportEntry(u"b", Yes)->rawArgument, u"a.b");
    EXPECT_EQ(list->findFullyQualifiedImportEntry(u"b", Yes)->origin, EntryOrigin::Ancestor);
    EXPECT_FALSE(list->findPackageImportEntry(u"b", Yes));
    EXPECT_FALSE(list->findFullyQualifiedImportEntry(u"p", Yes));
}

TEST_F(ForeignParent, HasItsVisibleEntriesEnumeratedBehindThoseOfTheLists) {
    for (char16_t const* const name : {u"r.x", u"r.y", u"r.z"}) {
        add(*parent, makeName(name));
    }
    std::shared_ptr<IImportList> const between = createImportList(parent);
    add(*between, makeName(u"s.x"));
    add(*between, makeName(u"r.y"));
    auto const list = createImportList(between);
    add(*list, makePackage(u"z"));
    add(*list, makeName(u"t.x"));

    auto visible = list->getFullyQualifiedImportEntries(Yes);
    std::vector<std::u16string> texts;
    for (FullyQualifiedImportEntry const& entry : visible) {
        texts.emplace_back(entry.getRawArgument());
    }
    EXPECT_EQ(texts, (std::vector<std::u16string>{u"t.x", u"s.x", u"r.y", u"r.x"}));

    auto const first = visible.begin();
    auto second = first;
    EXPECT_TRUE(first == second);
    ++second;
    EXPECT_FALSE(first == second);
    auto last = first;
    for (int step = 0; step < 3; ++step) {
        EXPECT_FALSE(last == visible.end());
        ++last;
    }
    EXPECT_EQ(last->getRawArgument(), u"r.x") << "the parent's only visible entry";
    auto const sameAsLast = last;
    EXPECT_TRUE(last == sameAsLast);
    ++last;
    EXPECT_TRUE(last == visible.end());
    EXPECT_FALSE(sameAsLast == last);
}

TEST_F(ForeignParent, HasItsEntriesEnumeratedByListsThatHaveNone) {
    add(*parent, makeName(u"r.x"));
    auto const list = createImportList(createImportList(parent));
    auto visible = list->getFullyQualifiedImportEntries(Yes);
    EXPECT_EQ(visible.begin()->getRawArgument(), u"r.x");
}

} // namespace
} // namespace lf::import
