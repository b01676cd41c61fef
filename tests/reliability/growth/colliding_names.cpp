// SPDX-License-Identifier: BSL-1.0
#include "colliding_names.hpp"

#include "modular_inverse.hpp"

#define XXH_INLINE_ALL
#include <xxhash.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <random>
#include <stdexcept>
#include <string_view>

namespace growth {

namespace {

// XXH3 maps eight bytes one-to-one to 64 bits by rotations, multiplications and shifts, each of
// which can be inverted. This file applies the inverses to compute the bytes with a given hash.

using Block = std::array<char16_t, 4>;

constexpr std::uint64_t multiplier = 0x9FB21C651E98DF25;

constexpr std::uint64_t inverseMultiplier = workload::inverseOf(multiplier);
static_assert(multiplier * inverseMultiplier == 1);

constexpr std::uint64_t turn(std::uint64_t value) {
    return value ^ std::rotl(value, 49) ^ std::rotl(value, 24);
}

// 64 turns are the identity: modulo 2, the square of a sum is the sum of the squares, so the 64th
// power has three terms, each a rotation by a multiple of 64.
constexpr std::uint64_t turnBack(std::uint64_t value) {
    for (int round = 0; round < 63; ++round) {
        value = turn(value);
    }
    return value;
}

static_assert(turnBack(turn(0x0123456789ABCDEF)) == 0x0123456789ABCDEF);

constexpr std::uint64_t undoLastShift(std::uint64_t hash) {
    return hash ^ (hash >> 28) ^ (hash >> 56);
}

static_assert(undoLastShift(0xFEDCBA9876543210 ^ (0xFEDCBA9876543210 >> 28)) == 0xFEDCBA9876543210);

// The bits that are read are not among the bits that are changed.
constexpr std::uint64_t undoMiddleShift(std::uint64_t value) {
    return value ^ ((value >> 35) + sizeof(Block));
}

std::uint64_t unmixed(std::uint64_t hash) {
    return turnBack(undoMiddleShift(undoLastShift(hash) * inverseMultiplier) * inverseMultiplier);
}

std::uint64_t hashOf(std::u16string_view text) {
    return XXH3_64bits(text.data(), text.size() * sizeof(char16_t));
}

std::u16string textOf(std::uint64_t block) {
    auto const units = std::bit_cast<Block>(block);
    return {units.begin(), units.end()};
}

// The value that the hash first XORs with every block. Only this value is left of a block of zeros.
std::uint64_t mixedIn() {
    return unmixed(hashOf(textOf(0)));
}

// The hash swaps the two halves of a block.
std::u16string textWithHash(std::uint64_t hash) {
    return textOf(std::rotl(unmixed(hash) ^ mixedIn(), 32));
}

void requireOneHash(std::vector<std::u16string> const& texts) {
    if (!std::ranges::all_of(texts, [](std::u16string const& text) {
            return static_cast<std::uint32_t>(hashOf(text)) == 0;
        })) {
        throw std::logic_error("names that should have one hash without a key have several");
    }
}

} // namespace

std::vector<std::u16string> makeBlocks(std::size_t count) {
    std::mt19937_64 draws;
    std::vector<std::u16string> texts(count);
    std::ranges::generate(texts, [&draws] { return textOf(draws()); });
    return texts;
}

std::vector<std::u16string> makeBlocksOfOneHash(std::size_t count) {
    std::vector<std::u16string> texts;
    for (std::uint64_t number = 1; texts.size() < count; ++number) {
        texts.push_back(textWithHash(number << 32));
    }
    requireOneHash(texts);
    return texts;
}

} // namespace growth
