// SPDX-License-Identifier: BSL-1.0
#include <support/allocations.hpp>

#include <cstdlib>
#include <limits>
#include <new>

// In a file of their own, since g++ takes inlined halves of the pair for a mismatch.

namespace {

constexpr std::size_t noLimit = std::numeric_limits<std::size_t>::max();

std::size_t allocations = 0;
std::size_t allocationsUntilFailure = noLimit;

} // namespace

namespace support {

std::size_t countAllocations() noexcept {
    return allocations;
}

FailingAllocations::FailingAllocations(std::size_t allowed) noexcept {
    allocationsUntilFailure = allowed;
}

FailingAllocations::~FailingAllocations() {
    allocationsUntilFailure = noLimit;
}

} // namespace support

void* operator new(std::size_t size) {
    ++allocations;
    if (allocationsUntilFailure == 0) {
        throw std::bad_alloc();
    }
    if (allocationsUntilFailure != noLimit) {
        --allocationsUntilFailure;
    }
    if (void* const memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
