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

// What a pointer to a virtual member function holds, in the two ways of the common ABI: the offset
// of its entry in the table, and where it is told that it is virtual: by one more in the offset,
// or, where addresses of functions can be odd, by one in twice the adjustment of the object.
#if defined(__arm__) || defined(__aarch64__)
constexpr std::ptrdiff_t virtualOffset = 0;
constexpr std::ptrdiff_t virtualAdjustment = 1;
#else
constexpr std::ptrdiff_t virtualOffset = 1;
constexpr std::ptrdiff_t virtualAdjustment = 0;
#endif

// The position of a virtual function in the table, the destructor being position 0, with its two
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
