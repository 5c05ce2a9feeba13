#pragma once

// HarfBuzz objects under unique ownership.

#include <hb-ot.h>
#include <hb.h>

#include <memory>

namespace platform {

struct HbRelease {
    void operator()(hb_blob_t* blob) const noexcept { hb_blob_destroy(blob); }
    void operator()(hb_face_t* face) const noexcept { hb_face_destroy(face); }
    void operator()(hb_font_t* font) const noexcept { hb_font_destroy(font); }
};

using HbBlobPtr = std::unique_ptr<hb_blob_t, HbRelease>;
using HbFacePtr = std::unique_ptr<hb_face_t, HbRelease>;
using HbFontPtr = std::unique_ptr<hb_font_t, HbRelease>;

} // namespace platform
