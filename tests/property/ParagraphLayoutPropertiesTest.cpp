#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <memory>
#include <vector>

#include <FontEngine/FontEngine.h>
#include <FontEngine/RichTextDocumentProcessor.h>
#include <gtest/gtest.h>

#include "property/RandomDocuments.h"

// What a paragraph layout answers is what the text metrics service and the platform answer, and its own answers agree
// with one another.
namespace property {
namespace {

constexpr int paragraphCount = 400;
constexpr double tabStopWidth = 20.0;

void expectSame(const MbRect& a, const MbRect& b) {
    EXPECT_EQ(a.isEmpty(), b.isEmpty());
    if (!a.isEmpty() && !b.isEmpty()) {
        EXPECT_DOUBLE_EQ(a.xmin, b.xmin);
        EXPECT_DOUBLE_EQ(a.ymin, b.ymin);
        EXPECT_DOUBLE_EQ(a.xmax, b.xmax);
        EXPECT_DOUBLE_EQ(a.ymax, b.ymax);
    }
}

// Takes the bounds of outlines; those of curves from many points on them.
class BoundsSink final : public fonts::IOutlineSink {
public:
    MbRect bounds;

    void moveTo(MbCartPoint point) override { lineTo(point); }
    void lineTo(MbCartPoint point) override {
        m_at = point;
        bounds.IncludeX(point.x);
        bounds.IncludeY(point.y);
    }
    void cubicTo(MbCartPoint b, MbCartPoint c, MbCartPoint d) override {
        const MbCartPoint a = m_at;
        constexpr int steps = 64;
        for (int i = 1; i <= steps; ++i) {
            const double t = static_cast<double>(i) / steps;
            const double s = 1.0 - t;
            lineTo({s * s * s * a.x + 3 * s * s * t * b.x + 3 * s * t * t * c.x + t * t * t * d.x,
                    s * s * s * a.y + 3 * s * s * t * b.y + 3 * s * t * t * c.y + t * t * t * d.y});
        }
    }
    void close() override {}

private:
    MbCartPoint m_at;
};

class ParagraphLayoutProperties : public testing::Test {
protected:
    std::unique_ptr<fonts::IFontEngine> m_engine = fonts::createFontEngine(L"DejaVu Sans");
    std::unique_ptr<fonts::ITextMetrics> m_metrics = fonts::createTextMetricsService(m_engine.get());

    render::CRichTextParagraph randomParagraph(RandomDocuments& random) {
        using enum render::eRichTextParagraphAlignment;
        using Vertical = render::eRichTextParagraphVerticalAlignment;
        render::CRichTextParagraph paragraph = random.paragraph();
        constexpr std::array alignments{Left, Right, Center, Justify};
        constexpr std::array verticals{Vertical::Top, Vertical::Middle, Vertical::Bottom};
        paragraph.alignment = alignments[random.below(alignments.size())];
        paragraph.verticalAlignment = verticals[random.below(verticals.size())];
        paragraph.noWrap = random.below(5) == 0;
        for (render::SRichTextToken& token : paragraph.tokens) {
            token.fontStyle.underline = random.below(4) == 0;
        }
        return paragraph;
    }

    fonts::SParagraphLayoutOptions randomOptions(RandomDocuments& random) {
        fonts::SParagraphLayoutOptions options;
        options.tabStopWidth = tabStopWidth;
        options.maxWidth = random.below(4) == 0 ? 0.0 : 5.0 + static_cast<double>(random.below(150));
        options.maxHeight = random.below(2) == 0 ? 0.0 : static_cast<double>(random.below(200));
        if (random.below(4) == 0) {
            options.direction = fonts::EReadingDirection::RightToLeft;
        }
        return options;
    }
};

TEST_F(ParagraphLayoutProperties, BoxInkAndRunsAreThoseOfTheTextMetricsService) {
    RandomDocuments random(101);
    for (int i = 0; i < paragraphCount; ++i) {
        SCOPED_TRACE(i);
        const render::CRichTextParagraph paragraph = randomParagraph(random);
        fonts::SParagraphLayoutOptions options = randomOptions(random);
        options.direction = fonts::EReadingDirection::LeftToRight;
        const auto layout = fonts::CParagraphLayout::make(paragraph, *m_engine, options);

        render::CRichTextDocument document = render::makeDocument({paragraph});
        document.tabStopWidth = static_cast<float>(tabStopWidth);
        expectSame(m_metrics->getParagraphRects(document, options.maxWidth, options.maxHeight).at(0), layout.box());
        expectSame(m_metrics->getParagraphGeometryRects(document, options.maxWidth, options.maxHeight).at(0),
                   layout.ink());
        const MbRect natural = m_metrics->getDocumentRect(document);
        EXPECT_NEAR(natural.xmax - natural.xmin, layout.naturalWidth(), 1e-4 * (1.0 + layout.naturalWidth()));

        std::vector<boost::intrusive_ptr<MbRegion>> bars;
        const auto runs = m_metrics->getGlyphRuns(paragraph, options.maxWidth, options.maxHeight, tabStopWidth, bars);
        std::size_t glyph = 0;
        for (const fonts::SGlyphRunDesc& run : runs) {
            if (run.glyphOrigins.empty()) {
                continue;
            }
            ASSERT_LE(glyph + run.glyphOrigins.size(), layout.glyphs().size());
            const auto own = std::find_if(layout.runs().begin(), layout.runs().end(),
                                          [&](const fonts::SRun& candidate) { return candidate.firstGlyph == glyph; });
            ASSERT_NE(layout.runs().end(), own);
            EXPECT_EQ(run.textPosition, own->range.startPosition);
            EXPECT_DOUBLE_EQ(run.baselineOrigin.y, own->origin.y);
            for (const MbCartPoint& origin : run.glyphOrigins) {
                const fonts::SGlyph& drawn = layout.glyphs()[glyph++];
                EXPECT_NEAR(origin.y, drawn.origin.y, 1e-9);
                if (!own->isRightToLeft()) {
                    EXPECT_NEAR(origin.x, drawn.origin.x, 1e-4);
                }
            }
        }
        EXPECT_EQ(layout.glyphs().size(), glyph);
        ASSERT_EQ(bars.size(), layout.bars().size());
        for (std::size_t bar = 0; bar < bars.size(); ++bar) {
            expectSame(bars[bar]->boundingRect(), layout.bars()[bar].rect);
        }
    }
}

TEST_F(ParagraphLayoutProperties, ClustersStandWhereThePlatformHitsThem) {
    RandomDocuments random(102);
    for (int i = 0; i < paragraphCount; ++i) {
        SCOPED_TRACE(i);
        const render::CRichTextParagraph paragraph = randomParagraph(random);
        const fonts::SParagraphLayoutOptions options = randomOptions(random);
        const auto layout = fonts::CParagraphLayout::make(paragraph, *m_engine, options);
        const fonts::SLayoutDesc platform =
            fonts::CRichTextDocumentProcessor::process(paragraph, m_engine.get(), tabStopWidth);
        if (options.maxWidth > 0.0) {
            platform.pObject->SetMaxWidth(static_cast<float>(options.maxWidth));
        }
        if (options.maxHeight > 0.0) {
            platform.pObject->SetMaxHeight(static_cast<float>(options.maxHeight));
        }
        if (options.direction == fonts::EReadingDirection::RightToLeft) {
            platform.pObject->SetReadingDirection(DWRITE_READING_DIRECTION_RIGHT_TO_LEFT);
        }
        for (const fonts::SCluster& cluster : layout.clusters()) {
            FLOAT x = 0.0F;
            FLOAT y = 0.0F;
            DWRITE_HIT_TEST_METRICS hit = {};
            ASSERT_EQ(S_OK, platform.pObject->HitTestTextPosition(cluster.range.startPosition, FALSE, &x, &y, &hit));
            const double slack = 1e-3;
            EXPECT_NEAR(hit.left, cluster.rect.xmin, slack) << cluster.range.startPosition;
            EXPECT_NEAR(hit.left + hit.width, cluster.rect.xmax, slack) << cluster.range.startPosition;
            EXPECT_NEAR(-hit.top, cluster.rect.ymax, slack);
            EXPECT_NEAR(-hit.top - hit.height, cluster.rect.ymin, slack);
            EXPECT_NEAR(x, layout.caret(cluster.range.startPosition).x, slack);
        }
    }
}

TEST_F(ParagraphLayoutProperties, AHitOfACaretLeadsToItsPlace) {
    RandomDocuments random(103);
    for (int i = 0; i < paragraphCount; ++i) {
        SCOPED_TRACE(i);
        const auto layout = fonts::CParagraphLayout::make(randomParagraph(random), *m_engine, randomOptions(random));
        for (const fonts::SCluster& cluster : layout.clusters()) {
            for (const bool isTrailing : {false, true}) {
                if (isTrailing && cluster.isNewline) {
                    continue; // behind a newline lies the next line
                }
                const fonts::SCaret caret = layout.caret(cluster.range.startPosition, isTrailing);
                const fonts::SHit hit = layout.hit({caret.x, (caret.bottom + caret.top) / 2.0});
                const fonts::SCaret again = layout.caret(hit.position, hit.isTrailing);
                EXPECT_EQ(caret.line, again.line);
                EXPECT_NEAR(caret.x, again.x, 1e-3) << cluster.range.startPosition << isTrailing;
            }
        }
    }
}

TEST_F(ParagraphLayoutProperties, RectanglesOfARangeCoverExactlyItsClusters) {
    RandomDocuments random(104);
    for (int i = 0; i < paragraphCount; ++i) {
        SCOPED_TRACE(i);
        const auto layout = fonts::CParagraphLayout::make(randomParagraph(random), *m_engine, randomOptions(random));
        const auto length = static_cast<std::uint32_t>(layout.text().length());
        const auto start = static_cast<std::uint32_t>(random.below(length + 1));
        const auto end = start + static_cast<std::uint32_t>(random.below(length - start + 1));
        const std::vector<MbRect> rects = layout.rectsOf({start, end - start});
        double covered = 0.0;
        for (const MbRect& rect : rects) {
            covered += rect.xmax - rect.xmin;
        }
        double expected = 0.0;
        for (const fonts::SCluster& cluster : layout.clusters()) {
            const bool isTouched = start < end && cluster.range.startPosition < end &&
                                   cluster.range.startPosition + cluster.range.length > start;
            if (!isTouched) {
                continue;
            }
            expected += cluster.rect.xmax - cluster.rect.xmin;
            EXPECT_TRUE(std::any_of(rects.begin(), rects.end(), [&](const MbRect& rect) {
                return rect.xmin <= cluster.rect.xmin && rect.xmax >= cluster.rect.xmax &&
                       rect.ymin == cluster.rect.ymin && rect.ymax == cluster.rect.ymax;
            })) << cluster.range.startPosition;
        }
        EXPECT_NEAR(expected, covered, 1e-3 * (1.0 + expected));
    }
}

TEST_F(ParagraphLayoutProperties, OutlinesFillTheInkBox) {
    RandomDocuments random(105);
    for (int i = 0; i < paragraphCount / 2; ++i) {
        SCOPED_TRACE(i);
        const render::CRichTextParagraph paragraph = randomParagraph(random);
        fonts::SParagraphLayoutOptions options = randomOptions(random);
        if (random.below(2) == 0) {
            for (std::size_t token = 0; token < paragraph.tokens.size(); ++token) {
                fonts::SRunFormat& format = options.runFormats.emplace_back();
                format.widthFactor = 0.5 + 0.25 * static_cast<double>(random.below(6));
                format.obliqueAngle = -20.0 + 10.0 * static_cast<double>(random.below(5));
                format.baselineShift = static_cast<double>(random.below(3));
                format.tracking = 0.5 * static_cast<double>(random.below(3));
            }
        }
        const auto layout = fonts::CParagraphLayout::make(paragraph, *m_engine, options);
        BoundsSink sink;
        layout.outline(sink);
        EXPECT_EQ(layout.ink().isEmpty(), sink.bounds.isEmpty());
        if (layout.ink().isEmpty()) {
            continue;
        }
        // Curves were taken at 64 points; single precision holds a position to 1e-4 of some hundred units.
        constexpr double slack = 5e-3;
        EXPECT_NEAR(layout.ink().xmin, sink.bounds.xmin, slack);
        EXPECT_NEAR(layout.ink().xmax, sink.bounds.xmax, slack);
        EXPECT_NEAR(layout.ink().ymin, sink.bounds.ymin, slack);
        EXPECT_NEAR(layout.ink().ymax, sink.bounds.ymax, slack);
    }
}

TEST_F(ParagraphLayoutProperties, LinesAloneAreThoseOfAWholeLayout) {
    RandomDocuments random(106);
    for (int i = 0; i < paragraphCount; ++i) {
        SCOPED_TRACE(i);
        const render::CRichTextParagraph paragraph = randomParagraph(random);
        fonts::SParagraphLayoutOptions options = randomOptions(random);
        const auto whole = fonts::CParagraphLayout::make(paragraph, *m_engine, options);
        options.detail = fonts::EParagraphDetail::Lines;
        const auto lines = fonts::CParagraphLayout::make(paragraph, *m_engine, options);
        EXPECT_TRUE(lines.runs().empty());
        EXPECT_TRUE(lines.clusters().empty());
        expectSame(whole.box(), lines.box());
        expectSame(whole.ink(), lines.ink());
        ASSERT_EQ(whole.lines().size(), lines.lines().size());
        for (std::size_t line = 0; line < whole.lines().size(); ++line) {
            EXPECT_EQ(whole.lines()[line].range, lines.lines()[line].range);
            EXPECT_EQ(whole.lines()[line].baseline, lines.lines()[line].baseline);
            EXPECT_EQ(whole.lines()[line].left, lines.lines()[line].left);
            EXPECT_EQ(whole.lines()[line].width, lines.lines()[line].width);
        }
        ASSERT_EQ(whole.bars().size(), lines.bars().size());
        for (std::size_t bar = 0; bar < whole.bars().size(); ++bar) {
            expectSame(whole.bars()[bar].rect, lines.bars()[bar].rect);
            EXPECT_EQ(whole.bars()[bar].token, lines.bars()[bar].token);
        }
    }
}

TEST_F(ParagraphLayoutProperties, AWidthFactorOfAllTokensStretchesTheWholeResult) {
    RandomDocuments random(107);
    for (int i = 0; i < paragraphCount; ++i) {
        SCOPED_TRACE(i);
        const render::CRichTextParagraph paragraph = randomParagraph(random);
        fonts::SParagraphLayoutOptions options = randomOptions(random);
        const auto plain = fonts::CParagraphLayout::make(paragraph, *m_engine, options);
        options.maxWidth *= 2.0;
        options.tabStopWidth *= 2.0;
        options.runFormats.resize(paragraph.tokens.size());
        for (fonts::SRunFormat& format : options.runFormats) {
            format.widthFactor = 2.0;
        }
        const auto stretched = fonts::CParagraphLayout::make(paragraph, *m_engine, options);
        ASSERT_EQ(plain.clusters().size(), stretched.clusters().size());
        for (std::size_t cluster = 0; cluster < plain.clusters().size(); ++cluster) {
            const MbRect& narrow = plain.clusters()[cluster].rect;
            expectSame(MbRect(2.0 * narrow.xmin, narrow.ymin, 2.0 * narrow.xmax, narrow.ymax),
                       stretched.clusters()[cluster].rect);
        }
        EXPECT_DOUBLE_EQ(2.0 * plain.naturalWidth(), stretched.naturalWidth());
        if (!plain.ink().isEmpty()) {
            EXPECT_NEAR(2.0 * plain.ink().xmin, stretched.ink().xmin, 1e-3);
            EXPECT_NEAR(2.0 * plain.ink().xmax, stretched.ink().xmax, 1e-3);
        }
    }
}

TEST_F(ParagraphLayoutProperties, AWidthFactorOfOneTokenStretchesItsClusters) {
    RandomDocuments random(108);
    int compared = 0;
    for (int i = 0; i < paragraphCount; ++i) {
        SCOPED_TRACE(i);
        const render::CRichTextParagraph paragraph = randomParagraph(random);
        if (paragraph.tokens.size() < 2) {
            continue;
        }
        fonts::SParagraphLayoutOptions options = randomOptions(random);
        options.maxWidth = 0.0;
        options.wrapping = fonts::EWrapping::NoWrap;
        const auto plain = fonts::CParagraphLayout::make(paragraph, *m_engine, options);
        options.runFormats.resize(paragraph.tokens.size());
        options.runFormats[1].widthFactor = 0.75;
        const auto stretched = fonts::CParagraphLayout::make(paragraph, *m_engine, options);
        const std::size_t begin = paragraph.tokens[0].text.length();
        const std::size_t end = begin + paragraph.tokens[1].text.length();
        ASSERT_EQ(plain.clusters().size(), stretched.clusters().size());
        for (std::size_t at = 0; at < plain.clusters().size(); ++at) {
            const fonts::SCluster& before = plain.clusters()[at];
            const fonts::SCluster& after = stretched.clusters()[at];
            const std::uint32_t position = before.range.startPosition;
            if (before.run == fonts::noIndex || plain.text()[position] == L'\t') {
                continue; // tabs end where their stop is
            }
            const double factor = position >= begin && position < end ? 0.75 : 1.0;
            EXPECT_NEAR(factor * (before.rect.xmax - before.rect.xmin), after.rect.xmax - after.rect.xmin, 1e-3)
                << position;
            ++compared;
        }
    }
    EXPECT_GT(compared, paragraphCount);
}

} // namespace
} // namespace property
