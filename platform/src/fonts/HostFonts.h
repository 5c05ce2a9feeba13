#pragma once

#include <dwrite.h>

namespace platform {

/// What a factory makes of a host's files. Arguments and results are those of the operations of IDWriteFactory; the
/// loaders are known to the factory. Both throw what they cannot get memory for.
HRESULT createFontFace(DWRITE_FONT_FACE_TYPE type, IDWriteFontFile& file, UINT32 index,
                       DWRITE_FONT_SIMULATIONS simulations, IDWriteFontFace** fontFace);
HRESULT createCollection(IDWriteFactory& factory, IDWriteFontCollectionLoader& loader, const void* key, UINT32 keySize,
                         IDWriteFontCollection** fontCollection);

} // namespace platform
