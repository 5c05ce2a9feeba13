#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <Common/FontEngineExport.h>
#include <FontEngine/GlyphRunDesc.h>
#include <FontEngine/IFontEngine.h>
#include <geometry/MbRect.h>
#include <geometry/MbRegion.h>
#include <render/RichTextDocument.h>

namespace fonts {

// Measures rich text: how much room it takes and where its glyphs stand.
//
// Units and axes, for every operation: sizes are heights of capital letters, in
// the document's units, and every length comes back in the same units. The y
// axis points up; the origin is the top-left corner of the first paragraph's
// layout box, so text lies at y <= 0 and paragraphs follow each other downwards.
//
// Two kinds of box: the layout box is what the lines take (line height and
// advances, whatever the glyphs look like); the ink box bounds the outlines of
// the glyphs and the bars of underlines and strikethroughs. A box that nothing
// contributed to is the empty rectangle of MbRect.
//
// Baselines stand on a grid of 0.01 units, and with them glyph runs, ink boxes and
// bars; layout boxes do not. Where 0.01 units are much of a text's height, as in
// drawings in metres, measure the text enlarged: see LayoutScale.h.
//
// Text is UTF-16, one unit per element of a std::wstring.
//
// Costs: time and memory grow with the length of the text, never with its square.
// The operations on a document make the layouts of all its paragraphs before they
// measure the first: some 800 bytes a paragraph and 10 bytes a character. What
// measuring adds, some 50 bytes a character and at most 150 for a moment, is given
// back before the next paragraph is measured.
//
// Errors: a failed platform call is thrown as oslayer::EOsLayerError (text with
// an element above 0xFFFF and a capital size of 0 or less end so, with
// E_INVALIDARG), a capital size that is not a number and a document's paragraph
// without tokens as common::ECheckViolation. Nothing is returned then, and the
// service stays usable.
//
// common::ECheckViolation is not a std::exception, and a handler for those does
// not catch it: catch common::EAssertionViolation (<Common/Violations.h>) too.
//
// Threads: the service itself may be called from several threads, but every
// operation that lays text out uses the font engine the service was made with,
// which is not synchronised: callers that share an engine take turns.
class FONTENGINE_API ITextMetrics {
public:
    virtual ~ITextMetrics() = default;

    // Layout box of `text` set as one paragraph that is never wrapped, with tab
    // stops every 40 units. The underline flag of `fontStyle` has no effect.
    // Remembered, as for getDocumentRect.
    virtual MbRect getTextRect(const std::wstring& text, const std::wstring& fontFamily, float fontCapSize,
                               render::SRichTextFontStyle fontStyle) const = 0;

    // Layout box of the whole document at its natural size: lines are not
    // wrapped and paragraphs are aligned to the left, whatever they ask for.
    // The empty rectangle for a document without paragraphs.
    //
    // Boxes are remembered for the 10000 documents measured last, under
    // render::hashDocumentByParagraphs: a hash of texts, fonts, sizes, styles, the
    // tab stop width and the paragraphs' numbers of tokens. Two documents of one
    // hash would share a box.
    virtual MbRect getDocumentRect(const render::CRichTextDocument& document) const = 0;

    // One layout box per paragraph, in paragraph order. A `maxWidth` above 0
    // wraps and aligns the lines within it, a `maxHeight` above 0 places them
    // vertically within it (each paragraph for itself).
    //
    // 0 or less leaves the layout's own limit, which is 0. On Linux a width of 0
    // wraps nothing; DirectWrite breaks lines at every opportunity then, unless
    // the paragraph says `noWrap`. On both, lines are aligned within the 0: those
    // of a `Right` paragraph end at x = 0 and lie to the left of it, those of a
    // `Center` one have their middle there; `Bottom` and `Middle` do the same at
    // the paragraph's top.
    virtual std::vector<MbRect> getParagraphRects(const render::CRichTextDocument& document, double maxWidth,
                                                  double maxHeight) const = 0;

    // Ink box of `text` set on one line, with tab stops every `tabStopWidth`
    // units (40 when not given). The underline flag of `fontStyle` has no effect.
    virtual MbRect getTextGeometryRect(const std::wstring& text, const std::wstring& fontFamily, float fontCapSize,
                                       std::optional<double> tabStopWidth,
                                       render::SRichTextFontStyle fontStyle) const = 0;

    // Ink box of the whole document: the union of getParagraphGeometryRects.
    virtual MbRect getDocumentGeometryRect(const render::CRichTextDocument& document, double maxWidth,
                                           double maxHeight) const = 0;

    // One ink box per paragraph, in paragraph order; the empty rectangle for a
    // paragraph without ink. Limits as for getParagraphRects.
    virtual std::vector<MbRect> getParagraphGeometryRects(const render::CRichTextDocument& document, double maxWidth,
                                                          double maxHeight) const = 0;

    // The y of the first baseline of `text` set on one line whose top is at 0:
    // a negative number, on the grid of 0.01 units (so 0 for a text of a few
    // thousandths of a unit), or 0 for an empty text. Arguments as for
    // getTextGeometryRect.
    virtual double getTextBaseline(const std::wstring& text, const std::wstring& fontFamily, float fontCapSize,
                                   std::optional<double> tabStopWidth, render::SRichTextFontStyle fontStyle) const = 0;

    // Metrics of the font that the engine finds for the family and style, scaled
    // so that its capitals are `fontCapSize` high. The size is narrowed to single
    // precision first. Mind the order of the flags: italic, then bold.
    //
    // For an unknown family these are the engine's fallback font's, which is not
    // what a text that names the family is set in (see createFontEngine).
    virtual SFontMetrics getFontMetrics(const std::wstring& fontFamily, double fontCapSize, bool italic,
                                        bool bold) const = 0;

    // The glyph runs of one paragraph, line by line and in reading order within
    // a line, in the frame of the paragraph's own layout box. Limits as for
    // getParagraphRects; tab stops every `tabStopWidth` units (40 when not given).
    //
    // Appends one region per underline bar to `decorationRegions` and keeps what
    // stands there; the caller shares ownership of the new regions. On an error
    // it may already hold some of them.
    //
    // Throws std::out_of_range for a paragraph without tokens, unlike the
    // operations on documents.
    virtual std::vector<SGlyphRunDesc>
    getGlyphRuns(const render::CRichTextParagraph& paragraph, double maxWidth, double maxHeight,
                 std::optional<double> tabStopWidth,
                 std::vector<boost::intrusive_ptr<MbRegion>>& decorationRegions) const = 0;
};

// Creates the service over `fontEngine`, which is borrowed and must outlive it.
// Throws oslayer::EOsLayerError when the platform gives no factory.
FONTENGINE_API std::unique_ptr<ITextMetrics> createTextMetricsService(IFontEngine* fontEngine);

} // namespace fonts
