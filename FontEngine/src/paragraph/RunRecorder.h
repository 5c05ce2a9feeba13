#pragma once

#include <d2d1.h>
#include <dwrite.h>

#include <cstdint>
#include <vector>

#include <FontEngine/ParagraphLayoutOptions.h>
#include <oslayer/com_ptr.h>

#include "ClusterTable.h"
#include "GlyphInk.h"
#include "LayoutData.h"
#include "MissingCharacters.h"
#include "PlatformParagraph.h"
#include "TokenFormats.h"

namespace fonts {

// The sink that a paragraph is drawn into: writes down runs, glyphs and bars as they are drawn, y up. Lines and, where
// they are kept, clusters must be known; they get what only drawing tells.
//
// Lives on the stack of the one call that draws into it.
class CRunRecorder final : public IDWriteTextRenderer {
public:
    // All are borrowed.
    CRunRecorder(SParagraphLayoutData& data, const SPlatformParagraph& platform, const CClusterTable& table,
                 const CTokenFormats& formats, const SParagraphLayoutOptions& options,
                 const oslayer::com_ptr<ID2D1Factory>& d2dFactory);
    CRunRecorder(const CRunRecorder&) = delete;
    CRunRecorder& operator=(const CRunRecorder&) = delete;

    // Afterwards: gives bars their tokens, and the layout what was collected.
    void finish();

    // What was drawn of each line.
    struct DrawnLine {
        MbRect ink;
        // The edges of its clusters without trailing blanks, and how many units they hold.
        double left = MbRect::emptyExtent;
        double right = -MbRect::emptyExtent;
        std::uint32_t units = 0;
        bool hasBaseline = false;
    };
    const std::vector<DrawnLine>& lines() const { return m_lines; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    HRESULT STDMETHODCALLTYPE IsPixelSnappingDisabled(void* context, BOOL* isDisabled) override;
    HRESULT STDMETHODCALLTYPE GetCurrentTransform(void* context, DWRITE_MATRIX* transform) override;
    HRESULT STDMETHODCALLTYPE GetPixelsPerDip(void* context, FLOAT* pixelsPerDip) override;
    HRESULT STDMETHODCALLTYPE DrawGlyphRun(void* context, FLOAT baselineOriginX, FLOAT baselineOriginY,
                                           DWRITE_MEASURING_MODE measuringMode, const DWRITE_GLYPH_RUN* glyphRun,
                                           const DWRITE_GLYPH_RUN_DESCRIPTION* description, IUnknown* effect) override;
    HRESULT STDMETHODCALLTYPE DrawUnderline(void* context, FLOAT baselineOriginX, FLOAT baselineOriginY,
                                            const DWRITE_UNDERLINE* underline, IUnknown* effect) override;
    HRESULT STDMETHODCALLTYPE DrawStrikethrough(void* context, FLOAT baselineOriginX, FLOAT baselineOriginY,
                                                const DWRITE_STRIKETHROUGH* strikethrough, IUnknown* effect) override;
    HRESULT STDMETHODCALLTYPE DrawInlineObject(void* context, FLOAT originX, FLOAT originY,
                                               IDWriteInlineObject* inlineObject, BOOL isSideways, BOOL isRightToLeft,
                                               IUnknown* effect) override;

private:
    // Clusters of one token that follow each other in a drawn run.
    struct Piece {
        std::uint32_t token = 0;
        UINT32 textBegin = 0;
        UINT32 textEnd = 0;
        UINT32 glyphBegin = 0;
        UINT32 glyphEnd = 0;
        // Where its first glyph's pen stands, in the platform's frame.
        double pen = 0.0;
    };
    // Where text of a token was drawn, for the bars.
    struct Stretch {
        std::uint32_t line = 0;
        std::uint32_t token = 0;
        FLOAT baseline = 0.0F;
        double left = 0.0;
        double right = 0.0;
    };
    struct WaitingBar {
        SBar bar;
        FLOAT baseline = 0.0F;
    };

    std::vector<Piece> piecesOf(const DWRITE_GLYPH_RUN& run, const DWRITE_GLYPH_RUN_DESCRIPTION& description,
                                double x) const;
    bool isPlain(const Piece& piece) const;
    HRESULT addPiece(const Piece& piece, const DWRITE_GLYPH_RUN& run, const DWRITE_GLYPH_RUN_DESCRIPTION& description,
                     FLOAT y, const MbRect* knownInk, MbRect& ink);
    // Advances without what was added to widen the piece's clusters.
    void takeNaturalAdvances(const Piece& piece, const DWRITE_GLYPH_RUN& run,
                             const DWRITE_GLYPH_RUN_DESCRIPTION& description);
    void addGlyphs(SRun& run, const DWRITE_GLYPH_RUN& drawn, double startX);
    HRESULT noteInk(const SRun& run, const DWRITE_GLYPH_RUN& drawn);
    void placeBlanks(const DWRITE_GLYPH_RUN& run, const DWRITE_GLYPH_RUN_DESCRIPTION& description, double x);
    void placeClusters(const SRun& run, const Piece& piece, const DWRITE_GLYPH_RUN_DESCRIPTION& description);
    void placeCluster(std::uint32_t line, std::size_t index, double left, double right, bool isRightToLeft);
    void addBar(EBarKind kind, MbRect rect, FLOAT baseline);
    const Stretch* stretchAt(FLOAT baseline, double x) const;
    std::uint32_t faceIndex(IDWriteFontFace* face);
    std::uint32_t lineAt(std::uint32_t position) const;

    SParagraphLayoutData& m_data;
    const SPlatformParagraph& m_platform;
    const CClusterTable& m_table;
    const CTokenFormats& m_formats;
    const SParagraphLayoutOptions& m_options;
    const oslayer::com_ptr<ID2D1Factory>& m_d2dFactory;
    CGlyphInk m_glyphInk;
    CMissingCharacters m_missing;
    std::vector<DrawnLine> m_lines;
    std::vector<Stretch> m_stretches;
    std::vector<WaitingBar> m_bars;
    std::vector<FLOAT> m_advances;
};

} // namespace fonts
