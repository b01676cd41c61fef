// SPDX-License-Identifier: BSL-1.0

/// \file
/// A foreign parent that, when asked, uses the list whose addition is asking.

#include <support/foreign_import_list.hpp>
#include <support/list_answers.hpp>
#include <support/make_entries.hpp>
#include <support/row_name.hpp>

#include <range/v3/range/primitives.hpp>

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace lf::import {
namespace {

using support::Answers;
using support::DelegatingImportList;
using support::makeName;
using support::makePackage;
using support::makeWildcard;
using enum IImportList::CheckAncestorList;

/// An addition that asks the parent, to a list that also has \p numberOfMore entries of each kind.
struct Row {
    std::string why;
    ImportEntry entry;
    std::size_t numberOfMore;

    friend void PrintTo(Row const& row, std::ostream* stream) { *stream << row.why; }
};

std::vector<std::u16string> const names{u"new", u"root", u"n0", u"p0", u"missing"};

std::u16string numbered(std::u16string const& text, std::size_t number) {
    std::string const digits = std::to_string(number);
    return text + std::u16string(digits.begin(), digits.end());
}

void addMore(IImportList& list, std::size_t number) {
    EXPECT_FALSE(list.addStaticImportEntry(makeName(numbered(u"r.n", number))));
    EXPECT_FALSE(list.addStaticImportEntry(makeWildcard(numbered(u"r.w", number) + u".*")));
    EXPECT_FALSE(list.addStaticImportEntry(makePackage(numbered(u"p", number))));
}

class AnAdditionThatAsksAForeignParent : public testing::TestWithParam<Row> {
  protected:
    AnAdditionThatAsksAForeignParent() {
        for (std::size_t number = 0; number < GetParam().numberOfMore; ++number) {
            addMore(*list, number);
        }
    }

    /// Adds the row's entry; \p action runs once, when the parent is asked.
    void addWhile(std::function<void()> const& action) {
        bool isDone = false;
        parent->beforeAnswers([&] {
            if (!std::exchange(isDone, true)) {
                action();
            }
        });
        EXPECT_FALSE(list->addStaticImportEntry(ImportEntry(GetParam().entry)));
        EXPECT_TRUE(isDone);
        parent->beforeAnswers(nullptr);
    }

    std::size_t numberOfEnumeratedEntries() const {
        return static_cast<std::size_t>(ranges::distance(list->getFullyQualifiedImportEntries(No)) +
                                        ranges::distance(list->getWildcardImportEntries(No)) +
                                        ranges::distance(list->getPackageImportEntries(No)));
    }

    std::shared_ptr<DelegatingImportList> const parent =
        std::make_shared<DelegatingImportList>(createImportList(nullptr));
    std::unique_ptr<IImportList> const list = createImportList(parent);
};

TEST_P(AnAdditionThatAsksAForeignParent, LeavesTheListAsItWasUntilThen) {
    Answers const before = support::answersOf(*list, names);
    Answers meanwhile;
    addWhile([&] { meanwhile = support::answersOf(*list, names); });
    EXPECT_EQ(meanwhile, before);
    EXPECT_NE(support::answersOf(*list, names), before);
}

TEST_P(AnAdditionThatAsksAForeignParent, LetsOtherEntriesBeAddedMeanwhile) {
    constexpr std::size_t numberOfAdditions = 40;
    std::size_t const first = GetParam().numberOfMore;
    addWhile([&] {
        for (std::size_t number = first; number < first + numberOfAdditions; ++number) {
            addMore(*list, number);
        }
    });
    EXPECT_EQ(list->getNumberOfEntries(No), 3 * (first + numberOfAdditions) + 1);
    EXPECT_EQ(numberOfEnumeratedEntries(), list->getNumberOfEntries(No));
    for (std::size_t number = 0; number < first + numberOfAdditions; ++number) {
        auto const package = list->findPackageImportEntry(numbered(u"p", number), No);
        ASSERT_TRUE(package);
        EXPECT_EQ(package->entry.getIntroducedName(), numbered(u"p", number));
        auto const name = list->findFullyQualifiedImportEntry(numbered(u"n", number), No);
        ASSERT_TRUE(name);
        EXPECT_EQ(name->rawArgument, numbered(u"r.n", number));
    }
    EXPECT_FALSE(list->addStaticImportEntry(ImportEntry(GetParam().entry)));
    EXPECT_EQ(numberOfEnumeratedEntries(), 3 * (first + numberOfAdditions) + 1)
        << "it is there already";
}

// The parent is responsible for the rules then, but the list's answers must remain consistent.
TEST_P(AnAdditionThatAsksAForeignParent, FindsAnEntryThatIsAddedTwiceAtOnce) {
    addWhile([&] { EXPECT_FALSE(list->addStaticImportEntry(ImportEntry(GetParam().entry))); });
    std::size_t const count = list->getNumberOfEntries(No);
    EXPECT_EQ(numberOfEnumeratedEntries(), count);
    EXPECT_FALSE(list->addStaticImportEntry(ImportEntry(GetParam().entry)));
    EXPECT_EQ(list->getNumberOfEntries(No), count) << "it is there already";
    EXPECT_TRUE(list->addStaticImportEntry(makePackage(u"root"))) << "its root element counts";
    if (std::holds_alternative<FullyQualifiedImportEntry>(GetParam().entry)) {
        ASSERT_TRUE(list->findFullyQualifiedImportEntry(u"new", No));
        EXPECT_EQ(list->findFullyQualifiedImportEntry(u"new", No)->rawArgument, u"root.new");
    }
}

// Sizes at which vectors and indexes of the list are empty, have free capacity, or are full.
INSTANTIATE_TEST_SUITE_P(
    OfEveryKind, AnAdditionThatAsksAForeignParent,
    testing::Values(Row{"a name to an empty list", makeName(u"root.new"), 0},
                    Row{"a name to a list with free capacity", makeName(u"root.new"), 3},
                    Row{"a name to a full list", makeName(u"root.new"), 6},
                    Row{"a wildcard to an empty list", makeWildcard(u"root.*"), 0},
                    Row{"a wildcard to a list with free capacity", makeWildcard(u"root.*"), 2},
                    Row{"a wildcard to a full list", makeWildcard(u"root.*"), 3}),
    support::RowName{});

} // namespace
} // namespace lf::import
