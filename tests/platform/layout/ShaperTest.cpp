#include <fstream>
#include <map>
#include <sstream>
#include <string>

#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utf16.h>

#include "fonts/FontCollection.h"
#include "fonts/FontFace.h"
#include "layout/LayoutTestSupport.h"
#include "layout/ScriptRuns.h"
#include "layout/Shaper.h"

namespace platform_test {
namespace {

/// What hb-shape said about one sentence; see data/record-shaping-facts.
struct Fact {
    std::string family;
    std::string locale;
    bool isRightToLeft = false;
    std::u16string text;
    /// In the order of the text, clusters in UTF-16 units.
    std::vector<platform::ShapedGlyph> glyphs;
};

std::u16string fromUtf8(const std::string& text) {
    const icu::UnicodeString string = icu::UnicodeString::fromUTF8(text);
    return {string.getBuffer(), static_cast<std::size_t>(string.length())};
}

/// The UTF-16 position of every character.
std::vector<std::uint32_t> positionsOf(const std::u16string& text) {
    std::vector<std::uint32_t> positions;
    for (std::size_t i = 0; i < text.size();) {
        positions.push_back(static_cast<std::uint32_t>(i));
        U16_FWD_1(text.data(), i, text.size());
    }
    return positions;
}

platform::ShapedGlyph parseGlyph(const std::string& glyph, const Fact& fact,
                                 const std::vector<std::uint32_t>& positions) {
    platform::ShapedGlyph parsed{};
    char separator = 0;
    unsigned id = 0;
    unsigned cluster = 0;
    std::istringstream stream(glyph);
    stream >> id >> separator >> cluster >> separator;
    if (separator == '@') {
        stream >> parsed.advanceOffset >> separator >> parsed.ascenderOffset >> separator;
    }
    stream >> parsed.advance;
    EXPECT_TRUE(stream) << glyph;
    parsed.glyph = static_cast<std::uint16_t>(id);
    parsed.cluster = positions.at(cluster);
    parsed.advanceOffset = fact.isRightToLeft ? -parsed.advanceOffset : parsed.advanceOffset;
    return parsed;
}

std::vector<Fact> readFacts() {
    std::vector<Fact> facts;
    std::ifstream file(FONTENGINE_TEST_DATA "/platform/layout/data/shaping-facts.tsv");
    for (std::string line; std::getline(file, line);) {
        std::istringstream columns(line);
        Fact fact;
        std::string direction;
        std::string text;
        std::string glyphs;
        std::getline(columns, fact.family, '\t');
        std::getline(columns, fact.locale, '\t');
        std::getline(columns, direction, '\t');
        std::getline(columns, text, '\t');
        std::getline(columns, glyphs, '\t');
        fact.isRightToLeft = direction == "rtl";
        fact.text = fromUtf8(text);
        const auto positions = positionsOf(fact.text);
        std::istringstream list(glyphs);
        for (std::string glyph; std::getline(list, glyph, '|');) {
            fact.glyphs.push_back(parseGlyph(glyph, fact, positions));
        }
        if (fact.isRightToLeft) {
            std::reverse(fact.glyphs.begin(), fact.glyphs.end());
        }
        facts.push_back(std::move(fact));
    }
    return facts;
}

platform::CFontFace& faceOf(const std::string& family) {
    platform::CFontFamily* found =
        platform::CFontCollection::system().findFamily(std::wstring(family.begin(), family.end()));
    EXPECT_NE(nullptr, found) << family;
    return found->match(DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_STRETCH_NORMAL, DWRITE_FONT_STYLE_NORMAL).face();
}

TEST(Shaper, AgreesWithHbShapeOnEverySentence) {
    const std::vector<Fact> facts = readFacts();
    EXPECT_EQ(44U, facts.size());
    for (const Fact& fact : facts) {
        SCOPED_TRACE(fact.family + " " + fact.locale);
        std::vector<platform::ScriptRun> scripts;
        platform::findScriptRuns(fact.text, scripts);
        platform::ShapeRequest request;
        request.text = fact.text;
        request.length = fact.text.size();
        request.face = &faceOf(fact.family);
        // hb-shape takes the first script it meets for the whole sentence.
        request.script = scripts.front().script;
        request.language = hb_language_from_string(fact.locale.c_str(), -1);
        request.isRightToLeft = fact.isRightToLeft;
        platform::ShapedRun run;
        platform::shape(request, run);
        ASSERT_EQ(fact.glyphs.size(), run.size());
        for (std::size_t i = 0; i < run.size(); ++i) {
            EXPECT_EQ(fact.glyphs[i].glyph, run[i].glyph) << i;
            EXPECT_EQ(fact.glyphs[i].cluster, run[i].cluster) << i;
            EXPECT_EQ(fact.glyphs[i].advance, run[i].advance) << i;
            EXPECT_EQ(fact.glyphs[i].advanceOffset, run[i].advanceOffset) << i;
            EXPECT_EQ(fact.glyphs[i].ascenderOffset, run[i].ascenderOffset) << i;
        }
    }
}

bool isJoinerOrSelector(char16_t unit) {
    return u_hasBinaryProperty(unit, UCHAR_DEFAULT_IGNORABLE_CODE_POINT) != 0;
}

/// Whole sentences through a layout, at one unit per em unit so that nothing is rounded away.
TEST(Shaper, ALayoutDrawsWhatHbShapeSays) {
    unsigned compared = 0;
    for (const Fact& fact : readFacts()) {
        SCOPED_TRACE(fact.family + " " + fact.locale);
        std::vector<platform::ScriptRun> scripts;
        platform::findScriptRuns(fact.text, scripts);
        if (scripts.size() > 1 || std::any_of(fact.text.begin(), fact.text.end(), isJoinerOrSelector)) {
            // Cut into several runs, or with glyphs that hb-shape leaves and a layout does not: not the same glyphs.
            continue;
        }
        const FormatOptions options{.family = std::wstring(fact.family.begin(), fact.family.end()),
                                    .size = static_cast<float>(faceOf(fact.family).unitsPerEm()),
                                    .locale = std::wstring(fact.locale.begin(), fact.locale.end()),
                                    .reading = fact.isRightToLeft ? DWRITE_READING_DIRECTION_RIGHT_TO_LEFT
                                                                  : DWRITE_READING_DIRECTION_LEFT_TO_RIGHT};
        const auto runs = drawnRuns(*makeLayout(fact.text, 0, 0, options));
        ASSERT_EQ(1U, runs.size());
        ASSERT_EQ(fact.glyphs.size(), runs[0].glyphs.size());
        for (std::size_t i = 0; i < fact.glyphs.size(); ++i) {
            EXPECT_EQ(fact.glyphs[i].glyph, runs[0].glyphs[i]) << i;
            EXPECT_EQ(static_cast<float>(fact.glyphs[i].advance), runs[0].advances[i]) << i;
            EXPECT_EQ(static_cast<float>(fact.glyphs[i].advanceOffset), runs[0].offsets[i].advanceOffset) << i;
            EXPECT_EQ(static_cast<float>(fact.glyphs[i].ascenderOffset), runs[0].offsets[i].ascenderOffset) << i;
        }
        ++compared;
    }
    EXPECT_LE(35U, compared);
}

TEST(Shaper, NeighboursOutsideTheRunDecideHowLettersJoin) {
    const std::u16string text = u"\u0628\u0628\u0628";
    platform::ShapeRequest request;
    request.text = text;
    request.face = &faceOf("Noto Sans Arabic");
    request.script = HB_SCRIPT_ARABIC;
    request.isRightToLeft = true;
    request.length = 3;
    platform::ShapedRun whole;
    platform::shape(request, whole);
    request.start = 1;
    request.length = 1;
    platform::ShapedRun middle;
    platform::shape(request, middle);
    ASSERT_FALSE(middle.empty());
    std::vector<unsigned> ofMiddle;
    for (const platform::ShapedGlyph& glyph : whole) {
        if (glyph.cluster == 1) {
            ofMiddle.push_back(glyph.glyph);
        }
    }
    std::vector<unsigned> alone;
    for (const platform::ShapedGlyph& glyph : middle) {
        alone.push_back(glyph.glyph);
    }
    EXPECT_EQ(ofMiddle, alone);
}

TEST(Shaper, TypographySwitchesFeatures) {
    const auto layout = makeLayout(u"office AVATAR");
    const float plain = metricsOf(*layout).width;
    IDWriteTypography* typography = nullptr;
    ASSERT_EQ(S_OK, factory().CreateTypography(&typography));
    const Reference<IDWriteTypography> owned(typography, false);
    EXPECT_EQ(S_OK, typography->AddFontFeature({DWRITE_FONT_FEATURE_TAG_KERNING, 0}));
    EXPECT_EQ(S_OK, typography->AddFontFeature({DWRITE_FONT_FEATURE_TAG_STANDARD_LIGATURES, 0}));
    EXPECT_EQ(S_OK, layout->SetTypography(typography, {0, 0xFFFFFFFF}));
    const auto runs = drawnRuns(*layout);
    ASSERT_EQ(1U, runs.size());
    EXPECT_EQ(13U, runs[0].glyphs.size());
    EXPECT_GT(metricsOf(*layout).width, plain);
}

TEST(ScriptRuns, CommonCharactersGoWithWhatPrecedesThem) {
    std::vector<platform::ScriptRun> runs;
    platform::findScriptRuns(u"1 ab, \u0430 2\n3 \u03B1", runs);
    ASSERT_EQ(3U, runs.size());
    EXPECT_EQ(6U, runs[0].end);
    EXPECT_EQ(HB_SCRIPT_LATIN, runs[0].script);
    EXPECT_EQ(10U, runs[1].end);
    EXPECT_EQ(HB_SCRIPT_CYRILLIC, runs[1].script);
    EXPECT_EQ(HB_SCRIPT_GREEK, runs[2].script);
    platform::findScriptRuns(u"12:30", runs);
    ASSERT_EQ(1U, runs.size());
    EXPECT_EQ(HB_SCRIPT_COMMON, runs[0].script);
    platform::findScriptRuns(u"a\uE000b\U0001D400", runs);
    EXPECT_EQ(1U, runs.size());
}

} // namespace
} // namespace platform_test
