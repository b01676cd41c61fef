// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Names as an attacker would choose them, and random names of the same length.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace workload {

/// How to choose the names of a flood.
enum class Flood {
    /// All have one hash under std::hash of libstdc++, which has a fixed seed and can be inverted.
    Colliding,
    /// Drawn at random, of the same length and the same letters.
    Random,
};

/// \p count distinct names: \p start, whose length must be a multiple of four units, and eight more
/// units. They are identifiers if \p start is one or is empty.
/// \throws std::logic_error if the names do not collide, which means another standard library.
std::vector<std::u16string> makeFlood(Flood flood, std::size_t count,
                                      std::u16string_view start = {});

} // namespace workload
