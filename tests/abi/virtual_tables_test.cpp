// SPDX-License-Identifier: BSL-1.0

/// \file
/// The slots of the interfaces' virtual functions: hosts that were built against an older library
/// call by them.

#include <import/import.hpp>

#include <gtest/gtest.h>

#include <bit>
#include <cstddef>

namespace lf::import {
namespace {

// The position of a virtual function in the table, the destructor being position 0. In the ABI of
// this platform a pointer to a virtual member function holds one more than the offset of its entry,
// and a destructor has two entries.
template <typename Interface, typename Function>
std::ptrdiff_t slotOf(Function Interface::*function) {
    struct Representation {
        std::ptrdiff_t offsetPlusOne;
        std::ptrdiff_t adjustment;
    };

    auto const [offsetPlusOne, adjustment] = std::bit_cast<Representation>(function);
    EXPECT_EQ(adjustment, 0);
    return (offsetPlusOne - 1) / static_cast<std::ptrdiff_t>(sizeof(void*)) - 1;
}

TEST(IImportArgumentParser, HasItsOperationsInTheOrderOfTheInterface) {
    EXPECT_EQ(slotOf(&IImportArgumentParser::parse), 1);
}

TEST(IImportList, HasItsOperationsInTheOrderOfTheInterface) {
    EXPECT_EQ(slotOf(&IImportList::addDynamicImportEntry), 1);
    EXPECT_EQ(slotOf(&IImportList::addStaticImportEntry), 2);
    EXPECT_EQ(slotOf(&IImportList::findPackageImportEntry), 3);
    EXPECT_EQ(slotOf(&IImportList::findFullyQualifiedImportEntry), 4);
    EXPECT_EQ(slotOf(&IImportList::getFullyQualifiedImportEntries), 5);
    EXPECT_EQ(slotOf(&IImportList::getWildcardImportEntries), 6);
    EXPECT_EQ(slotOf(&IImportList::getPackageImportEntries), 7);
    EXPECT_EQ(slotOf(&IImportList::getParent), 8);
    EXPECT_EQ(slotOf(&IImportList::clone), 9);
    EXPECT_EQ(slotOf(&IImportList::isEmpty), 10);
    EXPECT_EQ(slotOf(&IImportList::getNumberOfEntries), 11);
}

static_assert(sizeof(IImportArgumentParser) == sizeof(void*));
static_assert(sizeof(IImportList) == sizeof(void*));

} // namespace
} // namespace lf::import
