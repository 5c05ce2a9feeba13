#pragma once

#include <dwrite.h>

#include <string>
#include <vector>

#include <FontEngine/ParagraphLayout.h>
#include <oslayer/com_ptr.h>

namespace fonts {

// All that a paragraph layout knows. It is filled by ParagraphBuilder and only read afterwards; the faces are objects
// of the platform that any thread may use.
struct SParagraphLayoutData {
    std::wstring text;
    MbRect box;
    MbRect ink;
    double naturalWidth = 0.0;
    EReadingDirection direction = EReadingDirection::LeftToRight;
    std::vector<SLine> lines;
    std::vector<SRun> runs;
    std::vector<SGlyph> glyphs;
    std::vector<SCluster> clusters;
    std::vector<SBar> bars;
    std::vector<SInlineBoxPlace> inlineBoxes;
    std::vector<SMissingCharacter> missing;
    std::vector<oslayer::com_ptr<IDWriteFontFace>> faces;
    // The family that each token asks for.
    std::vector<std::wstring> families;
};

} // namespace fonts
