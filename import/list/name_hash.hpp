// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The hash of names.

// Inlined completely: there is no run-time dependency, and no symbol of it is exported.
#define XXH_INLINE_ALL
#include <xxhash.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace lf::import {

using NameHash = std::uint32_t;

/// The secret key of all hashes of a process. Scripts choose names; without a secret, they could
/// choose many names with the same hash.
///
/// No answer of a list depends on the key.
class HashKey {
  public:
    /// The first call gets the key from the operating system's random numbers.
    ///
    /// \throws std::system_error if the system has none.
    static HashKey const& ofThisProcess();

    NameHash hash(std::u16string_view name) const noexcept {
        return static_cast<NameHash>(
            XXH3_64bits_withSeed(name.data(), name.size() * sizeof(char16_t), seed));
    }

  private:
    HashKey();

    std::uint64_t seed;
};

/// Whether two names are equal. std::u16string_view compares them unit by unit, which is slower.
inline bool isSame(std::u16string_view left, std::u16string_view right) noexcept {
    return std::equal(left.begin(), left.end(), right.begin(), right.end());
}

/// The bits of a name in a word of a NameFilter.
constexpr std::uint64_t filterBitsOf(NameHash hash) noexcept {
    return std::uint64_t{1} << (hash >> 26) | std::uint64_t{1} << (hash >> 20 & 63);
}

/// A name with its hash, computed once for a whole chain of lists.
struct NameKey {
    NameKey(std::u16string_view name, NameHash itsHash) noexcept
        : text(name), hash(itsHash), filterBits(filterBitsOf(itsHash)) {}

    NameKey(std::u16string_view name, HashKey const& key) noexcept
        : NameKey(name, key.hash(name)) {}

    std::u16string_view text;
    NameHash hash;
    std::uint64_t filterBits; ///< computed once for all filters
};

} // namespace lf::import
