// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Measures how much memory a piece of work has at once. A program that has this is built with its
/// replacement of the global operator new.

#include <cstddef>

namespace support {

/// Measures from its beginning on. There is one at a time, in a program of one thread.
class MemoryMeter {
  public:
    MemoryMeter() noexcept;

    /// The most bytes that were had at once, beyond those of the beginning.
    // NOLINTNEXTLINE(readability-convert-member-functions-to-static): of this measurement
    std::size_t peak() const noexcept;

  private:
    std::ptrdiff_t atBeginning;
};

} // namespace support
