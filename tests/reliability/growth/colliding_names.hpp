// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Short names that would collide in an import list if its hash had no key.

#include <cstddef>
#include <string>
#include <vector>

namespace growth {

/// \p count distinct random texts of four units each.
std::vector<std::u16string> makeBlocks(std::size_t count);

/// The same, but all texts have the same low 32 bits under XXH3 without a key.
///
/// \throws std::logic_error if they differ.
std::vector<std::u16string> makeBlocksOfOneHash(std::size_t count);

} // namespace growth
