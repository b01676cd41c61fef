// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Counts the allocations of a test program, and lets them fail. A program that has this is built
/// with its replacement of the global operator new, and uses it in one thread.

#include <cstddef>

namespace support {

/// The number of allocations since the start of the program.
std::size_t countAllocations() noexcept;

/// While it lives, the first \p allowed allocations succeed and every later one throws
/// std::bad_alloc.
class FailingAllocations {
  public:
    explicit FailingAllocations(std::size_t allowed) noexcept;
    FailingAllocations(FailingAllocations const&) = delete;
    FailingAllocations& operator=(FailingAllocations const&) = delete;
    ~FailingAllocations();
};

} // namespace support
