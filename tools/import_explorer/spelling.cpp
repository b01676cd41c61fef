// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/spelling.hpp>

#include <algorithm>
#include <array>
#include <utility>

namespace explorer {

namespace {

using Row = std::array<std::size_t, longestComparedName + 1>;

/// The number of changes that make \p left to \p right. Both must not be longer than the longest
/// compared name.
std::size_t distanceBetween(std::u16string_view left, std::u16string_view right) {
    Row beforeLast{};
    Row last{};
    Row current{};
    for (std::size_t column = 0; column <= right.size(); ++column) {
        current.at(column) = column;
    }
    for (std::size_t row = 1; row <= left.size(); ++row) {
        beforeLast = std::exchange(last, current);
        current.at(0) = row;
        for (std::size_t column = 1; column <= right.size(); ++column) {
            bool const isSame = left[row - 1] == right[column - 1];
            std::size_t changes =
                std::min({last.at(column) + 1, current.at(column - 1) + 1,
                          last.at(column - 1) + (isSame ? std::size_t{0} : std::size_t{1})});
            if (row > 1 && column > 1 && left[row - 1] == right[column - 2] &&
                left[row - 2] == right[column - 1]) {
                changes = std::min(changes, beforeLast.at(column - 2) + 1);
            }
            current.at(column) = changes;
        }
    }
    return current.at(right.size());
}

} // namespace

std::optional<std::size_t> findNearestSpelling(std::u16string_view name,
                                               std::span<std::u16string_view const> candidates) {
    if (name.size() > longestComparedName) {
        return std::nullopt;
    }
    std::optional<std::size_t> nearest;
    // Only what is nearer than this is of interest.
    std::size_t bound = (name.size() + 2) / 3 + 1;
    for (std::size_t index = 0; index < std::min(candidates.size(), mostComparedNames); ++index) {
        std::u16string_view const candidate = candidates[index];
        auto const [shorter, longer] = std::minmax({name.size(), candidate.size()});
        if (longer > longestComparedName || longer - shorter >= bound) {
            continue;
        }
        std::size_t const distance = distanceBetween(name, candidate);
        if (distance < bound && distance < longer) {
            bound = distance;
            nearest = index;
        }
    }
    return nearest;
}

} // namespace explorer
