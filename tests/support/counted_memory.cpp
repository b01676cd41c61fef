// SPDX-License-Identifier: BSL-1.0
#include <support/counted_memory.hpp>

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>

// In a file of their own, since g++ takes inlined halves of the pair for a mismatch.

namespace {

std::size_t live = 0;
std::size_t mostLive = 0;

} // namespace

namespace support {

MemoryMeter::MemoryMeter() noexcept : atBeginning(live) {
    mostLive = live;
}

// NOLINTNEXTLINE(readability-convert-member-functions-to-static): of this measurement
std::size_t MemoryMeter::peak() const noexcept {
    return mostLive - atBeginning;
}

} // namespace support

void* operator new(std::size_t size) {
    if (void* const memory = std::malloc(size == 0 ? 1 : size)) {
        live += ::malloc_usable_size(memory);
        mostLive = std::max(mostLive, live);
        return memory;
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    live -= ::malloc_usable_size(memory);
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}
