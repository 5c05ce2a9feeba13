#include "ClusterRects.h"

#include <cstdint>

namespace tool {

namespace {

// The paragraph's text, cut where one installed family takes over from another.
class FamilyPieces {
public:
    FamilyPieces(fonts::IFontEngine& engine, const render::CRichTextParagraph& paragraph) {
        std::uint32_t end = 0;
        for (const render::SRichTextToken& token : paragraph.tokens) {
            for (render::SRichTextToken& piece : engine.splitTokenByFallbackFonts(token)) {
                end += static_cast<std::uint32_t>(piece.text.length());
                m_pieces.push_back({end, std::move(piece)});
            }
        }
    }

    // Positions are asked in ascending order.
    const render::SRichTextToken& at(std::uint32_t position) {
        while (m_next + 1 < m_pieces.size() && m_pieces[m_next].end <= position) {
            ++m_next;
        }
        return m_pieces.at(m_next).token;
    }

private:
    struct Piece {
        std::uint32_t end = 0;
        render::SRichTextToken token;
    };

    std::vector<Piece> m_pieces;
    std::size_t m_next = 0;
};

render::SRichTextToken clusterToken(const render::SRichTextToken& piece, std::wstring text) {
    return {std::move(text), piece.fontFamily, piece.fontCapSize, piece.color, piece.fontStyle};
}

// Where the cluster's box begins, in the layout.
MbCartPoint cornerOf(const fonts::CParagraphLayout& layout, const fonts::SCluster& cluster) {
    const fonts::SRun& run = layout.runs()[cluster.run];
    return run.isRightToLeft() ? MbCartPoint{cluster.rect.xmin, run.origin.y}
                               : layout.glyphs()[cluster.firstGlyph].origin;
}

MbRect rectOf(Session& session, const fonts::CParagraphLayout& layout, const fonts::SCluster& cluster,
              render::SRichTextToken token, double factor) {
    token.fontCapSize = static_cast<float>(static_cast<double>(token.fontCapSize) / factor);
    const ClusterBox box = session.layouts().clusterBox(token);
    const MbCartPoint corner = cornerOf(layout, cluster);
    // As the library has it, so that no rounding error wraps a text written into the rectangle.
    constexpr double room = 1.0;
    const double left = corner.x + box.bearing;
    const double top = corner.y + static_cast<double>(token.fontCapSize);
    return {left, top - box.height, left + box.width + room, top};
}

} // namespace

std::vector<LaidOutCluster> clustersOf(Session& session, const render::CRichTextParagraph& paragraph,
                                       const LaidOutParagraph& laidOut) {
    const fonts::CParagraphLayout& layout = laidOut.layout;
    FamilyPieces pieces(session.engine(), paragraph);
    std::vector<LaidOutCluster> clusters;
    for (std::size_t i = 0; i < layout.clusters().size(); ++i) {
        const fonts::SCluster& cluster = layout.clusters()[i];
        if (cluster.glyphCount == 0) {
            continue; // a newline, a tab
        }
        LaidOutCluster& result = clusters.emplace_back();
        result.index = i;
        result.token = clusterToken(pieces.at(cluster.range.startPosition),
                                    layout.text().substr(cluster.range.startPosition, cluster.range.length));
        if (cluster.hasInk) {
            result.rect = laidOut.toText(rectOf(session, layout, cluster, result.token, laidOut.factor));
        }
    }
    return clusters;
}

} // namespace tool
