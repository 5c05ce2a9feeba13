#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <FontEngine/FontEngine.h>
#include <FontEngine/RichTextDocumentProcessor.h>
#include <gtest/gtest.h>

#include "property/RandomDocuments.h"

namespace property {
namespace {

constexpr int paragraphCount = 500;

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

/// Where the caret before `position` stands.
std::pair<float, float> caretAt(IDWriteTextLayout& layout, UINT32 position) {
    DWRITE_HIT_TEST_METRICS hit{};
    std::pair<float, float> caret;
    EXPECT_EQ(S_OK, layout.HitTestTextPosition(position, FALSE, &caret.first, &caret.second, &hit));
    return caret;
}

/// The family that draws each unit of the text.
std::vector<std::wstring> familiesOf(const fonts::SLayoutDesc& layout) {
    std::vector<std::wstring> families;
    for (const fonts::SLayoutRun& run : layout.runs) {
        families.insert(families.end(), run.range.length, run.token.fontFamily);
    }
    return families;
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
        for (float width = 2.0F; width < 600.0F; width *= 1.31F) {
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

TEST_F(LineProperties, CuttingATokenInTwoMovesNothing) {
    RandomDocuments random(13);
    int cuts = 0;
    int inOtherFonts = 0;
    for (int i = 0; i < paragraphCount; ++i) {
        SCOPED_TRACE(i);
        const render::CRichTextParagraph paragraph = random.paragraph();
        const fonts::SLayoutDesc whole = layOut(paragraph);
        const auto clusters = clustersOf(*whole.pObject);
        // Between clusters: what is drawn together goes by the style of its first unit.
        std::size_t cut = 0;
        for (std::size_t left = 1 + random.below(clusters.size()), next = 0; next < left; ++next) {
            cut += clusters[next].length;
        }
        render::CRichTextParagraph parts;
        parts.alignment = paragraph.alignment;
        parts.noWrap = paragraph.noWrap;
        std::size_t start = 0;
        for (const render::SRichTextToken& token : paragraph.tokens) {
            const std::size_t end = start + token.text.size();
            parts.tokens.push_back(token);
            if (start < cut && cut < end) {
                parts.tokens.back().text = token.text.substr(0, cut - start);
                parts.tokens.push_back(token);
                parts.tokens.back().text = token.text.substr(cut - start);
                ++cuts;
            }
            start = end;
        }
        const fonts::SLayoutDesc divided = layOut(parts);
        if (familiesOf(whole) != familiesOf(divided)) {
            // Fallback looks at one token at a time: a newline or a comma may go with neighbours in its own token only.
            ++inOtherFonts;
            continue;
        }
        const float width = 5.0F + static_cast<float>(random.below(200));
        EXPECT_EQ(S_OK, whole.pObject->SetMaxWidth(width));
        EXPECT_EQ(S_OK, divided.pObject->SetMaxWidth(width));
        const auto length = static_cast<UINT32>(start);
        for (UINT32 position = 0; position <= length; ++position) {
            ASSERT_EQ(caretAt(*whole.pObject, position), caretAt(*divided.pObject, position))
                << position << " after a cut at " << cut;
        }
    }
    EXPECT_LE(paragraphCount / 2, cuts);
    EXPECT_GE(paragraphCount / 10, inOtherFonts);
}

} // namespace
} // namespace property
