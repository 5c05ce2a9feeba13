#include "RoundTrip.h"

#include "Progress.h"
#include "TextDocument.h"

namespace tool {

namespace {

bool isMText(const dxf::TextEntity& text) {
    return text.kind == dxf::TextKind::MText;
}

// Tells the pieces of an exploded drawing from the texts that stayed, by the order
// of both in the file: neither handles nor contents tell one from the other.
class PieceOrder {
public:
    PieceOrder(const dxf::Drawing& original, const Exploder& exploder) : m_original(original), m_exploder(exploder) {}

    // Whether the next paragraph text of the exploded drawing is a piece.
    bool nextIsPiece() {
        while (m_piecesLeft == 0 && m_next < m_original.texts.size()) {
            const dxf::TextEntity& text = m_original.texts[m_next++];
            const auto exploded = m_exploder.exploded().find(text.ordinal);
            if (exploded != m_exploder.exploded().end()) {
                m_piecesLeft = exploded->second;
            } else if (isMText(text)) {
                return false;
            }
        }
        if (m_piecesLeft > 0) {
            --m_piecesLeft;
        }
        return true;
    }

private:
    const dxf::Drawing& m_original;
    const Exploder& m_exploder;
    std::size_t m_next = 0;
    std::size_t m_piecesLeft = 0;
};

// Compares the glyphs of the pieces with those expected, in their common order.
class Comparison {
public:
    explicit Comparison(const std::vector<ExpectedGlyph>& expected) : m_expected(expected) {}

    void add(const DrawnGlyph& glyph) {
        const std::size_t i = m_result.glyphs++;
        if (i >= m_expected.size() || !glyph.looksLike(m_expected[i].glyph)) {
            ++m_result.different;
            return;
        }
        const double deviation = dxf::length(glyph.place - m_expected[i].glyph.place) / m_expected[i].capHeight;
        if (!(deviation <= m_result.largestDeviation)) {
            m_result.largestDeviation = deviation;
            m_result.line = m_expected[i].line;
        }
    }

    RoundTrip finish() {
        if (m_result.glyphs < m_expected.size()) {
            m_result.different += m_expected.size() - m_result.glyphs;
        }
        return m_result;
    }

private:
    const std::vector<ExpectedGlyph>& m_expected;
    RoundTrip m_result;
};

} // namespace

RoundTrip checkRoundTrip(Session& session, const dxf::Drawing& exploded, const dxf::Drawing& original,
                         const Exploder& exploder) {
    FontMap fontMap(session.engine()); // the pieces name installed families
    PieceOrder order(original, exploder);
    Comparison comparison(exploder.expected());
    Progress progress("Checking, texts");
    std::size_t done = 0;
    for (const dxf::TextEntity& text : exploded.texts) {
        progress.update(++done, exploded.texts.size());
        if (!isMText(text) || !order.nextIsPiece()) {
            continue;
        }
        dxf::PlacedText placed;
        placed.text = &text;
        placed.frame = dxf::frameOf(text);
        const TextDocument document = makeTextDocument(exploded, placed, fontMap);
        for (const DrawnGlyph& glyph : glyphsOf(layOutText(session, placed, document, {}), session.faces())) {
            comparison.add(glyph);
        }
    }
    return comparison.finish();
}

} // namespace tool
