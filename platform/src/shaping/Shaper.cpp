#include "shaping/Shaper.h"

#include <memory>
#include <new>

#include "fonts/FontFace.h"

namespace platform {

namespace {

struct DestroyBuffer {
    void operator()(hb_buffer_t* buffer) const noexcept { hb_buffer_destroy(buffer); }
};

/// Outside Unicode, so that no font can have a glyph for it.
constexpr hb_codepoint_t noCharacter = 0x110000;

using BufferPtr = std::unique_ptr<hb_buffer_t, DestroyBuffer>;

/// A buffer takes some 60 bytes a character and never shrinks: one that a longer run has filled is not kept.
constexpr std::size_t longestKeptRun = 10'000;

BufferPtr makeBuffer() {
    BufferPtr created(hb_buffer_create());
    hb_buffer_set_replacement_codepoint(created.get(), noCharacter);
    return created;
}

/// The thread's buffer, emptied. The first shaping makes it.
hb_buffer_t* threadsBuffer() {
    thread_local const BufferPtr buffer = makeBuffer();
    hb_buffer_clear_contents(buffer.get());
    return buffer.get();
}

void fill(hb_buffer_t* buffer, const ShapeRequest& request) {
    hb_buffer_add_utf16(buffer, reinterpret_cast<const std::uint16_t*>(request.text.data()),
                        static_cast<int>(request.text.size()), static_cast<unsigned>(request.start),
                        static_cast<int>(request.length));
    hb_buffer_set_direction(buffer, request.isRightToLeft ? HB_DIRECTION_RTL : HB_DIRECTION_LTR);
    hb_buffer_set_script(buffer, request.script);
    hb_buffer_set_language(buffer, request.language);
    hb_buffer_set_flags(buffer,
                        request.asksUnsafeToConcat ? HB_BUFFER_FLAG_PRODUCE_UNSAFE_TO_CONCAT : HB_BUFFER_FLAG_DEFAULT);
}

/// The features without kerning. Of two that name the same, the later holds.
std::vector<hb_feature_t> withoutKerning(std::span<const hb_feature_t> features) {
    std::vector<hb_feature_t> all{{HB_TAG('k', 'e', 'r', 'n'), 0, HB_FEATURE_GLOBAL_START, HB_FEATURE_GLOBAL_END}};
    all.insert(all.end(), features.begin(), features.end());
    return all;
}

void shapeBuffer(CFontFace& face, hb_buffer_t* buffer, std::span<const hb_feature_t> features) {
    hb_shape(face.shapingFont(), buffer, features.data(), static_cast<unsigned>(features.size()));
}

void read(hb_buffer_t* buffer, bool isRightToLeft, ShapedRun& run) {
    if (isRightToLeft) {
        hb_buffer_reverse(buffer);
    }
    unsigned count = 0;
    const hb_glyph_info_t* infos = hb_buffer_get_glyph_infos(buffer, &count);
    const hb_glyph_position_t* positions = hb_buffer_get_glyph_positions(buffer, &count);
    run.resize(count);
    for (unsigned i = 0; i < count; ++i) {
        ShapedGlyph& glyph = run[i];
        glyph.cluster = infos[i].cluster;
        glyph.advance = positions[i].x_advance;
        glyph.advanceOffset = isRightToLeft ? -positions[i].x_offset : positions[i].x_offset;
        glyph.ascenderOffset = positions[i].y_offset;
        glyph.glyph = static_cast<std::uint16_t>(infos[i].codepoint);
        const unsigned flags = hb_glyph_info_get_glyph_flags(&infos[i]);
        glyph.isUnsafeToBreak = (flags & HB_GLYPH_FLAG_UNSAFE_TO_BREAK) != 0;
        glyph.isUnsafeToConcat = (flags & HB_GLYPH_FLAG_UNSAFE_TO_CONCAT) != 0;
    }
}

} // namespace

void shape(const ShapeRequest& request, ShapedRun& run) {
    const BufferPtr own = request.length > longestKeptRun ? makeBuffer() : nullptr;
    hb_buffer_t* buffer = own ? own.get() : threadsBuffer();
    fill(buffer, request);
    if (request.isKerned) {
        shapeBuffer(*request.face, buffer, request.features);
    } else {
        shapeBuffer(*request.face, buffer, withoutKerning(request.features));
    }
    if (hb_buffer_allocation_successful(buffer) == 0) {
        throw std::bad_alloc();
    }
    read(buffer, request.isRightToLeft, run);
}

} // namespace platform
