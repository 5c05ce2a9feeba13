#pragma once

#include <vector>

#include <FontEngine/ParagraphLayout.h>
#include <render/RichTextDocument.h>

namespace tool {

// A paragraph that was laid out, where it stands in its text. Lengths are the layout's.
struct StandingParagraph {
    fonts::CParagraphLayout layout;
    render::eRichTextParagraphAlignment alignment = render::eRichTextParagraphAlignment::Default;
    // The edges of its box, and where the layout's origin stands between them.
    double left = 0.0;
    double right = 0.0;
    double x = 0.0;
    double top = 0.0;

    [[nodiscard]] double height() const { return layout.box().ymax - layout.box().ymin; }
    // Between its edges, as high as its lines.
    [[nodiscard]] MbRect box() const { return {left, top - height(), right, top}; }
    // Empty without ink.
    [[nodiscard]] MbRect ink() const;
    void move(double dx, double dy);
};

// The paragraph's box, moved so that its alignment point is that of its ink: the rectangle of
// fonts::IRichTextDocumentLayoutingFactory::createForDxfMTexts. Empty without ink: aligned with ink that is not there,
// a rectangle stands nowhere.
MbRect boxAlignedWithInk(const StandingParagraph& paragraph);

// Moves paragraphs so that their ink stands where their boxes stood, as the library's plain layouting does when it
// aligns by text bounds. Those at the left edge move by one distance, and so do those at the right edge. Paragraphs
// without ink stay.
void alignByInk(std::vector<StandingParagraph>& paragraphs);

} // namespace tool
