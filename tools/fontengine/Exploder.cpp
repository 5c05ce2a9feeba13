#include "Exploder.h"

#include <cmath>
#include <new>
#include <utility>

#include "Failure.h"
#include "FilledAreas.h"
#include "TextDocument.h"

namespace tool {

namespace {

// How far a chord may stray from a curve, in cap heights: a hundredth of a
// millimetre on a text of 5 mm.
constexpr double chordTolerance = 0.002;

// Beyond this, in cap heights, a cluster is not where the library says.
constexpr double placeTolerance = 1e-3;

// The document holds single precision; the drawing's own number is the better one
// wherever a cluster has the size of its text.
double heightOf(const LaidOutCluster& cluster, const dxf::TextEntity& text) {
    return static_cast<float>(text.height) == cluster.token.fontCapSize
               ? text.height
               : static_cast<double>(cluster.token.fontCapSize);
}

void add(ExplodeCounts& sum, const ExplodeCounts& part) {
    for (std::size_t ExplodeCounts::*count :
         {&ExplodeCounts::texts, &ExplodeCounts::emptyTexts, &ExplodeCounts::clusters, &ExplodeCounts::clusterTexts,
          &ExplodeCounts::joined, &ExplodeCounts::moved, &ExplodeCounts::outlined, &ExplodeCounts::blanks,
          &ExplodeCounts::underlines}) {
        sum.*count += part.*count;
    }
}

} // namespace

Exploder::Exploder(Session& session, const dxf::Drawing& drawing, PieceKind kind, bool remember)
    : m_session(session), m_drawing(drawing), m_kind(kind), m_remember(remember), m_clusterTexts(session, drawing),
      m_colors(drawing) {}

bool Exploder::replaces(const dxf::TextEntity& text) {
    return text.kind == dxf::TextKind::MText;
}

void Exploder::addOutlines(Pieces& pieces, const LaidOutText& laidOut, const LaidOutParagraph& paragraph,
                           const fonts::SCluster& cluster, double capHeight) {
    const fonts::CParagraphLayout& layout = paragraph.layout;
    const fonts::SRun& run = layout.runs()[cluster.run];
    for (const fonts::SGlyph& glyph : layout.glyphs().subspan(cluster.firstGlyph, cluster.glyphCount)) {
        LoopSink sink(capHeight * chordTolerance / paragraph.factor);
        layout.outline(run, glyph, sink);
        for (const std::vector<Loop>& area : filledAreas(sink.takeLoops())) {
            Area& placed = pieces.areas.emplace_back();
            placed.color = m_colors.of(paragraph.colors.at(run.token));
            for (const Loop& loop : area) {
                std::vector<dxf::Point>& points = placed.loops.emplace_back();
                for (const MbCartPoint& point : loop) {
                    const MbCartPoint inText = paragraph.toText(point);
                    points.push_back(laidOut.toDrawing.apply({inText.x, inText.y, 0.0}));
                }
            }
        }
    }
}

void Exploder::addCluster(Pieces& pieces, const dxf::TextEntity& text, const LaidOutText& laidOut,
                          const LaidOutParagraph& paragraph, const LaidOutCluster& cluster,
                          const std::vector<std::uint32_t>& faces) {
    ++pieces.counts.clusters;
    const fonts::SCluster& drawnCluster = paragraph.layout.clusters()[cluster.index];
    if (!drawnCluster.hasInk) {
        ++pieces.counts.blanks;
        return;
    }
    const double height = heightOf(cluster, text);
    const std::vector<DrawnGlyph> glyphs = glyphsOf(paragraph, cluster, faces);
    const ClusterText* alone =
        m_kind == PieceKind::Clusters ? m_clusterTexts.find(cluster.token, height, glyphs) : nullptr;
    if (alone == nullptr) {
        ++pieces.counts.outlined;
        addOutlines(pieces, laidOut, paragraph, drawnCluster, height);
        return;
    }
    dxf::Point corner{cluster.rect.xmin, cluster.rect.ymax, 0.0};
    const dxf::Point drawn = glyphs.front().place - alone->glyphs.front().place;
    // The library counts the places of a right-to-left run's glyphs to the right
    // and reads a blank before a mark as a bearing; there the drawn place holds.
    if (drawnCluster.isRightToLeft || !(dxf::length(drawn - corner) <= height * placeTolerance)) {
        corner = drawn;
        ++pieces.counts.moved;
    }
    dxf::MTextPiece& piece = pieces.texts.emplace_back();
    piece.content = alone->content;
    piece.style = text.style;
    piece.insertion = laidOut.toDrawing.apply(corner);
    piece.direction = laidOut.toDrawing.xAxis;
    piece.extrusion = laidOut.toDrawing.zAxis;
    piece.height = height;
    piece.color = m_colors.of(cluster.token.color);
    ++pieces.counts.clusterTexts;
    pieces.counts.joined += alone->joined ? 1U : 0U;
    if (m_remember) {
        for (DrawnGlyph glyph : glyphs) {
            glyph.place = laidOut.toDrawing.apply(glyph.place);
            pieces.expected.push_back({glyph, height, text.line});
        }
    }
}

void Exploder::addUnderline(Pieces& pieces, const LaidOutText& laidOut, const MbRect& bar, std::uint32_t color) {
    Area& area = pieces.areas.emplace_back();
    area.color = m_colors.of(color);
    std::vector<dxf::Point>& points = area.loops.emplace_back();
    for (const dxf::Point& corner : {dxf::Point{bar.xmin, bar.ymin, 0.0}, dxf::Point{bar.xmax, bar.ymin, 0.0},
                                     dxf::Point{bar.xmax, bar.ymax, 0.0}, dxf::Point{bar.xmin, bar.ymax, 0.0}}) {
        points.push_back(laidOut.toDrawing.apply(corner));
    }
    ++pieces.counts.underlines;
}

Exploder::Pieces Exploder::explode(const dxf::TextEntity& text) {
    dxf::PlacedText placed;
    placed.text = &text;
    placed.frame = dxf::frameOf(text);
    const TextDocument document = makeTextDocument(m_drawing, placed, m_session.fontMap(), PieceColors::ofText);
    const LaidOutText laidOut = layOutText(m_session, placed, document, {.mode = LayoutMode::Clusters});
    Pieces pieces;
    pieces.diagnostics = unmetDiagnostics(document, laidOut);
    pieces.missing = missingCharacters(laidOut);
    for (const LaidOutParagraph& paragraph : laidOut.paragraphs) {
        const std::vector<std::uint32_t> faces = m_session.faces().of(paragraph.layout);
        for (const LaidOutCluster& cluster : paragraph.clusters) {
            addCluster(pieces, text, laidOut, paragraph, cluster, faces);
        }
        for (const fonts::SBar& bar : paragraph.layout.bars()) {
            addUnderline(pieces, laidOut, paragraph.toText(bar.rect), paragraph.colors.at(bar.token));
        }
    }
    return pieces;
}

void Exploder::write(const Pieces& pieces, const dxf::TextEntity& text, dxf::EntityWriter& writer) const {
    for (const dxf::MTextPiece& piece : pieces.texts) {
        writer.mtext(piece);
    }
    const dxf::Point extrusion = dxf::frameOf(text).zAxis;
    for (const Area& area : pieces.areas) {
        if (writer.hasHatch()) {
            writer.hatch(area.loops, extrusion, area.color);
            continue;
        }
        for (const std::vector<dxf::Point>& loop : area.loops) {
            writer.polyline(loop, true, extrusion, area.color);
        }
    }
}

void Exploder::replace(const dxf::TextEntity& text, dxf::EntityWriter& writer) {
    Pieces pieces;
    try {
        pieces = explode(text);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (...) {
        m_failures.push_back("text at line " + std::to_string(text.line) + ": " + describeFailure());
        return;
    }
    if (pieces.texts.empty() && pieces.areas.empty()) {
        ++m_counts.emptyTexts;
        return;
    }
    write(pieces, text, writer);
    ++pieces.counts.texts;
    m_exploded.emplace(text.ordinal, pieces.texts.size());
    m_notes.add(pieces.diagnostics, pieces.missing, text.line);
    add(m_counts, pieces.counts);
    m_expected.insert(m_expected.end(), pieces.expected.begin(), pieces.expected.end());
}

} // namespace tool
