#include "ParagraphBuilder.h"

#include <d2d1.h>

#include <algorithm>
#include <utility>

#include <Common/Guards.h>
#include <oslayer/checkHResult.h>

#include "LineStacking.h"
#include "PlatformParagraph.h"
#include "RunRecorder.h"
#include "TokenFormats.h"

namespace fonts {

namespace {

oslayer::com_ptr<ID2D1Factory> createGeometryFactory() {
    oslayer::com_ptr<ID2D1Factory> pFactory;
    D2D1_FACTORY_OPTIONS options = {};
    options.debugLevel = D2D1_DEBUG_LEVEL_NONE;
    OSLAYER_CHECK(D2D1CreateFactory(D2D1_FACTORY_TYPE_MULTI_THREADED, __uuidof(ID2D1Factory), &options,
                                    reinterpret_cast<void**>(&pFactory)));
    return pFactory;
}

std::vector<DWRITE_LINE_METRICS> lineMetricsOf(IDWriteTextLayout* pLayout) {
    UINT32 count = 0;
    // The first call has no room and asks for the number.
    const HRESULT hr = pLayout->GetLineMetrics(nullptr, 0, &count);
    if (hr != E_NOT_SUFFICIENT_BUFFER) {
        OSLAYER_CHECK(hr);
    }
    std::vector<DWRITE_LINE_METRICS> lines(count);
    if (count > 0) {
        OSLAYER_CHECK(pLayout->GetLineMetrics(lines.data(), count, &count));
    }
    return lines;
}

// The edges of a stretch of one line's text: all boxes that it fills.
std::pair<double, double> edgesOf(IDWriteTextLayout* pLayout, const render::TextRange& range,
                                  std::vector<DWRITE_HIT_TEST_METRICS>& room) {
    if (range.length == 0) {
        FLOAT x = 0.0F;
        FLOAT y = 0.0F;
        DWRITE_HIT_TEST_METRICS metrics = {};
        OSLAYER_CHECK(pLayout->HitTestTextPosition(range.startPosition, FALSE, &x, &y, &metrics));
        return {static_cast<double>(x), static_cast<double>(x)};
    }
    UINT32 count = 0;
    room.resize(std::max<std::size_t>(room.size(), 1));
    HRESULT hr = pLayout->HitTestTextRange(range.startPosition, range.length, 0.0F, 0.0F, room.data(),
                                           static_cast<UINT32>(room.size()), &count);
    if (hr == E_NOT_SUFFICIENT_BUFFER) {
        room.resize(count);
        hr = pLayout->HitTestTextRange(range.startPosition, range.length, 0.0F, 0.0F, room.data(), count, &count);
    }
    OSLAYER_CHECK(hr);
    MbRect edges;
    for (UINT32 i = 0; i < count; ++i) {
        edges.IncludeX(static_cast<double>(room[i].left));
        edges.IncludeX(static_cast<double>(room[i].left) + static_cast<double>(room[i].width));
    }
    return {edges.xmin, edges.xmax};
}

class ParagraphBuilder {
public:
    ParagraphBuilder(const render::CRichTextParagraph& paragraph, IFontEngine& engine,
                     const SParagraphLayoutOptions& options)
        : m_options(options), m_formats(paragraph, options),
          m_platform(makePlatformParagraph(paragraph, engine, options, m_formats)),
          m_data(std::make_shared<SParagraphLayoutData>()) {
        m_data->text = textOf(paragraph);
        m_data->direction = options.direction;
        m_data->families.reserve(paragraph.tokens.size());
        for (const render::SRichTextToken& token : paragraph.tokens) {
            m_data->families.push_back(token.fontFamily);
        }
        m_isUnevenlyAligned = paragraph.alignment == render::eRichTextParagraphAlignment::Justify;
        m_verticalAlignment = paragraph.verticalAlignment;
    }

    std::shared_ptr<const SParagraphLayoutData> build() {
        takeBox();
        makeLines();
        if (m_options.detail == EParagraphDetail::All) {
            makeClusters();
        }
        draw();
        if (m_options.detail == EParagraphDetail::All) {
            placeOtherClusters();
            linkLines();
        }
        if (m_data->text.empty()) {
            forgetBlank();
        }
        stackLines(*m_data, m_lineInk, m_options.lineSpacing,
                   m_options.maxHeight > 0.0 ? m_verticalAlignment : render::eRichTextParagraphVerticalAlignment::Top);
        for (const MbRect& ink : m_lineInk) {
            m_data->ink |= ink;
        }
        m_data->naturalWidth = naturalWidth();
        return std::move(m_data);
    }

private:
    // What one unit of the platform's x lengths is in the paragraph's.
    double scale() const { return m_formats.commonFactor(); }

    void takeBox() {
        OSLAYER_CHECK(m_platform.pLayout->GetMetrics(&m_metrics));
        m_data->box.Set(
            scale() * static_cast<double>(m_metrics.left), -static_cast<double>(m_metrics.height + m_metrics.top),
            scale() * static_cast<double>(m_metrics.width + m_metrics.left), -static_cast<double>(m_metrics.top));
    }

    void makeLines() {
        double top = -static_cast<double>(m_metrics.top);
        std::uint32_t position = 0;
        std::vector<DWRITE_HIT_TEST_METRICS> room;
        for (const DWRITE_LINE_METRICS& metrics : lineMetricsOf(m_platform.pLayout)) {
            SLine& line = m_data->lines.emplace_back();
            line.range = {position, metrics.length};
            line.trailingBlanks = metrics.trailingWhitespaceLength;
            line.newline = metrics.newlineLength;
            line.top = top;
            line.baseline = top - static_cast<double>(metrics.baseline);
            top -= static_cast<double>(metrics.height);
            line.bottom = top;
            const auto [left, right] =
                edgesOf(m_platform.pLayout, {position, metrics.length - metrics.trailingWhitespaceLength}, room);
            line.left = scale() * left;
            line.width = scale() * (right - left);
            position += metrics.length;
        }
    }

    void makeClusters() {
        const std::vector<DWRITE_CLUSTER_METRICS> metrics = clusterMetricsOf(m_platform.pLayout);
        m_data->clusters.reserve(metrics.size());
        std::uint32_t position = 0;
        std::uint32_t line = 0;
        for (const DWRITE_CLUSTER_METRICS& measured : metrics) {
            while (line + 1 < m_data->lines.size() && m_data->lines[line + 1].range.startPosition <= position) {
                ++line;
            }
            SCluster& cluster = m_data->clusters.emplace_back();
            cluster.range = {position, measured.length};
            cluster.line = line;
            cluster.isBlank = measured.isWhitespace != 0;
            cluster.isNewline = measured.isNewline != 0;
            cluster.isRightToLeft = measured.isRightToLeft != 0;
            cluster.canBreakAfter = measured.canWrapLineAfter != 0;
            cluster.rect = MbRect(0.0, m_data->lines[line].bottom, 0.0, m_data->lines[line].top);
            position += measured.length;
        }
    }

    void draw() {
        const oslayer::com_ptr<ID2D1Factory> pGeometryFactory = createGeometryFactory();
        CRunRecorder recorder(*m_data, m_platform, m_formats, m_options, pGeometryFactory);
        OSLAYER_CHECK(m_platform.pLayout->Draw(nullptr, &recorder, 0.0F, 0.0F));
        recorder.finish();
        m_lineInk = recorder.lineInk();
    }

    // Newlines, tabs, controls, inline boxes.
    void placeOtherClusters() {
        for (SCluster& cluster : m_data->clusters) {
            if (cluster.run != noIndex) {
                continue;
            }
            FLOAT x = 0.0F;
            FLOAT y = 0.0F;
            DWRITE_HIT_TEST_METRICS metrics = {};
            OSLAYER_CHECK(
                m_platform.pLayout->HitTestTextPosition(cluster.range.startPosition, FALSE, &x, &y, &metrics));
            cluster.rect.xmin = scale() * static_cast<double>(metrics.left);
            cluster.rect.xmax = scale() * (static_cast<double>(metrics.left) + static_cast<double>(metrics.width));
        }
    }

    void linkLines() {
        for (std::uint32_t i = 0; i < m_data->clusters.size(); ++i) {
            SLine& line = m_data->lines[m_data->clusters[i].line];
            line.firstCluster = line.clusterCount == 0 ? i : line.firstCluster;
            ++line.clusterCount;
        }
        for (std::uint32_t i = 0; i < m_data->runs.size(); ++i) {
            SLine& line = m_data->lines[m_data->runs[i].line];
            line.firstRun = line.runCount == 0 ? i : line.firstRun;
            ++line.runCount;
        }
    }

    // The empty paragraph was laid out as a blank, which is not its text.
    void forgetBlank() {
        m_data->runs.clear();
        m_data->glyphs.clear();
        m_data->clusters.clear();
        m_data->missing.clear();
        m_data->bars.clear();
        m_data->faces.clear();
        m_lineInk.assign(m_data->lines.size(), MbRect());
        for (SLine& line : m_data->lines) {
            line.range = {};
            line.trailingBlanks = 0;
            line.runCount = 0;
            line.clusterCount = 0;
        }
    }

    double naturalWidth() {
        const bool isWrapped = std::any_of(m_data->lines.begin(), m_data->lines.end(), [this](const SLine& line) {
            return line.newline == 0 && &line != &m_data->lines.back();
        });
        if (!isWrapped && !m_isUnevenlyAligned) {
            return m_data->box.xmax - m_data->box.xmin;
        }
        OSLAYER_CHECK(m_platform.pLayout->SetWordWrapping(DWRITE_WORD_WRAPPING_NO_WRAP));
        OSLAYER_CHECK(m_platform.pLayout->SetTextAlignment(DWRITE_TEXT_ALIGNMENT_LEADING));
        DWRITE_TEXT_METRICS metrics = {};
        OSLAYER_CHECK(m_platform.pLayout->GetMetrics(&metrics));
        return scale() * static_cast<double>(metrics.width);
    }

    const SParagraphLayoutOptions& m_options;
    CTokenFormats m_formats;
    SPlatformParagraph m_platform;
    std::shared_ptr<SParagraphLayoutData> m_data;
    bool m_isUnevenlyAligned = false;
    render::eRichTextParagraphVerticalAlignment m_verticalAlignment{};
    DWRITE_TEXT_METRICS m_metrics{};
    std::vector<MbRect> m_lineInk;
};

} // namespace

std::shared_ptr<const SParagraphLayoutData> buildParagraph(const render::CRichTextParagraph& paragraph,
                                                           IFontEngine& engine,
                                                           const SParagraphLayoutOptions& options) {
    COMMON_CHECK(!paragraph.tokens.empty());
    return ParagraphBuilder(paragraph, engine, options).build();
}

} // namespace fonts
