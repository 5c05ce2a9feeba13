#pragma once

#include <dwrite.h>

#include <vector>

#include <FontEngine/IFontEngine.h>
#include <FontEngine/ParagraphLayoutOptions.h>
#include <oslayer/com_ptr.h>
#include <render/RichTextDocument.h>

#include "InlineBoxObject.h"
#include "TokenFormats.h"

namespace fonts {

// A paragraph as a text layout of the platform, with all options set that the platform has means for. Its x lengths
// are the paragraph's divided by CTokenFormats::commonFactor.
struct SPlatformParagraph {
    oslayer::com_ptr<IDWriteTextLayout> pLayout;
    // One per box of the options.
    std::vector<oslayer::com_ptr<CInlineBoxObject>> boxes;
    // Where tokens have width factors of their own: what was added to the cluster that starts at a text position.
    std::vector<FLOAT> widening;
};

// Options must have been checked.
SPlatformParagraph makePlatformParagraph(const render::CRichTextParagraph& paragraph, IFontEngine& engine,
                                         const SParagraphLayoutOptions& options, const CTokenFormats& formats);

} // namespace fonts
