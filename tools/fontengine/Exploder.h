#pragma once

#include <map>
#include <string>
#include <vector>

#include <dxf/Rewrite.h>

#include "ClusterText.h"
#include "DrawnGlyphs.h"
#include "PieceColors.h"
#include "Session.h"
#include "TextNotes.h"

namespace tool {

enum class PieceKind {
    Clusters, // single-line texts, one per glyph cluster
    Outlines, // filled areas, one or a few per glyph
};

// What became of the texts.
struct ExplodeCounts {
    std::size_t texts = 0;        // that became pieces
    std::size_t emptyTexts = 0;   // that show nothing and stay as they are
    std::size_t clusters = 0;     // of the texts that became pieces
    std::size_t clusterTexts = 0; // clusters that became texts
    std::size_t joined = 0;       // of those: with joiners, to keep their shape
    std::size_t moved = 0;        // of those: where the library's place is not where the cluster is drawn
    std::size_t outlined = 0;     // clusters that became outlines
    std::size_t blanks = 0;       // clusters without ink, left out
    std::size_t underlines = 0;   // bars that became areas
};

// A glyph that the exploded drawing has to show as text.
struct ExpectedGlyph {
    DrawnGlyph glyph;       // in the drawing, or in its block
    double capHeight = 0.0; // of its cluster
    std::uint64_t line = 0; // of the text it comes from
};

// Turns every paragraph text of a drawing into pieces that show the same.
class Exploder final : public dxf::ITextReplacement {
public:
    // Both are borrowed. `remember`: keep the glyphs for a check afterwards.
    Exploder(Session& session, const dxf::Drawing& drawing, PieceKind kind, bool remember);

    bool replaces(const dxf::TextEntity& text) override;
    void replace(const dxf::TextEntity& text, dxf::EntityWriter& writer) override;

    [[nodiscard]] const ExplodeCounts& counts() const { return m_counts; }
    [[nodiscard]] const std::vector<ExpectedGlyph>& expected() const { return m_expected; }
    // How many single-line texts each text became that became pieces, by its ordinal.
    [[nodiscard]] const std::map<std::size_t, std::size_t>& exploded() const { return m_exploded; }
    // What the pieces do not show as their texts asked for it.
    [[nodiscard]] const TextNotes& notes() const { return m_notes; }
    // How many different single-line texts were laid out alone, to be compared with what was drawn.
    [[nodiscard]] std::size_t piecesMeasured() const { return m_clusterTexts.size(); }
    // Texts that could not be laid out and stay as they are, and why.
    [[nodiscard]] const std::vector<std::string>& failures() const { return m_failures; }

private:
    struct Area {
        std::vector<std::vector<dxf::Point>> loops;
        dxf::PieceColor color;
    };
    // Everything that one text becomes, before anything is written.
    struct Pieces {
        std::vector<dxf::MTextPiece> texts;
        std::vector<Area> areas;
        std::vector<ExpectedGlyph> expected;
        std::vector<mtext::Diagnostic> diagnostics;
        std::vector<fonts::SMissingCharacter> missing;
        ExplodeCounts counts;
    };

    Pieces explode(const dxf::TextEntity& text);
    void addCluster(Pieces& pieces, const dxf::TextEntity& text, const LaidOutText& laidOut,
                    const LaidOutParagraph& paragraph, const LaidOutCluster& cluster,
                    const std::vector<std::uint32_t>& faces);
    void addOutlines(Pieces& pieces, const LaidOutText& laidOut, const LaidOutParagraph& paragraph,
                     const fonts::SCluster& cluster, double capHeight);
    void addUnderline(Pieces& pieces, const LaidOutText& laidOut, const MbRect& bar, std::uint32_t color);
    void write(const Pieces& pieces, const dxf::TextEntity& text, dxf::EntityWriter& writer) const;

    Session& m_session;
    const dxf::Drawing& m_drawing;
    PieceKind m_kind;
    bool m_remember;
    ClusterTexts m_clusterTexts;
    PieceColors m_colors;
    ExplodeCounts m_counts;
    std::vector<ExpectedGlyph> m_expected;
    std::map<std::size_t, std::size_t> m_exploded;
    TextNotes m_notes;
    std::vector<std::string> m_failures;
};

} // namespace tool
