// SPDX-License-Identifier: BSL-1.0
#include "flood.hpp"

#include "modular_inverse.hpp"
#include "names.hpp"

#include <import/platform.hpp>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <functional>
#include <stdexcept>

namespace workload {

namespace {

// libstdc++ hashes bytes by MurmurHash64A: it mixes each block of eight bytes into a state of 64
// bits, in reversible steps. So any text can be extended by one block that leads to a chosen state.

using Block = std::array<char16_t, 4>;

constexpr std::uint64_t seed = 0xC70F6907;
constexpr std::uint64_t multiplier = 0xC6A4A7935BD1E995;

constexpr std::uint64_t inverseMultiplier = inverseOf(multiplier);
static_assert(multiplier * inverseMultiplier == 1);

// Inverts itself, since the shift is by more than half of the bits.
constexpr std::uint64_t xorShift(std::uint64_t value) {
    return value ^ (value >> 47);
}

constexpr std::uint64_t mix(std::uint64_t block) {
    return xorShift(block * multiplier) * multiplier;
}

constexpr std::uint64_t unmix(std::uint64_t mixed) {
    return xorShift(mixed * inverseMultiplier) * inverseMultiplier;
}

static_assert(unmix(mix(0x0123456789ABCDEF)) == 0x0123456789ABCDEF);

// The state of the hash before the last block of \p text, which is not yet appended.
std::uint64_t stateBeforeLastBlock(std::u16string_view text) {
    std::uint64_t state = seed ^ ((text.size() + Block().size()) * sizeof(char16_t) * multiplier);
    for (; !text.empty(); text.remove_prefix(Block().size())) {
        Block block;
        text.copy(block.data(), block.size());
        state = (state ^ mix(std::bit_cast<std::uint64_t>(block))) * multiplier;
    }
    return state;
}

Block collidingBlock(std::u16string_view text) {
    constexpr std::uint64_t state = 0; // any one, but the same for all
    return std::bit_cast<Block>(unmix(stateBeforeLastBlock(text) ^ (state * inverseMultiplier)));
}

Block randomBlock(Draws& draws) {
    Block block;
    std::ranges::generate(block, [&] { return static_cast<char16_t>(draws.below(0x10000)); });
    return block;
}

std::u16string_view textOf(Block const& block) {
    return {block.data(), block.size()};
}

// Four letters that encode the number.
Block numbered(std::size_t number) {
    Block block;
    for (char16_t& unit : block) {
        unit = static_cast<char16_t>(u'a' + number % 26);
        number /= 26;
    }
    return block;
}

void requireOneHash(std::vector<std::u16string> const& names) {
    std::hash<std::u16string> const hash;
    if (!std::ranges::all_of(names,
                             [&](auto const& name) { return hash(name) == hash(names.front()); })) {
        throw std::logic_error("names that should have one standard hash have several");
    }
}

} // namespace

std::vector<std::u16string> makeFlood(Flood flood, std::size_t count, std::u16string_view start) {
    Draws draws;
    std::vector<std::u16string> names;
    for (std::size_t number = 0; names.size() < count; ++number) {
        std::u16string name(start);
        name += textOf(numbered(number));
        Block const last = flood == Flood::Colliding ? collidingBlock(name) : randomBlock(draws);
        if (lf::util::isValidIdentifier(u"a" + std::u16string(textOf(last)))) {
            names.push_back(name += textOf(last));
        }
    }
    if (flood == Flood::Colliding) {
        requireOneHash(names);
    }
    return names;
}

} // namespace workload
