#include "ParagraphLayouts.h"

#include <algorithm>
#include <bit>
#include <cstdint>

namespace tool {

namespace {

constexpr std::size_t rememberedClusters = 10000;

// No family name holds the character that parts it from the text.
std::wstring keyOf(const render::SRichTextToken& token) {
    const auto size = std::bit_cast<std::uint32_t>(token.fontCapSize);
    std::wstring key{static_cast<wchar_t>(size >> 16), static_cast<wchar_t>(size & 0xFFFFU)};
    key += token.fontStyle.bold ? L'b' : L'-';
    key += token.fontStyle.italic ? L'i' : L'-';
    key += token.fontFamily;
    key += L'\0';
    key += token.text;
    return key;
}

} // namespace

ParagraphLayouts::ParagraphLayouts(fonts::IFontEngine& engine)
    : m_engine(engine),
      m_clusterBoxes(
          rememberedClusters, [this](const render::SRichTextToken& token) { return measure(token); }, keyOf) {}

fonts::CParagraphLayout ParagraphLayouts::make(const render::CRichTextParagraph& paragraph,
                                               const fonts::SParagraphLayoutOptions& options) {
    ++m_made;
    return fonts::CParagraphLayout::make(paragraph, m_engine, options);
}

ClusterBox ParagraphLayouts::clusterBox(const render::SRichTextToken& token) {
    return m_clusterBoxes.get(token);
}

ClusterBox ParagraphLayouts::measure(const render::SRichTextToken& token) {
    ++m_clustersMeasured;
    render::CRichTextParagraph paragraph;
    paragraph.noWrap = true;
    paragraph.tokens.push_back(render::makeToken(token.text, token.fontFamily, token.fontCapSize, token.fontStyle));
    const fonts::CParagraphLayout layout = make(paragraph, {.detail = fonts::EParagraphDetail::Lines});
    const MbRect& box = layout.box();
    return {box.xmax - box.xmin, box.ymax - box.ymin,
            layout.ink().isEmpty() ? 0.0 : std::max(0.0, layout.ink().xmin - box.xmin)};
}

} // namespace tool
