#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <d2d1.h>
#include <dwrite_2.h>
#include <gtest/gtest.h>

#include "com/Reference.h"

namespace platform {
class CFontFace;
}

namespace platform_test {

using platform::Reference;

/// The process's factory.
IDWriteFactory& factory();

struct FormatOptions {
    std::wstring family = L"DejaVu Sans";
    float size = 20.0F;
    std::wstring locale = L"en-us";
    DWRITE_WORD_WRAPPING wrapping = DWRITE_WORD_WRAPPING_WRAP;
    DWRITE_READING_DIRECTION reading = DWRITE_READING_DIRECTION_LEFT_TO_RIGHT;
};

Reference<IDWriteTextFormat> makeFormat(const FormatOptions& options = {});

/// The face of a family's regular font; not counted for the caller.
platform::CFontFace& regularFace(const std::string& family);

/// A layout of UTF-16 text.
Reference<IDWriteTextLayout> makeLayout(std::u16string_view text, float maxWidth = 0.0F, float maxHeight = 0.0F,
                                        const FormatOptions& options = {});

/// The layout with the operations of the second generation.
Reference<IDWriteTextLayout1> laterOf(IDWriteTextLayout& layout);

DWRITE_TEXT_METRICS metricsOf(IDWriteTextLayout& layout);
std::vector<DWRITE_LINE_METRICS> linesOf(IDWriteTextLayout& layout);
std::vector<DWRITE_CLUSTER_METRICS> clustersOf(IDWriteTextLayout& layout);
/// The text positions of every line.
std::vector<unsigned> lineLengths(IDWriteTextLayout& layout);
/// The text of every line.
std::vector<std::u16string> lineTexts(std::u16string_view text, IDWriteTextLayout& layout);

/// One call that a layout made to its renderer.
struct DrawnCall {
    enum Kind { GlyphRun, Underline, Strikethrough, Object };
    Kind kind = GlyphRun;
    float x = 0.0F;
    float y = 0.0F;
    IUnknown* effect = nullptr;
    std::wstring locale;
    // Of a glyph run.
    IDWriteFontFace* face = nullptr;
    float emSize = 0.0F;
    unsigned bidiLevel = 0;
    bool isSideways = false;
    int measuringMode = 0;
    unsigned textPosition = 0;
    std::wstring text;
    const WCHAR* string = nullptr;
    std::vector<unsigned> glyphs;
    std::vector<float> advances;
    std::vector<DWRITE_GLYPH_OFFSET> offsets;
    std::vector<unsigned> clusterMap;
    // Of a bar.
    float width = 0.0F;
    float thickness = 0.0F;
    float offset = 0.0F;
    float runHeight = 0.0F;
    DWRITE_READING_DIRECTION reading = DWRITE_READING_DIRECTION_LEFT_TO_RIGHT;
    DWRITE_FLOW_DIRECTION flow = DWRITE_FLOW_DIRECTION_TOP_TO_BOTTOM;
    // Of an object.
    IDWriteInlineObject* object = nullptr;
    bool isRightToLeft = false;

    [[nodiscard]] float advance() const;
};

/// Remembers what it is told to draw, and answers as it is told to answer.
class Recorder final : public IDWriteTextRenderer {
public:
    std::vector<DrawnCall> calls;
    BOOL isSnappingDisabled = TRUE;
    DWRITE_MATRIX transform{1, 0, 0, 1, 0, 0};
    FLOAT pixelsPerDip = 1.0F;
    HRESULT snappingAnswer = S_OK;
    HRESULT transformAnswer = S_OK;
    HRESULT pixelsAnswer = S_OK;
    /// The answer to calls of `failingKind` and, for all kinds, the number of questions about pixels.
    DrawnCall::Kind failingKind = DrawnCall::GlyphRun;
    HRESULT answer = S_OK;
    int pixelQuestions = 0;

    [[nodiscard]] std::vector<DrawnCall> ofKind(DrawnCall::Kind kind) const;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE IsPixelSnappingDisabled(void* context, BOOL* isDisabled) override;
    HRESULT STDMETHODCALLTYPE GetCurrentTransform(void* context, DWRITE_MATRIX* matrix) override;
    HRESULT STDMETHODCALLTYPE GetPixelsPerDip(void* context, FLOAT* pixels) override;
    HRESULT STDMETHODCALLTYPE DrawGlyphRun(void* context, FLOAT x, FLOAT y, DWRITE_MEASURING_MODE mode,
                                           const DWRITE_GLYPH_RUN* run, const DWRITE_GLYPH_RUN_DESCRIPTION* description,
                                           IUnknown* effect) override;
    HRESULT STDMETHODCALLTYPE DrawUnderline(void* context, FLOAT x, FLOAT y, const DWRITE_UNDERLINE* underline,
                                            IUnknown* effect) override;
    HRESULT STDMETHODCALLTYPE DrawStrikethrough(void* context, FLOAT x, FLOAT y,
                                                const DWRITE_STRIKETHROUGH* strikethrough, IUnknown* effect) override;
    HRESULT STDMETHODCALLTYPE DrawInlineObject(void* context, FLOAT x, FLOAT y, IDWriteInlineObject* object,
                                               BOOL isSideways, BOOL isRightToLeft, IUnknown* effect) override;

private:
    HRESULT record(DrawnCall call);
};

/// What `layout` draws at an origin, unsnapped.
std::vector<DrawnCall> draw(IDWriteTextLayout& layout, float x = 0.0F, float y = 0.0F);
std::vector<DrawnCall> drawnRuns(IDWriteTextLayout& layout, float x = 0.0F, float y = 0.0F);
/// The texts of the runs in the order in which they are drawn.
std::vector<std::wstring> runTexts(const std::vector<DrawnCall>& runs);

/// A run with glyphs as it stands on its line.
struct PlacedRun {
    unsigned start = 0;
    std::u16string text;
    float left = 0.0F;
    float right = 0.0F;
    unsigned level = 0;
};
/// The runs with glyphs of every line that has some, each line's from left to right.
std::vector<std::vector<PlacedRun>> placedRuns(IDWriteTextLayout& layout);

/// The ink of all drawn glyphs, from their outlines; left > right without ink.
D2D1_RECT_F drawnInk(IDWriteTextLayout& layout);

/// Their texts.
std::vector<std::u16string> visualTexts(const std::vector<PlacedRun>& line);

/// The advances of the characters of `text` in a family's regular font, in font units: what the text takes at the
/// font's design size where nothing is kerned, joined or composed.
float designWidth(const std::string& family, std::u16string_view text);

/// An object with an identity and a count.
class Effect final : public IUnknown {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return ++count; }
    ULONG STDMETHODCALLTYPE Release() override { return --count; }
    ULONG count = 1;
};

/// An inline object of a given size.
class Picture final : public IDWriteInlineObject {
public:
    DWRITE_INLINE_OBJECT_METRICS metrics{30.0F, 40.0F, 25.0F, FALSE};
    DWRITE_BREAK_CONDITION before = DWRITE_BREAK_CONDITION_NEUTRAL;
    DWRITE_BREAK_CONDITION after = DWRITE_BREAK_CONDITION_NEUTRAL;
    DWRITE_OVERHANG_METRICS overhang{};
    HRESULT metricsAnswer = S_OK;
    HRESULT overhangAnswer = S_OK;
    HRESULT conditionsAnswer = S_OK;
    int drawings = 0;
    float drawnX = 0.0F;
    float drawnY = 0.0F;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return ++count; }
    ULONG STDMETHODCALLTYPE Release() override { return --count; }
    HRESULT STDMETHODCALLTYPE Draw(void* context, IDWriteTextRenderer* renderer, FLOAT x, FLOAT y, BOOL isSideways,
                                   BOOL isRightToLeft, IUnknown* effect) override;
    HRESULT STDMETHODCALLTYPE GetMetrics(DWRITE_INLINE_OBJECT_METRICS* out) override;
    HRESULT STDMETHODCALLTYPE GetOverhangMetrics(DWRITE_OVERHANG_METRICS* overhangs) override;
    HRESULT STDMETHODCALLTYPE GetBreakConditions(DWRITE_BREAK_CONDITION* conditionBefore,
                                                 DWRITE_BREAK_CONDITION* conditionAfter) override;
    ULONG count = 1;
};

} // namespace platform_test
