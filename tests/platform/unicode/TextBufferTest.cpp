#include <gtest/gtest.h>

#include "unicode/TextBuffer.h"

namespace platform_test {
namespace {

TEST(TextBuffers, HoldTheTextInBothForms) {
    const platform::TextBuffer ascii(L"abcdef", 3);
    EXPECT_EQ(u"abc", ascii.units());
    EXPECT_STREQ(L"abc", ascii.wide());
    EXPECT_TRUE(ascii.isAscii());
    EXPECT_FALSE(platform::TextBuffer(L"\u00E4", 1).isAscii());
    EXPECT_EQ(0U, platform::TextBuffer(L"", 0).size());
}

} // namespace
} // namespace platform_test
