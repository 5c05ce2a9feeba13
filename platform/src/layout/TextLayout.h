#pragma once

#include <atomic>

#include "format/FormatOperations.h"
#include "lines/TextPipeline.h"

namespace platform {

/// A text in a box. Setters store; the work is done by the pipeline when somebody asks.
class CTextLayout final : public CHeapObject<FormatOperations<IDWriteTextLayout1>, IDWriteTextLayout> {
public:
    CTextLayout(const WCHAR* text, UINT32 length, const FormatSettings& settings, const Box& box);

    /// The layout as a text format is another object with the same count: its paragraph settings are the layout's own,
    /// its font is the one that the layout was made with.
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override;
    using IUnknown::QueryInterface;

    HRESULT STDMETHODCALLTYPE SetMaxWidth(FLOAT maxWidth) override;
    HRESULT STDMETHODCALLTYPE SetMaxHeight(FLOAT maxHeight) override;
    HRESULT STDMETHODCALLTYPE SetFontCollection(IDWriteFontCollection* collection, DWRITE_TEXT_RANGE range) override;
    HRESULT STDMETHODCALLTYPE SetFontFamilyName(const WCHAR* name, DWRITE_TEXT_RANGE range) override;
    HRESULT STDMETHODCALLTYPE SetFontWeight(DWRITE_FONT_WEIGHT weight, DWRITE_TEXT_RANGE range) override;
    HRESULT STDMETHODCALLTYPE SetFontStyle(DWRITE_FONT_STYLE style, DWRITE_TEXT_RANGE range) override;
    HRESULT STDMETHODCALLTYPE SetFontStretch(DWRITE_FONT_STRETCH stretch, DWRITE_TEXT_RANGE range) override;
    HRESULT STDMETHODCALLTYPE SetFontSize(FLOAT size, DWRITE_TEXT_RANGE range) override;
    HRESULT STDMETHODCALLTYPE SetUnderline(BOOL underline, DWRITE_TEXT_RANGE range) override;
    HRESULT STDMETHODCALLTYPE SetStrikethrough(BOOL strikethrough, DWRITE_TEXT_RANGE range) override;
    HRESULT STDMETHODCALLTYPE SetDrawingEffect(IUnknown* effect, DWRITE_TEXT_RANGE range) override;
    HRESULT STDMETHODCALLTYPE SetInlineObject(IDWriteInlineObject* object, DWRITE_TEXT_RANGE range) override;
    HRESULT STDMETHODCALLTYPE SetTypography(IDWriteTypography* typography, DWRITE_TEXT_RANGE range) override;
    HRESULT STDMETHODCALLTYPE SetLocaleName(const WCHAR* name, DWRITE_TEXT_RANGE range) override;

    FLOAT STDMETHODCALLTYPE GetMaxWidth() override;
    FLOAT STDMETHODCALLTYPE GetMaxHeight() override;
    using FormatOperations<IDWriteTextLayout1>::GetFontCollection;
    using FormatOperations<IDWriteTextLayout1>::GetFontFamilyNameLength;
    using FormatOperations<IDWriteTextLayout1>::GetFontFamilyName;
    using FormatOperations<IDWriteTextLayout1>::GetFontWeight;
    using FormatOperations<IDWriteTextLayout1>::GetFontStyle;
    using FormatOperations<IDWriteTextLayout1>::GetFontStretch;
    using FormatOperations<IDWriteTextLayout1>::GetFontSize;
    using FormatOperations<IDWriteTextLayout1>::GetLocaleNameLength;
    using FormatOperations<IDWriteTextLayout1>::GetLocaleName;
    HRESULT STDMETHODCALLTYPE GetFontCollection(UINT32 position, IDWriteFontCollection** collection,
                                                DWRITE_TEXT_RANGE* range) override;
    HRESULT STDMETHODCALLTYPE GetFontFamilyNameLength(UINT32 position, UINT32* length,
                                                      DWRITE_TEXT_RANGE* range) override;
    HRESULT STDMETHODCALLTYPE GetFontFamilyName(UINT32 position, WCHAR* name, UINT32 size,
                                                DWRITE_TEXT_RANGE* range) override;
    HRESULT STDMETHODCALLTYPE GetFontWeight(UINT32 position, DWRITE_FONT_WEIGHT* weight,
                                            DWRITE_TEXT_RANGE* range) override;
    HRESULT STDMETHODCALLTYPE GetFontStyle(UINT32 position, DWRITE_FONT_STYLE* style,
                                           DWRITE_TEXT_RANGE* range) override;
    HRESULT STDMETHODCALLTYPE GetFontStretch(UINT32 position, DWRITE_FONT_STRETCH* stretch,
                                             DWRITE_TEXT_RANGE* range) override;
    HRESULT STDMETHODCALLTYPE GetFontSize(UINT32 position, FLOAT* size, DWRITE_TEXT_RANGE* range) override;
    HRESULT STDMETHODCALLTYPE GetUnderline(UINT32 position, BOOL* underline, DWRITE_TEXT_RANGE* range) override;
    HRESULT STDMETHODCALLTYPE GetStrikethrough(UINT32 position, BOOL* strikethrough, DWRITE_TEXT_RANGE* range) override;
    HRESULT STDMETHODCALLTYPE GetDrawingEffect(UINT32 position, IUnknown** effect, DWRITE_TEXT_RANGE* range) override;
    HRESULT STDMETHODCALLTYPE GetInlineObject(UINT32 position, IDWriteInlineObject** object,
                                              DWRITE_TEXT_RANGE* range) override;
    HRESULT STDMETHODCALLTYPE GetTypography(UINT32 position, IDWriteTypography** typography,
                                            DWRITE_TEXT_RANGE* range) override;
    HRESULT STDMETHODCALLTYPE GetLocaleNameLength(UINT32 position, UINT32* length, DWRITE_TEXT_RANGE* range) override;
    HRESULT STDMETHODCALLTYPE GetLocaleName(UINT32 position, WCHAR* name, UINT32 size,
                                            DWRITE_TEXT_RANGE* range) override;

    HRESULT STDMETHODCALLTYPE SetPairKerning(BOOL isKerned, DWRITE_TEXT_RANGE range) override;
    HRESULT STDMETHODCALLTYPE GetPairKerning(UINT32 position, BOOL* isKerned, DWRITE_TEXT_RANGE* range) override;
    HRESULT STDMETHODCALLTYPE SetCharacterSpacing(FLOAT leading, FLOAT trailing, FLOAT minimumAdvance,
                                                  DWRITE_TEXT_RANGE range) override;
    HRESULT STDMETHODCALLTYPE GetCharacterSpacing(UINT32 position, FLOAT* leading, FLOAT* trailing,
                                                  FLOAT* minimumAdvance, DWRITE_TEXT_RANGE* range) override;

    HRESULT STDMETHODCALLTYPE Draw(void* context, IDWriteTextRenderer* renderer, FLOAT originX, FLOAT originY) override;
    HRESULT STDMETHODCALLTYPE GetLineMetrics(DWRITE_LINE_METRICS* metrics, UINT32 maxCount, UINT32* count) override;
    HRESULT STDMETHODCALLTYPE GetMetrics(DWRITE_TEXT_METRICS* metrics) override;
    HRESULT STDMETHODCALLTYPE GetOverhangMetrics(DWRITE_OVERHANG_METRICS* overhangs) override;
    HRESULT STDMETHODCALLTYPE GetClusterMetrics(DWRITE_CLUSTER_METRICS* metrics, UINT32 maxCount,
                                                UINT32* count) override;
    HRESULT STDMETHODCALLTYPE DetermineMinWidth(FLOAT* minWidth) override;
    HRESULT STDMETHODCALLTYPE HitTestPoint(FLOAT x, FLOAT y, BOOL* isTrailingHit, BOOL* isInside,
                                           DWRITE_HIT_TEST_METRICS* metrics) override;
    HRESULT STDMETHODCALLTYPE HitTestTextPosition(UINT32 position, BOOL isTrailingHit, FLOAT* x, FLOAT* y,
                                                  DWRITE_HIT_TEST_METRICS* metrics) override;
    HRESULT STDMETHODCALLTYPE HitTestTextRange(UINT32 position, UINT32 length, FLOAT originX, FLOAT originY,
                                               DWRITE_HIT_TEST_METRICS* metrics, UINT32 maxCount,
                                               UINT32* count) override;

protected:
    ParagraphSettings& paragraph() noexcept override { return m_pipeline.settings(); }
    const FontSettings& font() const noexcept override { return m_pipeline.format().font; }
    void settingsChanged(Change change) noexcept override { redo(change); }

private:
    /// The layout seen as a text format.
    class FormatView final : public LaterFormatOperations {
    public:
        explicit FormatView(CTextLayout& layout) : m_layout(layout) {}
        HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
            return m_layout.QueryInterface(riid, object);
        }
        ULONG STDMETHODCALLTYPE AddRef() override { return m_layout.AddRef(); }
        ULONG STDMETHODCALLTYPE Release() override { return m_layout.Release(); }

    protected:
        ParagraphSettings& paragraph() noexcept override { return m_layout.paragraph(); }
        const FontSettings& font() const noexcept override { return m_layout.font(); }
        void settingsChanged(Change change) noexcept override { m_layout.redo(change); }

    private:
        CTextLayout& m_layout;
    };

    /// Sets a member of a range's styles; what it undoes is named only if something changed.
    template <class Value>
    HRESULT setStyle(DWRITE_TEXT_RANGE range, Value RunStyle::*member, const Value& value, TextPipeline::Stage undone);

    /// Forgets the work that a changed paragraph setting undoes.
    void redo(int change) noexcept;
    /// Does the work, then calls `answer`.
    template <class Answer>
    HRESULT finished(Answer answer);

    TextPipeline m_pipeline;
    FormatView m_view;
};

} // namespace platform
