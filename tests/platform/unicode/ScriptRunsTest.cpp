#include <vector>

#include <gtest/gtest.h>

#include "unicode/ScriptRuns.h"

namespace platform_test {
namespace {

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

TEST(ScriptRuns, AMarkGivesItsScriptToABaseOfNone) {
    std::vector<platform::ScriptRun> runs;
    // The vowel i of Devanagari over a dotted circle and a no-break space.
    for (const char16_t* const text : {u"\u25CC\u093F", u"\u00A0\u093F", u"1 \u25CC\u093F"}) {
        platform::findScriptRuns(text, runs);
        ASSERT_EQ(1U, runs.size());
        EXPECT_EQ(HB_SCRIPT_DEVANAGARI, runs[0].script);
    }
    platform::findScriptRuns(u"ab \u25CC\u0301\u093F\u0E31 a\u093F", runs);
    ASSERT_EQ(3U, runs.size());
    EXPECT_EQ(HB_SCRIPT_LATIN, runs[0].script);
    EXPECT_EQ(3U, runs[0].end);
    EXPECT_EQ(HB_SCRIPT_DEVANAGARI, runs[1].script);
    // A second script within the grapheme, or over a base with a script, changes nothing.
    EXPECT_EQ(8U, runs[1].end);
    EXPECT_EQ(HB_SCRIPT_LATIN, runs[2].script);
}

} // namespace
} // namespace platform_test
