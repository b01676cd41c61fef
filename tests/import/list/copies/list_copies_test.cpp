// SPDX-License-Identifier: BSL-1.0

/// \file
/// Foreign lists that the library must not mistake for its own: lists of a second copy of the
/// library in the process, with a different layout, and lists of a class without type information.

#include "lists_without_rtti.hpp"
#include "second_copy.hpp"

#include <support/list_answers.hpp>
#include <support/make_entries.hpp>
#include <support/row_name.hpp>

#include <import/import_list.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace lf::import {
namespace {

using support::makeName;
using support::makePackage;
using support::makeWildcard;
using enum IImportList::CheckAncestorList;

using Create = std::unique_ptr<IImportList> (*)(std::shared_ptr<IImportList const> parent);
using Chain = std::vector<std::shared_ptr<IImportList>>;

std::vector<std::u16string> const names{u"everywhere", u"name0", u"package0", u"name1",
                                        u"package1",   u"name2", u"package2", u"root0",
                                        u"root2",      u"x",     u"missing"};

/// The creators of the lists of a chain, outermost first.
struct Row {
    std::string why;
    std::vector<Create> makers;

    friend void PrintTo(Row const& row, std::ostream* stream) { *stream << row.why; }
};

/// Each list gets an entry of each kind and hides some entries of its ancestors.
void fill(IImportList& list, std::size_t number) {
    std::string const digits = std::to_string(number);
    std::u16string const suffix(digits.begin(), digits.end());
    EXPECT_FALSE(list.addStaticImportEntry(makeName(u"root" + suffix + u".name" + suffix)));
    EXPECT_FALSE(list.addStaticImportEntry(makeName(u"r.everywhere")));
    EXPECT_FALSE(list.addStaticImportEntry(makeWildcard(u"root" + suffix + u".*")));
    EXPECT_FALSE(list.addStaticImportEntry(makeWildcard(u"r.*")));
    EXPECT_FALSE(list.addStaticImportEntry(makePackage(u"package" + suffix + u"@1." + suffix)));
    EXPECT_FALSE(list.addStaticImportEntry(number % 2 == 0 ? ImportEntry(makePackage(u"p", u"x"))
                                                           : makeName(u"r.x")));
}

Chain makeChain(std::vector<Create> const& makers) {
    Chain lists;
    for (Create const create : makers) {
        lists.push_back(create(lists.empty() ? nullptr : lists.back()));
        fill(*lists.back(), lists.size() - 1);
    }
    return lists;
}

constexpr Create own = createImportList;
constexpr Create copy = second_copy::createImportList;
constexpr Create untyped = without_rtti::createForeignList;

#if defined(GLEIGEM_SANITIZER)
constexpr bool needsTypeInformation = true;
#else
constexpr bool needsTypeInformation = false;
#endif

class AChainOfSeveralMakes : public testing::TestWithParam<Row> {
  protected:
    void SetUp() override {
        if (needsTypeInformation && std::ranges::count(GetParam().makers, untyped) != 0) {
            GTEST_SKIP() << "the sanitizer asks every object for its type";
        }
    }
};

TEST_P(AChainOfSeveralMakes, AnswersAsOneOfTheLibraryDoes) {
    Chain const lists = makeChain(GetParam().makers);
    Chain const expected = makeChain(std::vector<Create>(lists.size(), createImportList));
    for (std::size_t number = 0; number < lists.size(); ++number) {
        EXPECT_EQ(support::answersOf(*lists[number], names),
                  support::answersOf(*expected[number], names))
            << "list " << number;
        EXPECT_EQ(support::answersOf(*lists[number]->clone(), names),
                  support::answersOf(*expected[number], names))
            << "the clone of list " << number;
    }
}

TEST_P(AChainOfSeveralMakes, IsDestroyedAsAWhole) {
    Chain lists = makeChain(GetParam().makers);
    std::vector<std::weak_ptr<IImportList const>> const watched(lists.begin(), lists.end());
    std::shared_ptr<IImportList> innermost = std::move(lists.back());
    lists.clear();
    EXPECT_FALSE(watched.front().expired());
    innermost.reset();
    for (auto const& list : watched) {
        EXPECT_TRUE(list.expired());
    }
}

INSTANTIATE_TEST_SUITE_P(
    OfThreeLists, AChainOfSeveralMakes,
    testing::Values(Row{"a second copy's list outermost", {copy, own, own}},
                    Row{"a second copy's list between", {own, copy, own}},
                    Row{"a second copy's list innermost", {own, own, copy}},
                    Row{"two lists of a second copy", {copy, copy, own}},
                    Row{"a list without type information outermost", {untyped, own, own}},
                    Row{"a list without type information between", {own, untyped, own}},
                    Row{"a list without type information innermost", {own, own, untyped}},
                    Row{"lists of all three", {untyped, copy, own}}),
    support::RowName{});

} // namespace
} // namespace lf::import
