// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Inverts multiplications, to create colliding names.

#include <cstdint>

namespace workload {

/// The inverse of \p odd modulo 2^64: multiplying a product with \p odd by it yields the other
/// factor.
constexpr std::uint64_t inverseOf(std::uint64_t odd) {
    // Each round of Newton's iteration doubles the number of correct bits; an odd number starts
    // with three.
    std::uint64_t inverse = odd;
    for (int round = 0; round < 5; ++round) {
        inverse *= 2 - odd * inverse;
    }
    return inverse;
}

} // namespace workload
