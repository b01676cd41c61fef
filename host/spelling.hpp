// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Suggests a name for a misspelled one.

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

namespace lf::import::host {

/// Longer names, in UTF-16 units, are not compared.
inline constexpr std::size_t longestComparedName = 40;

/// Only this many candidates are compared.
inline constexpr std::size_t mostComparedNames = 256;

namespace detail {

/// How many changes turn \p left into \p right. Neither is longer than longestComparedName.
inline std::size_t distanceBetween(std::u16string_view left, std::u16string_view right) noexcept {
    using Row = std::array<std::size_t, longestComparedName + 1>;
    Row beforeLast{};
    Row last{};
    Row current{};
    for (std::size_t column = 0; column <= right.size(); ++column) {
        current[column] = column;
    }
    for (std::size_t row = 1; row <= left.size(); ++row) {
        beforeLast = std::exchange(last, current);
        current[0] = row;
        for (std::size_t column = 1; column <= right.size(); ++column) {
            bool const isSame = left[row - 1] == right[column - 1];
            std::size_t const replaced = last[column - 1] + (isSame ? 0U : 1U);
            current[column] = std::min({last[column] + 1, current[column - 1] + 1, replaced});
            if (row > 1 && column > 1 && left[row - 1] == right[column - 2] &&
                left[row - 2] == right[column - 1]) {
                current[column] = std::min(current[column], beforeLast[column - 2] + 1);
            }
        }
    }
    return current[right.size()];
}

} // namespace detail

/// The position of the candidate with the fewest changes to \p name, the first one if there are
/// several; empty if it has more than one change in three characters. A change inserts, removes or
/// replaces a character, or swaps it with the next one.
inline std::optional<std::size_t>
findNearestSpelling(std::u16string_view name,
                    std::span<std::u16string_view const> candidates) noexcept {
    if (name.size() > longestComparedName) {
        return std::nullopt;
    }
    std::optional<std::size_t> nearest;
    // Candidates with this many changes or more are rejected.
    std::size_t bound = (name.size() + 2) / 3 + 1;
    for (std::size_t index = 0; index < std::min(candidates.size(), mostComparedNames); ++index) {
        std::u16string_view const candidate = candidates[index];
        auto const [shorter, longer] = std::minmax({name.size(), candidate.size()});
        if (longer > longestComparedName || longer - shorter >= bound) {
            continue;
        }
        std::size_t const distance = detail::distanceBetween(name, candidate);
        if (distance < bound && distance < longer) {
            bound = distance;
            nearest = index;
        }
    }
    return nearest;
}

} // namespace lf::import::host
