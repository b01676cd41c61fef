// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Counts the allocations of a test program, and lets them fail. A program that has this is built
/// with its replacement of the global operator new, and uses it in one thread.

#include <cstddef>
#include <cstdint>

namespace support {

/// The number of allocations since the start of the program, failed ones included.
std::size_t countAllocations() noexcept;

/// The number of allocations that have not been given back.
std::size_t countLiveAllocations() noexcept;

/// How memory runs out.
enum class Shortage : std::uint8_t {
    /// One allocation fails, and there is room again.
    Passing,
    /// Every allocation fails from the first failure on.
    Lasting,
};

/// While it lives, the first \p allowed allocations succeed and the next one, or every later one,
/// throws std::bad_alloc.
class FailingAllocations {
  public:
    explicit FailingAllocations(std::size_t allowed,
                                Shortage shortage = Shortage::Lasting) noexcept;
    FailingAllocations(FailingAllocations const&) = delete;
    FailingAllocations& operator=(FailingAllocations const&) = delete;
    ~FailingAllocations();

    /// Whether an allocation has failed.
    bool hasFailed() const noexcept;
};

} // namespace support
