// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Counts the allocations of a program and makes them fail; each thread has its own counts. Linking
/// it replaces the global operator new.

#include <cstddef>
#include <cstdint>

namespace support {

/// The number of allocations of this thread, including failed ones.
std::size_t countAllocations() noexcept;

/// The number of allocations that have not been freed.
std::size_t countLiveAllocations() noexcept;

/// The total size of these in bytes, as rounded up by the allocator.
std::size_t countLiveBytes() noexcept;

/// The ways in which memory can run out.
enum class Shortage : std::uint8_t {
    /// One allocation fails; later ones succeed.
    Passing,
    /// Every allocation fails from the first failure on.
    Lasting,
};

/// During its lifetime, the first \p allowed allocations of this thread succeed, and the next one,
/// or every later one, throws std::bad_alloc.
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
