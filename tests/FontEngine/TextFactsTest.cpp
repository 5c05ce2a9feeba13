// Holds what the library measures against what other tools said of the same texts
// and fonts: facts/text_facts.tsv and, beside it, the program that recorded it.

#include <cmath>
#include <fstream>
#include <set>
#include <sstream>

#include <gmock/gmock.h>

#include <Common/Utf.h>

#include "RealFonts.h"

namespace {

constexpr float capSize = 10.0f;

// Baselines are snapped to hundredths of a unit; floats carry the rest.
constexpr double snapping = 0.005;
constexpr double precision = 1e-4;

struct TextFact {
    std::string name;
    std::wstring family;
    render::SRichTextFontStyle style;
    bool isRightToLeft = false;
    std::wstring text;
    // From here on in font design units, y up, from the baseline's start.
    double capHeight = 0.0;
    double ascent = 0.0;
    double descent = 0.0;
    double lineGap = 0.0;
    double advance = 0.0;
    MbRect ink;
    // The positions in the text where clusters start, in UTF-16 units.
    std::vector<uint32_t> clusterStarts;
    // From left to right.
    std::vector<MbCartPoint> glyphOrigins;

    double scale() const { return capSize / capHeight; }
};

void PrintTo(const TextFact& fact, std::ostream* stream) {
    *stream << fact.name;
}

TextFact parseFact(const std::string& line) {
    std::istringstream fields(line);
    std::vector<std::string> field;
    for (std::string each; std::getline(fields, each, '\t');)
        field.push_back(each);
    TextFact fact;
    fact.name = field.at(0);
    fact.family = common::wideFromUtf8(field.at(1));
    fact.style.bold = field.at(2).find('b') != std::string::npos;
    fact.style.italic = field.at(2).find('i') != std::string::npos;
    fact.isRightToLeft = field.at(3) == "rtl";
    fact.text = common::wideFromUtf8(field.at(4));
    fact.capHeight = std::stod(field.at(6));
    fact.ascent = std::stod(field.at(7));
    fact.descent = std::stod(field.at(8));
    fact.lineGap = std::stod(field.at(9));
    fact.advance = std::stod(field.at(10));
    fact.ink.Set(std::stod(field.at(11)), std::stod(field.at(12)), std::stod(field.at(13)), std::stod(field.at(14)));
    std::istringstream starts(field.at(15));
    for (std::string each; std::getline(starts, each, ',');)
        fact.clusterStarts.push_back(static_cast<uint32_t>(std::stoul(each)));
    std::istringstream origins(field.at(16));
    for (std::string each; std::getline(origins, each, ' ');)
        fact.glyphOrigins.push_back({std::stod(each), std::stod(each.substr(each.find(',') + 1))});
    return fact;
}

std::vector<TextFact> readFacts() {
    std::ifstream file(FONTENGINE_TEST_DATA "/FontEngine/facts/text_facts.tsv");
    std::vector<TextFact> facts;
    for (std::string line; std::getline(file, line);)
        if (!line.starts_with('#'))
            facts.push_back(parseFact(line));
    return facts;
}

class TextFacts : public RealFontsTest, public testing::WithParamInterface<TextFact> {
protected:
    const TextFact& fact = GetParam();

    double baseline() { return service->getTextBaseline(fact.text, fact.family, capSize, {}, fact.style); }

    std::vector<fonts::SGlyphRunDesc> drawnRuns() {
        render::CRichTextParagraph paragraph = testdocuments::makeParagraph(fact.text);
        paragraph.tokens = {render::makeToken(fact.text, fact.family, capSize, fact.style)};
        // Platforms differ in what a wrapping paragraph does without a width.
        paragraph.noWrap = true;
        return glyphRuns(paragraph);
    }
};

} // namespace

TEST_P(TextFacts, TheBaselineStandsAscentAndLineGapBelowTheTop) {
    EXPECT_NEAR(baseline(), -(fact.ascent + fact.lineGap) * fact.scale(), snapping + precision);
    const double hundredths = baseline() * 100.0;
    EXPECT_NEAR(hundredths, std::round(hundredths), 0.01);
}

TEST_P(TextFacts, TheBoxIsTheAdvanceWideAndOneLineHigh) {
    const MbRect rect = service->getTextRect(fact.text, fact.family, capSize, fact.style);
    EXPECT_EQ(rect.xmin, 0.0);
    EXPECT_EQ(rect.ymax, 0.0);
    EXPECT_NEAR(rect.xmax, fact.advance * fact.scale(), precision);
    EXPECT_NEAR(rect.ymin, -(fact.ascent + fact.descent + fact.lineGap) * fact.scale(), precision);
}

TEST_P(TextFacts, TheInkIsTheOutlinesAroundTheBaseline) {
    const MbRect ink = service->getTextGeometryRect(fact.text, fact.family, capSize, {}, fact.style);
    const double scale = fact.scale();
    expectNear(ink,
               MbRect(fact.ink.xmin * scale, baseline() + fact.ink.ymin * scale, fact.ink.xmax * scale,
                      baseline() + fact.ink.ymax * scale),
               precision);
}

TEST_P(TextFacts, MetricsAreTheFontsScaledToTheCapitalSize) {
    const fonts::SFontMetrics metrics =
        service->getFontMetrics(fact.family, capSize, fact.style.italic, fact.style.bold);
    EXPECT_NEAR(metrics.ascent, fact.ascent * fact.scale(), 1e-9);
    EXPECT_NEAR(metrics.descent, fact.descent * fact.scale(), 1e-9);
    EXPECT_NEAR(metrics.lineGap, fact.lineGap * fact.scale(), 1e-9);
    EXPECT_NEAR(metrics.capitalTopToAscent, fact.ascent * fact.scale() - capSize, 1e-9);
}

TEST_P(TextFacts, ClustersStartWhereTheShaperSaysAndTheirMapNeverDecreases) {
    std::set<uint32_t> starts;
    std::wstring text;
    for (const fonts::SGlyphRunDesc& run : drawnRuns()) {
        ASSERT_EQ(run.textPosition, text.size());
        ASSERT_EQ(run.clusterMap.size(), run.text.size());
        text += run.text;
        for (size_t i = 0; i < run.clusterMap.size(); ++i) {
            if (i == 0 || run.clusterMap[i] != run.clusterMap[i - 1])
                starts.insert(run.textPosition + static_cast<uint32_t>(i));
            EXPECT_TRUE(i == 0 || run.clusterMap[i] >= run.clusterMap[i - 1]);
            EXPECT_LT(run.clusterMap[i], run.glyphOrigins.size());
        }
    }
    EXPECT_EQ(text, fact.text);
    EXPECT_THAT(starts, testing::ElementsAreArray(fact.clusterStarts));
}

TEST_P(TextFacts, GlyphsStandWhereTheShaperPutThem) {
    const double scale = fact.scale();
    size_t glyph = 0;
    for (const fonts::SGlyphRunDesc& run : drawnRuns()) {
        EXPECT_EQ(run.baselineOrigin.y, baseline());
        for (const MbCartPoint& origin : run.glyphOrigins) {
            ASSERT_LT(glyph, fact.glyphOrigins.size());
            if (!fact.isRightToLeft) {
                EXPECT_NEAR(origin.x, fact.glyphOrigins[glyph].x * scale, precision);
                EXPECT_NEAR(origin.y, baseline() + fact.glyphOrigins[glyph].y * scale, precision);
            }
            ++glyph;
        }
    }
    EXPECT_EQ(glyph, fact.glyphOrigins.size());
}

// Right-to-left runs start at their right end and sum their advances up to the
// right like any other; the outlines stand to the left.
TEST_P(TextFacts, ARunsBaselineStartsAtItsLeftEndOrAtItsRightEndWhenItGoesLeft) {
    const std::vector<fonts::SGlyphRunDesc> runs = drawnRuns();
    ASSERT_FALSE(runs.empty());
    EXPECT_NEAR(runs.front().baselineOrigin.x, fact.isRightToLeft ? fact.advance * fact.scale() : 0.0, precision);
    for (const fonts::SGlyphRunDesc& run : runs) {
        if (!run.bounds.isEmpty()) {
            EXPECT_GE(run.bounds.xmin, fact.ink.xmin * fact.scale() - precision);
            EXPECT_LE(run.bounds.xmax, fact.ink.xmax * fact.scale() + precision);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Recorded, TextFacts, testing::ValuesIn(readFacts()),
                         [](const auto& info) { return info.param.name; });

TEST(TextFactsFile, HoldsTheCasesThatMatter) {
    std::set<std::string> names;
    for (const TextFact& fact : readFacts())
        names.insert(fact.name);
    EXPECT_THAT(names, testing::IsSupersetOf({"Kerning", "Ligatures", "ArabicLigature", "DevanagariSeveralGlyphs",
                                              "Thai", "CombiningMarks", "SurrogatePairs"}));
}
