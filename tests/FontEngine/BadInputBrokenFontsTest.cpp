// A font folder with one sound font among broken files: a program of its own,
// because the fonts are read once per process.

#include <cmath>

#include <gmock/gmock.h>

#include <oslayer/Errors.h>

#include "FontFolder.h"
#include "RealFonts.h"

using namespace testdocuments;

namespace {

const std::string sound = "fonts-liberation/LiberationSans-Regular.ttf";
const std::string victim = "fonts-dejavu-core/DejaVuSans.ttf";
const std::string collection = "fonts-noto-cjk/NotoSansCJK-Regular.ttc";

using BrokenFonts = RealFontsTest;

bool isFiniteOrEmpty(const MbRect& rect) {
    return rect.isEmpty() || (std::isfinite(rect.xmin) && std::isfinite(rect.ymin) && std::isfinite(rect.xmax) &&
                              std::isfinite(rect.ymax));
}

// A font whose tables lie where others are, or nowhere.
std::string withTablesBeyondTheEnd(std::string font) {
    const auto tables = static_cast<unsigned char>(font[5]);
    for (size_t i = 0; i < tables; i += 2)
        font[12 + 16 * i + 8] = '\x7f';
    return font;
}

std::string readPinned(const std::string& name) {
    std::ifstream file(std::string(FONTENGINE_TEST_FONTS "/") + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void breakFonts(const FontFolder& folder) {
    folder.addPart(sound, 10000000, "sound.ttf");
    for (const size_t bytes : {1u, 4u, 12u, 100u, 1000u, 20000u, 100000u, 400000u, 700000u})
        folder.addPart(victim, bytes, "truncated-" + std::to_string(bytes) + ".ttf");
    folder.addPart(collection, 5000, "truncated.ttc");
    folder.addFile("empty.ttf", "");
    folder.addFile("text.ttf", "This is no font.");
    folder.addFile("tables.ttf", withTablesBeyondTheEnd(readPinned(victim)));
    folder.addFile("unreadable.ttf", readPinned("fonts-dejavu-core/DejaVuSerif.ttf"));
    std::filesystem::permissions(folder.fonts() / "unreadable.ttf", std::filesystem::perms::none);
    std::filesystem::create_symlink(folder.fonts() / "nowhere", folder.fonts() / "dangling.ttf");
    std::filesystem::create_directory(folder.fonts() / "folder.ttf");
}

} // namespace

TEST_F(BrokenFonts, TheSoundFontMeasuresAsEver) {
    // Liberation Sans: H is 1479 of 2048 units wide, capitals are 1409 high.
    EXPECT_NEAR(service->getTextRect(L"H", L"Liberation Sans", 10, {}).xmax, 1479 * 10.0 / 1409, 1e-4);
    EXPECT_FALSE(service->getTextGeometryRect(L"H", L"Liberation Sans", 10, {}, {}).isEmpty());
}

TEST_F(BrokenFonts, TextInABrokenFontIsMeasuredWithSomeFontOrAClearError) {
    for (const wchar_t* family : {L"DejaVu Sans", L"DejaVu Serif", L"Noto Sans CJK JP", L"No Such Family"}) {
        try {
            EXPECT_TRUE(isFiniteOrEmpty(service->getTextRect(L"Hamburg \u0416\u56f3", family, 10, {})));
            EXPECT_TRUE(isFiniteOrEmpty(service->getTextGeometryRect(L"Hamburg \u0416\u56f3", family, 10, {}, {})));
        } catch (const oslayer::EOsLayerError& error) {
            EXPECT_STRNE(error.what(), "");
        }
    }
}

TEST_F(BrokenFonts, TextThatTheSoundFontHasIsNeverSetInABrokenOneThatLacksIt) {
    std::wstring drawn;
    for (const fonts::SGlyphRunDesc& run :
         glyphRuns(makeParagraph(L"Hamburg", eRichTextParagraphAlignment::Left,
                                 eRichTextParagraphVerticalAlignment::Top, L"Liberation Sans"))) {
        EXPECT_EQ(run.token.fontFamily, L"Liberation Sans");
        drawn += run.text;
    }
    EXPECT_EQ(drawn, L"Hamburg");
}

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const FontFolder folder("fontengine-broken-fonts");
    breakFonts(folder);
    return RUN_ALL_TESTS();
}
