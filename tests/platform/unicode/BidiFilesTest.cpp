#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <unicode/ubidi.h>
#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include "support/LayoutTestSupport.h"
#include "unicode/BidiLevels.h"
#include "unicode/UnicodeFile.h"

namespace platform_test {
namespace {

/// A level that the bidi algorithm removes from the result ("x" in the files).
using Level = std::optional<std::uint8_t>;

std::vector<Level> parseLevels(std::string_view text) {
    std::vector<Level> levels;
    for (const std::string_view part : split(text, ' ')) {
        if (part == "x") {
            levels.push_back(std::nullopt);
        } else if (!part.empty()) {
            levels.push_back(static_cast<std::uint8_t>(numberOf(part)));
        }
    }
    return levels;
}

std::vector<unsigned> parseOrder(std::string_view text) {
    std::vector<unsigned> order;
    for (const std::string_view part : split(text, ' ')) {
        if (!part.empty()) {
            order.push_back(numberOf(part));
        }
    }
    return order;
}

/// What belongs to the first unit of every character.
std::vector<std::uint8_t> ofCharacters(std::u16string_view text, const std::vector<std::uint8_t>& ofUnits) {
    std::vector<std::uint8_t> ofCharacters;
    for (std::size_t i = 0; i < text.size();) {
        ofCharacters.push_back(ofUnits[i]);
        U16_FWD_1(text.data(), i, text.size());
    }
    return ofCharacters;
}

/// The level of every character, by our steps.
std::vector<std::uint8_t> levelsOf(std::u16string_view text, bool rightToLeft) {
    std::vector<std::uint8_t> levels;
    if (!platform::findBidiLevels(text, rightToLeft, levels)) {
        levels.assign(text.size(), platform::paragraphLevel(rightToLeft));
    }
    return ofCharacters(text, levels);
}

/// The level of every character as ICU, asked without our code, says it.
std::vector<std::uint8_t> levelsByIcu(std::u16string_view text, bool rightToLeft) {
    const std::unique_ptr<UBiDi, decltype(&ubidi_close)> bidi(ubidi_open(), ubidi_close);
    UErrorCode error = U_ZERO_ERROR;
    const auto length = static_cast<std::int32_t>(text.size());
    ubidi_setPara(bidi.get(), text.data(), length, rightToLeft ? 1 : 0, nullptr, &error);
    const UBiDiLevel* levels = ubidi_getLevels(bidi.get(), &error);
    EXPECT_TRUE(U_SUCCESS(error)) << u_errorName(error);
    return ofCharacters(text, std::vector<std::uint8_t>(levels, levels + length));
}

/// What is expected of one text in one reading direction.
struct Expectation {
    std::vector<Level> levels;
    /// The characters that are left, from left to right.
    std::vector<unsigned> order;
};

/// Whether our levels and our order are the expected ones.
bool agrees(std::u16string_view text, bool rightToLeft, const Expectation& expected) {
    const std::vector<std::uint8_t> levels = levelsOf(text, rightToLeft);
    if (levels.size() != expected.levels.size()) {
        return false;
    }
    std::vector<std::uint8_t> kept;
    std::vector<unsigned> places;
    for (unsigned i = 0; i < levels.size(); ++i) {
        if (!expected.levels[i]) {
            continue;
        }
        if (*expected.levels[i] != levels[i]) {
            return false;
        }
        kept.push_back(levels[i]);
        places.push_back(i);
    }
    std::vector<std::int32_t> order;
    platform::findVisualOrder(kept, order);
    return std::equal(
        order.begin(), order.end(), expected.order.begin(), expected.order.end(),
        [&](std::int32_t place, unsigned wanted) { return places[static_cast<std::size_t>(place)] == wanted; });
}

/// A character of each class that BidiTest.txt writes by name.
char32_t sampleOf(std::string_view name) {
    struct Sample {
        std::string_view name;
        char32_t character;
        UCharDirection direction;
    };
    static constexpr std::array samples{Sample{"L", U'a', U_LEFT_TO_RIGHT},
                                        Sample{"R", U'\u05D0', U_RIGHT_TO_LEFT},
                                        Sample{"AL", U'\u0627', U_RIGHT_TO_LEFT_ARABIC},
                                        Sample{"EN", U'1', U_EUROPEAN_NUMBER},
                                        Sample{"ES", U'+', U_EUROPEAN_NUMBER_SEPARATOR},
                                        Sample{"ET", U'%', U_EUROPEAN_NUMBER_TERMINATOR},
                                        Sample{"AN", U'\u0661', U_ARABIC_NUMBER},
                                        Sample{"CS", U',', U_COMMON_NUMBER_SEPARATOR},
                                        Sample{"NSM", U'\u0301', U_DIR_NON_SPACING_MARK},
                                        Sample{"BN", U'\u00AD', U_BOUNDARY_NEUTRAL},
                                        Sample{"B", U'\u2029', U_BLOCK_SEPARATOR},
                                        Sample{"S", U'\t', U_SEGMENT_SEPARATOR},
                                        Sample{"WS", U' ', U_WHITE_SPACE_NEUTRAL},
                                        Sample{"ON", U'!', U_OTHER_NEUTRAL},
                                        Sample{"LRE", U'\u202A', U_LEFT_TO_RIGHT_EMBEDDING},
                                        Sample{"LRO", U'\u202D', U_LEFT_TO_RIGHT_OVERRIDE},
                                        Sample{"RLE", U'\u202B', U_RIGHT_TO_LEFT_EMBEDDING},
                                        Sample{"RLO", U'\u202E', U_RIGHT_TO_LEFT_OVERRIDE},
                                        Sample{"PDF", U'\u202C', U_POP_DIRECTIONAL_FORMAT},
                                        Sample{"LRI", U'\u2066', U_LEFT_TO_RIGHT_ISOLATE},
                                        Sample{"RLI", U'\u2067', U_RIGHT_TO_LEFT_ISOLATE},
                                        Sample{"FSI", U'\u2068', U_FIRST_STRONG_ISOLATE},
                                        Sample{"PDI", U'\u2069', U_POP_DIRECTIONAL_ISOLATE}};
    const auto found = std::find_if(samples.begin(), samples.end(), [&](const Sample& s) { return s.name == name; });
    if (found == samples.end()) {
        ADD_FAILURE() << "no sample of class " << name;
        return U'a';
    }
    EXPECT_EQ(found->direction, u_charDirection(static_cast<UChar32>(found->character))) << name;
    return found->character;
}

TEST(UnicodeBidiTest, LevelsAndOrderAreUnicodesForEverySequenceOfClasses) {
    constexpr unsigned leftToRight = 2;
    constexpr unsigned rightToLeft = 4;
    Expectation expected;
    unsigned cases = 0;
    unsigned failures = 0;
    forEachLine("BidiTest.txt", [&](std::string_view line) {
        constexpr std::string_view levels = "@Levels:";
        constexpr std::string_view reorder = "@Reorder:";
        if (line.starts_with(levels)) {
            expected.levels = parseLevels(line.substr(levels.size()));
            return;
        }
        if (line.starts_with(reorder)) {
            expected.order = parseOrder(line.substr(reorder.size()));
            return;
        }
        const std::size_t separator = line.find(';');
        std::u16string text;
        for (const std::string_view name : split(line.substr(0, separator), ' ')) {
            append(text, sampleOf(name));
        }
        const unsigned directions = numberOf(split(line.substr(separator + 1), ';').front(), 16);
        // A paragraph whose direction its text decides is like one whose direction is given; ours are all given.
        EXPECT_NE(0U, directions & (leftToRight | rightToLeft)) << line;
        for (const unsigned direction : {leftToRight, rightToLeft}) {
            if ((directions & direction) == 0) {
                continue;
            }
            ++cases;
            if (!agrees(text, direction == rightToLeft, expected) && ++failures <= 10) {
                ADD_FAILURE() << line << (direction == rightToLeft ? " from right to left" : " from left to right");
            }
        }
    });
    EXPECT_EQ(0U, failures);
    EXPECT_EQ(513494U, cases);
}

struct CharacterCase {
    /// The paragraph's direction as the file writes it, and the characters.
    std::string name;
    std::u16string text;
    bool rightToLeft = false;
    Expectation expected;
};

/// All cases of BidiCharacterTest.txt. Where the text decides a paragraph's direction, the file tells the result, and
/// that is the direction given.
const std::vector<CharacterCase>& characterCases() {
    static const std::vector<CharacterCase> cases = [] {
        std::vector<CharacterCase> read;
        forEachLine("BidiCharacterTest.txt", [&](std::string_view line) {
            const auto fields = split(line, ';');
            CharacterCase& added = read.emplace_back();
            added.name = std::string(fields.at(1)) + "; " + std::string(fields.at(0));
            added.text = textOfCodes(fields.at(0));
            added.rightToLeft = fields.at(2) == "1";
            added.expected.levels = parseLevels(fields.at(3));
            added.expected.order = parseOrder(fields.at(4));
        });
        return read;
    }();
    return cases;
}

const std::set<std::string>& knownDifferences() {
    static const std::set<std::string> names = [] {
        std::set<std::string> read;
        forEachLineOfData("bidi-differences.txt", [&](std::string_view line) { read.emplace(line); });
        return read;
    }();
    return names;
}

TEST(UnicodeBidiTest, LevelsAndOrderOfTextsWithBracketsAreUnicodesButForTheListedTexts) {
    std::set<std::string> different;
    for (const CharacterCase& test : characterCases()) {
        if (!agrees(test.text, test.rightToLeft, test.expected)) {
            different.insert(test.name);
        }
    }
    EXPECT_EQ(knownDifferences(), different);
    EXPECT_EQ(29U, different.size());
    EXPECT_EQ(91707U, characterCases().size());
}

TEST(UnicodeBidiTest, WhereLevelsOfTextsWithBracketsDifferFromUnicodesTheyAreIcus) {
    unsigned compared = 0;
    for (const CharacterCase& test : characterCases()) {
        if (knownDifferences().contains(test.name)) {
            ++compared;
            EXPECT_EQ(levelsByIcu(test.text, test.rightToLeft), levelsOf(test.text, test.rightToLeft)) << test.name;
        }
    }
    EXPECT_EQ(29U, compared);
}

/// The left edges of the drawn glyphs with the text positions that they stand for.
std::vector<std::pair<float, unsigned>> glyphPlaces(IDWriteTextLayout& layout) {
    std::vector<std::pair<float, unsigned>> places;
    for (const DrawnCall& run : drawnRuns(layout)) {
        float x = run.x;
        for (std::size_t glyph = 0; glyph < run.glyphs.size(); ++glyph) {
            const auto first = std::find(run.clusterMap.begin(), run.clusterMap.end(), glyph);
            const bool isRightToLeft = (run.bidiLevel & 1) != 0;
            x -= isRightToLeft ? run.advances[glyph] : 0.0F;
            if (first != run.clusterMap.end()) {
                places.emplace_back(x, run.textPosition + static_cast<unsigned>(first - run.clusterMap.begin()));
            }
            x += isRightToLeft ? 0.0F : run.advances[glyph];
        }
    }
    return places;
}

/// Whether the glyphs of a layout stand in the order of the characters that they are drawn for.
bool drawsInOrder(const CharacterCase& test) {
    const auto layout = makeLayout(test.text, 0, 0,
                                   {.reading = test.rightToLeft ? DWRITE_READING_DIRECTION_RIGHT_TO_LEFT
                                                                : DWRITE_READING_DIRECTION_LEFT_TO_RIGHT});
    auto places = glyphPlaces(*layout);
    std::stable_sort(places.begin(), places.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first - 1e-3F; });
    std::vector<unsigned> drawn;
    for (const auto& [x, position] : places) {
        drawn.push_back(position);
    }
    std::vector<unsigned> expected;
    for (const unsigned place : test.expected.order) {
        if (std::find(drawn.begin(), drawn.end(), place) != drawn.end()) {
            expected.push_back(place);
        }
    }
    return drawn == expected && !drawn.empty();
}

TEST(UnicodeBidiTest, GlyphsOfALayoutStandInUnicodesOrder) {
    unsigned compared = 0;
    unsigned failures = 0;
    // Texts of single units without marks, so that every glyph tells its character; one in ten keeps the test fast.
    for (std::size_t i = 0; i < characterCases().size(); i += 10) {
        const CharacterCase& test = characterCases()[i];
        const bool isSimple = std::all_of(test.text.begin(), test.text.end(), [](char16_t unit) {
            return !U16_IS_SURROGATE(unit) && u_hasBinaryProperty(unit, UCHAR_GRAPHEME_EXTEND) == 0 &&
                   u_charDirection(unit) != U_BLOCK_SEPARATOR && unit != u'\n' && unit != u'\t';
        });
        if (!isSimple || knownDifferences().contains(test.name)) {
            continue;
        }
        ++compared;
        if (!drawsInOrder(test) && ++failures <= 10) {
            ADD_FAILURE() << hexadecimal(test.text) << (test.rightToLeft ? "from right to left" : "from left to right");
        }
    }
    EXPECT_EQ(0U, failures);
    EXPECT_LE(5000U, compared);
}

} // namespace
} // namespace platform_test
