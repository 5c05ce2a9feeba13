#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include <FontEngine/RichTextDocumentProcessor.h>
#include <gtest/gtest.h>

#include "property/Measurer.h"
#include "property/RandomDocuments.h"

namespace property {
namespace {

/// Everything that a layouting says of places.
struct Places {
    std::vector<MbRect> rects;
    std::vector<MbRect> bars;
};

Places layOut(fonts::IRichTextDocumentLayouting& layouting, const MbRect& box, bool alignByTextBounds) {
    layouting.setLayoutRect(box);
    layouting.setAlignByTextBounds(alignByTextBounds);
    layouting.layout();
    Places places{layouting.getRects(), {}};
    for (const auto& region : layouting.getRegions()) {
        places.bars.push_back(region->boundingRect());
    }
    return places;
}

bool isMoved(const MbRect& before, const MbRect& after, double dx, double dy) {
    constexpr double tolerance = 1e-6;
    return std::abs(before.xmin + dx - after.xmin) <= tolerance &&
           std::abs(before.ymin + dy - after.ymin) <= tolerance &&
           std::abs(before.xmax + dx - after.xmax) <= tolerance && std::abs(before.ymax + dy - after.ymax) <= tolerance;
}

/// Remembers where it is told to draw glyph runs and bars.
class PlaceRecorder final : public IDWriteTextRenderer {
public:
    std::vector<std::pair<FLOAT, FLOAT>> places;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE IsPixelSnappingDisabled(void*, BOOL* isDisabled) override {
        *isDisabled = TRUE;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetCurrentTransform(void*, DWRITE_MATRIX*) override { return E_FAIL; }
    HRESULT STDMETHODCALLTYPE GetPixelsPerDip(void*, FLOAT*) override { return E_FAIL; }
    HRESULT STDMETHODCALLTYPE DrawGlyphRun(void*, FLOAT x, FLOAT y, DWRITE_MEASURING_MODE, const DWRITE_GLYPH_RUN*,
                                           const DWRITE_GLYPH_RUN_DESCRIPTION*, IUnknown*) override {
        return record(x, y);
    }
    HRESULT STDMETHODCALLTYPE DrawUnderline(void*, FLOAT x, FLOAT y, const DWRITE_UNDERLINE*, IUnknown*) override {
        return record(x, y);
    }
    HRESULT STDMETHODCALLTYPE DrawStrikethrough(void*, FLOAT, FLOAT, const DWRITE_STRIKETHROUGH*, IUnknown*) override {
        return E_FAIL;
    }
    HRESULT STDMETHODCALLTYPE DrawInlineObject(void*, FLOAT, FLOAT, IDWriteInlineObject*, BOOL, BOOL,
                                               IUnknown*) override {
        return E_FAIL;
    }

private:
    HRESULT record(FLOAT x, FLOAT y) {
        places.emplace_back(x, y);
        return S_OK;
    }
};

std::vector<std::pair<FLOAT, FLOAT>> draw(IDWriteTextLayout& layout, FLOAT x, FLOAT y) {
    PlaceRecorder recorder;
    EXPECT_EQ(S_OK, layout.Draw(nullptr, &recorder, x, y));
    return recorder.places;
}

using Create = std::unique_ptr<fonts::IRichTextDocumentLayouting> (fonts::CRichTextDocumentLayoutingFactory::*)(
    const render::CRichTextDocument&) const;

class OriginProperties : public testing::Test {
protected:
    Measurer m_measurer;

    [[nodiscard]] bool hasInk(const render::CRichTextDocument& document, std::size_t paragraph,
                              const MbRect& box) const {
        return !m_measurer.metrics->getParagraphGeometryRects(document, box.xmax, box.ymax).at(paragraph).isEmpty();
    }

    /// Lays random documents out in a box and in the same box elsewhere, and returns the number of bars. (Elsewhere by
    /// whole units: the box has the same width to the last bit, and so the same lines.)
    [[nodiscard]] std::size_t expectEverythingMovesWithTheBox(Create create, std::uint32_t seed, int count) const {
        const fonts::CRichTextDocumentLayoutingFactory factory(m_measurer.metrics.get());
        RandomDocuments random(seed);
        std::size_t bars = 0;
        for (int i = 0; i < count; ++i) {
            SCOPED_TRACE(i);
            const render::CRichTextDocument document = random.document();
            const double dx = static_cast<double>(random.below(2000)) - 1000.0;
            const double dy = static_cast<double>(random.below(2000)) - 1000.0;
            const bool alignByTextBounds = random.below(2) == 0;
            const MbRect box(0.0, 0.0, 10.0 + static_cast<double>(random.below(150)),
                             static_cast<double>(random.below(300)));
            MbRect moved = box;
            moved.Move(dx, dy);
            const auto layouting = (factory.*create)(document);
            const Places before = layOut(*layouting, box, alignByTextBounds);
            const Places after = layOut(*layouting, moved, alignByTextBounds);
            EXPECT_EQ(before.rects.size(), after.rects.size());
            for (std::size_t rect = 0; rect < before.rects.size() && rect < after.rects.size(); ++rect) {
                // A paragraph without ink that is aligned by its ink stands nowhere.
                EXPECT_TRUE(isMoved(before.rects[rect], after.rects[rect], dx, dy) || !hasInk(document, rect, box))
                    << rect;
            }
            EXPECT_EQ(before.bars.size(), after.bars.size());
            for (std::size_t bar = 0; bar < before.bars.size() && bar < after.bars.size(); ++bar) {
                EXPECT_TRUE(isMoved(before.bars[bar], after.bars[bar], dx, dy)) << bar;
            }
            bars += before.bars.size();
        }
        return bars;
    }
};

TEST_F(OriginProperties, ParagraphsAndTheirInkMoveWithTheBox) {
    EXPECT_EQ(0U, expectEverythingMovesWithTheBox(&fonts::CRichTextDocumentLayoutingFactory::create, 21, 2000));
}

TEST_F(OriginProperties, ParagraphsOfDrawingsAndTheirInkMoveWithTheBox) {
    EXPECT_EQ(0U,
              expectEverythingMovesWithTheBox(&fonts::CRichTextDocumentLayoutingFactory::createForDxfMTexts, 22, 2000));
}

TEST_F(OriginProperties, ClustersAndBarsMoveWithTheBox) {
    // Every cluster is measured for itself: the dearest of the layoutings.
    EXPECT_LE(300U, expectEverythingMovesWithTheBox(
                        &fonts::CRichTextDocumentLayoutingFactory::createForDxfMTextsByClusters, 23, 600));
}

TEST_F(OriginProperties, GlyphRunsAndBarsOfALayoutMoveWithItsOrigin) {
    RandomDocuments random(24);
    for (int i = 0; i < 2000; ++i) {
        SCOPED_TRACE(i);
        const fonts::SLayoutDesc layout =
            fonts::CRichTextDocumentProcessor::process(random.paragraph(), m_measurer.engine.get(), 20.0);
        EXPECT_EQ(S_OK, layout.pObject->SetMaxWidth(5.0F + static_cast<float>(random.below(150))));
        EXPECT_EQ(S_OK, layout.pObject->SetMaxHeight(static_cast<float>(random.below(150))));
        const auto dx = static_cast<float>(random.below(2000)) - 1000.0F;
        const auto dy = static_cast<float>(random.below(2000)) - 1000.0F;
        const auto before = draw(*layout.pObject, 0.0F, 0.0F);
        const auto after = draw(*layout.pObject, dx, dy);
        ASSERT_EQ(before.size(), after.size());
        for (std::size_t place = 0; place < before.size(); ++place) {
            EXPECT_NEAR(before[place].first + dx, after[place].first, 1e-3F);
            EXPECT_NEAR(before[place].second + dy, after[place].second, 1e-3F);
        }
    }
}

} // namespace
} // namespace property
