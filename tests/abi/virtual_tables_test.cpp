// SPDX-License-Identifier: BSL-1.0

/// \file
/// The virtual table slots of the interfaces, which hosts compiled against an older version use.

#include <import/import.hpp>

#include <gtest/gtest.h>

#include <bit>
#include <cstddef>

namespace lf::import {
namespace {

// A pointer to a virtual member function in the two variants of the common ABI: it holds the offset
// of the entry in the table. A bit marks it as virtual: the lowest of the offset or, where
// addresses of functions can be odd, the lowest of twice the adjustment of the object.
#if defined(__arm__) || defined(__aarch64__)
constexpr std::ptrdiff_t virtualOffset = 0;
constexpr std::ptrdiff_t virtualAdjustment = 1;
#else
constexpr std::ptrdiff_t virtualOffset = 1;
constexpr std::ptrdiff_t virtualAdjustment = 0;
#endif

// The position of a virtual function in the table. Position 0 is the destructor, which has two
// entries.
template <typename Interface, typename Function>
std::ptrdiff_t slotOf(Function Interface::*function) {
    struct Representation {
        std::ptrdiff_t offset;
        std::ptrdiff_t adjustment;
    };

    auto const [offset, adjustment] = std::bit_cast<Representation>(function);
    EXPECT_EQ(adjustment, virtualAdjustment);
    return (offset - virtualOffset) / static_cast<std::ptrdiff_t>(sizeof(void*)) - 1;
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
