// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Names that carry their hash, and the hashed containers that can be asked with them.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace lf::import {

/// A name and its hash: hashed once, asked of every list of a chain.
struct HashedName {
    std::u16string_view text;
    std::size_t hash;
    /// Two bits of 64, for NameFilter.
    std::uint64_t filterBits;

    explicit HashedName(std::u16string_view name) noexcept
        : text(name),
          hash(std::hash<std::u16string_view>{}(name)),
          filterBits(bit(hash) | bit(hash / 64)) {}

  private:
    static std::uint64_t bit(std::size_t number) noexcept {
        return std::uint64_t{1} << (number % 64);
    }
};

/// Which names a list may hold.
///
/// Most names are in none of the lists that are asked for them, and the filter says so without a
/// look at the hashed containers: a list on the way costs one test instead of one probe.
class NameFilter {
  public:
    void add(HashedName const& name) noexcept { bits |= name.filterBits; }

    bool mayHold(HashedName const& name) const noexcept {
        return (bits & name.filterBits) == name.filterBits;
    }

  private:
    std::uint64_t bits = 0;
};

/// The standard hash of a UTF-16 string.
struct NameHash {
    using is_transparent = void;

    // Not noexcept: libstdc++ stores the hashes of keys only where computing them might throw, and
    // without stored hashes every probe and every growth hashes keys again.
    std::size_t operator()(std::u16string const& name) const {
        return std::hash<std::u16string>{}(name);
    }

    std::size_t operator()(HashedName const& name) const noexcept { return name.hash; }
};

/// Plain equality.
struct NameEqual {
    using is_transparent = void;

    bool operator()(std::u16string const& left, std::u16string const& right) const noexcept {
        return left == right;
    }

    bool operator()(HashedName const& left, std::u16string const& right) const noexcept {
        return left.text == right;
    }

    bool operator()(std::u16string const& left, HashedName const& right) const noexcept {
        return left == right.text;
    }
};

/// Names to positions in a vector.
using NameIndex = std::unordered_map<std::u16string, std::size_t, NameHash, NameEqual>;

using NameSet = std::unordered_set<std::u16string, NameHash, NameEqual>;

} // namespace lf::import
