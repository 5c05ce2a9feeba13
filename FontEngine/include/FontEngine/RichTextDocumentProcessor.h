#pragma once

#include <dwrite.h>

#include <optional>
#include <vector>

#include <Common/FontEngineExport.h>
#include <FontEngine/IFontEngine.h>
#include <oslayer/com_ptr.h>
#include <render/RichTextDocument.h>

namespace fonts {

// A stretch of a paragraph's text that is set in one font.
struct SLayoutRun {
    // Where it stands in the paragraph's text, in UTF-16 units.
    render::TextRange range;
    // Its characters and style; the family is the one that draws them, which
    // font fallback may have put in place of the one asked for.
    render::SRichTextToken token;
};

// One paragraph as a text layout of the platform.
struct SLayoutDesc {
    // The layout, shared with whoever copies this record.
    oslayer::com_ptr<IDWriteTextLayout> pObject;
    // The runs set on it, in text order.
    std::vector<SLayoutRun> runs;
};

// Turns the text model into the platform's text layouts: families, sizes,
// weights, styles and underlines run by run, wrapping, tab stops and alignments.
// Layouts have no limits of width and height yet. Lengths are the document's
// units, one for one.
//
// Both operations borrow the engine, which must not be null, and keep nothing
// between calls; calls that share an engine take turns. They throw
// oslayer::EOsLayerError when the platform refuses something (E_INVALIDARG for
// text with an element above 0xFFFF and for a capital size of 0 or less), and
// common::ECheckViolation for a capital size that is not a number. For a paragraph
// without tokens each throws a type of its own; common::ECheckViolation is not a
// std::exception.
class FONTENGINE_API CRichTextDocumentProcessor {
public:
    // One record per paragraph, in the document's order. Throws
    // common::ECheckViolation for a paragraph without tokens: an empty line is a
    // paragraph of one empty token, and is laid out as a single space.
    static std::vector<SLayoutDesc> process(const render::CRichTextDocument& document, IFontEngine* fontEngine);

    // Tab stops stand every `tabStopWidth` units, every 40 when it is not given.
    // Throws std::out_of_range for a paragraph without tokens.
    static SLayoutDesc process(const render::CRichTextParagraph& paragraph, IFontEngine* fontEngine,
                               std::optional<double> tabStopWidth);
};

} // namespace fonts
