#include <array>
#include <cstddef>
#include <cstdint>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "property/Measurer.h"
#include "property/RandomDocuments.h"

namespace property {
namespace {

constexpr int documentCount = 2000;

class DocumentProperties : public testing::Test {
protected:
    Measurer m_measurer;
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

MbRect times(const MbRect& rect, double factor) {
    return rect.isEmpty() ? rect
                          : MbRect(rect.xmin * factor, rect.ymin * factor, rect.xmax * factor, rect.ymax * factor);
}

void expectSame(const std::vector<fonts::SGlyphRunDesc>& first, const std::vector<fonts::SGlyphRunDesc>& second) {
    ASSERT_EQ(first.size(), second.size());
    for (std::size_t run = 0; run < first.size(); ++run) {
        EXPECT_EQ(first[run].text, second[run].text);
        EXPECT_EQ(first[run].textPosition, second[run].textPosition);
        EXPECT_EQ(first[run].bounds, second[run].bounds);
        EXPECT_EQ(first[run].clusterMap, second[run].clusterMap);
        EXPECT_EQ(first[run].token.fontFamily, second[run].token.fontFamily);
        ASSERT_EQ(first[run].glyphOrigins.size(), second[run].glyphOrigins.size());
        for (std::size_t glyph = 0; glyph < first[run].glyphOrigins.size(); ++glyph) {
            EXPECT_EQ(first[run].glyphOrigins[glyph].x, second[run].glyphOrigins[glyph].x);
            EXPECT_EQ(first[run].glyphOrigins[glyph].y, second[run].glyphOrigins[glyph].y);
        }
    }
}

TEST_F(DocumentProperties, LayoutIsDeterministicInWhateverOrderDocumentsCome) {
    constexpr double width = 60.0;
    RandomDocuments random(1);
    std::vector<render::CRichTextDocument> documents;
    std::vector<std::vector<fonts::SGlyphRunDesc>> runs;
    std::vector<MbRect> boxes;
    for (int i = 0; i < documentCount; ++i) {
        documents.push_back(random.document());
        runs.push_back(m_measurer.runs(documents.back().paragraphs.at(0), width));
        boxes.push_back(m_measurer.metrics->getDocumentRect(documents.back()));
    }
    // Another thread remembers nothing of what this one has shaped.
    std::thread([&] {
        const Measurer backwards;
        for (std::size_t i = documents.size(); i-- > 0;) {
            SCOPED_TRACE(i);
            EXPECT_EQ(boxes[i], backwards.metrics->getDocumentRect(documents[i]));
            expectSame(runs[i], backwards.runs(documents[i].paragraphs.at(0), width));
        }
    }).join();
}

/// How much of a paragraph's height lies above the line at which it is aligned.
double shareAbove(const render::CRichTextParagraph& paragraph) {
    switch (paragraph.verticalAlignment) {
    case render::eRichTextParagraphVerticalAlignment::Middle:
        return 0.5;
    case render::eRichTextParagraphVerticalAlignment::Bottom:
        return 1.0;
    default:
        return 0.0;
    }
}

TEST_F(DocumentProperties, ParagraphsStackWithoutGapsAndSumToTheDocument) {
    RandomDocuments random(3);
    for (int i = 0; i < documentCount; ++i) {
        SCOPED_TRACE(i);
        const render::CRichTextDocument document = random.document();
        const std::vector<MbRect> rects = m_measurer.metrics->getParagraphRects(document, 0.0, 0.0);
        ASSERT_EQ(static_cast<std::size_t>(document.paragraphs.size()), rects.size());
        double top = 0.0;
        for (std::size_t i = 0; i < rects.size(); ++i) {
            // Without a limit of height a paragraph has no room to stand lower or higher in; it keeps to its alignment
            // with the line on which it begins.
            const double height = rects[i].ymax - rects[i].ymin;
            EXPECT_NEAR(top + shareAbove(document.paragraphs.at(static_cast<std::int32_t>(i))) * height, rects[i].ymax,
                        1e-3);
            top -= height;
        }
        const MbRect whole = m_measurer.metrics->getDocumentRect(document);
        EXPECT_NEAR(0.0, whole.ymax, 1e-3);
        EXPECT_NEAR(top, whole.ymin, 1e-3);
    }
}

TEST_F(DocumentProperties, SizesScaleLinearly) {
    RandomDocuments random(4);
    for (int i = 0; i < documentCount; ++i) {
        SCOPED_TRACE(i);
        const render::CRichTextDocument document = random.document();
        const MbRect rect = m_measurer.metrics->getDocumentRect(document);
        constexpr std::array factors{0.1F, 3.0F, 1000.0F};
        const float factor = factors[random.below(factors.size())];
        const MbRect larger = m_measurer.metrics->getDocumentRect(scaled(document, factor));
        const double precision = 2e-5 * factor * (1.0 + rect.xmax - rect.ymin);
        expectNear(times(rect, factor), larger, precision);
    }
}

TEST_F(DocumentProperties, WrappedTextAndInkScaleExactlyByPowersOfTwo) {
    // Four measurements each: fewer documents, in the time of the others.
    constexpr int fewer = 1200;
    RandomDocuments random(6);
    for (int i = 0; i < fewer; ++i) {
        SCOPED_TRACE(i);
        const render::CRichTextDocument document = random.document();
        const double width = 5.0 + static_cast<double>(random.below(100));
        const float factor = random.below(2) == 0 ? 0.125F : 64.0F;
        const auto boxes = m_measurer.metrics->getParagraphRects(document, width, 0.0);
        const auto larger = m_measurer.metrics->getParagraphRects(scaled(document, factor), width * factor, 0.0);
        ASSERT_EQ(boxes.size(), larger.size());
        for (std::size_t box = 0; box < boxes.size(); ++box) {
            EXPECT_EQ(times(boxes[box], factor), larger[box]) << box;
        }
        // The baselines that ink stands on are rounded to hundredths, whatever the size.
        const MbRect ink = times(m_measurer.metrics->getDocumentGeometryRect(document, width, 0.0), factor);
        const MbRect largerInk =
            m_measurer.metrics->getDocumentGeometryRect(scaled(document, factor), width * factor, 0.0);
        const double rounding = 0.00501 * (1.0 + factor);
        EXPECT_EQ(ink.xmin, largerInk.xmin);
        EXPECT_EQ(ink.xmax, largerInk.xmax);
        EXPECT_NEAR(ink.ymin, largerInk.ymin, rounding);
        EXPECT_NEAR(ink.ymax, largerInk.ymax, rounding);
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
