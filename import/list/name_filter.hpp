// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Which names an index may hold: what a list on the way of a lookup is asked first.

#include <import/list/name_hash.hpp>

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace lf::import {

/// A Bloom filter. The low bits of a hash choose a word, and all bits of a name are in that, so
/// that a test reads one cache line. Most names are in none of the lists that are asked for them.
class NameFilter {
  public:
    /// How many names a word takes before too many others pass.
    static constexpr std::size_t namesPerWord = 6;

    NameFilter() = default;

    /// For up to \p names names; allocates unless they are few.
    explicit NameFilter(std::size_t names) {
        std::size_t const words = std::bit_ceil(names / namesPerWord);
        if (words > few.size()) {
            few.fill(~std::uint64_t{0});
            many.resize(words);
        }
    }

    void add(NameHash hash) noexcept {
        few[hash % few.size()] |= filterBitsOf(hash);
        if (!many.empty()) {
            many[hash & (many.size() - 1)] |= filterBitsOf(hash);
        }
    }

    /// \param bits those of \p hash.
    bool mayHold(NameHash hash, std::uint64_t bits) const noexcept {
        return (few[hash % few.size()] & bits) == bits &&
               (many.empty() || (many[hash & (many.size() - 1)] & bits) == bits);
    }

  private:
    std::array<std::uint64_t, 2> few{}; ///< of a small list; lets everything of a large one pass
    std::vector<std::uint64_t> many;    ///< of a large list; a power of two, or none
};

} // namespace lf::import
