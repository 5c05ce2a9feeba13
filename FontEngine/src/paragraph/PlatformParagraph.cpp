#include "PlatformParagraph.h"

#include <dwrite_1.h>

#include <stdexcept>
#include <string>

#include <FontEngine/RichTextDocumentProcessor.h>
#include <oslayer/checkHResult.h>

#include "ClusterTable.h"
#include "LocaleFonts.h"

namespace fonts {

namespace {

DWRITE_TEXT_RANGE rangeOf(const render::TextRange& range) {
    return {range.startPosition, range.length};
}

// Spacing and kerning came to text layouts with their second generation.
oslayer::com_ptr<IDWriteTextLayout1> laterLayout(const oslayer::com_ptr<IDWriteTextLayout>& pLayout) {
    oslayer::com_ptr<IDWriteTextLayout1> pLater;
    pLater.queryFrom(pLayout);
    if (!pLater) {
        throw std::runtime_error("CParagraphLayout: this system's text layouts know no width factor, tracking and "
                                 "kerning: leave them out of runFormats");
    }
    return pLater;
}

oslayer::com_ptr<IDWriteFactory> sharedFactory() {
    oslayer::com_ptr<IUnknown> pUnknown;
    OSLAYER_CHECK(DWriteCreateFactory(DWRITE_FACTORY_TYPE_SHARED, __uuidof(IDWriteFactory), &pUnknown));
    oslayer::com_ptr<IDWriteFactory> pFactory;
    pFactory.queryFrom(pUnknown);
    return pFactory;
}

void setFeatures(const oslayer::com_ptr<IDWriteTextLayout>& pLayout, const std::vector<SFontFeature>& features,
                 const render::TextRange& range) {
    oslayer::com_ptr<IDWriteTypography> pTypography;
    OSLAYER_CHECK(sharedFactory()->CreateTypography(&pTypography));
    for (const SFontFeature& feature : features) {
        UINT32 tag = 0;
        for (std::size_t i = feature.tag.size(); i-- > 0;) {
            tag = tag << 8 | static_cast<unsigned char>(feature.tag[i]);
        }
        OSLAYER_CHECK(pTypography->AddFontFeature({static_cast<DWRITE_FONT_FEATURE_TAG>(tag), feature.value}));
    }
    OSLAYER_CHECK(pLayout->SetTypography(pTypography, rangeOf(range)));
}

void setRunFormats(const oslayer::com_ptr<IDWriteTextLayout>& pLayout, const CTokenFormats& formats) {
    for (std::uint32_t token = 0; token < formats.count(); ++token) {
        const SRunFormat& format = formats.format(token);
        const render::TextRange range = formats.range(token);
        if (range.length == 0) {
            continue;
        }
        if (!format.features.empty()) {
            setFeatures(pLayout, format.features, range);
        }
        if (!format.kerning) {
            OSLAYER_CHECK(laterLayout(pLayout)->SetPairKerning(FALSE, rangeOf(range)));
        }
        if (format.tracking != 0.0 && !formats.hasOwnFactors()) {
            const auto tracking = static_cast<FLOAT>(format.tracking / formats.commonFactor());
            OSLAYER_CHECK(laterLayout(pLayout)->SetCharacterSpacing(0.0F, tracking, 0.0F, rangeOf(range)));
        }
    }
}

void setWrapping(const oslayer::com_ptr<IDWriteTextLayout>& pLayout, EWrapping wrapping) {
    switch (wrapping) {
    case EWrapping::AsParagraph:
        break;
    case EWrapping::NoWrap:
        OSLAYER_CHECK(pLayout->SetWordWrapping(DWRITE_WORD_WRAPPING_NO_WRAP));
        break;
    case EWrapping::WholeWords:
        OSLAYER_CHECK(pLayout->SetWordWrapping(DWRITE_WORD_WRAPPING_WHOLE_WORD));
        break;
    case EWrapping::Words:
        OSLAYER_CHECK(pLayout->SetWordWrapping(DWRITE_WORD_WRAPPING_WRAP));
        break;
    case EWrapping::Characters:
        OSLAYER_CHECK(pLayout->SetWordWrapping(DWRITE_WORD_WRAPPING_CHARACTER));
        break;
    }
}

void setParagraphOptions(const oslayer::com_ptr<IDWriteTextLayout>& pLayout, const SParagraphLayoutOptions& options,
                         std::uint32_t textLength) {
    setWrapping(pLayout, options.wrapping);
    if (options.direction == EReadingDirection::RightToLeft) {
        OSLAYER_CHECK(pLayout->SetReadingDirection(DWRITE_READING_DIRECTION_RIGHT_TO_LEFT));
    }
    if (!options.locale.empty()) {
        OSLAYER_CHECK(pLayout->SetLocaleName(options.locale.c_str(), {0, textLength}));
    }
}

void setInlineBoxes(SPlatformParagraph& result, const std::vector<SInlineBox>& boxes, double commonFactor) {
    for (const SInlineBox& box : boxes) {
        result.boxes.emplace_back(new CInlineBoxObject(box, commonFactor));
        OSLAYER_CHECK(result.pLayout->SetInlineObject(result.boxes.back(), rangeOf(box.range)));
    }
}

bool isInBox(const std::vector<SInlineBox>& boxes, std::size_t& next, std::uint32_t position) {
    while (next < boxes.size() && boxes[next].range.startPosition + boxes[next].range.length <= position) {
        ++next;
    }
    return next < boxes.size() && boxes[next].range.startPosition <= position;
}

// Each cluster of a stretched token is widened by what its width lacks; it is not shaped anew.
void widenClusters(SPlatformParagraph& result, const std::wstring& text, const SParagraphLayoutOptions& options,
                   const CTokenFormats& formats) {
    const oslayer::com_ptr<IDWriteTextLayout1> pLater = laterLayout(result.pLayout);
    result.widening.assign(text.length(), 0.0F);
    const CClusterTable clusters(result.pLayout);
    std::size_t nextBox = 0;
    for (std::size_t i = 0; i < clusters.size() && clusters.start(i) < text.length(); ++i) {
        const std::uint32_t start = clusters.start(i);
        if (clusters.at(i).isNewline || text[start] == L'\t' || isInBox(options.inlineBoxes, nextBox, start)) {
            continue;
        }
        const SRunFormat& format = formats.format(formats.tokenAt(start));
        const auto lacking = static_cast<FLOAT>((format.widthFactor - 1.0) * clusters.width(i) + format.tracking);
        if (lacking != 0.0F) {
            result.widening[start] = lacking;
            OSLAYER_CHECK(pLater->SetCharacterSpacing(0.0F, lacking, 0.0F, {start, clusters.at(i).length}));
        }
    }
}

// An empty line is as high as its font says: a layout of no characters has no height of its own.
render::CRichTextParagraph withBlank(const render::CRichTextParagraph& paragraph) {
    render::CRichTextParagraph result = paragraph;
    result.tokens.front().text = L" ";
    return result;
}

} // namespace

SPlatformParagraph makePlatformParagraph(const render::CRichTextParagraph& paragraph, IFontEngine& engine,
                                         const SParagraphLayoutOptions& options, const CTokenFormats& formats) {
    const bool isEmpty = paragraph.tokens.size() == 1 && paragraph.tokens.front().text.empty();
    const std::wstring text = textOf(paragraph);
    const double factor = formats.commonFactor();
    SPlatformParagraph result;
    CLocaleFonts localeFonts(engine, options.locale);
    result.pLayout = CRichTextDocumentProcessor::process(isEmpty ? withBlank(paragraph) : paragraph,
                                                         options.locale.empty() ? &engine : &localeFonts,
                                                         options.tabStopWidth / factor)
                         .pObject;
    setParagraphOptions(result.pLayout, options, isEmpty ? 1 : static_cast<std::uint32_t>(text.length()));
    setRunFormats(result.pLayout, formats);
    setInlineBoxes(result, options.inlineBoxes, factor);
    if (formats.hasOwnFactors()) {
        widenClusters(result, text, options, formats);
    }
    // What the layout refuses leaves its own limit in place.
    if (options.maxWidth > 0.0) {
        result.pLayout->SetMaxWidth(static_cast<FLOAT>(options.maxWidth / factor));
    } else {
        // A width of 0 is no limit on one platform and breaks lines everywhere on the other.
        OSLAYER_CHECK(result.pLayout->SetWordWrapping(DWRITE_WORD_WRAPPING_NO_WRAP));
    }
    if (options.maxHeight > 0.0) {
        result.pLayout->SetMaxHeight(static_cast<FLOAT>(options.maxHeight));
    }
    return result;
}

} // namespace fonts
