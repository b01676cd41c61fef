// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// A filter that tells which names are not in an index.

#include <import/list/name_hash.hpp>

#include <boost/container/small_vector.hpp>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace lf::import {

/// A Bloom filter. Most lists do not hold the name that they are asked for; the filter answers for
/// them. The low bits of a hash choose a word, which has all bits of a name, so that a test reads
/// one cache line.
class NameFilter { // NOLINT(bugprone-exception-escape): moving never finds too little room
  public:
    /// With more names in a word, too many other names would pass.
    static constexpr std::size_t namesPerWord = 6;

    /// A filter for up to \p names names. Allocates unless there are few.
    explicit NameFilter(std::size_t names = 0)
        : words(std::max(std::bit_ceil(names / namesPerWord), fewWords)) {}

    void add(NameHash hash) noexcept { words[placeOf(hash)] |= filterBitsOf(hash); }

    /// \param bits the result of filterBitsOf for \p hash
    bool mayHold(NameHash hash, std::uint64_t bits) const noexcept {
        return (words[placeOf(hash)] & bits) == bits;
    }

  private:
    static constexpr std::size_t fewWords = 2;

    std::size_t placeOf(NameHash hash) const noexcept { return hash & (words.size() - 1); }

    /// Their number is a power of two. A few are stored in the list itself.
    boost::container::small_vector<std::uint64_t, fewWords> words;
};

} // namespace lf::import
