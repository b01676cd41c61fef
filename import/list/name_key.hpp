// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Names as keys: the hashed containers of a list, the filter before them, and what both are asked
/// with.

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace lf::import {

/// A name that lists are asked for: what their filters need at once, and its hash when the first of
/// them is probed. One key serves a whole chain; it is used by one thread. With the hash computed
/// at once, a name that no list has would take twice as long to look up in one list.
class NameKey {
  public:
    explicit NameKey(std::u16string_view name) noexcept
        : text(name), filterBits(filterBitsOf(name)) {}

    std::size_t hash() const noexcept {
        if (!computedHash) {
            computedHash = std::hash<std::u16string_view>{}(text);
        }
        return *computedHash;
    }

    std::u16string_view text;
    /// Three bits of 64, for NameFilter.
    std::uint64_t filterBits;

  private:
    // The length and the four units at either end tell most names apart, and cost a third of a
    // hash. The constants are odd and without a pattern, so that the high bits of a product depend
    // on all bits of a factor.
    static std::uint64_t filterBitsOf(std::u16string_view name) noexcept {
        std::array<char16_t, 4> first{};
        std::array<char16_t, 4> last{};
        if (name.size() >= first.size()) {
            std::memcpy(first.data(), name.data(), sizeof first);
            std::memcpy(last.data(), name.data() + name.size() - last.size(), sizeof last);
        } else {
            name.copy(first.data(), name.size());
        }
        std::uint64_t const mixed =
            (std::bit_cast<std::uint64_t>(first) ^ name.size()) * 0x9E3779B97F4A7C15U +
            std::bit_cast<std::uint64_t>(last) * 0xC2B2AE3D27D4EB4FU;
        return bit(mixed >> 58) | bit(mixed >> 52) | bit(mixed >> 46);
    }

    static std::uint64_t bit(std::uint64_t number) noexcept {
        return std::uint64_t{1} << (number % 64);
    }

    mutable std::optional<std::size_t> computedHash;
};

/// Which names a list may hold.
///
/// Most names are in none of the lists that are asked for them, and the filter says so without a
/// look at the hashed containers: a list on the way costs one test instead of one probe, and a name
/// that no list has is not even hashed. Without it, to find that out takes three times as long in
/// one list and five times in sixteen nested ones. With two bits for a name instead of three,
/// sixteen lists of eight imports each would take a fifth longer.
class NameFilter {
  public:
    void add(NameKey const& name) noexcept { bits |= name.filterBits; }

    bool mayHold(NameKey const& name) const noexcept {
        return (bits & name.filterBits) == name.filterBits;
    }

  private:
    std::uint64_t bits = 0;
};

/// The standard hash of a UTF-16 string.
struct NameHash {
    using is_transparent = void;

    // Not noexcept: libstdc++ stores the hashes of keys only where computing them might throw, and
    // without stored hashes every probe and every growth hashes keys again. Adding to a list of
    // 1,000 would take half as long again.
    std::size_t operator()(std::u16string const& name) const {
        return std::hash<std::u16string>{}(name);
    }

    std::size_t operator()(NameKey const& name) const noexcept { return name.hash(); }
};

/// Plain equality.
struct NameEqual {
    using is_transparent = void;

    bool operator()(std::u16string const& left, std::u16string const& right) const noexcept {
        return left == right;
    }

    bool operator()(NameKey const& left, std::u16string const& right) const noexcept {
        return left.text == right;
    }

    bool operator()(std::u16string const& left, NameKey const& right) const noexcept {
        return left == right.text;
    }
};

/// Names to positions in a vector.
using NameIndex = std::unordered_map<std::u16string, std::size_t, NameHash, NameEqual>;

using NameSet = std::unordered_set<std::u16string, NameHash, NameEqual>;

} // namespace lf::import
