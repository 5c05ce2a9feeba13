#include "UnmetCodes.h"

#include <algorithm>

#include "ParagraphCode.h"

namespace mtext {

namespace {

bool isBlank(wchar_t unit) {
    return unit == L' ' || unit == L'\t' || unit == L'\u00A0' || unit == L'\u3000' ||
           (unit >= L'\u2000' && unit <= L'\u200B');
}

} // namespace

std::uint32_t UnmetCodes::add(DiagnosticCode code, std::size_t position, std::size_t length) {
    m_codes.push_back({code, position, length, false});
    return static_cast<std::uint32_t>(m_codes.size());
}

void UnmetCodes::markUnmet(std::uint32_t number) {
    if (number != 0) {
        m_codes[number - 1].unmet = true;
    }
}

void UnmetCodes::noteHeight(float capSize, std::uint32_t alignment) {
    m_tallest = std::max(m_tallest, capSize);
    if (alignment == 0) {
        return;
    }
    if (m_aligned.empty() || m_aligned.back().code != alignment) {
        m_aligned.push_back({alignment, capSize});
    }
    m_aligned.back().smallest = std::min(m_aligned.back().smallest, capSize);
}

void UnmetCodes::note(std::wstring_view text, float capSize, const CharacterCodes& codes) {
    if (text.empty()) {
        return;
    }
    for (const CharacterProperty property : {CharacterProperty::Overline, CharacterProperty::Strikethrough,
                                             CharacterProperty::Tracking, CharacterProperty::WidthFactor}) {
        markUnmet(codes[property]);
    }
    m_hasTab = m_hasTab || text.find(L'\t') != std::wstring_view::npos;
    if (std::all_of(text.begin(), text.end(), isBlank)) {
        return;
    }
    markUnmet(codes[CharacterProperty::ObliqueAngle]);
    markUnmet(codes[CharacterProperty::BigFont]);
    noteHeight(capSize, codes[CharacterProperty::InlineAlignment]);
}

void UnmetCodes::endParagraph(const ParagraphCodes& codes) {
    // Programs write heights with as few as four digits.
    const float clearlySmaller = m_tallest * (1.0F - 1e-3F);
    for (const AlignedText& text : m_aligned) {
        if (text.smallest < clearlySmaller) {
            markUnmet(text.code);
        }
    }
    for (const ParagraphProperty property :
         {ParagraphProperty::SpaceBefore, ParagraphProperty::SpaceAfter, ParagraphProperty::LineSpacing}) {
        markUnmet(codes[property]);
    }
    if (m_tallest > 0.0F) {
        for (const ParagraphProperty property : {ParagraphProperty::FirstLineIndent, ParagraphProperty::LeftIndent,
                                                 ParagraphProperty::RightIndent, ParagraphProperty::Distribution}) {
            markUnmet(codes[property]);
        }
    }
    if (m_hasTab && codes[ParagraphProperty::TabStops] != 0) {
        m_tabbed.push_back({m_paragraph, codes[ParagraphProperty::TabStops]});
    }
    m_aligned.clear();
    m_tallest = 0.0F;
    m_hasTab = false;
    ++m_paragraph;
}

void UnmetCodes::endContent(const std::vector<ParagraphFormat>& formats, float tabStopWidth) {
    for (const TabbedParagraph& paragraph : m_tabbed) {
        if (evenTabStopWidth(formats[paragraph.number].tabStops) != tabStopWidth) {
            markUnmet(paragraph.code);
        }
    }
}

} // namespace mtext
