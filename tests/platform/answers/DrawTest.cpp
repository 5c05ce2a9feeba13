#include "support/LayoutTestSupport.h"

namespace platform_test {
namespace {

constexpr DWRITE_TEXT_RANGE all{0, 0xFFFFFFFF};

// DejaVu Sans: 2048 units; underline 90 thick, its top 40 below the baseline; strikethrough 102 thick, 530 above.
constexpr float unit = 20.0F / 2048.0F;

/// A renderer of the second generation; nobody may call its operations of the first.
class TurningRecorder final : public IDWriteTextRenderer1 {
public:
    std::vector<std::string> calls;
    HRESULT questionAnswer = S_OK;
    HRESULT answer = S_OK;
    int references = 1;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
        EXPECT_TRUE(riid == __uuidof(IDWriteTextRenderer1));
        // What a failing answer stores is not to be used.
        *object = static_cast<IDWriteTextRenderer1*>(this);
        references += SUCCEEDED(questionAnswer) ? 1 : 0;
        return questionAnswer;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++references); }
    ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(--references); }
    HRESULT STDMETHODCALLTYPE IsPixelSnappingDisabled(void*, BOOL* isDisabled) override {
        *isDisabled = TRUE;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetCurrentTransform(void*, DWRITE_MATRIX*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetPixelsPerDip(void*, FLOAT*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE DrawGlyphRun(void*, FLOAT, FLOAT, DWRITE_MEASURING_MODE, const DWRITE_GLYPH_RUN*,
                                           const DWRITE_GLYPH_RUN_DESCRIPTION*, IUnknown*) override {
        return note("old run");
    }
    HRESULT STDMETHODCALLTYPE DrawUnderline(void*, FLOAT, FLOAT, const DWRITE_UNDERLINE*, IUnknown*) override {
        return note("old underline");
    }
    HRESULT STDMETHODCALLTYPE DrawStrikethrough(void*, FLOAT, FLOAT, const DWRITE_STRIKETHROUGH*, IUnknown*) override {
        return note("old strikethrough");
    }
    HRESULT STDMETHODCALLTYPE DrawInlineObject(void*, FLOAT, FLOAT, IDWriteInlineObject*, BOOL, BOOL,
                                               IUnknown*) override {
        return note("old object");
    }
    HRESULT STDMETHODCALLTYPE DrawGlyphRun(void*, FLOAT x, FLOAT, DWRITE_GLYPH_ORIENTATION_ANGLE angle,
                                           DWRITE_MEASURING_MODE mode, const DWRITE_GLYPH_RUN* run,
                                           const DWRITE_GLYPH_RUN_DESCRIPTION* description, IUnknown*) override {
        EXPECT_EQ(DWRITE_MEASURING_MODE_NATURAL, mode);
        EXPECT_EQ(run->glyphCount, description->stringLength);
        EXPECT_EQ(description->textPosition == 0 ? 7.0F : 7.0F + 1255.0F * unit + 30.0F, x);
        return noteUpright("run", angle);
    }
    HRESULT STDMETHODCALLTYPE DrawUnderline(void*, FLOAT x, FLOAT, DWRITE_GLYPH_ORIENTATION_ANGLE angle,
                                            const DWRITE_UNDERLINE* bar, IUnknown*) override {
        EXPECT_EQ(7.0F, x);
        EXPECT_FLOAT_EQ(1255.0F * unit, bar->width);
        return noteUpright("underline", angle);
    }
    HRESULT STDMETHODCALLTYPE DrawStrikethrough(void*, FLOAT, FLOAT, DWRITE_GLYPH_ORIENTATION_ANGLE angle,
                                                const DWRITE_STRIKETHROUGH* bar, IUnknown*) override {
        EXPECT_FLOAT_EQ(1255.0F * unit, bar->width);
        return noteUpright("strikethrough", angle);
    }
    HRESULT STDMETHODCALLTYPE DrawInlineObject(void*, FLOAT, FLOAT, DWRITE_GLYPH_ORIENTATION_ANGLE angle,
                                               IDWriteInlineObject* object, BOOL isSideways, BOOL isRightToLeft,
                                               IUnknown*) override {
        EXPECT_NE(nullptr, object);
        EXPECT_FALSE(isSideways);
        EXPECT_FALSE(isRightToLeft);
        return noteUpright("object", angle);
    }

private:
    HRESULT note(const char* call) {
        calls.emplace_back(call);
        return answer;
    }
    HRESULT noteUpright(const char* call, DWRITE_GLYPH_ORIENTATION_ANGLE angle) {
        EXPECT_EQ(DWRITE_GLYPH_ORIENTATION_ANGLE_0_DEGREES, angle);
        return note(call);
    }
};

/// "a" underlined and struck through, an object 30 wide, "b".
std::vector<std::string> callsTo(TurningRecorder& recorder, HRESULT expected = S_OK) {
    const auto layout = makeLayout(u"a#b");
    Picture picture;
    EXPECT_EQ(S_OK, layout->SetInlineObject(&picture, {1, 1}));
    EXPECT_EQ(S_OK, layout->SetUnderline(TRUE, {0, 1}));
    EXPECT_EQ(S_OK, layout->SetStrikethrough(TRUE, {0, 1}));
    EXPECT_EQ(expected, layout->Draw(nullptr, &recorder, 7.0F, 0.0F));
    EXPECT_EQ(1, recorder.references);
    return recorder.calls;
}

TEST(Draw, ARendererThatKnowsTurnedGlyphsIsToldThatAllStandUpright) {
    TurningRecorder recorder;
    EXPECT_EQ((std::vector<std::string>{"run", "run", "object", "underline", "strikethrough"}), callsTo(recorder));
    TurningRecorder failing;
    failing.answer = E_OUTOFMEMORY;
    EXPECT_EQ((std::vector<std::string>{"run"}), callsTo(failing, E_OUTOFMEMORY));
}

TEST(Draw, ARendererThatDoesNotIsCalledAsEver) {
    for (const HRESULT no : {E_NOINTERFACE, E_FAIL, E_NOTIMPL}) {
        TurningRecorder recorder;
        recorder.questionAnswer = no;
        EXPECT_EQ((std::vector<std::string>{"old run", "old run", "old object", "old underline", "old strikethrough"}),
                  callsTo(recorder));
    }
}

TEST(Draw, TellsARunsTextFontAndPlace) {
    const auto layout = makeLayout(u"Hello");
    const auto runs = drawnRuns(*layout, 100.0F, 50.0F);
    ASSERT_EQ(1U, runs.size());
    EXPECT_EQ(100.0F, runs[0].x);
    EXPECT_FLOAT_EQ(50.0F + 1901.0F * unit, runs[0].y);
    EXPECT_EQ(20.0F, runs[0].emSize);
    EXPECT_EQ(0U, runs[0].textPosition);
    EXPECT_EQ(L"Hello", runs[0].text);
    EXPECT_EQ(L"en-us", runs[0].locale);
    EXPECT_EQ(DWRITE_MEASURING_MODE_NATURAL, runs[0].measuringMode);
    EXPECT_FALSE(runs[0].isSideways);
    EXPECT_EQ(0U, runs[0].bidiLevel);
    EXPECT_EQ((std::vector<unsigned>{0, 1, 2, 3, 4}), runs[0].clusterMap);
    EXPECT_FLOAT_EQ(1540.0F * unit, runs[0].advances[0]);
}

TEST(Draw, StringsPointIntoTheLayoutsOwnText) {
    const auto layout = makeLayout(u"ab\ncd");
    const auto first = drawnRuns(*layout);
    const auto again = drawnRuns(*layout);
    ASSERT_EQ(3U, first.size());
    EXPECT_EQ(first[0].string + 3, first[2].string);
    EXPECT_EQ(first[0].string, again[0].string);
}

TEST(Draw, BlankLinesAreARunWithoutGlyphsForTheirNewline) {
    const auto runs = drawnRuns(*makeLayout(u"\na"));
    ASSERT_EQ(2U, runs.size());
    EXPECT_EQ(L"\n", runs[0].text);
    EXPECT_TRUE(runs[0].glyphs.empty());
}

TEST(Draw, TrailingSpacesAreInTheRun) {
    const auto runs = drawnRuns(*makeLayout(u"a  "));
    ASSERT_EQ(1U, runs.size());
    EXPECT_EQ(3U, runs[0].glyphs.size());
}

TEST(Draw, GlyphRunsComeFirstThenObjectsUnderlinesAndStrikethroughs) {
    const auto layout = makeLayout(u"a#b\nc#d");
    Picture picture;
    EXPECT_EQ(S_OK, layout->SetInlineObject(&picture, {1, 1}));
    EXPECT_EQ(S_OK, layout->SetInlineObject(&picture, {5, 1}));
    EXPECT_EQ(S_OK, layout->SetUnderline(TRUE, all));
    EXPECT_EQ(S_OK, layout->SetStrikethrough(TRUE, all));
    std::vector<DrawnCall::Kind> kinds;
    for (const DrawnCall& call : draw(*layout)) {
        if (kinds.empty() || kinds.back() != call.kind) {
            kinds.push_back(call.kind);
        }
    }
    EXPECT_EQ((std::vector<DrawnCall::Kind>{DrawnCall::GlyphRun, DrawnCall::Object, DrawnCall::Underline,
                                            DrawnCall::Strikethrough}),
              kinds);
}

TEST(Draw, AFailingAnswerEndsTheDrawing) {
    const auto layout = makeLayout(u"a#b\nc#d");
    Picture picture;
    EXPECT_EQ(S_OK, layout->SetInlineObject(&picture, {1, 1}));
    EXPECT_EQ(S_OK, layout->SetUnderline(TRUE, all));
    EXPECT_EQ(S_OK, layout->SetStrikethrough(TRUE, all));
    for (const auto kind : {DrawnCall::GlyphRun, DrawnCall::Object, DrawnCall::Underline, DrawnCall::Strikethrough}) {
        Recorder recorder;
        recorder.failingKind = kind;
        recorder.answer = E_OUTOFMEMORY;
        EXPECT_EQ(E_OUTOFMEMORY, layout->Draw(nullptr, &recorder, 0, 0));
        EXPECT_EQ(1U, recorder.ofKind(kind).size());
        EXPECT_EQ(kind, recorder.calls.back().kind);
    }
}

TEST(Draw, FailingAnswersAboutPixelsEndTheDrawing) {
    const auto layout = makeLayout(u"a");
    Recorder recorder;
    recorder.isSnappingDisabled = FALSE;
    recorder.pixelsAnswer = E_FAIL;
    EXPECT_EQ(E_FAIL, layout->Draw(nullptr, &recorder, 0, 0));
    recorder.transformAnswer = E_OUTOFMEMORY;
    EXPECT_EQ(E_OUTOFMEMORY, layout->Draw(nullptr, &recorder, 0, 0));
    recorder.snappingAnswer = E_NOTIMPL;
    EXPECT_EQ(E_NOTIMPL, layout->Draw(nullptr, &recorder, 0, 0));
    EXPECT_TRUE(recorder.calls.empty());
    EXPECT_EQ(E_INVALIDARG, layout->Draw(nullptr, nullptr, 0, 0));
}

TEST(Draw, LinesFollowEachOtherDownwards) {
    const auto layout = makeLayout(u"a\nb");
    const auto lines = linesOf(*layout);
    const auto runs = drawnRuns(*layout);
    ASSERT_EQ(3U, runs.size());
    EXPECT_FLOAT_EQ(lines[0].baseline, runs[0].y);
    EXPECT_FLOAT_EQ(lines[0].height + lines[1].baseline, runs[2].y);
}

TEST(Snapping, IsAskedForFirst) {
    const auto layout = makeLayout(u"a");
    Recorder recorder;
    EXPECT_EQ(S_OK, layout->Draw(nullptr, &recorder, 0, 0));
    EXPECT_EQ(0, recorder.pixelQuestions);
    recorder.isSnappingDisabled = FALSE;
    EXPECT_EQ(S_OK, layout->Draw(nullptr, &recorder, 0, 0));
    EXPECT_EQ(2, recorder.pixelQuestions);
}

/// The place of the baseline of "a" drawn at (0.1, 0) under a transform; it lies at 18.564453 unsnapped.
float snapped(const DWRITE_MATRIX& transform, float pixelsPerDip) {
    const auto layout = makeLayout(u"a");
    Recorder recorder;
    recorder.isSnappingDisabled = FALSE;
    recorder.transform = transform;
    recorder.pixelsPerDip = pixelsPerDip;
    EXPECT_EQ(S_OK, layout->Draw(nullptr, &recorder, 0.1F, 0.0F));
    EXPECT_EQ(0.1F, recorder.calls.at(0).x);
    return recorder.calls.at(0).y;
}

TEST(Snapping, RoundsBaselinesToPixels) {
    EXPECT_FLOAT_EQ(19.0F, snapped({1, 0, 0, 1, 0, 0}, 1.0F));
    EXPECT_FLOAT_EQ(18.5F, snapped({1, 0, 0, 1, 0, 0}, 2.0F));
    EXPECT_FLOAT_EQ(18.56F, snapped({100, 0, 0, -100, 0, 0}, 1.0F));
    EXPECT_FLOAT_EQ(18.3F, snapped({1, 0, 0, 1, 0, 0.7F}, 1.0F));
    EXPECT_FLOAT_EQ(19.0F, snapped({0, 1, 1, 0, 0, 0}, 1.0F));
    EXPECT_FLOAT_EQ(18.5F, snapped({0, -2, 2, 0, 0, 0}, 1.0F));
}

TEST(Snapping, NeedsATransformAlongTheAxesAndPixels) {
    constexpr float unsnapped = 1901.0F * unit;
    EXPECT_FLOAT_EQ(unsnapped, snapped({1, 0.5F, 0, 1, 0, 0}, 1.0F));
    EXPECT_FLOAT_EQ(unsnapped, snapped({1, 1, 1, 1, 0, 0}, 1.0F));
    EXPECT_FLOAT_EQ(unsnapped, snapped({1, 0, 0, 1, 0, 0}, 0.0F));
    EXPECT_FLOAT_EQ(unsnapped, snapped({1, 0, 0, 1, 0, 0}, -1.0F));
}

TEST(Snapping, ASingularTransformSnapsToPixelsAlone) {
    EXPECT_FLOAT_EQ(18.5F, snapped({0, 0, 0, 1, 0, 0}, 2.0F));
}

TEST(Snapping, EveryLineIsSnappedByItselfWithItsBars) {
    const auto layout = makeLayout(u"a\nb");
    EXPECT_EQ(S_OK, layout->SetUnderline(TRUE, all));
    EXPECT_EQ(S_OK, layout->SetStrikethrough(TRUE, all));
    Recorder recorder;
    recorder.isSnappingDisabled = FALSE;
    EXPECT_EQ(S_OK, layout->Draw(nullptr, &recorder, 0, 0));
    const auto runs = recorder.ofKind(DrawnCall::GlyphRun);
    EXPECT_FLOAT_EQ(19.0F, runs.front().y);
    EXPECT_FLOAT_EQ(42.0F, runs.back().y);
    const auto underlines = recorder.ofKind(DrawnCall::Underline);
    ASSERT_EQ(2U, underlines.size());
    EXPECT_FLOAT_EQ(19.0F, underlines[0].y);
    EXPECT_FLOAT_EQ(42.0F, underlines[1].y);
    EXPECT_FLOAT_EQ(42.0F, recorder.ofKind(DrawnCall::Strikethrough).at(1).y);
}

std::vector<DrawnCall> underlinesOf(IDWriteTextLayout& layout) {
    Recorder recorder;
    EXPECT_EQ(S_OK, layout.Draw(nullptr, &recorder, 0, 0));
    return recorder.ofKind(DrawnCall::Underline);
}

std::vector<DrawnCall> strikethroughsOf(IDWriteTextLayout& layout) {
    Recorder recorder;
    EXPECT_EQ(S_OK, layout.Draw(nullptr, &recorder, 0, 0));
    return recorder.ofKind(DrawnCall::Strikethrough);
}

TEST(Underline, IsWhatTheFontSays) {
    const auto layout = makeLayout(u"Hello");
    EXPECT_EQ(S_OK, layout->SetUnderline(TRUE, all));
    const auto bars = underlinesOf(*layout);
    ASSERT_EQ(1U, bars.size());
    EXPECT_EQ(0.0F, bars[0].x);
    EXPECT_FLOAT_EQ(1901.0F * unit, bars[0].y);
    EXPECT_FLOAT_EQ(5191.0F * unit, bars[0].width);
    EXPECT_FLOAT_EQ(90.0F * unit, bars[0].thickness);
    EXPECT_FLOAT_EQ(40.0F * unit, bars[0].offset);
    EXPECT_FLOAT_EQ(1493.0F * unit, bars[0].runHeight);
    EXPECT_EQ(L"en-us", bars[0].locale);
    EXPECT_EQ(DWRITE_READING_DIRECTION_LEFT_TO_RIGHT, bars[0].reading);
    EXPECT_EQ(DWRITE_FLOW_DIRECTION_TOP_TO_BOTTOM, bars[0].flow);
    EXPECT_EQ(DWRITE_MEASURING_MODE_NATURAL, bars[0].measuringMode);
}

TEST(Underline, IsOneBarAcrossSizesAndFonts) {
    const auto layout = makeLayout(u"aabbcc");
    EXPECT_EQ(S_OK, layout->SetUnderline(TRUE, all));
    EXPECT_EQ(S_OK, layout->SetFontSize(40.0F, {2, 2}));
    const auto bars = underlinesOf(*layout);
    ASSERT_EQ(1U, bars.size());
    EXPECT_FLOAT_EQ(metricsOf(*layout).width, bars[0].width);
    EXPECT_FLOAT_EQ(1493.0F * 2.0F * unit, bars[0].runHeight);
    // Widths: a 1255, b 1300, c 1126 units; averages weighted by them.
    const float small = 2.0F * (1255.0F + 1126.0F);
    const float large = 2.0F * 2.0F * 1300.0F;
    EXPECT_NEAR(90.0F * unit * (small + 2.0F * large) / (small + large), bars[0].thickness, 1e-5F);
    EXPECT_NEAR(40.0F * unit * (small + 2.0F * large) / (small + large), bars[0].offset, 1e-5F);
}

TEST(Underline, IsCutAtGapsLinesLocalesAndEffects) {
    const auto gap = makeLayout(u"aa bb cc");
    EXPECT_EQ(S_OK, gap->SetUnderline(TRUE, {0, 2}));
    EXPECT_EQ(S_OK, gap->SetUnderline(TRUE, {6, 2}));
    EXPECT_EQ(2U, underlinesOf(*gap).size());
    const auto lines = makeLayout(u"aa\nbb");
    EXPECT_EQ(S_OK, lines->SetUnderline(TRUE, all));
    EXPECT_EQ(2U, underlinesOf(*lines).size());
    const auto locale = makeLayout(u"aabb");
    EXPECT_EQ(S_OK, locale->SetUnderline(TRUE, all));
    EXPECT_EQ(S_OK, locale->SetLocaleName(L"fr-fr", {2, 2}));
    ASSERT_EQ(2U, underlinesOf(*locale).size());
    EXPECT_EQ(L"fr-fr", underlinesOf(*locale)[1].locale);
    const auto effects = makeLayout(u"aabb");
    Effect effect;
    EXPECT_EQ(S_OK, effects->SetUnderline(TRUE, all));
    EXPECT_EQ(S_OK, effects->SetDrawingEffect(&effect, {2, 2}));
    ASSERT_EQ(2U, underlinesOf(*effects).size());
    EXPECT_EQ(&effect, underlinesOf(*effects)[1].effect);
}

TEST(Underline, CoversSpacesAndTabsButNotNewlinesAlone) {
    const auto layout = makeLayout(u"a  \t");
    EXPECT_EQ(S_OK, layout->SetUnderline(TRUE, all));
    ASSERT_EQ(1U, underlinesOf(*layout).size());
    EXPECT_FLOAT_EQ(80.0F, underlinesOf(*layout)[0].width);
    const auto newline = makeLayout(u"a\nb");
    EXPECT_EQ(S_OK, newline->SetUnderline(TRUE, {1, 1}));
    EXPECT_TRUE(underlinesOf(*newline).empty());
    const auto spaces = makeLayout(u"ab  ");
    EXPECT_EQ(S_OK, spaces->SetUnderline(TRUE, all));
    EXPECT_FLOAT_EQ(metricsOf(*spaces).widthIncludingTrailingWhitespace, underlinesOf(*spaces)[0].width);
}

TEST(Underline, OfRightToLeftTextStartsAtItsLeftEnd) {
    const auto layout = makeLayout(u"ab \u05D0\u05D1");
    EXPECT_EQ(S_OK, layout->SetUnderline(TRUE, {3, 2}));
    const auto bars = underlinesOf(*layout);
    ASSERT_EQ(1U, bars.size());
    EXPECT_EQ(DWRITE_READING_DIRECTION_RIGHT_TO_LEFT, bars[0].reading);
    EXPECT_NEAR(metricsOf(*layout).width, bars[0].x + bars[0].width, 1e-4F);
}

TEST(Underline, AClusterIsUnderlinedAsAWholeOrNot) {
    const auto layout = makeLayout(u"e\u0301x");
    EXPECT_EQ(S_OK, layout->SetUnderline(TRUE, {1, 1}));
    EXPECT_TRUE(underlinesOf(*layout).empty());
    EXPECT_EQ(S_OK, layout->SetUnderline(TRUE, {0, 1}));
    EXPECT_EQ(S_OK, layout->SetUnderline(FALSE, {1, 1}));
    ASSERT_EQ(1U, underlinesOf(*layout).size());
    EXPECT_FLOAT_EQ(1224.0F * unit, underlinesOf(*layout)[0].width);
}

TEST(Strikethrough, IsWhatTheFontSaysAboveTheBaseline) {
    const auto layout = makeLayout(u"Hello");
    EXPECT_EQ(S_OK, layout->SetStrikethrough(TRUE, all));
    const auto bars = strikethroughsOf(*layout);
    ASSERT_EQ(1U, bars.size());
    EXPECT_FLOAT_EQ(5191.0F * unit, bars[0].width);
    EXPECT_FLOAT_EQ(102.0F * unit, bars[0].thickness);
    EXPECT_FLOAT_EQ(-530.0F * unit, bars[0].offset);
}

TEST(Strikethrough, IsOneBarThroughOneFontAndSize) {
    const auto layout = makeLayout(u"aabb");
    EXPECT_EQ(S_OK, layout->SetStrikethrough(TRUE, all));
    EXPECT_EQ(S_OK, layout->SetUnderline(TRUE, {1, 1}));
    EXPECT_EQ(1U, strikethroughsOf(*layout).size());
    EXPECT_EQ(S_OK, layout->SetFontSize(40.0F, {2, 2}));
    EXPECT_EQ(2U, strikethroughsOf(*layout).size());
}

TEST(Strikethrough, ChangingADecorationKeepsTheShapes) {
    const auto layout = makeLayout(u"Hello");
    const auto before = drawnRuns(*layout);
    EXPECT_EQ(S_OK, layout->SetStrikethrough(TRUE, all));
    EXPECT_EQ(1U, strikethroughsOf(*layout).size());
    EXPECT_EQ(before[0].glyphs, drawnRuns(*layout)[0].glyphs);
}

} // namespace
} // namespace platform_test
