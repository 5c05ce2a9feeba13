#include "TextMetrics.h"

#include <algorithm>
#include <utility>

#include <Common/Guards.h>
#include <FontEngine/FontUtils.h>
#include <FontEngine/RichTextDocumentProcessor.h>
#include <oslayer/checkHResult.h>
#include <render/RichTextDocument.h>

#include "TextToGlyphRunRenderer.h"

namespace fonts {

namespace {

constexpr size_t rememberedDocuments = 10000;
constexpr double defaultTabStopWidth = 40.0;

// The layout box of a layout whose top is stacked at `y` (y down). Sums are the
// platform's single precision, widened afterwards.
MbRect layoutBox(const DWRITE_TEXT_METRICS& metrics, float y) {
    MbRect box;
    box.Set(metrics.left, -(metrics.height + metrics.top + y), metrics.width + metrics.left, -(y + metrics.top));
    return box;
}

// A layout holds most once it was asked something. Whoever takes each of many out of their list gives it back before
// the next one is asked.
SLayoutDesc take(SLayoutDesc& layout) {
    return std::move(layout);
}

// A limit of 0 or less leaves the layout's own limit in place, and so does a
// value that the layout refuses.
void limitLayout(const oslayer::com_ptr<IDWriteTextLayout>& pLayout, double maxWidth, double maxHeight) {
    if (maxWidth > 0)
        pLayout->SetMaxWidth(static_cast<float>(maxWidth));
    if (maxHeight > 0)
        pLayout->SetMaxHeight(static_cast<float>(maxHeight));
}

// The first run whose range contains the position. The processor's ranges are
// never empty and follow each other without gaps, so it is the only one.
const SLayoutRun& runAtPosition(const std::vector<SLayoutRun>& runs, uint32_t textPosition) {
    const auto position = static_cast<int32_t>(textPosition);
    const auto run = std::partition_point(runs.begin(), runs.end(), [position](const SLayoutRun& candidate) {
        return static_cast<int32_t>(candidate.range.startPosition + candidate.range.length) <= position;
    });
    COMMON_CHECK(run != runs.end() && static_cast<int32_t>(run->range.startPosition) <= position);
    return *run;
}

} // namespace

std::unique_ptr<ITextMetrics> createTextMetricsService(IFontEngine* fontEngine) {
    return std::make_unique<CTextMetrics>(fontEngine);
}

CTextMetrics::CTextMetrics(IFontEngine* fontEngine)
    : m_fontEngine(fontEngine),
      m_rectMemoizer(
          rememberedDocuments,
          [this](const render::CRichTextDocument& document) { return computeDocumentRect(document); },
          [](const render::CRichTextDocument& document) {
              return static_cast<size_t>(render::hashDocumentByParagraphs(document));
          }) {
    if (!m_d2dFactory) {
        D2D1_FACTORY_OPTIONS options = {};
        options.debugLevel = D2D1_DEBUG_LEVEL_NONE;
        const HRESULT hr = D2D1CreateFactory(D2D1_FACTORY_TYPE_MULTI_THREADED, __uuidof(ID2D1Factory), &options,
                                             reinterpret_cast<void**>(&m_d2dFactory));
        OSLAYER_CHECK(hr);
    }

    oslayer::com_ptr<IUnknown> pUnkFactory;
    OSLAYER_CHECK(DWriteCreateFactory(DWRITE_FACTORY_TYPE_SHARED, __uuidof(m_dwFactory), &pUnkFactory));
    m_dwFactory.queryFrom(pUnkFactory);
    // Without a factory there is no service: the call through the empty pointer
    // ends the process. Without a collection formats take the platform's own.
    if (!m_pFontCollection)
        m_dwFactory->GetSystemFontCollection(&m_pFontCollection, FALSE);
}

oslayer::com_ptr<IDWriteTextFormat> CTextMetrics::createTextFormat(const std::wstring& fontFamily, float fontSize,
                                                                   render::SRichTextFontStyle fontStyle) const {
    oslayer::com_ptr<IDWriteTextFormat> pTextFormat;
    // clang-format off
    OSLAYER_CHECK(m_dwFactory->CreateTextFormat(
        fontFamily.c_str(),
        m_pFontCollection,
        fontStyle.bold ? DWRITE_FONT_WEIGHT_BOLD : DWRITE_FONT_WEIGHT_NORMAL,
        fontStyle.italic ? DWRITE_FONT_STYLE_ITALIC : DWRITE_FONT_STYLE_NORMAL,
        DWRITE_FONT_STRETCH_NORMAL,
        fontSize,
        L"",
        &pTextFormat));
    // clang-format on
    pTextFormat->SetTextAlignment(DWRITE_TEXT_ALIGNMENT_LEADING);
    pTextFormat->SetParagraphAlignment(DWRITE_PARAGRAPH_ALIGNMENT_NEAR);
    pTextFormat->SetWordWrapping(DWRITE_WORD_WRAPPING_NO_WRAP);
    return pTextFormat;
}

oslayer::com_ptr<IDWriteTextLayout> CTextMetrics::createTextLayout(const std::wstring& text,
                                                                   const std::wstring& fontFamily, float fontSize,
                                                                   std::optional<double> givenTabStopWidth,
                                                                   render::SRichTextFontStyle fontStyle) const {
    const oslayer::com_ptr<IDWriteTextFormat> pTextFormat = createTextFormat(fontFamily, fontSize, fontStyle);
    oslayer::com_ptr<IDWriteTextLayout> pTextLayout;
    OSLAYER_CHECK(m_dwFactory->CreateTextLayout(text.c_str(), static_cast<UINT32>(text.length()), pTextFormat, 0, 0,
                                                &pTextLayout));
    OSLAYER_CHECK(pTextLayout->SetWordWrapping(DWRITE_WORD_WRAPPING_NO_WRAP));

    // Ranges have the pieces' exact lengths here, not the processor's minimum of 1.
    uint32_t position = 0;
    for (const render::SRichTextToken& piece :
         m_fontEngine->splitTokenByFallbackFonts(render::makeToken(text, fontFamily, fontSize, fontStyle))) {
        const auto length = static_cast<uint32_t>(piece.text.length());
        setGdiFontToTextLayout(pTextLayout, render::TextRange{position, length}, m_fontEngine, piece.fontFamily,
                               piece.fontCapSize, piece.fontStyle);
        position += length;
    }

    OSLAYER_CHECK(pTextLayout->SetTextAlignment(DWRITE_TEXT_ALIGNMENT_LEADING));
    OSLAYER_CHECK(pTextLayout->SetParagraphAlignment(DWRITE_PARAGRAPH_ALIGNMENT_NEAR));
    const double tabStopWidth = givenTabStopWidth.value_or(defaultTabStopWidth);
    OSLAYER_CHECK(pTextLayout->SetIncrementalTabStop(static_cast<FLOAT>(tabStopWidth)));
    return pTextLayout;
}

MbRect CTextMetrics::computeDocumentRect(const render::CRichTextDocument& document) const {
    MbRect result;
    float y = 0.0f;
    for (SLayoutDesc& waiting : CRichTextDocumentProcessor::process(document, m_fontEngine)) {
        const SLayoutDesc layout = take(waiting);
        layout.pObject->SetWordWrapping(DWRITE_WORD_WRAPPING_NO_WRAP);
        layout.pObject->SetTextAlignment(DWRITE_TEXT_ALIGNMENT_LEADING);
        layout.pObject->SetParagraphAlignment(DWRITE_PARAGRAPH_ALIGNMENT_NEAR);
        DWRITE_TEXT_METRICS metrics = {};
        OSLAYER_CHECK(layout.pObject->GetMetrics(&metrics));
        result |= layoutBox(metrics, y);
        y += metrics.height;
    }
    return result;
}

MbRect CTextMetrics::getTextRect(const std::wstring& text, const std::wstring& fontFamily, float fontCapSize,
                                 render::SRichTextFontStyle fontStyle) const {
    return getDocumentRect(render::makeSingleParagraphDocument(text, fontFamily, fontCapSize, fontStyle));
}

MbRect CTextMetrics::getDocumentRect(const render::CRichTextDocument& document) const {
    return m_rectMemoizer.get(document);
}

std::vector<MbRect> CTextMetrics::getParagraphRects(const render::CRichTextDocument& document, double maxWidth,
                                                    double maxHeight) const {
    std::vector<SLayoutDesc> layouts = CRichTextDocumentProcessor::process(document, m_fontEngine);
    std::vector<MbRect> result;
    result.reserve(layouts.size());
    float y = 0.0f;
    for (SLayoutDesc& waiting : layouts) {
        const SLayoutDesc layout = take(waiting);
        const oslayer::com_ptr<IDWriteTextLayout>& pLayout = layout.pObject;
        limitLayout(pLayout, maxWidth, maxHeight);
        DWRITE_TEXT_METRICS layoutMetrics = {};
        OSLAYER_CHECK(pLayout->GetMetrics(&layoutMetrics));
        result.push_back(layoutBox(layoutMetrics, y));
        y += layoutMetrics.height;
    }
    return result;
}

MbRect CTextMetrics::getTextGeometryRect(const std::wstring& text, const std::wstring& fontFamily, float fontCapSize,
                                         std::optional<double> tabStopWidth,
                                         render::SRichTextFontStyle fontStyle) const {
    const oslayer::com_ptr<IDWriteTextLayout> pTextLayout =
        createTextLayout(text, fontFamily, fontCapSize, tabStopWidth, fontStyle);
    CLocalTextToGlyphRunRenderer textGeometryGetter(m_d2dFactory);
    OSLAYER_CHECK(pTextLayout->Draw(NULL, &textGeometryGetter, 0, 0));
    return textGeometryGetter.bounds();
}

MbRect CTextMetrics::getDocumentGeometryRect(const render::CRichTextDocument& document, double maxWidth,
                                             double maxHeight) const {
    MbRect result;
    for (const MbRect& rect : getParagraphGeometryRects(document, maxWidth, maxHeight))
        result |= rect;
    return result;
}

std::vector<MbRect> CTextMetrics::getParagraphGeometryRects(const render::CRichTextDocument& document, double maxWidth,
                                                            double maxHeight) const {
    std::vector<SLayoutDesc> layouts = CRichTextDocumentProcessor::process(document, m_fontEngine);
    std::vector<MbRect> result;
    result.reserve(layouts.size());
    D2D1_POINT_2F paragraphOrigin = {0.0f, 0.0f};
    for (SLayoutDesc& waiting : layouts) {
        const SLayoutDesc layout = take(waiting);
        const oslayer::com_ptr<IDWriteTextLayout>& pLayout = layout.pObject;
        limitLayout(pLayout, maxWidth, maxHeight);
        CLocalTextToGlyphRunRenderer textGeometryGetter(m_d2dFactory);
        OSLAYER_CHECK(pLayout->Draw(NULL, &textGeometryGetter, paragraphOrigin.x, paragraphOrigin.y));
        result.push_back(textGeometryGetter.bounds());
        DWRITE_TEXT_METRICS textMetrics = {};
        OSLAYER_CHECK(pLayout->GetMetrics(&textMetrics));
        paragraphOrigin.y += textMetrics.height;
    }
    return result;
}

double CTextMetrics::getTextBaseline(const std::wstring& text, const std::wstring& fontFamily, float fontCapSize,
                                     std::optional<double> tabStopWidth, render::SRichTextFontStyle fontStyle) const {
    const oslayer::com_ptr<IDWriteTextLayout> pTextLayout =
        createTextLayout(text, fontFamily, fontCapSize, tabStopWidth, fontStyle);
    CLocalTextToGlyphRunRenderer textGeometryGetter(m_d2dFactory);
    OSLAYER_CHECK(pTextLayout->Draw(NULL, &textGeometryGetter, 0, 0));
    const std::vector<SGlyphRunDesc>& runs = textGeometryGetter.glyphRuns();
    return runs.empty() ? 0.0 : runs.front().baselineOrigin.y;
}

SFontMetrics CTextMetrics::getFontMetrics(const std::wstring& fontFamily, double fontCapSize, bool italic,
                                          bool bold) const {
    IFont* font = m_fontEngine->getFont(fontFamily, weightFromBool(bold), styleFromBool(italic));
    // Sizes of text are floats: the metrics are those of the size text would have.
    return font->metricsByCapitalLetterSize(static_cast<float>(fontCapSize));
}

std::vector<SGlyphRunDesc>
CTextMetrics::getGlyphRuns(const render::CRichTextParagraph& paragraph, double maxWidth, double maxHeight,
                           std::optional<double> tabStopWidth,
                           std::vector<boost::intrusive_ptr<MbRegion>>& decorationRegions) const {
    const SLayoutDesc layout = CRichTextDocumentProcessor::process(paragraph, m_fontEngine, tabStopWidth);
    const oslayer::com_ptr<IDWriteTextLayout>& pLayout = layout.pObject;
    limitLayout(pLayout, maxWidth, maxHeight);

    CLocalTextToGlyphRunRenderer glyphRunGetter(m_d2dFactory);
    const D2D1_POINT_2F paragraphOrigin = {0.0f, 0.0f};
    OSLAYER_CHECK(pLayout->Draw(NULL, &glyphRunGetter, paragraphOrigin.x, paragraphOrigin.y));
    decorationRegions.insert(decorationRegions.end(), glyphRunGetter.decorationRegions().begin(),
                             glyphRunGetter.decorationRegions().end());

    std::vector<SGlyphRunDesc> result = std::move(glyphRunGetter).glyphRuns();
    for (SGlyphRunDesc& run : result) {
        const render::SRichTextToken& origin = runAtPosition(layout.runs, run.textPosition).token;
        run.token.text = run.text;
        run.token.fontFamily = origin.fontFamily;
        run.token.fontCapSize = origin.fontCapSize;
        run.token.color = origin.color;
        run.token.fontStyle = origin.fontStyle;
    }
    return result;
}

} // namespace fonts
