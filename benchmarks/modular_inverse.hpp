// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Undoes multiplications, for names that are made to collide.

#include <cstdint>

namespace workload {

/// The number by which a product with \p odd is multiplied to get the other factor back, modulo
/// 2^64.
constexpr std::uint64_t inverseOf(std::uint64_t odd) {
    // Each round of Newton's iteration doubles the number of right bits; an odd number starts with
    // three.
    std::uint64_t inverse = odd;
    for (int round = 0; round < 5; ++round) {
        inverse *= 2 - odd * inverse;
    }
    return inverse;
}

} // namespace workload
