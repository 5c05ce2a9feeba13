#include "LineStacking.h"

#include <algorithm>

namespace fonts {

namespace {

// How far each line has to move up.
std::vector<double> movesOf(const std::vector<SLine>& lines, const SLineSpacing& spacing) {
    std::vector<double> moves(lines.size(), 0.0);
    for (std::size_t i = 1; i < lines.size(); ++i) {
        const double natural = lines[i - 1].baseline - lines[i].baseline;
        const double wanted =
            spacing.kind == SLineSpacing::EKind::Exactly ? spacing.pitch : std::max(natural, spacing.pitch);
        moves[i] = moves[i - 1] + natural - wanted;
    }
    return moves;
}

double shareOf(render::eRichTextParagraphVerticalAlignment alignment) {
    switch (alignment) {
    case render::eRichTextParagraphVerticalAlignment::Bottom:
        return 1.0;
    case render::eRichTextParagraphVerticalAlignment::Middle:
        return 0.5;
    default:
        return 0.0;
    }
}

void moveUnlessEmpty(MbRect& rect, double dy) {
    if (!rect.isEmpty()) {
        rect.Move(0.0, dy);
    }
}

} // namespace

void stackLines(SParagraphLayoutData& data, std::vector<MbRect>& lineInk, const SLineSpacing& spacing,
                render::eRichTextParagraphVerticalAlignment alignment) {
    if (spacing.kind == SLineSpacing::EKind::Natural || data.lines.size() < 2) {
        return;
    }
    std::vector<double> moves = movesOf(data.lines, spacing);
    data.box.ymin += moves.back();
    const double back = -moves.back() * shareOf(alignment);
    data.box.Move(0.0, back);
    for (std::size_t i = 0; i < moves.size(); ++i) {
        const double dy = moves[i] += back;
        SLine& line = data.lines[i];
        line.baseline += dy;
        line.top += dy;
        line.bottom += dy;
        moveUnlessEmpty(lineInk[i], dy);
    }
    for (SRun& run : data.runs) {
        run.origin.y += moves[run.line];
        moveUnlessEmpty(run.ink, moves[run.line]);
        for (std::uint32_t i = 0; i < run.glyphCount; ++i) {
            data.glyphs[run.firstGlyph + i].origin.y += moves[run.line];
        }
    }
    for (SCluster& cluster : data.clusters) {
        cluster.rect.Move(0.0, moves[cluster.line]);
    }
    for (SBar& bar : data.bars) {
        bar.rect.Move(0.0, moves[bar.line]);
    }
    for (SInlineBoxPlace& place : data.inlineBoxes) {
        place.rect.Move(0.0, moves[place.line]);
    }
}

} // namespace fonts
