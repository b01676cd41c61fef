// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Measures the peak memory of some work. A program that links it uses its replacement of the
/// global operator new.

#include <cstddef>

namespace support {

/// Measures from its construction on. Only one may exist at a time, in a single-threaded program.
class MemoryMeter {
  public:
    MemoryMeter() noexcept;

    /// The peak number of bytes allocated at once, minus the number at construction.
    // NOLINTNEXTLINE(readability-convert-member-functions-to-static): of this measurement
    std::size_t peak() const noexcept;

  private:
    std::ptrdiff_t atBeginning;
};

} // namespace support
