// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Which names an index may hold: what a list on the way of a lookup is asked first.

#include <import/list/name_hash.hpp>

#include <boost/container/small_vector.hpp>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace lf::import {

/// A Bloom filter. The low bits of a hash choose a word, and all bits of a name are in that, so
/// that a test reads one cache line. Most names are in none of the lists that are asked for them.
class NameFilter { // NOLINT(bugprone-exception-escape): moving never finds too little room
  public:
    /// How many names a word takes before too many others pass.
    static constexpr std::size_t namesPerWord = 6;

    /// For up to \p names names; allocates unless they are few.
    explicit NameFilter(std::size_t names = 0)
        : words(std::max(std::bit_ceil(names / namesPerWord), fewWords)) {}

    void add(NameHash hash) noexcept { words[placeOf(hash)] |= filterBitsOf(hash); }

    /// \param bits those of \p hash.
    bool mayHold(NameHash hash, std::uint64_t bits) const noexcept {
        return (words[placeOf(hash)] & bits) == bits;
    }

  private:
    static constexpr std::size_t fewWords = 2;

    std::size_t placeOf(NameHash hash) const noexcept { return hash & (words.size() - 1); }

    /// A power of two; few of them stand in the list itself.
    boost::container::small_vector<std::uint64_t, fewWords> words;
};

} // namespace lf::import
