// SPDX-License-Identifier: BSL-1.0

#include <import/list/name_index.hpp>

#include <support/row_name.hpp>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <ostream>
#include <stdexcept>
#include <string>
#include <utility>

namespace lf::import {
namespace {

using enum EntryPosition::Kind;

static_assert(!EntryPosition());
static_assert(sizeof(EntryPosition) == sizeof(std::uint32_t));

TEST(AnEntryPosition, TellsWhatItWasMadeOf) {
    for (std::size_t const position :
         {std::size_t{0}, std::size_t{1}, std::size_t{12'345}, (std::size_t{1} << 31) - 2}) {
        for (auto const kind : {Named, Wildcard}) {
            EntryPosition const place(position, kind);
            EXPECT_TRUE(place);
            EXPECT_EQ(place.position(), position);
            EXPECT_EQ(place.kind(), kind);
        }
    }
}

TEST(AnEntryPosition, IsRefusedWhereNoListCanHaveSoManyEntries) {
    for (std::uint64_t const position :
         {(std::uint64_t{1} << 31) - 1, std::uint64_t{1} << 31, (std::uint64_t{1} << 32) - 1,
          std::uint64_t{1} << 32, std::uint64_t{1} << 63,
          std::numeric_limits<std::uint64_t>::max()}) {
        if (std::in_range<std::size_t>(position)) {
            auto const place = static_cast<std::size_t>(position);
            EXPECT_THROW(EntryPosition(place, Named), std::length_error) << place;
            EXPECT_THROW(EntryPosition(place, Wildcard), std::length_error) << place;
        }
    }
}

void insert(NameIndex& index, NameHash hash, std::size_t position) {
    index.makeRoomForOneMore();
    index.insert(hash, EntryPosition(position, Named));
}

bool isAny(EntryPosition /*position*/) {
    return true;
}

auto isAt(std::size_t position) {
    return [position](EntryPosition each) { return each.position() == position; };
}

TEST(ANameIndex, FindsNothingAtFirst) {
    NameIndex const index;
    EXPECT_FALSE(index.mayHold(NameKey({}, NameHash{0})));
    EXPECT_FALSE(index.find(0, isAny));
}

TEST(ANameIndex, FindsNothingForARoomThatWasNotTaken) {
    NameIndex index;
    index.makeRoomForOneMore();
    EXPECT_FALSE(index.mayHold(NameKey({}, NameHash{0})));
    EXPECT_FALSE(index.find(0, isAny));
}

/// The distribution of hashes over the table.
struct Spread {
    std::string why;
    NameHash (*hashOf)(std::size_t number);

    friend void PrintTo(Spread const& spread, std::ostream* stream) { *stream << spread.why; }
};

class ANameIndexOfHashes : public testing::TestWithParam<Spread> {
  protected:
    static constexpr std::size_t size = 1'000;

    static void expectNames(NameIndex const& index, std::size_t count) {
        for (std::size_t number = 0; number < count; ++number) {
            NameHash const hash = GetParam().hashOf(number);
            ASSERT_TRUE(index.mayHold(NameKey({}, hash)));
            EntryPosition const place = index.find(hash, isAt(number));
            ASSERT_TRUE(place) << number << " of " << count;
            ASSERT_EQ(place.position(), number);
        }
        EXPECT_FALSE(index.find(GetParam().hashOf(0), isAt(count)));
    }
};

TEST_P(ANameIndexOfHashes, KeepsAllNamesWhileItGrows) {
    NameIndex index;
    for (std::size_t number = 0; number < size; ++number) {
        index.makeRoomForOneMore();
        if (number < 100) {
            expectNames(index, number);
        }
        index.insert(GetParam().hashOf(number), EntryPosition(number, Named));
    }
    expectNames(index, size);
}

TEST_P(ANameIndexOfHashes, IsCopiedWithAllNames) {
    NameIndex index;
    for (std::size_t number = 0; number < size; ++number) {
        insert(index, GetParam().hashOf(number), number);
    }
    NameIndex copy = index;
    insert(copy, GetParam().hashOf(size), size);
    expectNames(copy, size + 1);
    expectNames(index, size);
}

INSTANTIATE_TEST_SUITE_P(
    SpreadInEveryWay, ANameIndexOfHashes,
    testing::Values(Spread{"all in different slots",
                           [](std::size_t number) {
                               return static_cast<NameHash>(number * 0x9E3779B1U);
                           }},
                    Spread{"one after the other",
                           [](std::size_t number) { return static_cast<NameHash>(number); }},
                    Spread{"all equal", [](std::size_t) { return NameHash{0x12345678}; }},
                    Spread{"all in the last slot", [](std::size_t) { return ~NameHash{0}; }},
                    Spread{"different, but in the same slot",
                           [](std::size_t number) { return static_cast<NameHash>(number << 16); }}),
    support::RowName{});

TEST(ANameIndex, TellsHashesInOnePlaceApart) {
    NameIndex index;
    insert(index, 0x10000, 0);
    insert(index, 0x20000, 1);
    EXPECT_EQ(index.find(0x10000, isAny).position(), 0U);
    EXPECT_EQ(index.find(0x20000, isAny).position(), 1U);
    EXPECT_FALSE(index.find(0x30000, isAny));
}

TEST(ANameIndex, KeepsTheKindsOfPositions) {
    NameIndex index;
    for (std::size_t number = 0; number < 100; ++number) {
        index.makeRoomForOneMore();
        index.insert(static_cast<NameHash>(number),
                     EntryPosition(number, number % 3 == 0 ? Wildcard : Named));
    }
    for (std::size_t number = 0; number < 100; ++number) {
        EXPECT_EQ(index.find(static_cast<NameHash>(number), isAny).kind(),
                  number % 3 == 0 ? Wildcard : Named);
    }
}

} // namespace
} // namespace lf::import
