#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "RealFonts.h"

// What other tools said of a text in one of the pinned fonts; see the program that recorded it, beside the tables.
struct TextFact {
    std::string name;
    std::wstring family;
    render::SRichTextFontStyle style;
    bool isRightToLeft = false;
    std::wstring text;
    // From here on in font design units, y up, from the baseline's start.
    double capHeight = 0.0;
    double ascent = 0.0;
    double descent = 0.0;
    double lineGap = 0.0;
    double advance = 0.0;
    MbRect ink;
    // The positions in the text where clusters start, in UTF-16 units.
    std::vector<uint32_t> clusterStarts;
    // From left to right.
    std::vector<MbCartPoint> glyphOrigins;
};

void PrintTo(const TextFact& fact, std::ostream* stream);

// The facts of a table in facts/.
std::vector<TextFact> readTextFacts(const std::string& table);

// Capitals are asked for as high as the font has them in design units: so lengths are design units, and the em is a
// whole number of pixels for a platform that takes outlines from a rasterizer.
class TextFacts : public RealFontsTest, public testing::WithParamInterface<TextFact> {
protected:
    const TextFact& fact = GetParam();
    const float designSize = static_cast<float>(fact.capHeight);

    double baseline(float capSize) { return service->getTextBaseline(fact.text, fact.family, capSize, {}, fact.style); }

    std::vector<fonts::SGlyphRunDesc> drawnRuns() {
        render::CRichTextParagraph paragraph = testdocuments::makeParagraph(fact.text);
        paragraph.tokens = {render::makeToken(fact.text, fact.family, designSize, fact.style)};
        // Platforms differ in what a wrapping paragraph does without a width.
        paragraph.noWrap = true;
        return glyphRuns(paragraph);
    }

public:
    static std::string nameOf(const testing::TestParamInfo<TextFact>& info) { return info.param.name; }
};
