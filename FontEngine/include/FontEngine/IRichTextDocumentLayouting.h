#pragma once

#include <vector>

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <Common/FontEngineExport.h>
#include <geometry/MbRect.h>
#include <geometry/MbRegion.h>
#include <render/RichTextDocument.h>

namespace fonts {

// Places the paragraphs of one document in a box: set the box and the options,
// call layout(), read the results. The layouting factory creates the three kinds
// (plain document, DXF MText, DXF MText by glyph clusters); where they differ,
// the operation says so.
//
// Aligned by ink (see setAlignByTextBounds), a paragraph without ink has nothing to
// be aligned by: its rectangle says nothing. Coordinates around 1e300, infinities
// and, for centred or middle paragraphs, plausible numbers are all met. hasPlace
// in TextUtils.h tells such rectangles from the others, which they do not affect.
//
// Rectangles are in the document's units, y axis up. The setters only store;
// results are those of the latest layout(), empty before the first, and are
// returned as copies that the caller owns.
//
// Threads: one layouting belongs to one thread at a time. It calls the text
// metrics service, whose thread rule holds for layout().
class FONTENGINE_API IRichTextDocumentLayouting {
public:
    virtual ~IRichTextDocumentLayouting() = default;

    // Sets the box. Until it is set it is empty.
    virtual void setLayoutRect(const MbRect& layoutRect) = 0;

    // Sets the margin taken off the left and the right side of the box; 0 until
    // it is set. A margin above half the box's width makes the box empty.
    virtual void setHorizontalMargin(float horizontalMargin) = 0;

    // Chooses what is aligned with the box: the text as laid out, or its ink.
    // Plain documents are aligned by ink when the flag is true (default: false).
    // DXF MText has the inverse sense: aligned by ink unless the flag is true.
    // Glyph clusters ignore it.
    virtual void setAlignByTextBounds(bool alignByTextBounds) = 0;

    // Computes the results from the current settings.
    //
    // An empty box (xmin > xmax or ymin > ymax, margin included) lays a plain
    // document out at its natural size, as ITextMetrics::getParagraphRects does
    // without limits: a paragraph aligned left and top has its top-left corner at
    // the origin, one aligned right lies to the left of it. The two DXF kinds keep
    // their previous results.
    //
    // Errors: those of the text metrics service, and violations
    // (common::EAssertionViolation) where the service's answers do not fit the
    // document. The rectangles stay as they were then, except that glyph
    // clusters may be partly rebuilt.
    virtual void layout() = 0;

    // One rectangle per paragraph, in paragraph order; by glyph clusters: one per
    // cluster, as wide as its text and one unit more, its top one capital size above
    // the baseline. The rectangle of a cluster without ink (a space) stands 1e300 to
    // the right, where the empty ink box begins: nothing is to be drawn for it.
    //
    // Clusters stand at the origins of SGlyphRunDesc::glyphOrigins. In a
    // right-to-left run those count to the right from the run's right end, so its
    // clusters lie to the right of where the text is drawn.
    virtual std::vector<MbRect> getRects() const = 0;

    // The paragraphs that the rectangles belong to, same order: the document's
    // own (also before the first layout()), or by glyph clusters one paragraph of
    // one token per cluster.
    virtual std::vector<render::CRichTextParagraph> getParagraphs() const = 0;

    // The bars of underlines, by glyph clusters only; otherwise empty. The caller
    // shares ownership of the regions with the layouting.
    virtual std::vector<boost::intrusive_ptr<MbRegion>> getRegions() const = 0;
};

} // namespace fonts
