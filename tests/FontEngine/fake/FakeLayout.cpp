#include <algorithm>

#include "FakeObjects.h"

namespace fake {

namespace {

std::string listed(DWRITE_TEXT_RANGE range) {
    return '[' + std::to_string(range.startPosition) + ", " + std::to_string(range.length) + ']';
}

// What formats and layouts have in common: settings that are recorded under the
// name of the kind, and questions that nobody asks.
template <typename Interface, typename... Bases>
class Settings : public Object<Interface, Bases...> {
public:
    Settings(const char* kind, LayoutState state)
        : Object<Interface, Bases...>(objects().otherReferences, Lifetime::References), m_kind(kind),
          m_state(std::move(state)) {}

    HRESULT STDMETHODCALLTYPE SetTextAlignment(DWRITE_TEXT_ALIGNMENT alignment) override {
        return set("SetTextAlignment", m_state.textAlignment, alignment);
    }
    HRESULT STDMETHODCALLTYPE SetParagraphAlignment(DWRITE_PARAGRAPH_ALIGNMENT alignment) override {
        return set("SetParagraphAlignment", m_state.paragraphAlignment, alignment);
    }
    HRESULT STDMETHODCALLTYPE SetWordWrapping(DWRITE_WORD_WRAPPING wrapping) override {
        return set("SetWordWrapping", m_state.wrapping, wrapping);
    }
    HRESULT STDMETHODCALLTYPE SetIncrementalTabStop(FLOAT tabStop) override {
        return set("SetIncrementalTabStop", m_state.incrementalTabStop, tabStop);
    }
    HRESULT STDMETHODCALLTYPE GetFontCollection(IDWriteFontCollection** fontCollection) override {
        return handOut(recordOwn("GetFontCollection"), &objects().collection, fontCollection);
    }
    HRESULT STDMETHODCALLTYPE GetLocaleName(WCHAR* localeName, UINT32 nameSize) override {
        const HRESULT result = recordOwn("GetLocaleName", nameSize);
        const std::wstring& name = platform().formatLocaleName;
        if (SUCCEEDED(result) && nameSize > name.length())
            *std::copy(name.begin(), name.end(), localeName) = L'\0';
        return result;
    }

    HRESULT STDMETHODCALLTYPE SetReadingDirection(DWRITE_READING_DIRECTION) override {
        return unexpected("SetReadingDirection");
    }
    HRESULT STDMETHODCALLTYPE SetFlowDirection(DWRITE_FLOW_DIRECTION) override {
        return unexpected("SetFlowDirection");
    }
    HRESULT STDMETHODCALLTYPE SetTrimming(const DWRITE_TRIMMING*, IDWriteInlineObject*) override {
        return unexpected("SetTrimming");
    }
    HRESULT STDMETHODCALLTYPE SetLineSpacing(DWRITE_LINE_SPACING_METHOD, FLOAT, FLOAT) override {
        return unexpected("SetLineSpacing");
    }
    DWRITE_TEXT_ALIGNMENT STDMETHODCALLTYPE GetTextAlignment() override { return m_state.textAlignment; }
    DWRITE_PARAGRAPH_ALIGNMENT STDMETHODCALLTYPE GetParagraphAlignment() override { return m_state.paragraphAlignment; }
    DWRITE_WORD_WRAPPING STDMETHODCALLTYPE GetWordWrapping() override { return m_state.wrapping; }
    FLOAT STDMETHODCALLTYPE GetIncrementalTabStop() override { return m_state.incrementalTabStop; }
    DWRITE_READING_DIRECTION STDMETHODCALLTYPE GetReadingDirection() override {
        unexpected("GetReadingDirection");
        return {};
    }
    DWRITE_FLOW_DIRECTION STDMETHODCALLTYPE GetFlowDirection() override {
        unexpected("GetFlowDirection");
        return {};
    }
    HRESULT STDMETHODCALLTYPE GetTrimming(DWRITE_TRIMMING*, IDWriteInlineObject**) override {
        return unexpected("GetTrimming");
    }
    HRESULT STDMETHODCALLTYPE GetLineSpacing(DWRITE_LINE_SPACING_METHOD*, FLOAT*, FLOAT*) override {
        return unexpected("GetLineSpacing");
    }
    UINT32 STDMETHODCALLTYPE GetFontFamilyNameLength() override { return noNumber("GetFontFamilyNameLength"); }
    HRESULT STDMETHODCALLTYPE GetFontFamilyName(WCHAR*, UINT32) override { return unexpected("GetFontFamilyName"); }
    DWRITE_FONT_WEIGHT STDMETHODCALLTYPE GetFontWeight() override {
        unexpected("GetFontWeight");
        return {};
    }
    DWRITE_FONT_STYLE STDMETHODCALLTYPE GetFontStyle() override {
        unexpected("GetFontStyle");
        return {};
    }
    DWRITE_FONT_STRETCH STDMETHODCALLTYPE GetFontStretch() override {
        unexpected("GetFontStretch");
        return {};
    }
    FLOAT STDMETHODCALLTYPE GetFontSize() override {
        unexpected("GetFontSize");
        return 0;
    }
    UINT32 STDMETHODCALLTYPE GetLocaleNameLength() override { return noNumber("GetLocaleNameLength"); }

protected:
    template <typename... Arguments>
    HRESULT recordOwn(const char* name, const Arguments&... arguments) const {
        return record((m_kind + ("." + std::string(name))).c_str(), arguments...);
    }

    // A setting takes effect unless its call fails.
    template <typename Value>
    HRESULT set(const char* name, Value& place, Value value) {
        const HRESULT result = recordOwn(name, value);
        if (SUCCEEDED(result))
            place = value;
        return result;
    }

    const LayoutState& state() const { return m_state; }
    LayoutState& state() { return m_state; }

private:
    static UINT32 noNumber(const char* operation) {
        unexpected(operation);
        return 0;
    }

    std::string m_kind;
    LayoutState m_state;
};

class Format final : public Settings<IDWriteTextFormat> {
public:
    Format() : Settings("Format", {}) {}
};

class Layout final : public Settings<IDWriteTextLayout, IDWriteTextFormat> {
public:
    explicit Layout(LayoutState state) : Settings("Layout", std::move(state)) {}

    using Settings::GetFontCollection;
    using Settings::GetFontFamilyName;
    using Settings::GetFontFamilyNameLength;
    using Settings::GetFontSize;
    using Settings::GetFontStretch;
    using Settings::GetFontStyle;
    using Settings::GetFontWeight;
    using Settings::GetLocaleName;
    using Settings::GetLocaleNameLength;

    HRESULT STDMETHODCALLTYPE SetMaxWidth(FLOAT width) override { return set("SetMaxWidth", state().maxWidth, width); }
    HRESULT STDMETHODCALLTYPE SetMaxHeight(FLOAT height) override {
        return set("SetMaxHeight", state().maxHeight, height);
    }
    HRESULT STDMETHODCALLTYPE SetFontFamilyName(const WCHAR* name, DWRITE_TEXT_RANGE range) override {
        return recordOwn("SetFontFamilyName", quoted(name), listed(range));
    }
    HRESULT STDMETHODCALLTYPE SetFontWeight(DWRITE_FONT_WEIGHT weight, DWRITE_TEXT_RANGE range) override {
        return recordOwn("SetFontWeight", weight, listed(range));
    }
    HRESULT STDMETHODCALLTYPE SetFontStyle(DWRITE_FONT_STYLE style, DWRITE_TEXT_RANGE range) override {
        return recordOwn("SetFontStyle", style, listed(range));
    }
    HRESULT STDMETHODCALLTYPE SetFontStretch(DWRITE_FONT_STRETCH stretch, DWRITE_TEXT_RANGE range) override {
        return recordOwn("SetFontStretch", stretch, listed(range));
    }
    HRESULT STDMETHODCALLTYPE SetFontSize(FLOAT size, DWRITE_TEXT_RANGE range) override {
        return recordOwn("SetFontSize", size, listed(range));
    }
    HRESULT STDMETHODCALLTYPE SetUnderline(BOOL underline, DWRITE_TEXT_RANGE range) override {
        return recordOwn("SetUnderline", underline, listed(range));
    }
    HRESULT STDMETHODCALLTYPE Draw(void* context, IDWriteTextRenderer* renderer, FLOAT x, FLOAT y) override {
        const HRESULT result = recordOwn("Draw", context ? "context" : "null", renderer ? "Renderer" : "null", x, y);
        return FAILED(result) ? result : platform().draw(state(), context, renderer, x, y);
    }
    HRESULT STDMETHODCALLTYPE GetMetrics(DWRITE_TEXT_METRICS* metrics) override {
        const HRESULT result = recordOwn("GetMetrics");
        if (SUCCEEDED(result))
            *metrics = platform().layoutMetrics(state());
        return result;
    }
    FLOAT STDMETHODCALLTYPE GetMaxWidth() override { return state().maxWidth; }
    FLOAT STDMETHODCALLTYPE GetMaxHeight() override { return state().maxHeight; }

    HRESULT STDMETHODCALLTYPE SetFontCollection(IDWriteFontCollection*, DWRITE_TEXT_RANGE) override {
        return unexpected("SetFontCollection");
    }
    HRESULT STDMETHODCALLTYPE SetStrikethrough(BOOL, DWRITE_TEXT_RANGE) override {
        return unexpected("SetStrikethrough");
    }
    HRESULT STDMETHODCALLTYPE SetDrawingEffect(IUnknown*, DWRITE_TEXT_RANGE) override {
        return unexpected("SetDrawingEffect");
    }
    HRESULT STDMETHODCALLTYPE SetInlineObject(IDWriteInlineObject*, DWRITE_TEXT_RANGE) override {
        return unexpected("SetInlineObject");
    }
    HRESULT STDMETHODCALLTYPE SetTypography(IDWriteTypography*, DWRITE_TEXT_RANGE) override {
        return unexpected("SetTypography");
    }
    HRESULT STDMETHODCALLTYPE SetLocaleName(const WCHAR*, DWRITE_TEXT_RANGE) override {
        return unexpected("SetLocaleName");
    }
    HRESULT STDMETHODCALLTYPE GetFontCollection(UINT32, IDWriteFontCollection**, DWRITE_TEXT_RANGE*) override {
        return unexpected("Layout.GetFontCollection at a position");
    }
    HRESULT STDMETHODCALLTYPE GetFontFamilyNameLength(UINT32, UINT32*, DWRITE_TEXT_RANGE*) override {
        return unexpected("GetFontFamilyNameLength");
    }
    HRESULT STDMETHODCALLTYPE GetFontFamilyName(UINT32, WCHAR*, UINT32, DWRITE_TEXT_RANGE*) override {
        return unexpected("GetFontFamilyName");
    }
    HRESULT STDMETHODCALLTYPE GetFontWeight(UINT32, DWRITE_FONT_WEIGHT*, DWRITE_TEXT_RANGE*) override {
        return unexpected("GetFontWeight");
    }
    HRESULT STDMETHODCALLTYPE GetFontStyle(UINT32, DWRITE_FONT_STYLE*, DWRITE_TEXT_RANGE*) override {
        return unexpected("GetFontStyle");
    }
    HRESULT STDMETHODCALLTYPE GetFontStretch(UINT32, DWRITE_FONT_STRETCH*, DWRITE_TEXT_RANGE*) override {
        return unexpected("GetFontStretch");
    }
    HRESULT STDMETHODCALLTYPE GetFontSize(UINT32, FLOAT*, DWRITE_TEXT_RANGE*) override {
        return unexpected("GetFontSize");
    }
    HRESULT STDMETHODCALLTYPE GetUnderline(UINT32, BOOL*, DWRITE_TEXT_RANGE*) override {
        return unexpected("GetUnderline");
    }
    HRESULT STDMETHODCALLTYPE GetStrikethrough(UINT32, BOOL*, DWRITE_TEXT_RANGE*) override {
        return unexpected("GetStrikethrough");
    }
    HRESULT STDMETHODCALLTYPE GetDrawingEffect(UINT32, IUnknown**, DWRITE_TEXT_RANGE*) override {
        return unexpected("GetDrawingEffect");
    }
    HRESULT STDMETHODCALLTYPE GetInlineObject(UINT32, IDWriteInlineObject**, DWRITE_TEXT_RANGE*) override {
        return unexpected("GetInlineObject");
    }
    HRESULT STDMETHODCALLTYPE GetTypography(UINT32, IDWriteTypography**, DWRITE_TEXT_RANGE*) override {
        return unexpected("GetTypography");
    }
    HRESULT STDMETHODCALLTYPE GetLocaleNameLength(UINT32, UINT32*, DWRITE_TEXT_RANGE*) override {
        return unexpected("GetLocaleNameLength");
    }
    HRESULT STDMETHODCALLTYPE GetLocaleName(UINT32, WCHAR*, UINT32, DWRITE_TEXT_RANGE*) override {
        return unexpected("Layout.GetLocaleName at a position");
    }
    HRESULT STDMETHODCALLTYPE GetLineMetrics(DWRITE_LINE_METRICS*, UINT32, UINT32*) override {
        return unexpected("GetLineMetrics");
    }
    HRESULT STDMETHODCALLTYPE GetOverhangMetrics(DWRITE_OVERHANG_METRICS*) override {
        return unexpected("GetOverhangMetrics");
    }
    HRESULT STDMETHODCALLTYPE GetClusterMetrics(DWRITE_CLUSTER_METRICS*, UINT32, UINT32*) override {
        return unexpected("GetClusterMetrics");
    }
    HRESULT STDMETHODCALLTYPE DetermineMinWidth(FLOAT*) override { return unexpected("DetermineMinWidth"); }
    HRESULT STDMETHODCALLTYPE HitTestPoint(FLOAT, FLOAT, BOOL*, BOOL*, DWRITE_HIT_TEST_METRICS*) override {
        return unexpected("HitTestPoint");
    }
    HRESULT STDMETHODCALLTYPE HitTestTextPosition(UINT32, BOOL, FLOAT*, FLOAT*, DWRITE_HIT_TEST_METRICS*) override {
        return unexpected("HitTestTextPosition");
    }
    HRESULT STDMETHODCALLTYPE HitTestTextRange(UINT32, UINT32, FLOAT, FLOAT, DWRITE_HIT_TEST_METRICS*, UINT32,
                                               UINT32*) override {
        return unexpected("HitTestTextRange");
    }
};

} // namespace

IDWriteTextFormat* newTextFormat() {
    return new Format;
}

IDWriteTextLayout* newTextLayout(LayoutState state) {
    return new Layout(std::move(state));
}

} // namespace fake
