#include <array>
#include <cstddef>
#include <memory>
#include <vector>

#include <FontEngine/FontEngine.h>
#include <FontEngine/RichTextDocumentProcessor.h>
#include <gtest/gtest.h>

#include "property/RandomDocuments.h"

namespace property {
namespace {

constexpr int paragraphCount = 2000;

std::vector<DWRITE_CLUSTER_METRICS> clustersOf(IDWriteTextLayout& layout) {
    UINT32 count = 0;
    layout.GetClusterMetrics(nullptr, 0, &count);
    std::vector<DWRITE_CLUSTER_METRICS> clusters(count);
    EXPECT_EQ(S_OK, layout.GetClusterMetrics(clusters.data(), count, &count));
    return clusters;
}

DWRITE_TEXT_METRICS metricsOf(IDWriteTextLayout& layout) {
    DWRITE_TEXT_METRICS metrics{};
    EXPECT_EQ(S_OK, layout.GetMetrics(&metrics));
    return metrics;
}

class LineProperties : public testing::Test {
protected:
    std::unique_ptr<fonts::IFontEngine> m_engine = fonts::createFontEngine(L"DejaVu Sans");

    fonts::SLayoutDesc layOut(const render::CRichTextParagraph& paragraph) {
        return fonts::CRichTextDocumentProcessor::process(paragraph, m_engine.get(), 20.0);
    }
};

TEST_F(LineProperties, WideningNeverAddsLines) {
    RandomDocuments random(11);
    constexpr std::array wrappings{DWRITE_WORD_WRAPPING_WRAP, DWRITE_WORD_WRAPPING_WHOLE_WORD,
                                   DWRITE_WORD_WRAPPING_EMERGENCY_BREAK, DWRITE_WORD_WRAPPING_CHARACTER};
    for (int i = 0; i < paragraphCount; ++i) {
        SCOPED_TRACE(i);
        const fonts::SLayoutDesc layout = layOut(random.paragraph());
        EXPECT_EQ(S_OK, layout.pObject->SetWordWrapping(wrappings[random.below(wrappings.size())]));
        UINT32 before = 0xFFFFFFFF;
        // A dozen widths, elsewhere for every text.
        const float step = 1.3F + 0.01F * static_cast<float>(random.below(80));
        for (float width = 2.0F; width < 300.0F; width *= step) {
            EXPECT_EQ(S_OK, layout.pObject->SetMaxWidth(width));
            const UINT32 lines = metricsOf(*layout.pObject).lineCount;
            EXPECT_LE(lines, before) << width;
            before = lines;
        }
    }
}

TEST_F(LineProperties, ClustersAndLinesCoverTheTextOnce) {
    RandomDocuments random(12);
    for (int i = 0; i < paragraphCount; ++i) {
        SCOPED_TRACE(i);
        const render::CRichTextParagraph paragraph = random.paragraph();
        const fonts::SLayoutDesc layout = layOut(paragraph);
        EXPECT_EQ(S_OK, layout.pObject->SetMaxWidth(5.0F + static_cast<float>(random.below(100))));
        std::size_t units = 0;
        for (const DWRITE_CLUSTER_METRICS& cluster : clustersOf(*layout.pObject)) {
            EXPECT_NE(0, cluster.length);
            units += cluster.length;
        }
        EXPECT_EQ(textOf(paragraph).size(), units);
        const DWRITE_TEXT_METRICS metrics = metricsOf(*layout.pObject);
        std::vector<DWRITE_LINE_METRICS> lines(metrics.lineCount);
        UINT32 count = 0;
        ASSERT_EQ(S_OK, layout.pObject->GetLineMetrics(lines.data(), metrics.lineCount, &count));
        std::size_t ofLines = 0;
        float height = 0.0F;
        for (const DWRITE_LINE_METRICS& line : lines) {
            ofLines += line.length;
            height += line.height;
        }
        EXPECT_EQ(units, ofLines);
        EXPECT_NEAR(height, metrics.height, 1e-5F * height);
    }
}

} // namespace
} // namespace property
