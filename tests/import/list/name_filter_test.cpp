// SPDX-License-Identifier: BSL-1.0

#include <import/list/name_filter.hpp>
#include <import/list/name_index.hpp>

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <random>
#include <string>

namespace lf::import {
namespace {

/// Draws random values that resemble hashes of names; the same values in every run.
class Hashes {
  public:
    NameHash next() { return static_cast<NameHash>(engine()); }

  private:
    std::mt19937_64 engine;
};

bool mayHold(NameFilter const& filter, NameHash hash) {
    return filter.mayHold(hash, filterBitsOf(hash));
}

TEST(ANameFilter, LetsNothingPassAtFirst) {
    Hashes hashes;
    for (NameFilter const& filter : {NameFilter(), NameFilter(10'000)}) {
        for (int probe = 0; probe < 1'000; ++probe) {
            EXPECT_FALSE(mayHold(filter, hashes.next()));
        }
    }
}

TEST(ANameFilter, LetsEveryNamePassThatIsInIt) {
    for (std::size_t const size : std::to_array<std::size_t>({1, 12, 13, 1'000})) {
        Hashes hashes;
        NameFilter filter(size);
        for (std::size_t number = 0; number < 2 * size; ++number) {
            NameHash const hash = hashes.next();
            filter.add(hash);
            EXPECT_TRUE(mayHold(filter, hash));
        }
        Hashes again;
        for (std::size_t number = 0; number < 2 * size; ++number) {
            EXPECT_TRUE(mayHold(filter, again.next()));
        }
    }
}

TEST(ANameFilter, IsCopiedWithItsNames) {
    for (std::size_t const size : std::to_array<std::size_t>({3, 3'000})) {
        Hashes hashes;
        NameFilter filter(size);
        NameHash const first = hashes.next();
        filter.add(first);
        NameFilter copy = filter;
        NameHash const second = hashes.next();
        copy.add(second);
        EXPECT_TRUE(mayHold(copy, first));
        EXPECT_TRUE(mayHold(copy, second));
        EXPECT_FALSE(mayHold(filter, second));
    }
}

/// The number of indexes, of names in each, and of lookups of other names.
struct Size {
    std::size_t names;
    int indexes;
    int probes;
};

class TheFilterOfAnIndex : public testing::TestWithParam<Size> {};

TEST_P(TheFilterOfAnIndex, LetsFewOtherNamesPass) {
    auto const [names, indexes, probes] = GetParam();
    Hashes hashes;
    int passed = 0;
    for (int round = 0; round < indexes; ++round) {
        NameIndex index;
        for (std::size_t position = 0; position < names; ++position) {
            index.makeRoomForOneMore();
            index.insert(hashes.next(), EntryPosition(position, EntryPosition::Kind::Named));
        }
        for (int probe = 0; probe < probes; ++probe) {
            passed += index.mayHold(NameKey({}, hashes.next())) ? 1 : 0;
        }
    }
    EXPECT_LE(passed, 0.04 * indexes * probes);
    EXPECT_GT(passed, 0) << "the test needs some other names that pass";
}

// Round numbers, and the largest sizes before an index grows.
INSTANTIATE_TEST_SUITE_P(OfEverySize, TheFilterOfAnIndex,
                         testing::Values(Size{6, 1'000, 100}, Size{10, 1'000, 100},
                                         Size{12, 1'000, 100}, Size{100, 100, 1'000},
                                         Size{192, 100, 1'000}, Size{10'000, 2, 50'000},
                                         Size{12'288, 2, 50'000}, Size{786'432, 1, 100'000},
                                         Size{1'000'000, 1, 100'000}),
                         [](auto const& row) { return std::to_string(row.param.names); });

} // namespace
} // namespace lf::import
