#include "ParagraphBuilder.h"

#include <d2d1.h>

#include <algorithm>
#include <utility>

#include <Common/Guards.h>
#include <oslayer/checkHResult.h>

#include "ClusterTable.h"
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
        m_alignment = paragraph.alignment;
        m_verticalAlignment = paragraph.verticalAlignment;
    }

    std::shared_ptr<const SParagraphLayoutData> build() {
        takeBox();
        makeLines();
        const CClusterTable table(m_platform.pLayout);
        if (m_options.detail == EParagraphDetail::All) {
            makeClusters(table);
        }
        draw(table);
        if (m_options.detail == EParagraphDetail::All) {
            placeOtherClusters(table);
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
        for (const DWRITE_LINE_METRICS& metrics : lineMetricsOf(m_platform.pLayout)) {
            SLine& line = m_data->lines.emplace_back();
            line.range = {position, metrics.length};
            line.trailingBlanks = metrics.trailingWhitespaceLength;
            line.newline = metrics.newlineLength;
            line.top = top;
            line.baseline = top - static_cast<double>(metrics.baseline);
            top -= static_cast<double>(metrics.height);
            line.bottom = top;
            position += metrics.length;
        }
    }

    void makeClusters(const CClusterTable& table) {
        m_data->clusters.reserve(table.size());
        std::uint32_t line = 0;
        for (std::size_t i = 0; i < table.size(); ++i) {
            const std::uint32_t start = table.start(i);
            while (line + 1 < m_data->lines.size() && m_data->lines[line + 1].range.startPosition <= start) {
                ++line;
            }
            const DWRITE_CLUSTER_METRICS& metrics = table.at(i);
            SCluster& cluster = m_data->clusters.emplace_back();
            cluster.range = {start, metrics.length};
            cluster.line = line;
            cluster.isBlank = metrics.isWhitespace != 0;
            cluster.isNewline = metrics.isNewline != 0;
            cluster.isRightToLeft = metrics.isRightToLeft != 0;
            cluster.canBreakAfter = metrics.canWrapLineAfter != 0;
            // No edges yet: drawing tells them.
            cluster.rect.ymin = m_data->lines[line].bottom;
            cluster.rect.ymax = m_data->lines[line].top;
        }
    }

    void draw(const CClusterTable& table) {
        const oslayer::com_ptr<ID2D1Factory> pGeometryFactory = createGeometryFactory();
        CRunRecorder recorder(*m_data, m_platform, table, m_formats, m_options, pGeometryFactory);
        OSLAYER_CHECK(m_platform.pLayout->Draw(nullptr, &recorder, 0.0F, 0.0F));
        recorder.finish();
        for (std::size_t i = 0; i < m_data->lines.size(); ++i) {
            const CRunRecorder::DrawnLine& drawn = recorder.lines()[i];
            placeLine(m_data->lines[i], drawn, table);
            m_lineInk.push_back(drawn.ink);
        }
    }

    // Where the platform draws all that a line holds, its edges are those. Where it leaves out blanks, they stand
    // before what it draws.
    void placeLine(SLine& line, const CRunRecorder::DrawnLine& drawn, const CClusterTable& table) const {
        const std::uint32_t contentEnd = line.range.startPosition + line.range.length - line.trailingBlanks;
        if (drawn.units > 0 && drawn.units == contentEnd - line.range.startPosition) {
            line.left = drawn.left;
            line.width = drawn.right - drawn.left;
            return;
        }
        for (std::size_t i = table.firstFrom(line.range.startPosition); i < table.size() && table.start(i) < contentEnd;
             ++i) {
            line.width += scale() * table.width(i);
        }
        if (drawn.units == 0) {
            line.left = leftOf(line.width);
        } else {
            line.left = m_options.direction == EReadingDirection::RightToLeft ? drawn.left : drawn.right - line.width;
        }
    }

    // Where a line of which nothing is drawn begins.
    double leftOf(double width) const {
        const double room = scale() * static_cast<double>(m_metrics.layoutWidth) - width;
        const bool isReversed = m_options.direction == EReadingDirection::RightToLeft;
        switch (m_alignment) {
        case render::eRichTextParagraphAlignment::Right:
            return isReversed ? 0.0 : room;
        case render::eRichTextParagraphAlignment::Center:
            return room / 2.0;
        default:
            return isReversed ? room : 0.0;
        }
    }

    // What the platform did not draw (on Windows tabs and newlines) stands beside its neighbour of the same direction.
    void placeOtherClusters(const CClusterTable& table) {
        for (std::size_t i = 0; i < table.size(); ++i) {
            SCluster& cluster = m_data->clusters[i];
            if (cluster.rect.xmin > cluster.rect.xmax) {
                const double width = scale() * table.width(i);
                const bool continues = i > 0 && m_data->clusters[i - 1].line == cluster.line;
                const double edge = continues               ? edgeBehind(m_data->clusters[i - 1])
                                    : cluster.isRightToLeft ? lineEnd(cluster.line)
                                                            : m_data->lines[cluster.line].left;
                cluster.rect.xmin = cluster.isRightToLeft ? edge - width : edge;
                cluster.rect.xmax = cluster.rect.xmin + width;
            }
        }
    }

    static double edgeBehind(const SCluster& cluster) {
        return cluster.isRightToLeft ? cluster.rect.xmin : cluster.rect.xmax;
    }
    double lineEnd(std::uint32_t line) const { return m_data->lines[line].left + m_data->lines[line].width; }

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
        // A tab has the room that its line has.
        const bool isMovedOnly = m_alignment != render::eRichTextParagraphAlignment::Justify &&
                                 m_data->text.find(L'\t') == std::wstring::npos;
        if (!isWrapped && (isMovedOnly || m_options.maxWidth <= 0.0)) {
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
    render::eRichTextParagraphAlignment m_alignment{};
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
