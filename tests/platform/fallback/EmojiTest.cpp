#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>

#include <Common/Utf.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "fallback/FallbackTestSupport.h"

// The pinned fonts are all monochrome: DejaVu Sans has a smiling face and a heart. These tests add a font of colour
// emoji, in a process of their own, because a process reads its fonts once.

namespace platform {
namespace {

void writeConfiguration(const std::string& path) {
    std::ofstream file(path);
    file << "<?xml version=\"1.0\"?>\n<!DOCTYPE fontconfig SYSTEM \"urn:fontconfig:fonts.dtd\">\n<fontconfig>"
         << "<include>" << std::getenv("FONTCONFIG_FILE") << "</include><dir>" << FONTENGINE_TEST_DATA
         << "/platform/fonts/data/emoji</dir></fontconfig>\n";
}

/// Writes the stretches of a text where a colour font is installed too, and ends the process.
[[noreturn]] void answerWithColour(const std::u16string& text, const wchar_t* family) {
    const std::string conf = testing::TempDir() + "emoji-fonts-" + std::to_string(getpid()) + ".conf";
    writeConfiguration(conf);
    setenv("FONTCONFIG_FILE", conf.c_str(), 1);
    Question question{text};
    question.family = family;
    std::cerr << common::utf8FromWide(question.stretches()) << '.' << std::endl;
    std::remove(conf.c_str());
    std::_Exit(0);
}

void expectStretches(const std::u16string& text, const std::string& expected, const wchar_t* family) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(answerWithColour(text, family), testing::ExitedWithCode(0), expected + "\\.")
        << common::utf8FromWide(std::wstring(text.begin(), text.end()));
}

TEST(FallbackEmoji, theEmojiSelectorAsksForColour) {
    expectStretches(u"\u2764\uFE0F", "Test Emoji:2 ", L"Liberation Sans");
    expectStretches(u"a\u2764\uFE0Fb", "DejaVu Sans:1 Test Emoji:2 DejaVu Sans:1 ", L"DejaVu Sans");
    expectStretches(u"1\uFE0F\u20E3", "Test Emoji:3 ", L"Liberation Sans");
    expectStretches(u"\u2764\uFE0F\u200D\U0001F600", "Test Emoji:5 ", L"DejaVu Sans");
}

TEST(FallbackEmoji, theSelectorSpeaksForItsOwnEmojiOnly) {
    expectStretches(u"\u2764\uFE0F\u2764", "Test Emoji:2 DejaVu Sans:1 ", L"Liberation Sans");
    expectStretches(u"\u2764\u2764\uFE0F", "DejaVu Sans:1 Test Emoji:2 ", L"Liberation Sans");
}

TEST(FallbackEmoji, theTextSelectorAsksForOutlines) {
    expectStretches(u"\u2764\uFE0E", "DejaVu Sans:2 ", L"Liberation Sans");
    expectStretches(u"\u263A\uFE0E", "Liberation Sans:2 ", L"Liberation Sans");
}

TEST(FallbackEmoji, withoutASelectorOutlinesComeFirst) {
    expectStretches(u"\u2764", "DejaVu Sans:1 ", L"Liberation Sans");
    expectStretches(u"\U0001F600", "DejaVu Sans:2 ", L"Liberation Sans");
    expectStretches(u"1", "Liberation Sans:1 ", L"Liberation Sans");
}

TEST(FallbackEmoji, aColourFontThatIsAskedForIsTaken) {
    expectStretches(u"\u2764\uFE0F\u263A", "Test Emoji:3 ", L"Test Emoji");
}

TEST(FallbackEmoji, withoutAColourFontTheSelectorChangesNothing) {
    EXPECT_EQ(Question{u"\u2764\uFE0F"}.stretches(), L"DejaVu Sans:2 ");
    EXPECT_EQ(Question{u"\u263A\uFE0F"}.stretches(), L"Liberation Sans:2 ");
}

TEST(FallbackEmoji, whatTheColourFontLacksStaysInOutlines) {
    expectStretches(u"\u2600\uFE0F", "DejaVu Sans:2 ", L"Liberation Sans");
    expectStretches(u"A\uFE0F", "Liberation Sans:2 ", L"Liberation Sans");
}

} // namespace
} // namespace platform
