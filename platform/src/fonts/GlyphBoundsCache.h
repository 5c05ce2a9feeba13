#pragma once

#include "fonts/GlyphBounds.h"

#include <atomic>
#include <cstdint>
#include <vector>

namespace platform {

/// The bounds of a face's glyphs, each computed when first asked for. Reading what is
/// there takes two atomic loads; threads that miss at once may compute the same bounds
/// twice, and one result stays.
class GlyphBoundsCache {
public:
    explicit GlyphBoundsCache(unsigned glyphCount);
    ~GlyphBoundsCache();

    /// The bounds of `glyph`, which must be below the glyph count.
    template <typename Compute>
    const GlyphBounds& get(std::uint16_t glyph, Compute&& compute) {
        if (const GlyphBounds* known = find(glyph)) {
            return *known;
        }
        return publish(glyph, compute());
    }

private:
    static constexpr unsigned chunkSize = 64;

    struct Chunk {
        GlyphBounds bounds[chunkSize];
        std::atomic<std::uint8_t> state[chunkSize] = {};
    };

    const GlyphBounds* find(std::uint16_t glyph) const noexcept {
        const Chunk* chunk = m_chunks[glyph / chunkSize].load(std::memory_order_acquire);
        const unsigned slot = glyph % chunkSize;
        const bool ready = chunk != nullptr && chunk->state[slot].load(std::memory_order_acquire) == stateReady;
        return ready ? &chunk->bounds[slot] : nullptr;
    }
    const GlyphBounds& publish(std::uint16_t glyph, const GlyphBounds& bounds);

    static constexpr std::uint8_t stateEmpty = 0;
    static constexpr std::uint8_t stateWriting = 1;
    static constexpr std::uint8_t stateReady = 2;

    std::vector<std::atomic<Chunk*>> m_chunks;
};

} // namespace platform
