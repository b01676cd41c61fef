// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Suggests a name for a misspelled one.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string_view>

namespace lf::import::host {

/// Longer names, in UTF-16 units, are not compared.
inline constexpr std::size_t longestComparedName = 40;

/// Only this many candidates are compared.
inline constexpr std::size_t mostComparedNames = 256;

namespace detail {

/// Counts the changes that turn other names into one name.
///
/// The distances of all prefixes form a table. Neighbours in a column differ by -1, 0 or 1, so two
/// words of bits hold a column, and each unit of the other name takes a few operations for a whole
/// column.
class NameDistance {
  public:
    /// \p name has at least one unit and at most longestComparedName.
    explicit constexpr NameDistance(std::u16string_view name) noexcept : size(name.size()) {
        for (std::size_t index = 0; index < name.size(); ++index) {
            letters[index] = name[index];
            if (name[index] < positionsOfAscii.size()) {
                positionsOfAscii[name[index]] |= Bits{1} << index;
            }
        }
    }

    constexpr std::size_t to(std::u16string_view other) const noexcept {
        Bits const lastRow = Bits{1} << (size - 1);
        Bits rises = ~Bits{0};
        Bits falls = 0;
        Bits diagonals = 0;
        Bits positionsBefore = 0;
        std::size_t distance = size;
        for (char16_t const unit : other) {
            Bits const positions = positionsOf(unit);
            Bits const swapped = ((~diagonals & positions) << 1U) & positionsBefore;
            diagonals = (((positions & rises) + rises) ^ rises) | positions | falls | swapped;
            Bits const risesAcross = falls | ~(diagonals | rises);
            Bits const fallsAcross = diagonals & rises;
            distance += (risesAcross & lastRow) != 0 ? 1 : 0;
            distance -= (fallsAcross & lastRow) != 0 ? 1 : 0;
            rises = (fallsAcross << 1U) | ~(diagonals | (risesAcross << 1U) | 1U);
            falls = ((risesAcross << 1U) | 1U) & diagonals;
            positionsBefore = positions;
        }
        return distance;
    }

  private:
    /// A bit for each unit of the name.
    using Bits = std::uint64_t;
    static_assert(longestComparedName <= std::numeric_limits<Bits>::digits);

    constexpr Bits positionsOf(char16_t unit) const noexcept {
        if (unit < positionsOfAscii.size()) {
            return positionsOfAscii[unit];
        }
        Bits positions = 0;
        for (std::size_t index = 0; index < size; ++index) {
            positions |= Bits{letters[index] == unit ? 1U : 0U} << index;
        }
        return positions;
    }

    std::size_t size;
    std::array<char16_t, longestComparedName> letters{};
    std::array<Bits, 128> positionsOfAscii{};
};

} // namespace detail

/// The position of the candidate with the fewest changes to \p name, the first one if there are
/// several; empty if it has more than one change in three characters. A change inserts, removes or
/// replaces a character, or swaps it with the next one.
inline std::optional<std::size_t>
findNearestSpelling(std::u16string_view name,
                    std::span<std::u16string_view const> candidates) noexcept {
    if (name.empty() || name.size() > longestComparedName) {
        return std::nullopt;
    }
    detail::NameDistance const distanceFromName(name);
    std::optional<std::size_t> nearest;
    // Candidates with this many changes or more are rejected.
    std::size_t bound = (name.size() + 2) / 3 + 1;
    for (std::size_t index = 0; index < std::min(candidates.size(), mostComparedNames); ++index) {
        std::u16string_view const candidate = candidates[index];
        auto const [shorter, longer] = std::minmax({name.size(), candidate.size()});
        if (longer > longestComparedName || longer - shorter >= bound) {
            continue;
        }
        std::size_t const distance = distanceFromName.to(candidate);
        if (distance < bound && distance < longer) {
            bound = distance;
            nearest = index;
        }
    }
    return nearest;
}

} // namespace lf::import::host
