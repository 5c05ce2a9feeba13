#include "RunRecorder.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "../TextToGlyphRunRenderer.h"

namespace fonts {

namespace {

double slantOf(const SRunFormat& format) {
    return std::tan(format.obliqueAngle * std::numbers::pi / 180.0);
}

// One past the cluster that starts at `at`.
UINT32 clusterEnd(const DWRITE_GLYPH_RUN_DESCRIPTION& description, UINT32 at) {
    const UINT16 glyph = description.clusterMap[at];
    while (at < description.stringLength && description.clusterMap[at] == glyph) {
        ++at;
    }
    return at;
}

UINT32 glyphEndAt(const DWRITE_GLYPH_RUN& run, const DWRITE_GLYPH_RUN_DESCRIPTION& description, UINT32 textEnd) {
    return textEnd < description.stringLength ? description.clusterMap[textEnd] : run.glyphCount;
}

double sumOf(const FLOAT* begin, const FLOAT* end) {
    double sum = 0.0;
    for (; begin != end; ++begin) {
        sum += static_cast<double>(*begin);
    }
    return sum;
}

} // namespace

CRunRecorder::CRunRecorder(SParagraphLayoutData& data, const SPlatformParagraph& platform, const CClusterTable& table,
                           const CTokenFormats& formats, const SParagraphLayoutOptions& options,
                           const oslayer::com_ptr<ID2D1Factory>& d2dFactory)
    : m_data(data), m_platform(platform), m_table(table), m_formats(formats), m_options(options),
      m_d2dFactory(d2dFactory), m_lines(data.lines.size()) {}

HRESULT CRunRecorder::QueryInterface(REFIID riid, void** object) {
    const bool isKnown =
        riid == __uuidof(IUnknown) || riid == __uuidof(IDWritePixelSnapping) || riid == __uuidof(IDWriteTextRenderer);
    *object = isKnown ? this : nullptr;
    return isKnown ? S_OK : E_NOINTERFACE;
}

HRESULT CRunRecorder::IsPixelSnappingDisabled(void*, BOOL* isDisabled) {
    *isDisabled = m_options.baselineGrid > 0.0 ? FALSE : TRUE;
    return S_OK;
}

// The platform snaps baselines to device pixels: as many of them to the unit as the grid has lines.
HRESULT CRunRecorder::GetCurrentTransform(void*, DWRITE_MATRIX* transform) {
    const auto scale = m_options.baselineGrid > 0.0 ? static_cast<FLOAT>(1.0 / m_options.baselineGrid) : 1.0F;
    *transform = {scale, 0.0F, 0.0F, -scale, 0.0F, 0.0F};
    return S_OK;
}

HRESULT CRunRecorder::GetPixelsPerDip(void*, FLOAT* pixelsPerDip) {
    *pixelsPerDip = 1.0F;
    return S_OK;
}

HRESULT CRunRecorder::DrawGlyphRun(void*, FLOAT x, FLOAT y, DWRITE_MEASURING_MODE, const DWRITE_GLYPH_RUN* glyphRun,
                                   const DWRITE_GLYPH_RUN_DESCRIPTION* description, IUnknown*) {
    const std::uint32_t line = lineAt(description->textPosition);
    if (!m_lines[line].hasBaseline) {
        m_lines[line].hasBaseline = true;
        m_data.lines[line].baseline = -static_cast<double>(y);
    }
    if (glyphRun->glyphCount == 0) {
        placeBlanks(*glyphRun, *description, m_formats.commonFactor() * static_cast<double>(x));
        return S_OK;
    }
    m_missing.add(*glyphRun, *description);

    const std::vector<Piece> pieces = piecesOf(*glyphRun, *description, static_cast<double>(x));
    const bool isWhole =
        std::all_of(pieces.begin(), pieces.end(), [this](const Piece& piece) { return isPlain(piece); });
    SGlyphOutlineBounds whole;
    if (isWhole) {
        whole = getGlyphRunOutlineBounds(*glyphRun, x, y, m_d2dFactory);
        if (FAILED(whole.hr)) {
            return whole.hr;
        }
        m_lines[line].ink |= whole.bounds;
    }
    // The bounds of a whole run are those of its only piece. A run without ink has no piece with any.
    const bool isKnown = isWhole && (pieces.size() == 1 || whole.bounds.isEmpty());
    for (const Piece& piece : pieces) {
        MbRect ink;
        const HRESULT hr = addPiece(piece, *glyphRun, *description, y, isKnown ? &whole.bounds : nullptr, ink);
        if (FAILED(hr)) {
            return hr;
        }
        if (!isWhole) {
            m_lines[line].ink |= ink;
        }
    }
    return S_OK;
}

HRESULT CRunRecorder::DrawUnderline(void*, FLOAT x, FLOAT y, const DWRITE_UNDERLINE* underline, IUnknown*) {
    // The bar hangs from its offset, which counts down from the baseline.
    MbRect rect(0.0, -static_cast<double>(underline->thickness), static_cast<double>(underline->width), 0.0);
    rect.Move(0.0, -static_cast<double>(underline->offset));
    rect.Move(static_cast<double>(x), -static_cast<double>(y));
    addBar(EBarKind::Underline, rect, y);
    return S_OK;
}

HRESULT CRunRecorder::DrawStrikethrough(void*, FLOAT x, FLOAT y, const DWRITE_STRIKETHROUGH* strikethrough, IUnknown*) {
    // In single precision, as the platform bounds a rectangle.
    const FLOAT top = strikethrough->offset;
    const FLOAT bottom = top + strikethrough->thickness;
    addBar(EBarKind::Strikethrough,
           MbRect(static_cast<double>(x), -static_cast<double>(bottom + y),
                  static_cast<double>(strikethrough->width + x), -static_cast<double>(top + y)),
           y);
    return S_OK;
}

HRESULT CRunRecorder::DrawInlineObject(void*, FLOAT x, FLOAT y, IDWriteInlineObject* inlineObject, BOOL,
                                       BOOL isRightToLeft, IUnknown*) {
    const auto box = std::find_if(m_platform.boxes.begin(), m_platform.boxes.end(),
                                  [inlineObject](const auto& candidate) { return candidate.get() == inlineObject; });
    if (box == m_platform.boxes.end()) {
        return S_OK;
    }
    const auto index = static_cast<std::uint32_t>(box - m_platform.boxes.begin());
    const SInlineBox& asked = m_options.inlineBoxes[index];
    const double left = m_formats.commonFactor() * static_cast<double>(x);
    const double top = -static_cast<double>(y);
    const std::uint32_t line = lineAt(asked.range.startPosition);
    m_data.inlineBoxes.push_back(
        {index, MbRect(left, top - (asked.ascent + asked.descent), left + asked.width, top), line});
    if (const std::size_t cluster = m_table.firstFrom(asked.range.startPosition); cluster < m_table.size()) {
        placeCluster(line, cluster, left, left + asked.width, isRightToLeft != FALSE);
    }
    return S_OK;
}

void CRunRecorder::finish() {
    std::stable_sort(m_stretches.begin(), m_stretches.end(), [](const Stretch& a, const Stretch& b) {
        return std::pair(a.baseline, a.left) < std::pair(b.baseline, b.left);
    });
    for (WaitingBar& waiting : m_bars) {
        SBar& bar = waiting.bar;
        if (const Stretch* stretch =
                stretchAt(waiting.baseline, bar.rect.xmin + (bar.rect.xmax - bar.rect.xmin) * 1e-3)) {
            bar.line = stretch->line;
            bar.token = stretch->token;
        }
        bar.rect.Move(0.0, m_formats.format(bar.token).baselineShift);
        m_lines[bar.line].ink |= bar.rect;
        m_data.bars.push_back(bar);
    }
    m_data.missing = m_missing.take();
}

std::vector<CRunRecorder::Piece>
CRunRecorder::piecesOf(const DWRITE_GLYPH_RUN& run, const DWRITE_GLYPH_RUN_DESCRIPTION& description, double x) const {
    std::vector<Piece> pieces;
    const double direction = (run.bidiLevel & 1U) != 0 ? -1.0 : 1.0;
    for (UINT32 at = 0; at < description.stringLength;) {
        const UINT32 end = clusterEnd(description, at);
        const std::uint32_t token = m_formats.tokenAt(description.textPosition + at);
        if (pieces.empty() || pieces.back().token != token) {
            if (!pieces.empty()) {
                const Piece& before = pieces.back();
                x += direction * sumOf(run.glyphAdvances + before.glyphBegin, run.glyphAdvances + before.glyphEnd);
            }
            pieces.push_back({token, at, end, description.clusterMap[at], 0, x});
        }
        pieces.back().textEnd = end;
        pieces.back().glyphEnd = glyphEndAt(run, description, end);
        at = end;
    }
    return pieces;
}

bool CRunRecorder::isPlain(const Piece& piece) const {
    const SRunFormat& format = m_formats.format(piece.token);
    return format.widthFactor == 1.0 && format.obliqueAngle == 0.0 && format.baselineShift == 0.0 &&
           !m_formats.hasOwnFactors();
}

HRESULT CRunRecorder::addPiece(const Piece& piece, const DWRITE_GLYPH_RUN& drawnRun,
                               const DWRITE_GLYPH_RUN_DESCRIPTION& description, FLOAT y, const MbRect* knownInk,
                               MbRect& ink) {
    const SRunFormat& format = m_formats.format(piece.token);
    takeNaturalAdvances(piece, drawnRun, description);
    DWRITE_GLYPH_RUN drawn = drawnRun;
    drawn.glyphCount = piece.glyphEnd - piece.glyphBegin;
    drawn.glyphIndices += piece.glyphBegin;
    drawn.glyphAdvances = m_advances.data();
    if (drawn.glyphOffsets) {
        drawn.glyphOffsets += piece.glyphBegin;
    }

    SRun run;
    run.token = piece.token;
    run.line = lineAt(description.textPosition);
    run.range = {description.textPosition + piece.textBegin, piece.textEnd - piece.textBegin};
    run.emSize = static_cast<double>(drawn.fontEmSize);
    run.level = drawn.bidiLevel;
    run.widthFactor = m_formats.commonFactor() * m_formats.ownFactor(piece.token);
    run.slant = slantOf(format);
    run.width = run.widthFactor * sumOf(m_advances.data(), m_advances.data() + m_advances.size());
    const double startX = m_formats.commonFactor() * piece.pen;
    run.origin = {run.isRightToLeft() ? startX - run.width : startX, -static_cast<double>(y) + format.baselineShift};
    m_stretches.push_back({run.line, run.token, y, run.origin.x, run.origin.x + run.width});

    if (knownInk) {
        run.ink = *knownInk;
    } else {
        D2D1_MATRIX_3X2_F placement = {};
        placement.m11 = static_cast<FLOAT>(run.widthFactor);
        placement.m21 = static_cast<FLOAT>(-run.slant);
        placement.m22 = 1.0F;
        placement.dx = static_cast<FLOAT>(startX);
        placement.dy = static_cast<FLOAT>(-run.origin.y);
        const SGlyphOutlineBounds outline = getGlyphRunOutlineBounds(drawn, placement, m_d2dFactory);
        if (FAILED(outline.hr)) {
            return outline.hr;
        }
        run.ink = outline.bounds;
    }
    ink = run.ink;
    if (m_options.detail == EParagraphDetail::All) {
        run.face = faceIndex(drawn.fontFace);
        addGlyphs(run, drawn, startX);
        if (const HRESULT hr = noteInk(run, drawn); FAILED(hr)) {
            return hr;
        }
        m_data.runs.push_back(run);
    }
    placeClusters(run, piece, description);
    return S_OK;
}

void CRunRecorder::takeNaturalAdvances(const Piece& piece, const DWRITE_GLYPH_RUN& run,
                                       const DWRITE_GLYPH_RUN_DESCRIPTION& description) {
    m_advances.assign(run.glyphAdvances + piece.glyphBegin, run.glyphAdvances + piece.glyphEnd);
    if (!m_formats.hasOwnFactors()) {
        return;
    }
    const SRunFormat& format = m_formats.format(piece.token);
    for (UINT32 at = piece.textBegin; at < piece.textEnd;) {
        const UINT32 end = clusterEnd(description, at);
        const FLOAT widening = m_platform.widening.at(description.textPosition + at);
        const UINT32 lastGlyph = glyphEndAt(run, description, end) - 1 - piece.glyphBegin;
        if (widening != 0.0F) {
            m_advances.at(lastGlyph) += static_cast<FLOAT>(format.tracking / format.widthFactor) - widening;
        }
        at = end;
    }
}

void CRunRecorder::addGlyphs(SRun& run, const DWRITE_GLYPH_RUN& drawn, double startX) {
    run.firstGlyph = static_cast<std::uint32_t>(m_data.glyphs.size());
    run.glyphCount = drawn.glyphCount;
    const double factor = run.widthFactor;
    const double direction = run.isRightToLeft() ? -1.0 : 1.0;
    double pen = startX;
    for (UINT32 i = 0; i < drawn.glyphCount; ++i) {
        const double advance = factor * static_cast<double>(drawn.glyphAdvances[i]);
        const DWRITE_GLYPH_OFFSET offset = drawn.glyphOffsets ? drawn.glyphOffsets[i] : DWRITE_GLYPH_OFFSET{};
        const auto rise = static_cast<double>(offset.ascenderOffset);
        // The pen of a right-to-left run starts at its right end; a glyph stands left of it.
        const double left = run.isRightToLeft() ? pen - advance : pen;
        SGlyph& glyph = m_data.glyphs.emplace_back();
        glyph.id = drawn.glyphIndices[i];
        glyph.advance = advance;
        glyph.origin = {left + direction * factor * static_cast<double>(offset.advanceOffset) + run.slant * rise,
                        run.origin.y + rise};
        pen += direction * advance;
    }
}

HRESULT CRunRecorder::noteInk(const SRun& run, const DWRITE_GLYPH_RUN& drawn) {
    if (run.ink.isEmpty()) {
        return S_OK;
    }
    for (UINT32 i = 0; i < run.glyphCount; ++i) {
        SGlyph& glyph = m_data.glyphs[run.firstGlyph + i];
        if (const HRESULT hr = m_glyphInk.find(drawn, run.face, glyph.id, glyph.hasInk); FAILED(hr)) {
            return hr;
        }
    }
    return S_OK;
}

void CRunRecorder::placeBlanks(const DWRITE_GLYPH_RUN& run, const DWRITE_GLYPH_RUN_DESCRIPTION& description, double x) {
    const bool isRightToLeft = (run.bidiLevel & 1U) != 0;
    const std::uint32_t line = lineAt(description.textPosition);
    const std::uint32_t end = description.textPosition + description.stringLength;
    for (std::size_t i = m_table.firstFrom(description.textPosition); i < m_table.size() && m_table.start(i) < end;
         ++i) {
        const double next = x + (isRightToLeft ? -1.0 : 1.0) * m_formats.commonFactor() * m_table.width(i);
        placeCluster(line, i, std::min(x, next), std::max(x, next), isRightToLeft);
        x = next;
    }
}

void CRunRecorder::placeClusters(const SRun& run, const Piece& piece, const DWRITE_GLYPH_RUN_DESCRIPTION& description) {
    double x = run.isRightToLeft() ? run.origin.x + run.width : run.origin.x;
    std::size_t index = m_table.firstFrom(run.range.startPosition);
    for (UINT32 at = piece.textBegin; at < piece.textEnd;) {
        const UINT32 end = clusterEnd(description, at);
        const UINT32 first = description.clusterMap[at] - piece.glyphBegin;
        const UINT32 last =
            end < piece.textEnd ? description.clusterMap[end] - piece.glyphBegin : piece.glyphEnd - piece.glyphBegin;
        const double width = run.widthFactor * sumOf(m_advances.data() + first, m_advances.data() + last);
        const double next = run.isRightToLeft() ? x - width : x + width;
        const std::uint32_t start = description.textPosition + at;
        while (index < m_table.size() && m_table.start(index) < start) {
            ++index;
        }
        if (index < m_table.size() && m_table.start(index) == start) {
            placeCluster(run.line, index, std::min(x, next), std::max(x, next), run.isRightToLeft());
            if (m_options.detail == EParagraphDetail::All) {
                SCluster& cluster = m_data.clusters[index];
                cluster.run = static_cast<std::uint32_t>(m_data.runs.size() - 1);
                cluster.firstGlyph = run.firstGlyph + first;
                cluster.glyphCount = last - first;
                cluster.hasInk = std::any_of(m_data.glyphs.begin() + cluster.firstGlyph,
                                             m_data.glyphs.begin() + run.firstGlyph + last,
                                             [](const SGlyph& glyph) { return glyph.hasInk; });
            }
        }
        x = next;
        at = end;
    }
}

void CRunRecorder::placeCluster(std::uint32_t line, std::size_t index, double left, double right, bool isRightToLeft) {
    DrawnLine& drawn = m_lines[line];
    const SLine& whole = m_data.lines[line];
    if (m_table.start(index) < whole.range.startPosition + whole.range.length - whole.trailingBlanks) {
        drawn.left = std::min(drawn.left, left);
        drawn.right = std::max(drawn.right, right);
        drawn.units += m_table.at(index).length;
    }
    if (m_options.detail == EParagraphDetail::All) {
        SCluster& cluster = m_data.clusters[index];
        cluster.rect.xmin = left;
        cluster.rect.xmax = right;
        cluster.isRightToLeft = isRightToLeft;
    }
}

void CRunRecorder::addBar(EBarKind kind, MbRect rect, FLOAT baseline) {
    rect.xmin *= m_formats.commonFactor();
    rect.xmax *= m_formats.commonFactor();
    m_bars.push_back({{kind, rect, 0, 0}, baseline});
}

const CRunRecorder::Stretch* CRunRecorder::stretchAt(FLOAT baseline, double x) const {
    auto stretch = std::partition_point(m_stretches.begin(), m_stretches.end(), [&](const Stretch& before) {
        return std::pair(before.baseline, before.left) <= std::pair(baseline, x);
    });
    while (stretch != m_stretches.begin() && std::prev(stretch)->baseline == baseline) {
        --stretch;
        if (stretch->right >= x) {
            return &*stretch;
        }
    }
    return nullptr;
}

std::uint32_t CRunRecorder::faceIndex(IDWriteFontFace* face) {
    const auto known = std::find_if(m_data.faces.begin(), m_data.faces.end(),
                                    [face](const auto& candidate) { return candidate.get() == face; });
    if (known == m_data.faces.end()) {
        m_data.faces.emplace_back(face);
        return static_cast<std::uint32_t>(m_data.faces.size() - 1);
    }
    return static_cast<std::uint32_t>(known - m_data.faces.begin());
}

std::uint32_t CRunRecorder::lineAt(std::uint32_t position) const {
    const auto behind = std::partition_point(m_data.lines.begin(), m_data.lines.end(), [position](const SLine& line) {
        return line.range.startPosition <= position;
    });
    return behind == m_data.lines.begin() ? 0 : static_cast<std::uint32_t>(behind - m_data.lines.begin() - 1);
}

} // namespace fonts
