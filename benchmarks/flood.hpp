// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Names that an attacker would choose, and names as long that nobody chose.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace workload {

/// How the names of a flood are made.
enum class Flood {
    /// All have one hash under std::hash of libstdc++, which has a fixed seed and can be inverted.
    Colliding,
    /// Drawn at random, of the same length and the same letters.
    Random,
};

/// \p count distinct names: \p start, which has a multiple of four units, and eight more. They are
/// identifiers where \p start is, or is empty.
/// \throws std::logic_error when names do not collide: the standard library is another one.
std::vector<std::u16string> makeFlood(Flood flood, std::size_t count,
                                      std::u16string_view start = {});

} // namespace workload
