// How often the program lays paragraphs out, and that the rectangles which it reads off one layout are the library's.

#include <cmath>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include <FontEngine/FontEngine.h>
#include <FontEngine/LayoutScale.h>

#include <Exploder.h>
#include <TextLayout.h>

#include "Drawings.h"

using namespace tooltest;

namespace {

constexpr tool::LayoutMode modes[] = {tool::LayoutMode::Document, tool::LayoutMode::MText, tool::LayoutMode::Clusters};

dxf::Drawing readExample() {
    std::ifstream file(FONTENGINE_EXAMPLES "/floor-plan.dxf", std::ios::binary);
    return dxf::readDrawing(file);
}

dxf::Drawing readTexts(const std::vector<std::string>& entities) {
    std::string all;
    for (const std::string& entity : entities) {
        all += (all.empty() ? "" : "\n") + entity;
    }
    std::istringstream file(drawing(all));
    return dxf::readDrawing(file);
}

/// Texts that differ in what decides where their rectangles stand.
dxf::Drawing fewTexts() {
    return readTexts(
        {mtextEntity(R"(AVAWA To, office\P\P  Second {\LjLine} )", "71 1"), mtextEntity(R"(One\Pa longer one)", "71 3"),
         mtextEntity(R"(One\Pa longer one)", "71 8"),
         mtextEntity(R"(\pl2,r1,qc;centred text that is wrapped\P\pqj;justified text, wrapped too)", "41 20"),
         mtextEntity(R"({\H5;Big} {\fLiberation Sans|b1|i1;bold} e)"
                     "\xCC\x81 \xE5\xAF\xB8\xE6\xB3\x95\xE3\x81\xAF",
                     "41 30"),
         mtextEntity("D-104 \xD7\x99\xD7\xA9 \xD9\x85\xD8\xAE\xD8\xB7 ab", "41 30")});
}

class Layouts : public testing::Test {
protected:
    template <class Visit>
    void forEachText(const dxf::Drawing& drawing, Visit visit) {
        dxf::placeTexts(drawing, [&](const dxf::PlacedText& placed) {
            if (placed.visible) {
                visit(placed, tool::makeTextDocument(drawing, placed, m_session.fontMap()));
            }
            return true;
        });
    }

    /// Layouts of paragraphs, without those of clusters alone.
    [[nodiscard]] std::size_t paragraphLayouts() {
        return m_session.layouts().made() - m_session.layouts().clustersMeasured();
    }

    tool::Session m_session;
};

/// What a cluster's measures depend on.
using ClusterKey = std::tuple<std::wstring, std::wstring, float, bool, bool>;

ClusterKey keyOf(const render::SRichTextToken& token, double scale) {
    return {token.text, token.fontFamily, static_cast<float>(static_cast<double>(token.fontCapSize) * scale),
            token.fontStyle.bold, token.fontStyle.italic};
}

TEST_F(Layouts, EachParagraphOfTheExampleIsLaidOutOnceInEveryMode) {
    const dxf::Drawing drawing = readExample();
    for (const tool::LayoutMode mode : modes) {
        for (const fonts::EParagraphDetail detail : {fonts::EParagraphDetail::Lines, fonts::EParagraphDetail::All}) {
            const std::size_t before = paragraphLayouts();
            const std::size_t measuredBefore = m_session.layouts().clustersMeasured();
            std::size_t paragraphs = 0;
            std::set<ClusterKey> clusters;
            forEachText(drawing, [&](const dxf::PlacedText& placed, const tool::TextDocument& document) {
                const tool::LaidOutText text =
                    tool::layOutText(m_session, placed, document, {.mode = mode, .detail = detail});
                EXPECT_TRUE(text.indentsExpressed) << "the example has no paragraph that needs a second layout";
                paragraphs += document.document.paragraphs.size();
                for (const tool::LaidOutParagraph& paragraph : text.paragraphs) {
                    for (const tool::LaidOutCluster& cluster : paragraph.clusters) {
                        if (!cluster.rect.isEmpty()) {
                            clusters.insert(keyOf(cluster.token, fonts::layoutScale(placed.text->height)));
                        }
                    }
                }
            });
            EXPECT_GT(paragraphs, 50U);
            EXPECT_EQ(paragraphLayouts() - before, paragraphs);
            EXPECT_EQ(m_session.layouts().clustersMeasured() - measuredBefore, clusters.size());
            EXPECT_EQ(clusters.empty(), mode != tool::LayoutMode::Clusters || detail == fonts::EParagraphDetail::Lines);
        }
    }
}

TEST_F(Layouts, OnlyAParagraphWhoseFirstLineStandsElsewhereIsLaidOutTwice) {
    const auto layoutsOf = [this](const std::string& entity) {
        const std::size_t before = paragraphLayouts();
        forEachText(readTexts({entity}), [this](const dxf::PlacedText& placed, const tool::TextDocument& document) {
            tool::layOutText(m_session, placed, document, {});
        });
        return paragraphLayouts() - before;
    };
    EXPECT_EQ(layoutsOf(mtextEntity(R"(\pi-1,l2;one two three)", "41 12.0")), 2U);
    EXPECT_EQ(layoutsOf(mtextEntity(R"(\pi-1,l2;one)", "41 12.0")), 1U);
    EXPECT_EQ(layoutsOf(mtextEntity(R"(\pl2;one two three)", "41 12.0")), 1U);
    EXPECT_EQ(layoutsOf(mtextEntity(R"(\pi-1,l2,qc;one two three\P\pqr;four)", "41 0.0")), 2U) << "two paragraphs";
}

TEST_F(Layouts, ExplodingLaysEachParagraphOutOnceAndEachDifferentPieceOnce) {
    const dxf::Drawing drawing = readExample();
    tool::Exploder exploder(m_session, drawing, tool::PieceKind::Clusters, false);
    std::size_t paragraphs = 0;
    for (const dxf::TextEntity& text : drawing.texts) {
        if (exploder.replaces(text)) {
            dxf::PlacedText placed;
            placed.text = &text;
            paragraphs += tool::makeTextDocument(drawing, placed, m_session.fontMap()).document.paragraphs.size();
        }
    }
    std::ifstream input(FONTENGINE_EXAMPLES "/floor-plan.dxf", std::ios::binary);
    std::ostringstream output;
    dxf::rewriteDrawing(input, output, drawing, exploder);
    EXPECT_EQ(exploder.counts().texts, 31U);
    EXPECT_GT(exploder.piecesMeasured(), 0U);
    EXPECT_LT(exploder.piecesMeasured(), exploder.counts().clusters);
    EXPECT_EQ(paragraphLayouts(), paragraphs + exploder.piecesMeasured());
}

/// Compares with the library's own layoutings, paragraph by paragraph.
class Rectangles : public Layouts {
protected:
    void compare(const dxf::Drawing& drawing) {
        forEachText(drawing, [this](const dxf::PlacedText& placed, const tool::TextDocument& document) {
            m_scale = fonts::layoutScale(placed.text->height);
            m_tolerance = 1e-6 * placed.text->height;
            const tool::LaidOutText plain = tool::layOutText(m_session, placed, document, {});
            const tool::LaidOutText mtext =
                tool::layOutText(m_session, placed, document, {.mode = tool::LayoutMode::MText});
            const tool::LaidOutText clusters =
                tool::layOutText(m_session, placed, document, {.mode = tool::LayoutMode::Clusters});
            for (std::size_t i = 0; i < plain.paragraphs.size(); ++i) {
                SCOPED_TRACE("paragraph " + std::to_string(i) + " of the text at line " +
                             std::to_string(placed.text->line));
                const MbRect& box = plain.paragraphs[i].box;
                render::CRichTextDocument alone =
                    render::makeDocument({document.document.paragraphs.at(static_cast<std::int32_t>(i))});
                alone.tabStopWidth = document.document.tabStopWidth;
                compareMText(fonts::scaledDocument(alone, m_scale), box, mtext.paragraphs[i]);
                compareClusters(fonts::scaledDocument(alone, m_scale), box, clusters.paragraphs[i]);
            }
        });
    }

    std::size_t m_compared = 0;
    std::size_t m_rightToLeft = 0;

private:
    void layOut(fonts::IRichTextDocumentLayouting& layouting, const MbRect& box) const {
        layouting.setLayoutRect(MbRect(box.xmin * m_scale, 0.0, box.xmax * m_scale, 0.0));
        layouting.layout();
    }

    /// A rectangle of the library's, where the paragraph's top stands at `top`.
    [[nodiscard]] MbRect placed(MbRect rect, double top) const {
        rect = MbRect(rect.xmin / m_scale, rect.ymin / m_scale, rect.xmax / m_scale, rect.ymax / m_scale);
        rect.Move(0.0, top);
        return rect;
    }

    void expectNear(const MbRect& rect, const MbRect& expected) {
        EXPECT_NEAR(rect.xmin, expected.xmin, m_tolerance);
        EXPECT_NEAR(rect.ymin, expected.ymin, m_tolerance);
        EXPECT_NEAR(rect.xmax, expected.xmax, m_tolerance);
        EXPECT_NEAR(rect.ymax, expected.ymax, m_tolerance);
        ++m_compared;
    }

    void compareMText(const render::CRichTextDocument& document, const MbRect& box,
                      const tool::LaidOutParagraph& paragraph) {
        const auto layouting = m_layoutings.createForDxfMTexts(document);
        layOut(*layouting, box);
        EXPECT_EQ(paragraph.box.isEmpty(), paragraph.ink.isEmpty());
        if (!paragraph.box.isEmpty()) {
            expectNear(paragraph.box, placed(layouting->getRects().at(0), box.ymax));
        }
    }

    void compareClusters(const render::CRichTextDocument& document, const MbRect& box,
                         const tool::LaidOutParagraph& paragraph) {
        const auto layouting = m_layoutings.createForDxfMTextsByClusters(document);
        layOut(*layouting, box);
        const std::vector<render::CRichTextParagraph> paragraphs = layouting->getParagraphs();
        const std::vector<MbRect> rects = layouting->getRects();
        ASSERT_EQ(paragraph.clusters.size(), rects.size());
        for (std::size_t i = 0; i < rects.size(); ++i) {
            const tool::LaidOutCluster& cluster = paragraph.clusters[i];
            EXPECT_EQ(cluster.token.text, paragraphs[i].tokens.at(0).text);
            EXPECT_EQ(cluster.token.fontFamily, paragraphs[i].tokens.at(0).fontFamily);
            const MbRect expected = placed(rects[i], box.ymax);
            if (cluster.rect.isEmpty()) {
                EXPECT_GT(expected.xmin, 1e100) << "the library places it";
            } else if (paragraph.layout.clusters()[cluster.index].isRightToLeft) {
                expectDrawnPlace(paragraph, cluster, expected);
            } else {
                expectNear(cluster.rect, expected);
            }
        }
    }

    /// As large and as high up as the library says, and there where the cluster is drawn.
    void expectDrawnPlace(const tool::LaidOutParagraph& paragraph, const tool::LaidOutCluster& cluster,
                          MbRect expected) {
        const MbRect drawn = paragraph.toText(paragraph.layout.clusters()[cluster.index].rect);
        const double bearing = cluster.rect.xmin - drawn.xmin;
        EXPECT_GE(bearing, 0.0);
        EXPECT_LT(bearing, drawn.xmax - drawn.xmin);
        expected.Move(cluster.rect.xmin - expected.xmin, 0.0);
        expectNear(cluster.rect, expected);
        ++m_rightToLeft;
    }

    fonts::CRichTextDocumentLayoutingFactory m_layoutings{&m_session.metrics()};
    double m_scale = 1.0;
    double m_tolerance = 0.0;
};

TEST_F(Rectangles, OfTheExampleAreTheLibrarys) {
    compare(readExample());
    EXPECT_GT(m_compared, 1000U);
    EXPECT_GT(m_rightToLeft, 50U);
}

TEST_F(Rectangles, OfTextsOfManyKindsAreTheLibrarys) {
    compare(fewTexts());
    EXPECT_GT(m_compared, 100U);
    EXPECT_GT(m_rightToLeft, 3U);
}

} // namespace
