#pragma once

#include <cstdint>
#include <vector>

#include <FontEngine/ParagraphLayout.h>
#include <geometry/MbCartPoint.h>
#include <geometry/MbRect.h>
#include <render/RichTextDocument.h>

namespace tool {

// A glyph cluster as the library places it.
struct LaidOutCluster {
    render::SRichTextToken token; // its text is the cluster's, its family the one that draws it
    MbRect rect;                  // in the text's frame; empty without ink
    std::size_t index = 0;        // in the layout's clusters
};

// One paragraph of a text. Lengths are drawing units unless they are the layout's; the text's frame is that of
// LaidOutText.
struct LaidOutParagraph {
    // At the scale of fonts::layoutScale: one of its units is `factor` drawing units.
    fonts::CParagraphLayout layout;
    double factor = 1.0;
    MbCartPoint origin;                   // where the layout's origin stands in the text's frame
    MbRect box;                           // as the mode says, in the text's frame; empty where it says nothing
    MbRect ink;                           // ink box, in the text's frame; empty without ink
    std::vector<std::uint32_t> colors;    // ARGB, of the layout's tokens
    double firstCapSize = 0.0;            // of the tallest capitals in the first line
    bool mixesHeights = false;            // a line holds ink of text of different heights
    std::vector<LaidOutCluster> clusters; // in mode Clusters, unless only lines are wanted
    std::vector<MbRect> underlines;       // the same; in the text's frame

    [[nodiscard]] MbCartPoint toText(const MbCartPoint& point) const {
        return {origin.x + factor * point.x, origin.y + factor * point.y};
    }
    // An empty rectangle stays empty.
    [[nodiscard]] MbRect toText(const MbRect& rect) const;

    // The y of each line with text, top to bottom, in the text's frame.
    [[nodiscard]] std::vector<double> baselines() const;
};

// The baselines of the lines with text, top to bottom.
std::vector<double> baselinesOf(const fonts::CParagraphLayout& layout);

} // namespace tool
