#include <memory>
#include <vector>

#include <FontEngine/FontEngine.h>
#include <gtest/gtest.h>

#include "property/RandomDocuments.h"

namespace property {
namespace {

constexpr int documentCount = 400;

struct Measurer {
    std::unique_ptr<fonts::IFontEngine> engine = fonts::createFontEngine(L"DejaVu Sans");
    std::unique_ptr<fonts::ITextMetrics> metrics = fonts::createTextMetricsService(engine.get());

    std::vector<fonts::SGlyphRunDesc> runs(const render::CRichTextParagraph& paragraph, double maxWidth) const {
        std::vector<boost::intrusive_ptr<MbRegion>> regions;
        return metrics->getGlyphRuns(paragraph, maxWidth, 0.0, {}, regions);
    }
};

class DocumentProperties : public testing::Test {
protected:
    Measurer m_measurer;

    std::unique_ptr<fonts::IRichTextDocumentLayouting> layOut(const render::CRichTextDocument& document,
                                                              const MbRect& box, bool byInk) const {
        auto layouting = fonts::CRichTextDocumentLayoutingFactory(m_measurer.metrics.get()).create(document);
        layouting->setLayoutRect(box);
        layouting->setAlignByTextBounds(byInk);
        layouting->layout();
        return layouting;
    }
};

void expectNear(const MbRect& expected, const MbRect& actual, double tolerance) {
    ASSERT_EQ(expected.isEmpty(), actual.isEmpty());
    if (expected.isEmpty()) {
        return;
    }
    EXPECT_NEAR(expected.xmin, actual.xmin, tolerance);
    EXPECT_NEAR(expected.ymin, actual.ymin, tolerance);
    EXPECT_NEAR(expected.xmax, actual.xmax, tolerance);
    EXPECT_NEAR(expected.ymax, actual.ymax, tolerance);
}

TEST_F(DocumentProperties, LayoutIsDeterministic) {
    const Measurer other;
    RandomDocuments random(1);
    for (int i = 0; i < documentCount; ++i) {
        SCOPED_TRACE(i);
        const render::CRichTextDocument document = random.document();
        const double width = 20.0 + static_cast<double>(random.below(100));
        EXPECT_EQ(m_measurer.metrics->getParagraphRects(document, width, 0.0),
                  other.metrics->getParagraphRects(document, width, 0.0));
        EXPECT_EQ(m_measurer.metrics->getDocumentGeometryRect(document, width, 0.0),
                  other.metrics->getDocumentGeometryRect(document, width, 0.0));
        const auto first = m_measurer.runs(document.paragraphs.at(0), width);
        const auto second = other.runs(document.paragraphs.at(0), width);
        ASSERT_EQ(first.size(), second.size());
        for (std::size_t run = 0; run < first.size(); ++run) {
            EXPECT_EQ(first[run].text, second[run].text);
            EXPECT_EQ(first[run].bounds, second[run].bounds);
            EXPECT_EQ(first[run].clusterMap, second[run].clusterMap);
            EXPECT_EQ(first[run].token.fontFamily, second[run].token.fontFamily);
        }
    }
}

TEST_F(DocumentProperties, BoxesAndInkMoveWithTheOrigin) {
    RandomDocuments random(2);
    for (int i = 0; i < documentCount; ++i) {
        SCOPED_TRACE(i);
        const render::CRichTextDocument document = random.document();
        const double dx = static_cast<double>(random.below(2000)) - 1000.0;
        const double dy = static_cast<double>(random.below(2000)) - 1000.0;
        const bool byInk = random.below(2) == 0;
        const MbRect box(0.0, 0.0, 80.0, 300.0);
        MbRect moved = box;
        moved.Move(dx, dy);
        const std::vector<MbRect> rects = layOut(document, box, byInk)->getRects();
        const std::vector<MbRect> movedRects = layOut(document, moved, byInk)->getRects();
        ASSERT_EQ(rects.size(), movedRects.size());
        for (std::size_t rect = 0; rect < rects.size(); ++rect) {
            MbRect expected = rects[rect];
            expected.Move(dx, dy);
            expectNear(expected, movedRects[rect], 1e-6);
        }
    }
}

TEST_F(DocumentProperties, ParagraphsStackWithoutGapsAndSumToTheDocument) {
    RandomDocuments random(3);
    for (int i = 0; i < documentCount; ++i) {
        SCOPED_TRACE(i);
        const render::CRichTextDocument document = random.document();
        const std::vector<MbRect> rects = m_measurer.metrics->getParagraphRects(document, 0.0, 0.0);
        ASSERT_EQ(static_cast<std::size_t>(document.paragraphs.size()), rects.size());
        double bottom = 0.0;
        double heights = 0.0;
        for (const MbRect& rect : rects) {
            EXPECT_NEAR(bottom, rect.ymax, 1e-3);
            bottom = rect.ymin;
            heights += rect.ymax - rect.ymin;
        }
        const MbRect whole = m_measurer.metrics->getDocumentRect(document);
        EXPECT_NEAR(heights, whole.ymax - whole.ymin, 1e-3);
    }
}

TEST_F(DocumentProperties, SizesScaleLinearly) {
    RandomDocuments random(4);
    for (int i = 0; i < documentCount; ++i) {
        SCOPED_TRACE(i);
        const render::CRichTextDocument document = random.document();
        const MbRect rect = m_measurer.metrics->getDocumentRect(document);
        for (const float factor : {0.1F, 3.0F, 1000.0F}) {
            const MbRect larger = m_measurer.metrics->getDocumentRect(scaled(document, factor));
            const double precision = 2e-5 * factor * (1.0 + rect.xmax - rect.ymin);
            expectNear(MbRect(rect.xmin * factor, rect.ymin * factor, rect.xmax * factor, rect.ymax * factor), larger,
                       precision);
        }
    }
}

TEST_F(DocumentProperties, EveryUnitIsDrawnInExactlyOneClusterOfOneRun) {
    RandomDocuments random(5);
    for (int i = 0; i < documentCount; ++i) {
        SCOPED_TRACE(i);
        const render::CRichTextParagraph paragraph = random.paragraph();
        const std::wstring text = textOf(paragraph);
        std::vector<int> drawn(text.size());
        for (const fonts::SGlyphRunDesc& run :
             m_measurer.runs(paragraph, 10.0 + static_cast<double>(random.below(90)))) {
            ASSERT_EQ(run.text.size(), run.clusterMap.size());
            ASSERT_LE(run.textPosition + run.text.size(), text.size());
            EXPECT_EQ(text.substr(run.textPosition, run.text.size()), run.text);
            for (std::size_t unit = 0; unit < run.text.size(); ++unit) {
                ++drawn[run.textPosition + unit];
                EXPECT_TRUE(unit == 0 || run.clusterMap[unit - 1] <= run.clusterMap[unit]);
                EXPECT_TRUE(run.glyphOrigins.empty() || run.clusterMap[unit] < run.glyphOrigins.size());
            }
        }
        EXPECT_EQ(std::vector<int>(text.size(), 1), drawn);
    }
}

} // namespace
} // namespace property
