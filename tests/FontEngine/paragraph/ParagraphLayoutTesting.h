#pragma once

#include <string>
#include <utility>

#include "../RealFonts.h"

// What the tests of paragraph layouts on the pinned fonts share.
namespace paragraph_tests {

using fonts::CParagraphLayout;
using fonts::SParagraphLayoutOptions;

// Liberation Sans has capitals of 1409 units (OS/2 table), so that capitals of 10 make a unit this long.
constexpr double unit = 10.0 / 1409.0;
constexpr double precision = 1e-4;

inline render::CRichTextParagraph twoTokens(std::wstring first, std::wstring second) {
    render::CRichTextParagraph paragraph = testdocuments::makeParagraph(std::move(first));
    paragraph.tokens.push_back(paragraph.tokens.front());
    paragraph.tokens.back().text = std::move(second);
    paragraph.tokens.back().color = 1;
    return paragraph;
}

class ParagraphLayout : public RealFontsTest {
protected:
    CParagraphLayout lay(const std::wstring& text, const SParagraphLayoutOptions& options = {}) {
        return CParagraphLayout::make(testdocuments::makeParagraph(text), *engine, options);
    }

    static SParagraphLayoutOptions formatted(const fonts::SRunFormat& format) {
        SParagraphLayoutOptions options;
        options.runFormats = {format};
        return options;
    }

    static double widthOf(const CParagraphLayout& layout) { return layout.box().xmax - layout.box().xmin; }
};

} // namespace paragraph_tests
