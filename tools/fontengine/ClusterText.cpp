#include "ClusterText.h"

#include <array>
#include <cmath>
#include <string_view>

#include <dxf/EntityWriter.h>

#include "TextDocument.h"

namespace tool {

namespace {

constexpr std::wstring_view joiner = L"\u200D";

std::wstring contentOf(const render::SRichTextToken& token, const std::wstring& text) {
    std::wstring content = L"\\f" + token.fontFamily;
    content += token.fontStyle.bold ? L"|b1" : L"|b0";
    content += token.fontStyle.italic ? L"|i1;" : L"|i0;";
    return content + dxf::escapeMText(text);
}

bool drawsTheSame(const std::vector<DrawnGlyph>& glyphs, const std::vector<DrawnGlyph>& wanted, double tolerance) {
    if (glyphs.size() != wanted.size() || glyphs.empty()) {
        return false;
    }
    const dxf::Point shift = wanted.front().place - glyphs.front().place;
    for (std::size_t i = 0; i < glyphs.size(); ++i) {
        if (!glyphs[i].looksLike(wanted[i]) || dxf::length(glyphs[i].place + shift - wanted[i].place) > tolerance) {
            return false;
        }
    }
    return true;
}

} // namespace

ClusterTexts::ClusterTexts(Session& session, const dxf::Drawing& drawing)
    : m_session(session), m_drawing(drawing), m_fontMap(session.engine()) {}

const ClusterText& ClusterTexts::measured(const std::wstring& content, double height, bool joined) {
    const auto [entry, isNew] = m_texts.try_emplace({content, height});
    if (isNew) {
        dxf::TextEntity entity;
        entity.content = content;
        entity.height = height;
        dxf::PlacedText placed;
        placed.text = &entity;
        const TextDocument document = makeTextDocument(m_drawing, placed, m_fontMap);
        entry->second = {content, joined, glyphsOf(layOutText(m_session, placed, document, {}), m_session.faces())};
    }
    return entry->second;
}

const ClusterText* ClusterTexts::find(const render::SRichTextToken& token, double height,
                                      const std::vector<DrawnGlyph>& glyphs) {
    if (token.fontFamily.find_first_of(L"|;\\") != std::wstring::npos) {
        return nullptr; // no font code can name it
    }
    const double tolerance = height * 1e-3;
    const std::wstring before = std::wstring(joiner) + token.text;
    const std::wstring after = token.text + std::wstring(joiner);
    const std::array candidates{token.text, after, before, before + std::wstring(joiner)};
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        const ClusterText& text = measured(contentOf(token, candidates[i]), height, i > 0);
        if (drawsTheSame(text.glyphs, glyphs, tolerance)) {
            return &text;
        }
    }
    return nullptr;
}

} // namespace tool
