// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Scripts that are expensive to process.

#include <array>
#include <cstddef>
#include <ostream>
#include <span>
#include <string>
#include <string_view>

namespace support {

struct CostlyScript {
    std::string_view why;
    /// Creates a script of the given size.
    std::string (*make)(std::size_t size);
    /// The size for measuring output and memory.
    std::size_t size;
    /// The size for counting instructions, which is slow under valgrind.
    std::size_t sizeToCount;
    /// Whether it is the fixes that take instructions.
    bool isToBeFixed = false;

    friend void PrintTo(CostlyScript const& script, std::ostream* stream) { *stream << script.why; }
};

extern std::span<CostlyScript const> const costlyScripts;

/// Each script is measured at size n, 2n and 4n.
inline constexpr std::array<std::size_t, 3> growthFactors{1, 2, 4};

} // namespace support
