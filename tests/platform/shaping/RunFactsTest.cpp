#include <algorithm>
#include <fstream>
#include <functional>
#include <optional>
#include <set>
#include <sstream>
#include <string>

#include <unicode/ubidi.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include "fonts/FontFace.h"
#include "shaping/Shaper.h"
#include "support/LayoutTestSupport.h"

// Sentences of many scripts, laid out whole, against runs and glyphs that others found out; see data/record-run-facts.

namespace platform_test {
namespace {

/// In font units.
struct FactGlyph {
    unsigned glyph = 0;
    unsigned cluster = 0;
    float advanceOffset = 0.0F;
    float ascenderOffset = 0.0F;
    float advance = 0.0F;
};

struct FactRun {
    unsigned start = 0;
    unsigned length = 0;
    /// Lower than those of the runs to the right.
    unsigned place = 0;
    std::string family;
    std::string script;
    /// None for controls that may be at any level.
    std::optional<unsigned> level;
    std::vector<FactGlyph> glyphs;

    [[nodiscard]] unsigned end() const { return start + length; }
};

struct Sentence {
    FormatOptions options;
    std::string utf8;
    std::u16string text;
    std::vector<FactRun> runs;
};

bool isInvisible(char16_t unit) {
    return u_hasBinaryProperty(unit, UCHAR_DEFAULT_IGNORABLE_CODE_POINT) != 0;
}

std::vector<std::string> split(const std::string& line, char separator) {
    std::vector<std::string> columns;
    std::istringstream stream(line);
    for (std::string column; std::getline(stream, column, separator);) {
        columns.push_back(column);
    }
    return columns;
}

/// "id=cluster@xOffset,yOffset+advance", the offsets only where there are some.
FactGlyph parseGlyph(const std::string& text, bool isRightToLeft) {
    FactGlyph glyph;
    char separator = 0;
    std::istringstream stream(text);
    stream >> glyph.glyph >> separator >> glyph.cluster >> separator;
    if (separator == '@') {
        stream >> glyph.advanceOffset >> separator >> glyph.ascenderOffset >> separator;
    }
    stream >> glyph.advance;
    EXPECT_TRUE(stream) << text;
    glyph.advanceOffset = isRightToLeft ? -glyph.advanceOffset : glyph.advanceOffset;
    return glyph;
}

Sentence parseSentence(const std::vector<std::string>& columns) {
    Sentence sentence;
    sentence.options.family.assign(columns.at(1).begin(), columns.at(1).end());
    sentence.options.locale.assign(columns.at(2).begin(), columns.at(2).end());
    // One unit per font unit, so that nothing is rounded away.
    sentence.options.size = static_cast<float>(regularFace(columns.at(1)).unitsPerEm());
    sentence.options.reading =
        columns.at(3) == "rtl" ? DWRITE_READING_DIRECTION_RIGHT_TO_LEFT : DWRITE_READING_DIRECTION_LEFT_TO_RIGHT;
    sentence.utf8 = columns.at(4);
    const icu::UnicodeString text = icu::UnicodeString::fromUTF8(columns.at(4));
    sentence.text.assign(text.getBuffer(), static_cast<std::size_t>(text.length()));
    return sentence;
}

FactRun parseRun(const std::vector<std::string>& columns) {
    FactRun run;
    run.start = static_cast<unsigned>(std::stoul(columns.at(1)));
    run.length = static_cast<unsigned>(std::stoul(columns.at(2)));
    run.place = static_cast<unsigned>(std::stoul(columns.at(3)));
    run.family = columns.at(4);
    run.script = columns.at(5);
    if (columns.at(6) != "-") {
        run.level = static_cast<unsigned>(std::stoul(columns[6]));
    }
    if (columns.size() > 7) {
        for (const std::string& glyph : split(columns[7], '|')) {
            run.glyphs.push_back(parseGlyph(glyph, run.level.value_or(0) % 2 == 1));
        }
    }
    return run;
}

const std::vector<Sentence>& sentences() {
    static const std::vector<Sentence> all = [] {
        std::vector<Sentence> read;
        std::ifstream file(FONTENGINE_TEST_DATA "/platform/layout/data/run-facts.tsv");
        for (std::string line; std::getline(file, line);) {
            const std::vector<std::string> columns = split(line, '\t');
            if (columns.at(0) == "S") {
                read.push_back(parseSentence(columns));
            } else {
                read.back().runs.push_back(parseRun(columns));
            }
        }
        return read;
    }();
    return all;
}

/// Where the text of glyph `index` starts, as the run's cluster map tells.
unsigned clusterStart(const DrawnCall& run, unsigned index) {
    const auto after = std::upper_bound(run.clusterMap.begin(), run.clusterMap.end(), index);
    const auto first = std::lower_bound(run.clusterMap.begin(), after, *std::prev(after));
    return run.textPosition + static_cast<unsigned>(std::distance(run.clusterMap.begin(), first));
}

/// The parts of a recorded run as they were drawn, and how much of its glyphs they have.
class RunComparison {
public:
    RunComparison(const FactRun& fact, float unitsPerFontUnit) : m_fact(fact), m_scale(unitsPerFontUnit) {}

    void add(const DrawnCall& drawn) {
        EXPECT_LE(drawn.textPosition + drawn.text.size(), m_fact.end()) << "not cut at " << m_fact.end();
        EXPECT_EQ(static_cast<IDWriteFontFace*>(&regularFace(m_fact.family)), drawn.face) << drawn.textPosition;
        EXPECT_EQ(m_fact.level.value_or(drawn.bidiLevel), drawn.bidiLevel) << drawn.textPosition;
        if (drawn.textPosition > m_fact.start) {
            EXPECT_NE(m_wasEmpty, drawn.glyphs.empty()) << "cut without need at " << drawn.textPosition;
        }
        m_wasEmpty = drawn.glyphs.empty();
        for (unsigned i = 0; i < drawn.glyphs.size(); ++i, ++m_next) {
            ASSERT_LT(m_next, m_fact.glyphs.size());
            const FactGlyph& glyph = m_fact.glyphs[m_next];
            EXPECT_EQ(glyph.glyph, drawn.glyphs[i]) << m_next;
            EXPECT_EQ(glyph.cluster, clusterStart(drawn, i)) << m_next;
            EXPECT_FLOAT_EQ(glyph.advance * m_scale, drawn.advances[i]) << m_next;
            EXPECT_FLOAT_EQ(glyph.advanceOffset * m_scale, drawn.offsets[i].advanceOffset) << m_next;
            EXPECT_FLOAT_EQ(glyph.ascenderOffset * m_scale, drawn.offsets[i].ascenderOffset) << m_next;
        }
    }

    void finish() const { EXPECT_EQ(m_fact.glyphs.size(), m_next) << "run at " << m_fact.start; }

private:
    const FactRun& m_fact;
    const float m_scale;
    bool m_wasEmpty = false;
    std::size_t m_next = 0;
};

void expectRunsOfAllSentences() {
    for (const Sentence& sentence : sentences()) {
        SCOPED_TRACE(sentence.utf8);
        const auto drawn = drawnRuns(*makeLayout(sentence.text, 0, 0, sentence.options));
        unsigned position = 0;
        std::size_t next = 0;
        for (const FactRun& fact : sentence.runs) {
            const float fontUnits = static_cast<float>(regularFace(fact.family).unitsPerEm());
            RunComparison comparison(fact, sentence.options.size / fontUnits);
            for (; next < drawn.size() && drawn[next].textPosition < fact.end(); ++next) {
                EXPECT_EQ(position, drawn[next].textPosition);
                position += static_cast<unsigned>(drawn[next].text.size());
                comparison.add(drawn[next]);
            }
            comparison.finish();
        }
        EXPECT_EQ(sentence.text.size(), position);
    }
}

TEST(RunFacts, LayoutsCutTextAsUnicodeSaysAndDrawWhatHbShapeSays) {
    expectRunsOfAllSentences();
    // Shapes that are remembered are the same.
    expectRunsOfAllSentences();
}

TEST(RunFacts, RunsStandSideBySideInTheirBidiOrder) {
    for (const Sentence& sentence : sentences()) {
        SCOPED_TRACE(sentence.utf8);
        const auto lines = placedRuns(*makeLayout(sentence.text, 0, 0, sentence.options));
        ASSERT_EQ(1U, lines.size());
        float width = 0.0F;
        unsigned place = 0;
        for (const PlacedRun& run : lines[0]) {
            const auto fact = std::find_if(sentence.runs.begin(), sentence.runs.end(), [&run](const FactRun& one) {
                return run.start >= one.start && run.start < one.end();
            });
            ASSERT_NE(sentence.runs.end(), fact);
            EXPECT_LE(place, fact->place) << run.start;
            place = fact->place;
            EXPECT_NEAR(lines[0][0].left + width, run.left, 0.1F) << run.start;
            width += run.right - run.left;
        }
    }
}

/// What shaping says of a part of a recorded run, with the text around it.
platform::ShapedRun shapePart(const Sentence& sentence, const FactRun& fact, unsigned start, unsigned end) {
    const std::string locale(sentence.options.locale.begin(), sentence.options.locale.end());
    platform::ShapeRequest request;
    request.text = sentence.text;
    request.start = start;
    request.length = end - start;
    request.face = &regularFace(fact.family);
    request.script = hb_script_from_string(fact.script.c_str(), -1);
    request.language = hb_language_from_string(locale.c_str(), -1);
    request.isRightToLeft = fact.level.value_or(0) % 2 == 1;
    platform::ShapedRun run;
    platform::shape(request, run);
    return run;
}

/// What is drawn of a recorded run on one line.
struct LinePart {
    const FactRun* fact = nullptr;
    float baseline = 0.0F;
    unsigned start = 0;
    unsigned end = 0;
    std::vector<unsigned> glyphs;
    std::vector<float> advances;
};

std::vector<LinePart> partsOf(const Sentence& sentence, IDWriteTextLayout& layout) {
    std::vector<LinePart> parts;
    for (const DrawnCall& run : drawnRuns(layout)) {
        const auto fact = std::find_if(sentence.runs.begin(), sentence.runs.end(), [&run](const FactRun& one) {
            return run.textPosition >= one.start && run.textPosition < one.end();
        });
        if (parts.empty() || parts.back().fact != &*fact || parts.back().baseline != run.y) {
            parts.push_back({&*fact, run.y, run.textPosition, 0, {}, {}});
        }
        LinePart& part = parts.back();
        part.end = run.textPosition + static_cast<unsigned>(run.text.size());
        part.glyphs.insert(part.glyphs.end(), run.glyphs.begin(), run.glyphs.end());
        part.advances.insert(part.advances.end(), run.advances.begin(), run.advances.end());
    }
    return parts;
}

TEST(RunFacts, WrappedLinesAreShapedAsLinesOfTheirOwn) {
    unsigned parts = 0;
    for (const Sentence& sentence : sentences()) {
        SCOPED_TRACE(sentence.utf8);
        if (std::any_of(sentence.text.begin(), sentence.text.end(), isInvisible)) {
            // Drawn without the glyphs that shaping leaves for what is invisible.
            continue;
        }
        const float width = metricsOf(*makeLayout(sentence.text, 0, 0, sentence.options)).width;
        for (const float box : {width / 7, width / 4, width / 2, width * 0.8F}) {
            for (const auto wrapping : {DWRITE_WORD_WRAPPING_WRAP, DWRITE_WORD_WRAPPING_CHARACTER}) {
                FormatOptions options = sentence.options;
                options.wrapping = wrapping;
                for (const LinePart& part : partsOf(sentence, *makeLayout(sentence.text, box, 0, options))) {
                    const float scale = options.size / static_cast<float>(regularFace(part.fact->family).unitsPerEm());
                    const platform::ShapedRun shaped = shapePart(sentence, *part.fact, part.start, part.end);
                    ASSERT_EQ(shaped.size(), part.glyphs.size()) << part.start << " in " << box;
                    for (std::size_t i = 0; i < shaped.size(); ++i) {
                        EXPECT_EQ(shaped[i].glyph, part.glyphs[i]) << part.start << " in " << box;
                        EXPECT_FLOAT_EQ(static_cast<float>(shaped[i].advance) * scale, part.advances[i]) << part.start;
                    }
                    ++parts;
                }
            }
        }
    }
    EXPECT_LE(2000U, parts);
}

/// For every position of a part of a paragraph, its place from the left on a line of its own, as ICU orders it.
std::vector<int> visualPlaces(UBiDi& paragraph, unsigned start, unsigned end) {
    UErrorCode error = U_ZERO_ERROR;
    const icu::LocalUBiDiPointer line(ubidi_open());
    ubidi_setLine(&paragraph, static_cast<int>(start), static_cast<int>(end), line.getAlias(), &error);
    std::vector<int> places(end - start);
    ubidi_getLogicalMap(line.getAlias(), places.data(), &error);
    EXPECT_TRUE(U_SUCCESS(error));
    return places;
}

/// Expects the runs of a line that starts at `lineStart` to stand, and to be read, as `places` say.
void expectPlaces(const std::vector<PlacedRun>& line, unsigned lineStart, const std::vector<int>& places) {
    int last = -1;
    for (const PlacedRun& run : line) {
        const auto first = places.begin() + (run.start - lineStart);
        const auto end = first + static_cast<int>(run.text.size());
        const bool isRightToLeft = run.level % 2 == 1;
        EXPECT_TRUE(isRightToLeft ? std::is_sorted(first, end, std::greater<>()) : std::is_sorted(first, end))
            << run.start;
        EXPECT_LT(last, *std::min_element(first, end)) << run.start;
        last = *std::max_element(first, end);
    }
}

TEST(RunFacts, WrappedLinesAreOrderedAsLinesOfTheirOwn) {
    unsigned lines = 0;
    for (const Sentence& sentence : sentences()) {
        SCOPED_TRACE(sentence.utf8);
        UErrorCode error = U_ZERO_ERROR;
        const icu::LocalUBiDiPointer paragraph(ubidi_open());
        const bool isRightToLeft = sentence.options.reading == DWRITE_READING_DIRECTION_RIGHT_TO_LEFT;
        ubidi_setPara(paragraph.getAlias(), sentence.text.data(), static_cast<int>(sentence.text.size()),
                      isRightToLeft ? 1 : 0, nullptr, &error);
        ASSERT_TRUE(U_SUCCESS(error));
        const float width = metricsOf(*makeLayout(sentence.text, 0, 0, sentence.options)).width;
        for (const float box : {width / 7, width / 4, width / 2}) {
            const auto layout = makeLayout(sentence.text, box, 0, sentence.options);
            const auto lengths = lineLengths(*layout);
            const auto placed = placedRuns(*layout);
            ASSERT_EQ(lengths.size(), placed.size());
            unsigned start = 0;
            for (std::size_t i = 0; i < lengths.size(); ++i) {
                expectPlaces(placed[i], start, visualPlaces(*paragraph.getAlias(), start, start + lengths[i]));
                start += lengths[i];
                ++lines;
            }
        }
    }
    EXPECT_LE(1000U, lines);
}

TEST(RunFacts, CoverManyScriptsDirectionsAndFonts) {
    std::set<std::string> scripts;
    std::set<std::string> families;
    std::set<unsigned> levels;
    std::size_t runs = 0;
    std::size_t glyphs = 0;
    for (const Sentence& sentence : sentences()) {
        for (const FactRun& run : sentence.runs) {
            scripts.insert(run.script);
            families.insert(run.family);
            levels.insert(run.level.value_or(0));
            ++runs;
            glyphs += run.glyphs.size();
        }
    }
    EXPECT_EQ(96U, sentences().size());
    EXPECT_LE(60U, scripts.size());
    EXPECT_LE(60U, families.size());
    EXPECT_LE(200U, runs);
    EXPECT_LE(1700U, glyphs);
    EXPECT_EQ((std::set<unsigned>{0, 1, 2, 3, 4, 5, 6}), levels);
}

} // namespace
} // namespace platform_test
