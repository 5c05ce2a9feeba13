// A system without a single font: a program of its own, because the fonts are
// read once per process.

#include <gmock/gmock.h>

#include <oslayer/Errors.h>

#include "FontFolder.h"
#include "RealFonts.h"

using namespace testdocuments;
using testing::IsEmpty;

namespace {

using NoFonts = RealFontsTest;

template <class Action>
std::string errorOf(Action&& action) {
    try {
        action();
    } catch (const oslayer::EOsLayerError& error) {
        return error.what();
    }
    return "no error";
}

} // namespace

TEST_F(NoFonts, TheEngineAndTheServiceAreMade) {
    EXPECT_NE(engine, nullptr);
    EXPECT_NE(service, nullptr);
}

TEST_F(NoFonts, AskingForAFontIsAClearError) {
    EXPECT_EQ(errorOf([&] { engine->getFont(L"DejaVu Sans", fonts::Weight::Normal, fonts::Style::Normal); }), "E_FAIL");
    EXPECT_EQ(errorOf([&] { engine->getFallbackFont(); }), "E_FAIL");
    EXPECT_EQ(errorOf([&] { static_cast<void>(service->getFontMetrics(L"DejaVu Sans", 10, false, false)); }), "E_FAIL");
}

TEST_F(NoFonts, CharactersHaveNoFontEach) {
    const auto tokens = engine->splitTokenByFallbackFonts(render::makeToken(L"ab", L"DejaVu Sans", 10, {}));
    ASSERT_EQ(tokens.size(), 2u);
    EXPECT_EQ(tokens[0].text, L"a");
    EXPECT_EQ(tokens[1].fontFamily, L"DejaVu Sans");
}

TEST_F(NoFonts, MeasuringTextIsAClearErrorAndTheServiceStaysUsable) {
    const auto document = render::makeDocument({makeParagraph(L"text")});
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(errorOf([&] { static_cast<void>(service->getTextRect(L"text", L"DejaVu Sans", 10, {})); }), "E_FAIL");
        EXPECT_EQ(errorOf([&] { static_cast<void>(service->getParagraphRects(document, 0, 0)); }), "E_FAIL");
        EXPECT_EQ(errorOf([&] { static_cast<void>(service->getParagraphGeometryRects(document, 0, 0)); }), "E_FAIL");
        EXPECT_EQ(errorOf([&] { static_cast<void>(glyphRuns(document.paragraphs.at(0))); }), "E_FAIL");
    }
}

TEST_F(NoFonts, ADocumentWithoutParagraphsStillHasAnEmptyBox) {
    EXPECT_EQ(service->getDocumentRect(render::CRichTextDocument()), MbRect());
    EXPECT_THAT(service->getParagraphRects(render::CRichTextDocument(), 0, 0), IsEmpty());
}

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const FontFolder noFonts("fontengine-no-fonts");
    return RUN_ALL_TESTS();
}
