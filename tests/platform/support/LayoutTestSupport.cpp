#include "support/LayoutTestSupport.h"

#include <algorithm>
#include <limits>
#include <numeric>

#include <oslayer/com_ptr.h>

#include "fonts/FontCollection.h"
#include "fonts/FontFace.h"

namespace platform_test {

namespace {

std::wstring wide(std::u16string_view text) {
    return {text.begin(), text.end()};
}

/// The pattern of a question for several things: how many first, then the things.
template <class Element, class Ask>
std::vector<Element> askForAll(Ask ask) {
    UINT32 count = 0;
    ask(nullptr, 0, &count);
    std::vector<Element> elements(count);
    EXPECT_EQ(S_OK, ask(elements.data(), count, &count));
    return elements;
}

HRESULT refuse(void** object) {
    *object = nullptr;
    return E_NOINTERFACE;
}

} // namespace

IDWriteFactory& factory() {
    static IDWriteFactory* const shared = [] {
        IUnknown* created = nullptr;
        EXPECT_EQ(S_OK, DWriteCreateFactory(DWRITE_FACTORY_TYPE_SHARED, __uuidof(IDWriteFactory), &created));
        return static_cast<IDWriteFactory*>(created);
    }();
    return *shared;
}

Reference<IDWriteTextFormat> makeFormat(const FormatOptions& options) {
    IDWriteTextFormat* format = nullptr;
    EXPECT_EQ(S_OK, factory().CreateTextFormat(options.family.c_str(), nullptr, DWRITE_FONT_WEIGHT_NORMAL,
                                               DWRITE_FONT_STYLE_NORMAL, DWRITE_FONT_STRETCH_NORMAL, options.size,
                                               options.locale.c_str(), &format));
    EXPECT_EQ(S_OK, format->SetWordWrapping(options.wrapping));
    EXPECT_EQ(S_OK, format->SetReadingDirection(options.reading));
    return {format, false};
}

platform::CFontFace& regularFace(const std::string& family) {
    platform::CFontFamily* found =
        platform::CFontCollection::system().findFamily(std::wstring(family.begin(), family.end()));
    EXPECT_NE(nullptr, found) << family;
    return found->match(DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_STRETCH_NORMAL, DWRITE_FONT_STYLE_NORMAL).face();
}

Reference<IDWriteTextLayout> makeLayout(std::u16string_view text, float maxWidth, float maxHeight,
                                        const FormatOptions& options) {
    const Reference<IDWriteTextFormat> format = makeFormat(options);
    const std::wstring string = wide(text);
    IDWriteTextLayout* layout = nullptr;
    EXPECT_EQ(S_OK, factory().CreateTextLayout(string.c_str(), static_cast<UINT32>(string.size()), format.get(),
                                               maxWidth, maxHeight, &layout));
    return {layout, false};
}

Reference<IDWriteTextLayout1> laterOf(IDWriteTextLayout& layout) {
    void* later = nullptr;
    EXPECT_EQ(S_OK, layout.QueryInterface(__uuidof(IDWriteTextLayout1), &later));
    return {static_cast<IDWriteTextLayout1*>(later), false};
}

DWRITE_TEXT_METRICS metricsOf(IDWriteTextLayout& layout) {
    DWRITE_TEXT_METRICS metrics{};
    EXPECT_EQ(S_OK, layout.GetMetrics(&metrics));
    return metrics;
}

std::vector<DWRITE_LINE_METRICS> linesOf(IDWriteTextLayout& layout) {
    return askForAll<DWRITE_LINE_METRICS>([&](DWRITE_LINE_METRICS* buffer, UINT32 size, UINT32* count) {
        return layout.GetLineMetrics(buffer, size, count);
    });
}

std::vector<DWRITE_CLUSTER_METRICS> clustersOf(IDWriteTextLayout& layout) {
    return askForAll<DWRITE_CLUSTER_METRICS>([&](DWRITE_CLUSTER_METRICS* buffer, UINT32 size, UINT32* count) {
        return layout.GetClusterMetrics(buffer, size, count);
    });
}

std::vector<unsigned> lineLengths(IDWriteTextLayout& layout) {
    std::vector<unsigned> lengths;
    for (const DWRITE_LINE_METRICS& line : linesOf(layout)) {
        lengths.push_back(line.length);
    }
    return lengths;
}

std::vector<std::u16string> lineTexts(std::u16string_view text, IDWriteTextLayout& layout) {
    std::vector<std::u16string> texts;
    std::size_t start = 0;
    for (const unsigned length : lineLengths(layout)) {
        texts.emplace_back(text.substr(start, length));
        start += length;
    }
    return texts;
}

float DrawnCall::advance() const {
    return std::accumulate(advances.begin(), advances.end(), 0.0F);
}

std::vector<DrawnCall> Recorder::ofKind(DrawnCall::Kind kind) const {
    std::vector<DrawnCall> found;
    for (const DrawnCall& call : calls) {
        if (call.kind == kind) {
            found.push_back(call);
        }
    }
    return found;
}

HRESULT Recorder::QueryInterface(REFIID, void** object) {
    return refuse(object);
}

HRESULT Recorder::IsPixelSnappingDisabled(void*, BOOL* isDisabled) {
    *isDisabled = isSnappingDisabled;
    return snappingAnswer;
}

HRESULT Recorder::GetCurrentTransform(void*, DWRITE_MATRIX* matrix) {
    ++pixelQuestions;
    *matrix = transform;
    return transformAnswer;
}

HRESULT Recorder::GetPixelsPerDip(void*, FLOAT* pixels) {
    ++pixelQuestions;
    *pixels = pixelsPerDip;
    return pixelsAnswer;
}

HRESULT Recorder::record(DrawnCall call) {
    const HRESULT result = call.kind == failingKind ? answer : S_OK;
    calls.push_back(std::move(call));
    return result;
}

HRESULT Recorder::DrawGlyphRun(void*, FLOAT x, FLOAT y, DWRITE_MEASURING_MODE mode, const DWRITE_GLYPH_RUN* run,
                               const DWRITE_GLYPH_RUN_DESCRIPTION* description, IUnknown* effect) {
    EXPECT_NE(nullptr, run->fontFace);
    EXPECT_NE(nullptr, run->glyphIndices);
    EXPECT_NE(nullptr, run->glyphAdvances);
    EXPECT_NE(nullptr, run->glyphOffsets);
    EXPECT_NE(nullptr, description->clusterMap);
    EXPECT_NE(nullptr, description->string);
    DrawnCall call;
    call.kind = DrawnCall::GlyphRun;
    call.x = x;
    call.y = y;
    call.effect = effect;
    call.locale = description->localeName;
    call.face = run->fontFace;
    call.emSize = run->fontEmSize;
    call.bidiLevel = run->bidiLevel;
    call.isSideways = run->isSideways != FALSE;
    call.measuringMode = mode;
    call.textPosition = description->textPosition;
    call.string = description->string;
    call.text.assign(description->string, description->stringLength);
    call.glyphs.assign(run->glyphIndices, run->glyphIndices + run->glyphCount);
    call.advances.assign(run->glyphAdvances, run->glyphAdvances + run->glyphCount);
    call.offsets.assign(run->glyphOffsets, run->glyphOffsets + run->glyphCount);
    call.clusterMap.assign(description->clusterMap, description->clusterMap + description->stringLength);
    return record(std::move(call));
}

HRESULT Recorder::DrawUnderline(void*, FLOAT x, FLOAT y, const DWRITE_UNDERLINE* underline, IUnknown* effect) {
    DrawnCall call;
    call.kind = DrawnCall::Underline;
    call.x = x;
    call.y = y;
    call.effect = effect;
    call.locale = underline->localeName;
    call.width = underline->width;
    call.thickness = underline->thickness;
    call.offset = underline->offset;
    call.runHeight = underline->runHeight;
    call.reading = underline->readingDirection;
    call.flow = underline->flowDirection;
    call.measuringMode = underline->measuringMode;
    return record(std::move(call));
}

HRESULT Recorder::DrawStrikethrough(void*, FLOAT x, FLOAT y, const DWRITE_STRIKETHROUGH* strikethrough,
                                    IUnknown* effect) {
    DrawnCall call;
    call.kind = DrawnCall::Strikethrough;
    call.x = x;
    call.y = y;
    call.effect = effect;
    call.locale = strikethrough->localeName;
    call.width = strikethrough->width;
    call.thickness = strikethrough->thickness;
    call.offset = strikethrough->offset;
    call.reading = strikethrough->readingDirection;
    call.flow = strikethrough->flowDirection;
    call.measuringMode = strikethrough->measuringMode;
    return record(std::move(call));
}

HRESULT Recorder::DrawInlineObject(void*, FLOAT x, FLOAT y, IDWriteInlineObject* object, BOOL isSideways,
                                   BOOL isRightToLeft, IUnknown* effect) {
    DrawnCall call;
    call.kind = DrawnCall::Object;
    call.x = x;
    call.y = y;
    call.effect = effect;
    call.object = object;
    call.isSideways = isSideways != FALSE;
    call.isRightToLeft = isRightToLeft != FALSE;
    return record(std::move(call));
}

std::vector<DrawnCall> draw(IDWriteTextLayout& layout, float x, float y) {
    Recorder recorder;
    EXPECT_EQ(S_OK, layout.Draw(nullptr, &recorder, x, y));
    return recorder.calls;
}

std::vector<DrawnCall> drawnRuns(IDWriteTextLayout& layout, float x, float y) {
    Recorder recorder;
    EXPECT_EQ(S_OK, layout.Draw(nullptr, &recorder, x, y));
    return recorder.ofKind(DrawnCall::GlyphRun);
}

std::vector<std::wstring> runTexts(const std::vector<DrawnCall>& runs) {
    std::vector<std::wstring> texts;
    for (const DrawnCall& run : runs) {
        texts.push_back(run.text);
    }
    return texts;
}

std::vector<std::vector<PlacedRun>> placedRuns(IDWriteTextLayout& layout) {
    std::vector<std::vector<PlacedRun>> lines;
    float baseline = -std::numeric_limits<float>::infinity();
    for (const DrawnCall& run : drawnRuns(layout)) {
        if (run.glyphs.empty()) {
            continue;
        }
        if (run.y > baseline) {
            lines.emplace_back();
            baseline = run.y;
        }
        const bool isRightToLeft = run.bidiLevel % 2 == 1;
        const float left = isRightToLeft ? run.x - run.advance() : run.x;
        lines.back().push_back(
            {run.textPosition, {run.text.begin(), run.text.end()}, left, left + run.advance(), run.bidiLevel});
    }
    for (std::vector<PlacedRun>& line : lines) {
        std::stable_sort(line.begin(), line.end(),
                         [](const PlacedRun& a, const PlacedRun& b) { return a.left < b.left; });
    }
    return lines;
}

D2D1_RECT_F drawnInk(IDWriteTextLayout& layout) {
    static ID2D1Factory* const factory = [] {
        ID2D1Factory* made = nullptr;
        D2D1CreateFactory(D2D1_FACTORY_TYPE_SINGLE_THREADED, &made);
        return made;
    }();
    constexpr float infinity = std::numeric_limits<float>::infinity();
    D2D1_RECT_F ink{infinity, infinity, -infinity, -infinity};
    for (const DrawnCall& run : drawnRuns(layout)) {
        if (run.glyphs.empty()) {
            continue;
        }
        const std::vector<UINT16> glyphs(run.glyphs.begin(), run.glyphs.end());
        oslayer::com_ptr<ID2D1PathGeometry> path;
        oslayer::com_ptr<ID2D1GeometrySink> sink;
        EXPECT_EQ(S_OK, factory->CreatePathGeometry(&path));
        EXPECT_EQ(S_OK, path->Open(&sink));
        EXPECT_EQ(S_OK, run.face->GetGlyphRunOutline(run.emSize, glyphs.data(), run.advances.data(), run.offsets.data(),
                                                     static_cast<UINT32>(glyphs.size()), FALSE, run.bidiLevel % 2 == 1,
                                                     sink));
        EXPECT_EQ(S_OK, sink->Close());
        D2D1_RECT_F bounds{};
        EXPECT_EQ(S_OK, path->GetBounds(nullptr, &bounds));
        if (bounds.left <= bounds.right) {
            ink = {std::min(ink.left, bounds.left + run.x), std::min(ink.top, bounds.top + run.y),
                   std::max(ink.right, bounds.right + run.x), std::max(ink.bottom, bounds.bottom + run.y)};
        }
    }
    return ink;
}

std::vector<std::u16string> visualTexts(const std::vector<PlacedRun>& line) {
    std::vector<std::u16string> texts;
    for (const PlacedRun& run : line) {
        texts.push_back(run.text);
    }
    return texts;
}

float designWidth(const std::string& family, std::u16string_view text) {
    platform::CFontFace& face = regularFace(family);
    float width = 0.0F;
    for (const char16_t unit : text) {
        width += static_cast<float>(face.advance(face.nominalGlyph(unit)));
    }
    return width;
}

HRESULT Effect::QueryInterface(REFIID, void** object) {
    return refuse(object);
}

HRESULT Picture::QueryInterface(REFIID, void** object) {
    return refuse(object);
}

HRESULT Picture::Draw(void*, IDWriteTextRenderer*, FLOAT x, FLOAT y, BOOL, BOOL, IUnknown*) {
    ++drawings;
    drawnX = x;
    drawnY = y;
    return S_OK;
}

HRESULT Picture::GetMetrics(DWRITE_INLINE_OBJECT_METRICS* out) {
    *out = metrics;
    return metricsAnswer;
}

HRESULT Picture::GetOverhangMetrics(DWRITE_OVERHANG_METRICS* overhangs) {
    *overhangs = overhang;
    return overhangAnswer;
}

HRESULT Picture::GetBreakConditions(DWRITE_BREAK_CONDITION* conditionBefore, DWRITE_BREAK_CONDITION* conditionAfter) {
    *conditionBefore = before;
    *conditionAfter = after;
    return conditionsAnswer;
}

} // namespace platform_test
