// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The hash by which lists know names.

// The whole of it is inlined: the library needs no other at run time and exports none of it.
#define XXH_INLINE_ALL
#include <xxhash.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace lf::import {

using NameHash = std::uint32_t;

/// What keys all hashes of a process. Scripts choose names, so without a secret they could choose
/// many with one hash.
///
/// Nothing that a list answers depends on the key.
class HashKey {
  public:
    /// Drawn from the operating system's random numbers by the first call.
    ///
    /// \throws std::system_error when the system has none.
    static HashKey const& ofThisProcess();

    NameHash hash(std::u16string_view name) const noexcept {
        return static_cast<NameHash>(
            XXH3_64bits_withSeed(name.data(), name.size() * sizeof(char16_t), seed));
    }

  private:
    HashKey();

    std::uint64_t seed;
};

/// Whether two names are the same. The standard library compares UTF-16 unit by unit.
inline bool isSame(std::u16string_view left, std::u16string_view right) noexcept {
    return left.size() == right.size() &&
           std::memcmp(left.data(), right.data(), left.size() * sizeof(char16_t)) == 0;
}

/// The bits of a name in a word of a NameFilter.
constexpr std::uint64_t filterBitsOf(NameHash hash) noexcept {
    return std::uint64_t{1} << (hash >> 26) | std::uint64_t{1} << (hash >> 20 & 63);
}

/// A name with its hash: what a whole chain of lists is asked with.
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
