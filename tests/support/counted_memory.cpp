// SPDX-License-Identifier: BSL-1.0
#include <support/counted_memory.hpp>

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>

// The address sanitizer has its own operator new, which libFuzzer's part of a program uses even if
// another one is linked; it calls hooks instead.
#if defined(__SANITIZE_ADDRESS__)
#define GLEIGEM_HAS_ALLOCATION_HOOKS
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define GLEIGEM_HAS_ALLOCATION_HOOKS
#endif
#endif

#ifdef GLEIGEM_HAS_ALLOCATION_HOOKS
// g++ provides the functions of <sanitizer/allocator_interface.h>, but not the header.
extern "C" {
int __sanitizer_install_malloc_and_free_hooks(void (*onAllocation)(void const volatile*,
                                                                   std::size_t),
                                              void (*onRelease)(void const volatile*));
std::size_t __sanitizer_get_allocated_size(void const volatile* memory);
}
#endif

// In a separate file, since g++ reports a mismatch when it inlines only one of the pair.

namespace {

// Signed, because memory allocated before counting started is freed as well.
std::ptrdiff_t live = 0;
std::ptrdiff_t mostLive = 0;

void count(std::size_t allocated) noexcept {
    live += static_cast<std::ptrdiff_t>(allocated);
    mostLive = std::max(mostLive, live);
}

void discount(std::size_t freed) noexcept {
    live -= static_cast<std::ptrdiff_t>(freed);
}

} // namespace

namespace support {

MemoryMeter::MemoryMeter() noexcept : atBeginning(live) {
    mostLive = live;
}

// NOLINTNEXTLINE(readability-convert-member-functions-to-static): of this measurement
std::size_t MemoryMeter::peak() const noexcept {
    return static_cast<std::size_t>(mostLive - atBeginning);
}

} // namespace support

#ifdef GLEIGEM_HAS_ALLOCATION_HOOKS

[[maybe_unused]] static int const hooks = __sanitizer_install_malloc_and_free_hooks(
    [](void const volatile* /*memory*/, std::size_t size) { count(size); },
    [](void const volatile* memory) { discount(__sanitizer_get_allocated_size(memory)); });

#else

void* operator new(std::size_t size) {
    if (void* const memory = std::malloc(size == 0 ? 1 : size)) {
        count(::malloc_usable_size(memory));
        return memory;
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    discount(::malloc_usable_size(memory));
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}

#endif
