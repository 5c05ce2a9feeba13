#include "fonts/GlyphBoundsCache.h"

#include <thread>

namespace platform {

GlyphBoundsCache::GlyphBoundsCache(unsigned glyphCount) : m_chunks(glyphCount / chunkSize + 1) {}

GlyphBoundsCache::~GlyphBoundsCache() {
    for (const std::atomic<Chunk*>& chunk : m_chunks) {
        delete chunk.load(std::memory_order_relaxed);
    }
}

const GlyphBounds& GlyphBoundsCache::publish(std::uint16_t glyph, const GlyphBounds& bounds) {
    std::atomic<Chunk*>& place = m_chunks[glyph / chunkSize];
    Chunk* chunk = place.load(std::memory_order_acquire);
    if (chunk == nullptr) {
        auto* const fresh = new Chunk;
        if (place.compare_exchange_strong(chunk, fresh, std::memory_order_acq_rel, std::memory_order_acquire)) {
            chunk = fresh;
        } else {
            delete fresh;
        }
    }

    const unsigned slot = glyph % chunkSize;
    std::uint8_t state = stateEmpty;
    if (chunk->state[slot].compare_exchange_strong(state, stateWriting, std::memory_order_acquire)) {
        chunk->bounds[slot] = bounds;
        chunk->state[slot].store(stateReady, std::memory_order_release);
    } else {
        // Another thread copies the same four numbers at this moment.
        while (chunk->state[slot].load(std::memory_order_acquire) != stateReady) {
            std::this_thread::yield();
        }
    }
    return chunk->bounds[slot];
}

} // namespace platform
