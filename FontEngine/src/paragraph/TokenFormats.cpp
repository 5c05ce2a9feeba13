#include "TokenFormats.h"

#include <algorithm>

namespace fonts {

CTokenFormats::CTokenFormats(const render::CRichTextParagraph& paragraph, const SParagraphLayoutOptions& options)
    : m_formats(options.runFormats) {
    m_ends.reserve(paragraph.tokens.size());
    std::uint32_t end = 0;
    for (const render::SRichTextToken& token : paragraph.tokens) {
        end += static_cast<std::uint32_t>(token.text.length());
        m_ends.push_back(end);
    }
    if (!m_formats.empty()) {
        const double first = m_formats.front().widthFactor;
        m_hasOwnFactors = std::any_of(m_formats.begin(), m_formats.end(),
                                      [first](const SRunFormat& format) { return format.widthFactor != first; });
        m_commonFactor = m_hasOwnFactors ? 1.0 : first;
    }
}

std::uint32_t CTokenFormats::tokenAt(std::uint32_t position) const {
    const auto end = std::upper_bound(m_ends.begin(), m_ends.end(), position);
    return static_cast<std::uint32_t>((end == m_ends.end() ? end - 1 : end) - m_ends.begin());
}

render::TextRange CTokenFormats::range(std::uint32_t token) const {
    const std::uint32_t start = token == 0 ? 0 : m_ends[token - 1];
    return {start, m_ends[token] - start};
}

const SRunFormat& CTokenFormats::format(std::uint32_t token) const {
    static const SRunFormat plain;
    return m_formats.empty() ? plain : m_formats[token];
}

double CTokenFormats::ownFactor(std::uint32_t token) const {
    return m_hasOwnFactors ? m_formats[token].widthFactor : 1.0;
}

std::wstring textOf(const render::CRichTextParagraph& paragraph) {
    std::wstring text;
    for (const render::SRichTextToken& token : paragraph.tokens) {
        text += token.text;
    }
    return text;
}

} // namespace fonts
