// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Counts the allocations of a program and makes them fail; each thread has its own counts. Linking
/// it replaces the global operator new.

#include <cstddef>
#include <cstdint>

namespace support {

/// The number of allocations that this thread has made, failed ones included.
std::size_t countAllocations() noexcept;

/// The number of those that are not freed yet.
std::size_t countLiveAllocations() noexcept;

/// The number of bytes in these, as the allocator rounds them up.
std::size_t countLiveBytes() noexcept;

/// The ways in which memory can run out.
enum class Shortage : std::uint8_t {
    /// One allocation fails; later ones succeed.
    Passing,
    /// Every allocation fails from the first failure on.
    Lasting,
};

/// While it lives, the thread's first \p allowed allocations succeed and the next one, or every
/// later one, throws std::bad_alloc.
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
