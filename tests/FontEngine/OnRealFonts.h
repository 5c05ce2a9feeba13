#pragma once

#include <memory>
#include <string>
#include <vector>

#include "RealFonts.h"

// What the tests of layouting on the pinned fonts share.
class OnRealFonts : public RealFontsTest {
protected:
    // Broken into several lines within 120 units.
    static constexpr const wchar_t* pangram = L"The quick brown fox jumps over the lazy dog and back again";
    static constexpr MbRect wideBox{0.0, 0.0, 1000.0, 500.0};
    static constexpr double precision = 1e-4;
    // Baselines are snapped to hundredths.
    static constexpr double snapping = 0.005 + precision;

    static std::wstring joined(const std::vector<fonts::SGlyphRunDesc>& runs) {
        std::wstring text;
        for (const fonts::SGlyphRunDesc& run : runs)
            text += run.text;
        return text;
    }

    static std::wstring withoutSpaces(std::wstring text) {
        std::erase(text, L' ');
        return text;
    }

    // One for each line.
    static std::vector<double> baselinesOf(const std::vector<fonts::SGlyphRunDesc>& runs) {
        std::vector<double> baselines;
        for (const fonts::SGlyphRunDesc& run : runs)
            if (baselines.empty() || baselines.back() != run.baselineOrigin.y)
                baselines.push_back(run.baselineOrigin.y);
        return baselines;
    }

    static render::CRichTextParagraph underlined(std::wstring text) {
        render::CRichTextParagraph paragraph = testdocuments::makeParagraph(std::move(text));
        paragraph.tokens[0].fontStyle.underline = true;
        return paragraph;
    }

    std::unique_ptr<fonts::IRichTextDocumentLayouting> layOutClusters(const render::CRichTextDocument& document,
                                                                      const MbRect& box) {
        auto layouting = fonts::CRichTextDocumentLayoutingFactory(service.get()).createForDxfMTextsByClusters(document);
        layouting->setLayoutRect(box);
        layouting->layout();
        EXPECT_EQ(layouting->getRects().size(), layouting->getParagraphs().size());
        return layouting;
    }

    // The clusters' texts, in the order in which they were produced.
    static std::vector<std::wstring> clusterTexts(const fonts::IRichTextDocumentLayouting& layouting) {
        std::vector<std::wstring> texts;
        for (const render::CRichTextParagraph& paragraph : layouting.getParagraphs())
            texts.push_back(paragraph.tokens.at(0).text);
        return texts;
    }
};
