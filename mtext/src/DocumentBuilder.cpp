#include "DocumentBuilder.h"

#include <optional>
#include <utility>

#include "ContentCursor.h"

namespace mtext {

namespace {

constexpr std::wstring_view NO_BREAK_SPACE = L"\u00A0";

bool holdsTab(const render::CRichTextParagraph& paragraph) {
    for (const render::SRichTextToken& token : paragraph.tokens) {
        if (token.text.find(L'\t') != std::wstring::npos) {
            return true;
        }
    }
    return false;
}

} // namespace

std::uint32_t DocumentBuilder::family(const std::wstring& name) {
    const auto next = static_cast<std::uint32_t>(m_families.size());
    const auto [place, isNew] = m_familyNumbers.try_emplace(name, next);
    if (isNew) {
        m_families.push_back(name);
    }
    return place->second;
}

render::SRichTextToken DocumentBuilder::makeToken(const TextStyle& style) const {
    render::SRichTextToken token;
    token.fontFamily = m_families[style.family];
    token.fontCapSize = style.capSize;
    token.color = style.color;
    token.fontStyle = style.fontStyle;
    return token;
}

void DocumentBuilder::append(std::wstring_view text, const TextStyle& style) {
    if (text.empty()) {
        return;
    }
    if (m_tokens.empty() || m_tokenStyle != style) {
        m_tokens.push_back(makeToken(style));
        m_tokenStyle = style;
    }
    if (std::exchange(m_keepApart, false) && isDigit(text.front())) {
        m_tokens.back().text += NO_BREAK_SPACE;
    }
    m_tokens.back().text += text;
}

void DocumentBuilder::appendApart(std::wstring_view text, const TextStyle& style) {
    if (text.empty()) {
        return;
    }
    if (isDigit(text.front()) && !m_tokens.empty() && isDigit(m_tokens.back().text.back())) {
        append(NO_BREAK_SPACE, style);
    }
    append(text, style);
    m_keepApart = isDigit(text.back());
}

void DocumentBuilder::endParagraph(const TextStyle& style) {
    if (m_tokens.empty()) {
        m_tokens.push_back(makeToken(style));
    }
    render::CRichTextParagraph paragraph;
    paragraph.tokens = std::exchange(m_tokens, {});
    paragraph.alignment = m_paragraph.alignment;
    paragraph.verticalAlignment = m_defaults.verticalAlignment;
    paragraph.noWrap = m_defaults.noWrap;
    m_paragraphs.push_back(std::move(paragraph));
    m_formats.push_back(m_paragraph.format);
    m_formats.back().startsColumn = m_startsColumn;
    m_keepApart = false;
}

void DocumentBuilder::breakParagraph(const TextStyle& style, const ParagraphState& next, bool startsColumn) {
    endParagraph(style);
    m_paragraph = next;
    m_startsColumn = startsColumn;
}

// The document has one distance for all tabs: that of the content's own stops,
// where all paragraphs that use a tab agree on one.
float DocumentBuilder::tabStopWidth() const {
    std::optional<float> common;
    for (std::size_t i = 0; i < m_paragraphs.size(); ++i) {
        if (!holdsTab(m_paragraphs[i])) {
            continue;
        }
        const std::optional<float> width = evenTabStopWidth(m_formats[i].tabStops);
        if (!width || (common && *common != *width)) {
            return m_defaults.tabStopWidth;
        }
        common = width;
    }
    return common.value_or(m_defaults.tabStopWidth);
}

Result DocumentBuilder::finish(const TextStyle& style) {
    endParagraph(style);
    const float tabStops = tabStopWidth();
    render::CRichTextDocument document = render::makeDocument(std::move(m_paragraphs));
    document.tabStopWidth = tabStops;
    return Result{std::move(document), std::move(m_formats), {}};
}

} // namespace mtext
