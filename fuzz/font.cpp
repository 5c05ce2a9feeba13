// A font file: its names, measures and glyphs, and a text laid out in it.

#include <cstddef>
#include <cstdint>
#include <string>

#include <d2d1.h>
#include <dwrite_2.h>
#include <oslayer/com_ptr.h>

#include <sys/mman.h>
#include <unistd.h>

#include "Input.h"
#include "fonts/FontCollection.h"
#include "fonts/FontFace.h"
#include "fonts/FontFamily.h"
#include "fonts/FontSet.h"

namespace {

using oslayer::com_ptr;

/// A file that lives in memory and has a path.
class MemoryFile {
public:
    MemoryFile(const std::uint8_t* data, std::size_t size) : m_handle(memfd_create("font", MFD_CLOEXEC)) {
        fuzz::require(m_handle >= 0 && write(m_handle, data, size) == static_cast<ssize_t>(size));
    }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile() { close(m_handle); }

    [[nodiscard]] std::string path() const { return "/proc/self/fd/" + std::to_string(m_handle); }

private:
    int m_handle;
};

void readStrings(IDWriteFont& font) {
    for (int id = 0; id <= 20; ++id) {
        com_ptr<IDWriteLocalizedStrings> strings;
        BOOL exists = FALSE;
        font.GetInformationalStrings(static_cast<DWRITE_INFORMATIONAL_STRING_ID>(id), &strings, &exists);
        WCHAR text[64] = {};
        if (exists != FALSE) {
            strings->GetString(0, text, 64);
            strings->GetLocaleName(0, text, 64);
        }
    }
}

void measure(platform::CFontFace& face) {
    fuzz::require(face.unitsPerEm() > 0);
    fuzz::require(face.metrics().capHeight > 0);
    for (unsigned glyph = 0; glyph < face.glyphCount() && glyph < 300; ++glyph) {
        const auto id = static_cast<std::uint16_t>(glyph);
        DWRITE_GLYPH_METRICS metrics;
        face.GetDesignGlyphMetrics(&id, 1, &metrics, FALSE);
        com_ptr<ID2D1Factory> factory;
        com_ptr<ID2D1PathGeometry> geometry;
        com_ptr<ID2D1GeometrySink> sink;
        fuzz::require(D2D1CreateFactory(D2D1_FACTORY_TYPE_MULTI_THREADED, &factory) == S_OK &&
                      factory->CreatePathGeometry(&geometry) == S_OK && geometry->Open(&sink) == S_OK);
        face.GetGlyphRunOutline(12.0F, &id, nullptr, nullptr, 1, glyph % 2 == 0 ? FALSE : TRUE, FALSE, sink);
        D2D1_RECT_F bounds{};
        sink->Close();
        geometry->GetBounds(nullptr, &bounds);
    }
}

void layOut(IDWriteFontCollection& collection, const std::wstring& family) {
    static IDWriteFactory* const factory = [] {
        IUnknown* created = nullptr;
        fuzz::require(DWriteCreateFactory(DWRITE_FACTORY_TYPE_SHARED, __uuidof(IDWriteFactory), &created) == S_OK);
        return static_cast<IDWriteFactory*>(created);
    }();
    static const std::wstring text = L"AVffi \x00E9x\x0301 HO\tI\n\x05D0\x05D1(\x0628\x0644\x0627) "
                                     L"\x0915\x094D\x0937\x093F \x1112\x1161\x11AB \x6F22\x3042\xD83D\xDE00";
    com_ptr<IDWriteTextFormat> format;
    com_ptr<IDWriteTextLayout> layout;
    if (factory->CreateTextFormat(family.c_str(), &collection, DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_STYLE_ITALIC,
                                  DWRITE_FONT_STRETCH_NORMAL, 10.0F, L"en-us", &format) != S_OK) {
        return;
    }
    fuzz::require(factory->CreateTextLayout(text.c_str(), static_cast<UINT32>(text.size()), format, 60.0F, 0.0F,
                                            &layout) == S_OK);
    DWRITE_TEXT_METRICS metrics{};
    DWRITE_OVERHANG_METRICS overhang{};
    if (layout->GetMetrics(&metrics) == S_OK) {
        fuzz::require(metrics.lineCount >= 2);
        layout->GetOverhangMetrics(&overhang);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const MemoryFile file(data, size);
    // The first faces of a collection file, and a named instance.
    platform::CFontCollection collection(
        platform::FontSet{{{file.path(), 0}, {file.path(), 1}, {file.path(), 1 << 16}}});
    for (const auto& family : collection.families()) {
        for (const auto& font : family->fonts()) {
            readStrings(*font);
            measure(font->face());
        }
        layOut(collection, family->names()[0].text);
    }
    return 0;
}
