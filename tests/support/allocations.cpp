// SPDX-License-Identifier: BSL-1.0
#include <support/allocations.hpp>

#include <malloc.h>

#include <cstdlib>
#include <limits>
#include <new>

// In a separate file, since g++ reports a mismatch when it inlines only one of the pair.

namespace {

constexpr std::size_t noLimit = std::numeric_limits<std::size_t>::max();

thread_local std::size_t allocations = 0;
thread_local std::size_t liveAllocations = 0;
thread_local std::size_t liveBytes = 0;
thread_local std::size_t allocationsUntilFailure = noLimit;
thread_local support::Shortage shortageToCome{};
thread_local bool failed = false;

std::size_t usableSize(void* memory) noexcept {
#ifdef _WIN32
    return memory == nullptr ? 0 : _msize(memory);
#else
    return malloc_usable_size(memory);
#endif
}

/// Whether the next allocation fails.
bool failsNow() noexcept {
    if (allocationsUntilFailure == noLimit) {
        return false;
    }
    if (allocationsUntilFailure > 0) {
        --allocationsUntilFailure;
        return false;
    }
    if (failed && shortageToCome == support::Shortage::Passing) {
        return false;
    }
    failed = true;
    return true;
}

/// Returns null if this allocation fails.
void* allocate(std::size_t size) noexcept {
    ++allocations;
    void* const memory = failsNow() ? nullptr : std::malloc(size == 0 ? 1 : size);
    liveAllocations += memory == nullptr ? 0 : 1;
    liveBytes += usableSize(memory);
    return memory;
}

void giveBack(void* memory) noexcept {
    liveAllocations -= memory == nullptr ? 0 : 1;
    liveBytes -= usableSize(memory);
    std::free(memory);
}

} // namespace

namespace support {

std::size_t countAllocations() noexcept {
    return allocations;
}

std::size_t countLiveAllocations() noexcept {
    return liveAllocations;
}

std::size_t countLiveBytes() noexcept {
    return liveBytes;
}

FailingAllocations::FailingAllocations(std::size_t allowed, Shortage shortage) noexcept {
    allocationsUntilFailure = allowed;
    shortageToCome = shortage;
    failed = false;
}

FailingAllocations::~FailingAllocations() {
    allocationsUntilFailure = noLimit;
}

// NOLINTNEXTLINE(readability-convert-member-functions-to-static): of this shortage
bool FailingAllocations::hasFailed() const noexcept {
    return failed;
}

} // namespace support

// All forms of new are replaced, since a sanitizer's own would not match this delete.
void* operator new(std::size_t size, std::nothrow_t const&) noexcept {
    return allocate(size);
}

void* operator new(std::size_t size) {
    if (void* const memory = allocate(size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    giveBack(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    giveBack(memory);
}

void operator delete(void* memory, std::nothrow_t const&) noexcept {
    giveBack(memory);
}
