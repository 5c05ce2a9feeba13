#pragma once

#include <cstddef>
#include <string>

#include <Common/Memoizer.h>
#include <FontEngine/ParagraphLayout.h>

namespace tool {

// What a glyph cluster takes where it stands alone.
struct ClusterBox {
    double width = 0.0;
    double height = 0.0;
    double bearing = 0.0; // from its left edge to ink that begins right of it
};

// Lays paragraphs out: the one place of the program that does, and that knows how often it did.
class ParagraphLayouts {
public:
    // The engine is borrowed.
    explicit ParagraphLayouts(fonts::IFontEngine& engine);

    fonts::CParagraphLayout make(const render::CRichTextParagraph& paragraph,
                                 const fonts::SParagraphLayoutOptions& options = {});

    // The token's text as a paragraph of its own. Lays it out the first time that it is asked; the clusters asked
    // last are remembered.
    ClusterBox clusterBox(const render::SRichTextToken& token);

    // Layouts made so far, and how many of them were of clusters alone.
    [[nodiscard]] std::size_t made() const { return m_made; }
    [[nodiscard]] std::size_t clustersMeasured() const { return m_clustersMeasured; }

private:
    ClusterBox measure(const render::SRichTextToken& token);

    fonts::IFontEngine& m_engine;
    std::size_t m_made = 0;
    std::size_t m_clustersMeasured = 0;
    common::Memoizer<const render::SRichTextToken&, std::wstring, ClusterBox> m_clusterBoxes;
};

} // namespace tool
