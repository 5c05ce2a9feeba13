#include <cstdlib>

#include "support/LayoutTestSupport.h"

// What a machine without fonts gets. The fonts are read once in a process, so each of these runs in a process of its
// own.

namespace platform_test {
namespace {

class NoFonts : public testing::Test {
protected:
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    /// Ends the process with what the checks find.
    [[noreturn]] static void finish(bool isRight) { std::exit(isRight ? 0 : 1); }

    static void hideFonts() {
        setenv("FONTCONFIG_FILE", FONTENGINE_TEST_DATA "/platform/layout/data/no-fonts.conf", 1);
    }

    static bool everyQuestionIsNoFont(std::u16string_view text) {
        hideFonts();
        const auto layout = makeLayout(text, 50.0F, 0, {.family = L"DejaVu Sans"});
        DWRITE_TEXT_METRICS metrics{};
        UINT32 count = 0;
        FLOAT width = 0.0F;
        FLOAT x = 0.0F;
        BOOL flag = FALSE;
        DWRITE_HIT_TEST_METRICS hit{};
        DWRITE_OVERHANG_METRICS overhang{};
        Recorder recorder;
        const HRESULT noFont = DWRITE_E_NOFONT;
        return layout->GetMetrics(&metrics) == noFont && layout->GetLineMetrics(nullptr, 0, &count) == noFont &&
               layout->GetClusterMetrics(nullptr, 0, &count) == noFont && layout->DetermineMinWidth(&width) == noFont &&
               layout->GetOverhangMetrics(&overhang) == noFont &&
               layout->HitTestPoint(0, 0, &flag, &flag, &hit) == noFont &&
               layout->HitTestTextPosition(0, FALSE, &x, &x, &hit) == noFont &&
               layout->HitTestTextRange(0, 1, 0, 0, nullptr, 0, &count) == noFont &&
               layout->Draw(nullptr, &recorder, 0, 0) == noFont && recorder.calls.empty();
    }

    static bool aSignIsNoFont() {
        hideFonts();
        Picture picture;
        IDWriteInlineObject* sign = &picture;
        return factory().CreateEllipsisTrimmingSign(makeFormat().get(), &sign) == DWRITE_E_NOFONT && sign == nullptr;
    }
};

TEST_F(NoFonts, EveryQuestionThatNeedsAFontSaysSo) {
    EXPECT_EXIT(finish(everyQuestionIsNoFont(u"text")), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(finish(everyQuestionIsNoFont(u"")), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(finish(aSignIsNoFont()), testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace platform_test
