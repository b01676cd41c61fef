// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Scripts that are made to be costly.

#include <array>
#include <cstddef>
#include <ostream>
#include <span>
#include <string>
#include <string_view>

namespace support {

struct CostlyScript {
    std::string_view why;
    /// Makes a script with so many of what is costly.
    std::string (*make)(std::size_t size);
    /// For the output and the memory.
    std::size_t size;
    /// For the instructions, which take valgrind long to count.
    std::size_t sizeToCount;

    friend void PrintTo(CostlyScript const& script, std::ostream* stream) { *stream << script.why; }
};

extern std::span<CostlyScript const> const costlyScripts;

/// Each is measured for n, 2n and 4n.
inline constexpr std::array<std::size_t, 3> growthFactors{1, 2, 4};

} // namespace support
