// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Short names that would collide in a list if its hash had no key.

#include <cstddef>
#include <string>
#include <vector>

namespace growth {

/// \p count distinct texts of four units each, as nobody chose them.
std::vector<std::u16string> makeBlocks(std::size_t count);

/// The same, but all with the same low 32 bits under XXH3 without a key.
///
/// \throws std::logic_error when they have not.
std::vector<std::u16string> makeBlocksOfOneHash(std::size_t count);

} // namespace growth
