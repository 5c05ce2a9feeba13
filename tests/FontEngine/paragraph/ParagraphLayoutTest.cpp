#include <cmath>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <oslayer/Errors.h>

#include "ParagraphLayoutTesting.h"

namespace paragraph_tests {
namespace {

// hb-shape LiberationSans-Regular.ttf AV: 1214 and 1366; with --features=-kern 1366 and 1366.
TEST_F(ParagraphLayout, GlyphsStandAtTheShapersAdvances) {
    const CParagraphLayout layout = lay(L"AV");
    ASSERT_EQ(1U, layout.runs().size());
    const fonts::SRun& run = layout.runs().front();
    ASSERT_EQ(2U, layout.glyphs(run).size());
    EXPECT_EQ(36, layout.glyphs(run)[0].id);
    EXPECT_EQ(57, layout.glyphs(run)[1].id);
    EXPECT_NEAR(1214.0 * unit, layout.glyphs(run)[1].origin.x, precision);
    EXPECT_NEAR((1214.0 + 1366.0) * unit, run.width, precision);
    EXPECT_NEAR(2048.0 * unit, run.emSize, precision);
    EXPECT_NEAR(run.width, widthOf(layout), precision);
}

// hb-shape DejaVuSans.ttf ffi: one glyph, 5044; with --features=-liga three.
TEST_F(ParagraphLayout, FeaturesReachTheShaper) {
    const auto paragraph =
        testdocuments::makeParagraph(L"ffi", testdocuments::eRichTextParagraphAlignment::Left,
                                     testdocuments::eRichTextParagraphVerticalAlignment::Top, L"DejaVu Sans");
    fonts::SRunFormat format;
    format.features = {{"liga", 0}};
    EXPECT_EQ(1U, CParagraphLayout::make(paragraph, *engine).glyphs().size());
    EXPECT_EQ(3U, CParagraphLayout::make(paragraph, *engine, formatted(format)).glyphs().size());
}

TEST_F(ParagraphLayout, TrackingFollowsEachCluster) {
    fonts::SRunFormat format;
    format.tracking = 3.0;
    const CParagraphLayout plain = lay(L"AVA");
    const CParagraphLayout tracked = lay(L"AVA", formatted(format));
    EXPECT_NEAR(widthOf(plain) + 9.0, widthOf(tracked), precision);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_NEAR(plain.glyphs()[i].origin.x + 3.0 * static_cast<double>(i), tracked.glyphs()[i].origin.x, precision);
    }
}

TEST_F(ParagraphLayout, ASlantMovesTheTopsOfCapitalsAndNoAdvance) {
    fonts::SRunFormat format;
    format.obliqueAngle = 15.0;
    const CParagraphLayout plain = lay(L"HH");
    const CParagraphLayout slanted = lay(L"HH", formatted(format));
    EXPECT_DOUBLE_EQ(plain.glyphs()[1].origin.x, slanted.glyphs()[1].origin.x);
    EXPECT_NEAR(plain.ink().xmax + 10.0 * std::tan(15.0 * std::acos(-1.0) / 180.0), slanted.ink().xmax, precision);
    EXPECT_NEAR(plain.ink().xmin, slanted.ink().xmin, precision);
}

TEST_F(ParagraphLayout, AShiftMovesGlyphsAndBarsButNoLine) {
    auto paragraph = testdocuments::makeParagraph(L"x");
    paragraph.tokens[0].fontStyle.underline = true;
    fonts::SRunFormat format;
    format.baselineShift = 2.5;
    const auto plain = CParagraphLayout::make(paragraph, *engine);
    const auto shifted = CParagraphLayout::make(paragraph, *engine, formatted(format));
    EXPECT_EQ(plain.box(), shifted.box());
    EXPECT_EQ(plain.lines()[0].baseline, shifted.lines()[0].baseline);
    EXPECT_DOUBLE_EQ(plain.glyphs()[0].origin.y + 2.5, shifted.glyphs()[0].origin.y);
    EXPECT_NEAR(plain.ink().ymax + 2.5, shifted.ink().ymax, precision);
    ASSERT_EQ(1U, shifted.bars().size());
    EXPECT_DOUBLE_EQ(plain.bars()[0].rect.ymin + 2.5, shifted.bars()[0].rect.ymin);
}

TEST_F(ParagraphLayout, BaselinesStandAtThePitchThatIsAsked) {
    const CParagraphLayout natural = lay(L"a\nb\nc");
    SParagraphLayoutOptions options;
    options.lineSpacing = {fonts::SLineSpacing::EKind::Exactly, 5.0};
    const CParagraphLayout tight = lay(L"a\nb\nc", options);
    ASSERT_EQ(3U, tight.lines().size());
    EXPECT_DOUBLE_EQ(natural.lines()[0].baseline, tight.lines()[0].baseline);
    EXPECT_DOUBLE_EQ(tight.lines()[0].baseline - 10.0, tight.lines()[2].baseline);
    EXPECT_DOUBLE_EQ(tight.lines()[2].bottom, tight.box().ymin);
    EXPECT_DOUBLE_EQ(tight.lines()[2].baseline, tight.runs()[2].origin.y);

    options.lineSpacing.kind = fonts::SLineSpacing::EKind::AtLeast;
    const CParagraphLayout atLeast = lay(L"a\nb\nc", options);
    EXPECT_DOUBLE_EQ(natural.lines()[2].baseline, atLeast.lines()[2].baseline);
    options.lineSpacing.pitch = 100.0;
    EXPECT_DOUBLE_EQ(natural.lines()[0].baseline - 200.0, lay(L"a\nb\nc", options).lines()[2].baseline);
}

TEST_F(ParagraphLayout, PitchKeepsTheBottomOfAParagraphThatStandsThere) {
    auto paragraph = testdocuments::makeParagraph(L"a\nb", testdocuments::eRichTextParagraphAlignment::Left,
                                                  testdocuments::eRichTextParagraphVerticalAlignment::Bottom);
    SParagraphLayoutOptions options;
    options.maxHeight = 200.0;
    options.lineSpacing = {fonts::SLineSpacing::EKind::Exactly, 30.0};
    const auto layout = CParagraphLayout::make(paragraph, *engine, options);
    EXPECT_NEAR(-200.0, layout.box().ymin, 1e-3);
    EXPECT_NEAR(-200.0, layout.lines()[1].bottom, 1e-3);
}

TEST_F(ParagraphLayout, AnInlineBoxTakesItsRoom) {
    SParagraphLayoutOptions options;
    fonts::SInlineBox box;
    box.range = {1, 2};
    box.width = 30.0;
    box.ascent = 40.0;
    box.descent = 10.0;
    options.inlineBoxes = {box};
    const CParagraphLayout layout = lay(L"H??H", options);
    ASSERT_EQ(1U, layout.inlineBoxes().size());
    const fonts::SInlineBoxPlace& place = layout.inlineBoxes().front();
    // Advance of H: 1479 units (hb-shape).
    EXPECT_NEAR(1479.0 * unit, place.rect.xmin, precision);
    EXPECT_NEAR(30.0, place.rect.xmax - place.rect.xmin, precision);
    EXPECT_NEAR(1479.0 * unit + 30.0, layout.glyphs()[1].origin.x, precision);
    EXPECT_NEAR(layout.lines()[0].baseline + 40.0, place.rect.ymax, 0.006);
    EXPECT_NEAR(layout.lines()[0].baseline - 10.0, place.rect.ymin, 0.006);
    EXPECT_GE(layout.box().ymax - layout.box().ymin, 50.0 - precision);
    EXPECT_EQ(2U, layout.runs().size());
}

TEST_F(ParagraphLayout, ARunIsOneTokens) {
    const auto layout = CParagraphLayout::make(twoTokens(L"AB", L"CD"), *engine);
    ASSERT_EQ(2U, layout.runs().size());
    EXPECT_EQ(0U, layout.runs()[0].token);
    EXPECT_EQ(1U, layout.runs()[1].token);
    EXPECT_EQ((render::TextRange{2, 2}), layout.runs()[1].range);
    EXPECT_EQ(1U, layout.faceCount());
}

TEST_F(ParagraphLayout, TellsTheFace) {
    const CParagraphLayout layout = lay(L"A");
    ASSERT_EQ(1U, layout.faceCount());
    const fonts::SFontFace face = layout.face(0);
    EXPECT_EQ(L"Liberation Sans", face.family);
    EXPECT_EQ(L"Liberation Sans", face.win32Family);
    EXPECT_EQ(L"Regular", face.face);
    EXPECT_EQ(L"LiberationSans-Regular.ttf", face.file.substr(face.file.find_last_of(L"/\\") + 1));
    EXPECT_EQ(0U, face.index);
    EXPECT_NEAR(1409.0 / 2048.0, face.capHeight, 1e-12);
    EXPECT_FALSE(face.isEmboldened);
    EXPECT_THROW(static_cast<void>(layout.face(1)), std::out_of_range);
}

TEST_F(ParagraphLayout, NamesWhatNoFontHas) {
    // Private use, in none of the pinned fonts.
    const std::wstring odd = {L'A', wchar_t{0xDBFF}, wchar_t{0xDFF0}, L'B', wchar_t{0xDBFF}, wchar_t{0xDFF0}};
    const CParagraphLayout layout = lay(odd);
    ASSERT_EQ(1U, layout.missing().size());
    EXPECT_EQ(U'\U0010FFF0', layout.missing()[0].character);
    EXPECT_EQ(1U, layout.missing()[0].position);
    EXPECT_EQ(2U, layout.missing()[0].count);
    EXPECT_TRUE(lay(L"AB").missing().empty());
}

TEST_F(ParagraphLayout, NamesReplacedFamilies) {
    auto paragraph = twoTokens(L"AB", L"CD");
    paragraph.tokens[1].fontFamily = L"No Such Family";
    const auto layout = CParagraphLayout::make(paragraph, *engine);
    const auto replaced = layout.replacedFamilies();
    ASSERT_EQ(1U, replaced.size());
    EXPECT_EQ(1U, replaced[0].token);
    EXPECT_EQ((render::TextRange{2, 2}), replaced[0].range);
    EXPECT_NE(L"No Such Family", layout.face(replaced[0].face).family);
}

TEST_F(ParagraphLayout, AnEmptyParagraphIsAnEmptyLine) {
    const CParagraphLayout layout = lay(L"");
    ASSERT_EQ(1U, layout.lines().size());
    EXPECT_EQ((render::TextRange{0, 0}), layout.lines()[0].range);
    EXPECT_DOUBLE_EQ(lay(L"x").box().ymin, layout.box().ymin);
    EXPECT_TRUE(layout.ink().isEmpty());
    EXPECT_TRUE(layout.runs().empty());
    EXPECT_TRUE(layout.clusters().empty());
    EXPECT_EQ(0.0, layout.caret(0).x);
    EXPECT_EQ(0U, layout.hit({5.0, -1.0}).insertion);
    EXPECT_TRUE(layout.rectsOf({0, 5}).empty());
}

TEST_F(ParagraphLayout, TheCaretBehindANewlineStandsInTheNextLine) {
    const CParagraphLayout layout = lay(L"a\n");
    ASSERT_EQ(2U, layout.lines().size());
    EXPECT_EQ(1U, layout.caret(2).line);
    EXPECT_EQ(0.0, layout.caret(2).x);
    EXPECT_EQ(0U, layout.caret(1).line);
    EXPECT_EQ(2U, layout.hit({50.0, layout.lines()[1].bottom + 0.1}).insertion);
    EXPECT_EQ(1U, layout.hit({50.0, -1.0}).insertion);
}

TEST_F(ParagraphLayout, OutlivesItsEngineAndServesThreads) {
    CParagraphLayout layout;
    EXPECT_TRUE(layout.lines().empty());
    {
        const auto ownEngine = fonts::createFontEngine(L"Liberation Sans");
        layout = CParagraphLayout::make(testdocuments::makeParagraph(L"The quick brown fox"), *ownEngine);
    }
    std::vector<std::thread> threads;
    std::vector<std::wstring> families(4);
    for (std::wstring& family : families) {
        threads.emplace_back([layout, &family] { family = layout.face(0).family; });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(std::vector<std::wstring>(4, L"Liberation Sans"), families);
}

struct ThrowingSink : fonts::IOutlineSink {
    void moveTo(MbCartPoint) override {}
    void lineTo(MbCartPoint) override { throw std::domain_error("enough"); }
    void cubicTo(MbCartPoint, MbCartPoint, MbCartPoint) override {}
    void close() override {}
};

TEST_F(ParagraphLayout, ASinksExceptionComesThrough) {
    ThrowingSink sink;
    EXPECT_THROW(lay(L"H").outline(sink), std::domain_error);
}

TEST_F(ParagraphLayout, FailsAsTheTextMetricsServiceDoes) {
    EXPECT_THROW(static_cast<void>(CParagraphLayout::make({}, *engine)), common::ECheckViolation);
    auto paragraph = testdocuments::makeParagraph(L"x");
    paragraph.tokens[0].fontCapSize = 0.0F;
    EXPECT_THROW(static_cast<void>(CParagraphLayout::make(paragraph, *engine)), oslayer::EOsLayerError);
}

} // namespace
} // namespace paragraph_tests
