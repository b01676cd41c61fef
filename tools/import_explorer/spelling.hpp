// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Finds out which name a misspelled one may have been meant to be.

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace explorer {

/// Names with more characters are not compared.
inline constexpr std::size_t longestComparedName = 40;

/// Names behind that many others are not compared.
inline constexpr std::size_t mostComparedNames = 256;

/// The position of the candidate that takes the fewest changes to \p name, the first one if there
/// are several; nothing when even that one takes more than one change in three characters. A
/// character is inserted, removed, replaced, or swapped with the next. All texts are UTF-8.
std::optional<std::size_t> findNearestSpelling(std::string_view name,
                                               std::span<std::string_view const> candidates);

} // namespace explorer
