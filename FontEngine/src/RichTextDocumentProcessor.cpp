#include <FontEngine/RichTextDocumentProcessor.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>

#include <Common/Guards.h>
#include <FontEngine/FontUtils.h>
#include <oslayer/checkHResult.h>

namespace fonts {

namespace {

constexpr double defaultTabStopWidth = 40.0;

std::wstring plainTextOf(const render::CRichTextParagraph& paragraph) {
    std::size_t length = 0;
    for (const render::SRichTextToken& token : paragraph.tokens)
        length += token.text.length();
    std::wstring plainText;
    plainText.reserve(length);
    for (const render::SRichTextToken& token : paragraph.tokens)
        plainText += token.text;
    return plainText;
}

oslayer::com_ptr<IDWriteFactory> sharedFactory() {
    oslayer::com_ptr<IDWriteFactory> pDWriteFactory;
    oslayer::com_ptr<IUnknown> pUnkFactory;
    OSLAYER_CHECK(DWriteCreateFactory(DWRITE_FACTORY_TYPE_SHARED, __uuidof(pDWriteFactory), &pUnkFactory));
    pDWriteFactory.queryFrom(pUnkFactory);
    return pDWriteFactory;
}

// What the layout starts from; each run gets its true font afterwards, so the
// capital height may stand in for the font size.
oslayer::com_ptr<IDWriteTextFormat> createDefaultFormat(const oslayer::com_ptr<IDWriteFactory>& pDWriteFactory,
                                                        const render::SRichTextToken& firstToken) {
    oslayer::com_ptr<IDWriteTextFormat> pDefaultTextFormat;
    // The call's source text is what a failure reports.
    // clang-format off
    OSLAYER_CHECK(pDWriteFactory->CreateTextFormat(
        firstToken.fontFamily.c_str(),
        nullptr,
        firstToken.fontStyle.bold ? DWRITE_FONT_WEIGHT_BOLD : DWRITE_FONT_WEIGHT_NORMAL,
        firstToken.fontStyle.italic ? DWRITE_FONT_STYLE_ITALIC : DWRITE_FONT_STYLE_NORMAL,
        DWRITE_FONT_STRETCH_NORMAL,
        firstToken.fontCapSize,
        L"",
        &pDefaultTextFormat));
    // clang-format on
    pDefaultTextFormat->SetTextAlignment(DWRITE_TEXT_ALIGNMENT_LEADING);
    pDefaultTextFormat->SetParagraphAlignment(DWRITE_PARAGRAPH_ALIGNMENT_NEAR);
    pDefaultTextFormat->SetWordWrapping(DWRITE_WORD_WRAPPING_NO_WRAP);
    return pDefaultTextFormat;
}

oslayer::com_ptr<IDWriteTextLayout> createLayout(const render::CRichTextParagraph& paragraph) {
    const oslayer::com_ptr<IDWriteFactory> pDWriteFactory = sharedFactory();
    const std::wstring plainText = plainTextOf(paragraph);
    const auto textLength = static_cast<UINT32>(plainText.length());
    if (paragraph.tokens.empty())
        throw std::out_of_range("invalid vector subscript");
    const oslayer::com_ptr<IDWriteTextFormat> pDefaultTextFormat =
        createDefaultFormat(pDWriteFactory, paragraph.tokens.front());
    oslayer::com_ptr<IDWriteTextLayout> pTextLayout;
    OSLAYER_CHECK(
        pDWriteFactory->CreateTextLayout(plainText.c_str(), textLength, pDefaultTextFormat, 0, 0, &pTextLayout));
    return pTextLayout;
}

void setWrapping(const oslayer::com_ptr<IDWriteTextLayout>& pTextLayout, bool noWrap) {
    if (noWrap) {
        OSLAYER_CHECK(pTextLayout->SetWordWrapping(DWRITE_WORD_WRAPPING_NO_WRAP));
    } else if (FAILED(pTextLayout->SetWordWrapping(DWRITE_WORD_WRAPPING_WHOLE_WORD))) {
        // A platform from before that value came.
        OSLAYER_CHECK(pTextLayout->SetWordWrapping(DWRITE_WORD_WRAPPING_WRAP));
    }
}

void setTabStops(const oslayer::com_ptr<IDWriteTextLayout>& pTextLayout, double tabStopWidth) {
    OSLAYER_CHECK(pTextLayout->SetIncrementalTabStop(static_cast<FLOAT>(tabStopWidth)));
}

// Cuts the tokens by font fallback, sets each piece's font on its range and says
// which range holds which piece. An empty piece takes one unit, so that no range
// is empty.
std::vector<SLayoutRun> setRuns(IDWriteTextLayout* pTextLayout, const render::CRichTextParagraph& paragraph,
                                IFontEngine* fontEngine) {
    std::vector<SLayoutRun> runs;
    runs.reserve(paragraph.tokens.size());
    std::uint32_t position = 0;
    for (const render::SRichTextToken& token : paragraph.tokens) {
        for (render::SRichTextToken& subToken : fontEngine->splitTokenByFallbackFonts(token)) {
            const auto length = std::max<std::uint32_t>(1, static_cast<std::uint32_t>(subToken.text.length()));
            const render::TextRange range{position, length};
            position += length;
            setGdiFontToTextLayout(pTextLayout, range, fontEngine, subToken.fontFamily,
                                   static_cast<double>(subToken.fontCapSize), subToken.fontStyle);
            runs.push_back({range, std::move(subToken)});
        }
    }
    return runs;
}

void setAlignments(const oslayer::com_ptr<IDWriteTextLayout>& pTextLayout,
                   const render::CRichTextParagraph& paragraph) {
    pTextLayout->SetTextAlignment(getTextAlignment(paragraph.alignment));
    pTextLayout->SetParagraphAlignment(getParagraphAlignment(paragraph.verticalAlignment));
}

bool isEmptyLine(const render::CRichTextParagraph& paragraph) {
    return paragraph.tokens.size() == 1 && paragraph.tokens.front().text.empty();
}

} // namespace

std::vector<SLayoutDesc> CRichTextDocumentProcessor::process(const render::CRichTextDocument& document,
                                                             IFontEngine* fontEngine) {
    std::vector<SLayoutDesc> layouts;
    const auto count = static_cast<std::int32_t>(document.paragraphs.size());
    if (count <= 0)
        return layouts;
    layouts.reserve(static_cast<std::size_t>(count));
    for (std::int32_t i = 0; i < count; ++i) {
        const render::CRichTextParagraph& paragraph = document.paragraphs.at(i);
        COMMON_CHECK(!paragraph.tokens.empty());
        const double tabStopWidth = document.tabStopWidth;
        if (isEmptyLine(paragraph)) {
            // A layout of no characters has no height of its own font.
            render::CRichTextParagraph spaced = paragraph;
            spaced.tokens.front().text = L" ";
            layouts.push_back(process(spaced, fontEngine, tabStopWidth));
        } else {
            layouts.push_back(process(paragraph, fontEngine, tabStopWidth));
        }
    }
    return layouts;
}

SLayoutDesc CRichTextDocumentProcessor::process(const render::CRichTextParagraph& paragraph, IFontEngine* fontEngine,
                                                std::optional<double> tabStopWidth) {
    oslayer::com_ptr<IDWriteTextLayout> pTextLayout = createLayout(paragraph);
    setWrapping(pTextLayout, paragraph.noWrap);
    setTabStops(pTextLayout, tabStopWidth.value_or(defaultTabStopWidth));
    std::vector<SLayoutRun> runs = setRuns(pTextLayout, paragraph, fontEngine);
    setAlignments(pTextLayout, paragraph);
    return {std::move(pTextLayout), std::move(runs)};
}

} // namespace fonts
