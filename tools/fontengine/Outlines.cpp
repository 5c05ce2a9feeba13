#include "Outlines.h"

#include <d2d1.h>
#include <dwrite_2.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>
#include <utility>

#include <oslayer/checkHResult.h>

#include "MissingCharacters.h"
#include "OutlineSink.h"

namespace tool {

namespace {

Outline barOutline(double x, double top, double width, double thickness) {
    Outline bar;
    bar.verbs = {Outline::Verb::Move, Outline::Verb::Line, Outline::Verb::Line, Outline::Verb::Line,
                 Outline::Verb::Close};
    bar.points = {{x, top}, {x + width, top}, {x + width, top - thickness}, {x, top - thickness}};
    return bar;
}

class OutlineRenderer final : public IDWriteTextRenderer {
public:
    OutlineRenderer(const std::vector<fonts::SLayoutRun>& runs, PaintDetail detail)
        : m_runs(runs), m_detail(detail), m_heightsDiffer(differInHeight(runs)) {}

    PaintedParagraph takeResult() {
        // Bars may be drawn before the runs they belong to.
        if (!m_bars.empty()) {
            const std::vector<const PaintedRun*> runs = runsByPlace();
            for (const Bar& bar : m_bars) {
                m_result.shapes[bar.shape].color = colorOfBar(bar, runs);
            }
        }
        return std::move(m_result);
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
        const bool known = riid == __uuidof(IUnknown) || riid == __uuidof(IDWritePixelSnapping) ||
                           riid == __uuidof(IDWriteTextRenderer);
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    // Lives on the stack of the one call that draws into it.
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    // The same grid as the library's own renderer, so that pictures and
    // measured boxes show the same baselines.
    HRESULT STDMETHODCALLTYPE IsPixelSnappingDisabled(void*, BOOL* isDisabled) override {
        *isDisabled = FALSE;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetCurrentTransform(void*, DWRITE_MATRIX* transform) override {
        *transform = {100.0F, 0.0F, 0.0F, -100.0F, 0.0F, 0.0F};
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetPixelsPerDip(void*, FLOAT* pixelsPerDip) override {
        *pixelsPerDip = 1.0F;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE DrawGlyphRun(void*, FLOAT x, FLOAT y, DWRITE_MEASURING_MODE, const DWRITE_GLYPH_RUN* run,
                                           const DWRITE_GLYPH_RUN_DESCRIPTION* description, IUnknown*) override {
        const double baseline = -static_cast<double>(y);
        if (m_result.baselines.empty() || m_result.baselines.back() > baseline) {
            m_result.baselines.push_back(baseline);
        }
        if (const fonts::SLayoutRun* source = runAt(description->textPosition)) {
            const HRESULT result = addHeight(baseline, static_cast<double>(source->token.fontCapSize), *run);
            if (FAILED(result)) {
                return result;
            }
        }
        appendMissing(m_result.missing, *run, *description);
        if (m_detail == PaintDetail::Lines) {
            return S_OK;
        }
        PaintedRun painted;
        painted.baseline = baseline;
        painted.clusterMap.assign(description->clusterMap, description->clusterMap + description->stringLength);
        painted.face = keyOf(run->fontFace);
        painted.rightToLeft = (run->bidiLevel & 1U) != 0;
        const HRESULT result = addGlyphs(painted, static_cast<double>(x), *run, colorsOf(*run, *description));
        m_result.runs.push_back(std::move(painted));
        return result;
    }

    HRESULT STDMETHODCALLTYPE DrawUnderline(void*, FLOAT x, FLOAT y, const DWRITE_UNDERLINE* underline,
                                            IUnknown*) override {
        addBar(x, y, underline->offset, underline->width, underline->thickness);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE DrawStrikethrough(void*, FLOAT x, FLOAT y, const DWRITE_STRIKETHROUGH* strikethrough,
                                                IUnknown*) override {
        addBar(x, y, strikethrough->offset, strikethrough->width, strikethrough->thickness);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE DrawInlineObject(void*, FLOAT, FLOAT, IDWriteInlineObject*, BOOL, BOOL,
                                               IUnknown*) override {
        return S_OK; // documents hold none
    }

private:
    struct Bar {
        std::size_t shape = 0;
        double x = 0.0;
        double baseline = 0.0;
        double width = 0.0;
    };

    static FaceKey keyOf(IDWriteFontFace* face) {
        DWRITE_FONT_METRICS metrics{};
        face->GetMetrics(&metrics);
        return {face->GetGlyphCount(), metrics.designUnitsPerEm, metrics.ascent, metrics.capHeight,
                static_cast<int>(face->GetSimulations())};
    }

    // The runs follow each other without gaps.
    const fonts::SLayoutRun* runAt(UINT32 position) const {
        const auto run =
            std::partition_point(m_runs.begin(), m_runs.end(), [position](const fonts::SLayoutRun& before) {
                return before.range.startPosition + before.range.length <= position;
            });
        return run == m_runs.end() ? nullptr : &*run;
    }

    // Of each glyph: that of the first character of its cluster. Colours do not part
    // runs.
    std::vector<std::uint32_t> colorsOf(const DWRITE_GLYPH_RUN& run,
                                        const DWRITE_GLYPH_RUN_DESCRIPTION& description) const {
        std::vector<std::uint32_t> colors(run.glyphCount, 0xFF000000U);
        const UINT16* const map = description.clusterMap;
        std::uint32_t color = 0xFF000000U;
        for (UINT32 i = 0, next = 0; i < description.stringLength && map[i] < run.glyphCount; i = next) {
            if (const fonts::SLayoutRun* source = runAt(description.textPosition + i)) {
                color = source->token.color;
            }
            while (next < description.stringLength && map[next] == map[i]) {
                ++next;
            }
            const UINT32 end = next < description.stringLength ? map[next] : run.glyphCount;
            std::fill(colors.begin() + map[i], colors.begin() + std::min(end, run.glyphCount), color);
        }
        return colors;
    }

    // Glyph by glyph, so that each has a shape of its own. The pen of a
    // right-to-left run starts at its right end; a glyph stands left of it.
    HRESULT addGlyphs(PaintedRun& painted, double pen, const DWRITE_GLYPH_RUN& run,
                      const std::vector<std::uint32_t>& colors) {
        const double direction = painted.rightToLeft ? -1.0 : 1.0;
        painted.left = pen;
        painted.right = pen;
        for (UINT32 i = 0; i < run.glyphCount; ++i) {
            const double advance = static_cast<double>(run.glyphAdvances[i]);
            const DWRITE_GLYPH_OFFSET offset =
                run.glyphOffsets == nullptr ? DWRITE_GLYPH_OFFSET{} : run.glyphOffsets[i];
            PaintedGlyph glyph;
            glyph.index = run.glyphIndices[i];
            glyph.place = {(painted.rightToLeft ? pen - advance : pen) +
                               direction * static_cast<double>(offset.advanceOffset),
                           painted.baseline + static_cast<double>(offset.ascenderOffset)};
            glyph.color = colors[i];
            const HRESULT result =
                m_detail == PaintDetail::Shapes ? addShape(glyph, run) : noteInk(run, glyph.index, glyph.hasInk);
            if (FAILED(result)) {
                return result;
            }
            pen += direction * advance;
            painted.left = std::min(painted.left, pen);
            painted.right = std::max(painted.right, pen);
            painted.glyphs.push_back(glyph);
        }
        return S_OK;
    }

    static HRESULT outline(const DWRITE_GLYPH_RUN& run, UINT16 glyph, ID2D1SimplifiedGeometrySink& sink) {
        return run.fontFace->GetGlyphRunOutline(run.fontEmSize, &glyph, nullptr, nullptr, 1, run.isSideways, FALSE,
                                                &sink);
    }

    static HRESULT noteInk(const DWRITE_GLYPH_RUN& run, UINT16 glyph, bool& hasInk) {
        InkSink sink;
        const HRESULT result = outline(run, glyph, sink);
        hasInk = sink.hasInk();
        return result;
    }

    HRESULT addShape(PaintedGlyph& glyph, const DWRITE_GLYPH_RUN& run) {
        PaintedShape shape;
        shape.color = glyph.color;
        OutlineSink sink(shape.outline, glyph.place);
        const HRESULT result = outline(run, glyph.index, sink);
        if (SUCCEEDED(result) && !shape.outline.verbs.empty()) {
            glyph.hasInk = true;
            glyph.shape = m_result.shapes.size();
            m_result.shapes.push_back(std::move(shape));
        }
        return result;
    }

    static bool areSameHeight(double a, double b) {
        constexpr double sameHeight = 1e-3; // the reader of contents takes no smaller difference for one
        return std::abs(a - b) <= sameHeight * std::max(a, b);
    }

    static bool differInHeight(const std::vector<fonts::SLayoutRun>& runs) {
        return std::any_of(runs.begin(), runs.end(), [&runs](const fonts::SLayoutRun& run) {
            return run.token.fontCapSize != runs.front().token.fontCapSize;
        });
    }

    // The height of the run's capitals: whether it mixes with others in its line
    // counts where the run leaves ink.
    HRESULT addHeight(double baseline, double capSize, const DWRITE_GLYPH_RUN& run) {
        if (baseline == m_result.baselines.front()) {
            m_result.firstCapSize = std::max(m_result.firstCapSize, capSize);
        }
        bool hasInk = false;
        for (UINT32 i = 0; m_heightsDiffer && !m_result.mixesHeights && !hasInk && i < run.glyphCount; ++i) {
            if (const HRESULT result = noteInk(run, run.glyphIndices[i], hasInk); FAILED(result)) {
                return result;
            }
        }
        if (hasInk && m_inkedLine == baseline) {
            m_result.mixesHeights = !areSameHeight(m_inkedHeight, capSize);
        } else if (hasInk) {
            m_inkedLine = baseline;
            m_inkedHeight = capSize;
        }
        return S_OK;
    }

    // The runs with glyphs, line by line and from left to right.
    std::vector<const PaintedRun*> runsByPlace() const {
        std::vector<const PaintedRun*> runs;
        for (const PaintedRun& run : m_result.runs) {
            if (!run.glyphs.empty()) {
                runs.push_back(&run);
            }
        }
        std::stable_sort(runs.begin(), runs.end(), [](const PaintedRun* a, const PaintedRun* b) {
            return std::pair(a->baseline, a->left) < std::pair(b->baseline, b->left);
        });
        return runs;
    }

    // The platform says of a bar where it is, not whose it is: the run above its
    // beginning gives the colour.
    std::uint32_t colorOfBar(const Bar& bar, const std::vector<const PaintedRun*>& runs) const {
        const std::pair inside(bar.baseline, bar.x + bar.width * 1e-3);
        auto run = std::partition_point(runs.begin(), runs.end(), [&inside](const PaintedRun* before) {
            return std::pair(before->baseline, before->left) <= inside;
        });
        while (run != runs.begin() && (*std::prev(run))->baseline == bar.baseline) {
            --run;
            if ((*run)->right < inside.second) {
                continue;
            }
            const std::vector<PaintedGlyph>& glyphs = (*run)->glyphs;
            return std::min_element(glyphs.begin(), glyphs.end(),
                                    [x = bar.x](const PaintedGlyph& a, const PaintedGlyph& b) {
                                        return std::abs(a.place.x - x) < std::abs(b.place.x - x);
                                    })
                ->color;
        }
        return m_runs.empty() ? 0xFF000000U : m_runs.front().token.color;
    }

    void addBar(FLOAT x, FLOAT y, FLOAT offset, FLOAT width, FLOAT thickness) {
        m_result.hasBars = true;
        if (m_detail != PaintDetail::Shapes) {
            return;
        }
        Bar bar;
        bar.shape = m_result.shapes.size();
        bar.x = static_cast<double>(x);
        bar.baseline = -static_cast<double>(y);
        bar.width = static_cast<double>(width);
        m_bars.push_back(bar);
        m_result.bars.push_back(bar.shape);
        m_result.shapes.push_back(
            {barOutline(bar.x, -static_cast<double>(y + offset), bar.width, static_cast<double>(thickness)),
             0xFF000000U});
    }

    std::vector<Bar> m_bars;
    const std::vector<fonts::SLayoutRun>& m_runs;
    PaintDetail m_detail;
    bool m_heightsDiffer;
    std::optional<double> m_inkedLine; // baseline of the last run with ink
    double m_inkedHeight = 0.0;        // of the first such run there
    PaintedParagraph m_result;
};

} // namespace

PaintedParagraph paintParagraph(const fonts::SLayoutDesc& layout, PaintDetail detail) {
    OutlineRenderer renderer(layout.runs, detail);
    OSLAYER_CHECK(layout.pObject->Draw(nullptr, &renderer, 0.0F, 0.0F));
    return renderer.takeResult();
}

void scale(PaintedParagraph& paragraph, double factor) {
    const auto scalePoint = [factor](MbCartPoint& point) {
        point.x *= factor;
        point.y *= factor;
    };
    for (PaintedShape& shape : paragraph.shapes) {
        std::for_each(shape.outline.points.begin(), shape.outline.points.end(), scalePoint);
    }
    for (PaintedRun& run : paragraph.runs) {
        for (PaintedGlyph& glyph : run.glyphs) {
            scalePoint(glyph.place);
        }
        for (double* length : {&run.left, &run.right, &run.baseline}) {
            *length *= factor;
        }
    }
    for (double& baseline : paragraph.baselines) {
        baseline *= factor;
    }
    paragraph.firstCapSize *= factor;
}

} // namespace tool
