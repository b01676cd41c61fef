// SPDX-License-Identifier: BSL-1.0

#include <import/list/name_hash.hpp>

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <set>
#include <string>
#include <string_view>

namespace lf::import {
namespace {

using namespace std::string_view_literals;

TEST(AHashKey, IsOneForTheProcess) {
    EXPECT_EQ(&HashKey::ofThisProcess(), &HashKey::ofThisProcess());
}

TEST(AHashKey, GivesEqualTextsOneHash) {
    HashKey const& key = HashKey::ofThisProcess();
    for (std::size_t size = 0; size < 300; ++size) {
        std::u16string const text(size, u'n');
        std::u16string const shifted = u"m" + text; // at another alignment
        EXPECT_EQ(key.hash(text), key.hash(std::u16string_view(shifted).substr(1)));
    }
}

TEST(AHashKey, HashesEveryUnit) {
    HashKey const& key = HashKey::ofThisProcess();
    for (std::size_t const size : std::to_array<std::size_t>({1, 2, 4, 8, 9, 64, 120, 200})) {
        std::set<NameHash> hashes{key.hash(std::u16string(size, u'n'))};
        for (std::size_t place = 0; place < size; ++place) {
            std::u16string text(size, u'n');
            text[place] = u'm';
            hashes.insert(key.hash(text));
        }
        // Two hashes of 32 bits may collide by chance; more collisions are all but impossible.
        EXPECT_GE(hashes.size() + 2, size + 1) << size;
    }
}

TEST(Names, AreTheSameUnitByUnit) {
    EXPECT_TRUE(isSame(u""sv, std::u16string_view()));
    EXPECT_TRUE(isSame(u"name"sv, std::u16string(u"name")));
    EXPECT_TRUE(isSame(u"a\0b"sv, std::u16string(u"a\0b"sv)));
    EXPECT_FALSE(isSame(u"a\0b"sv, u"a\0c"sv));
    EXPECT_FALSE(isSame(u"name"sv, u"nam"sv));
    EXPECT_FALSE(isSame(u"name"sv, u""sv));
    EXPECT_FALSE(isSame(u"name"sv, u"Name"sv));
    EXPECT_FALSE(isSame(u"\u0061"sv, u"\u0161"sv)) << "the high byte counts";
}

} // namespace
} // namespace lf::import
