// Stands before the C library's functions of the same names, so that what HarfBuzz and ICU take counts too.

#include "CountedMemory.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdint>

#include <malloc.h>

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);
}

namespace {

std::atomic<std::size_t> held{0};
std::atomic<std::size_t> peak{0};

void* take(void* block) {
    if (block != nullptr) {
        const std::size_t now = held += malloc_usable_size(block);
        if (now > peak) {
            peak = now;
        }
    }
    return block;
}

void giveBack(void* block) {
    if (block != nullptr) {
        held -= malloc_usable_size(block);
    }
}

} // namespace

extern "C" {

void* malloc(std::size_t size) noexcept {
    return take(__libc_malloc(size));
}

void* calloc(std::size_t count, std::size_t size) noexcept {
    return take(__libc_calloc(count, size));
}

void* realloc(void* block, std::size_t size) noexcept {
    // While a block moves, both places are taken.
    const std::size_t old = block == nullptr ? 0 : malloc_usable_size(block);
    void* const moved = __libc_realloc(block, size);
    if (moved == nullptr) {
        return moved;
    }
    if (moved != block) {
        take(moved);
        held -= old;
    } else {
        held += malloc_usable_size(moved) - old;
        peak = std::max(peak.load(), held.load());
    }
    return moved;
}

void* memalign(std::size_t alignment, std::size_t size) noexcept {
    return take(__libc_memalign(alignment, size));
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
    return take(__libc_memalign(alignment, size));
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size) noexcept {
    *block = take(__libc_memalign(alignment, size));
    return *block == nullptr ? ENOMEM : 0;
}

void free(void* block) noexcept {
    giveBack(block);
    __libc_free(block);
}
}

namespace growth {

std::size_t heapBytes() {
    return held;
}

std::size_t peakHeapBytes() {
    return peak;
}

void restartPeak() {
    peak = held.load();
}

} // namespace growth
