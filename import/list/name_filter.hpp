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

/// A Bloom filter whose bits of one name share a word, so that a test reads one cache line. Most
/// names are in none of the lists that are asked for them.
class NameFilter {
  public:
    /// How many names a word takes before too many others pass.
    static constexpr std::size_t namesPerWord = 6;

    NameFilter() = default;

    /// For up to \p names names; allocates unless they are few.
    explicit NameFilter(std::size_t names) {
        std::size_t const words = std::bit_ceil(names / namesPerWord);
        if (words > few.size()) {
            many.resize(words);
            mask = words - 1;
        }
    }

    void add(NameHash hash) noexcept {
        std::uint64_t* const words = mask < few.size() ? few.data() : many.data();
        words[hash & mask] |= bitsOf(hash);
    }

    bool mayHold(NameHash hash) const noexcept {
        std::uint64_t const* const words = mask < few.size() ? few.data() : many.data();
        std::uint64_t const bits = bitsOf(hash);
        return (words[hash & mask] & bits) == bits;
    }

  private:
    // The low bits of a hash choose the word, the high ones the bits in it.
    static std::uint64_t bitsOf(NameHash hash) noexcept {
        return std::uint64_t{1} << (hash >> 26) | std::uint64_t{1} << (hash >> 20 & 63);
    }

    std::array<std::uint64_t, 2> few{}; ///< the words of a small list
    std::size_t mask = few.size() - 1;  ///< the number of words less one
    std::vector<std::uint64_t> many;    ///< the words of a large list
};

} // namespace lf::import
