#include "SmallDrawing.h"

#include <gtest/gtest.h>

namespace {

using namespace dxftest;

dxf::Drawing withText(const std::string& version, const std::string& codePage, const std::string& bytes) {
    return read(header(version, codePage) + entitiesOnly(groups({{0, "MTEXT"}, {1, bytes}})));
}

std::wstring textOf(const std::string& version, const std::string& codePage, const std::string& bytes) {
    return withText(version, codePage, bytes).texts.at(0).content;
}

const std::wstring plan = L"\u041F\u043B\u0430\u043D";

TEST(Encoding, OldDrawingsAreInTheirCodePage) {
    EXPECT_EQ(textOf("AC1009", "ANSI_1251", "\xCF\xEB\xE0\xED"), plan);
    EXPECT_EQ(textOf("AC1015", "ansi_1251", "\xCF\xEB\xE0\xED"), plan);
    EXPECT_EQ(textOf("AC1009", "dos866", "\x8F\xAB\xA0\xAD"), plan);
    EXPECT_EQ(textOf("AC1018", "ANSI_932", "\x90\x7D\x96\xCA\\P\x95\x5C"), L"\u56F3\u9762\\P\u8868");
    EXPECT_EQ(textOf("AC1018", "ANSI_936", "\xCD\xBC\xD6\xBD"), L"\u56FE\u7EB8");
    EXPECT_EQ(textOf("AC1018", "ANSI_949", "\xB5\xB5\xB8\xE9"), L"\uB3C4\uBA74");
    EXPECT_EQ(textOf("AC1018", "ANSI_1256", "\xE3\xCE\xD8\xD8"), L"\u0645\u062E\u0637\u0637");
}

TEST(Encoding, NewDrawingsAreUtf8WhateverTheyDeclare) {
    EXPECT_EQ(textOf("AC1021", "ANSI_1252", "\xD0\x9F\xD0\xBB\xD0\xB0\xD0\xBD"), plan);
    EXPECT_EQ(textOf("AC1032", "UNDEFINED", "\xD0\x9F\xD0\xBB\xD0\xB0\xD0\xBD"), plan);
    EXPECT_TRUE(withText("AC1027", "ANSI_1251", "a").utf8);
    EXPECT_EQ(withText("AC1027", "ANSI_1251", "a").codePage, 1251U);
}

TEST(Encoding, NewDrawingsWithBytesOfTheCodePageAreReadInIt) {
    EXPECT_EQ(textOf("AC1027", "ANSI_1251", "\xCF\xEB\xE0\xED"), plan);
    EXPECT_EQ(textOf("AC1027", "ANSI_932", "\x90\x7D\x96\xCA"), L"\u56F3\u9762");
    EXPECT_EQ(textOf("AC1027", "UNDEFINED", "30\xB0"), L"30\u00B0");
}

TEST(Encoding, ASpoiltCharacterAmongGoodUtf8IsReplacedAndCounted) {
    const dxf::Drawing drawing = withText("AC1027", "ANSI_1251", "\xD0\x9F\xD0\xBB\xD0");
    EXPECT_EQ(drawing.texts.at(0).content, L"\u041F\u043B\uFFFD");
    EXPECT_EQ(drawing.texts.at(0).replacedBytes, 1U);
    EXPECT_EQ(drawing.replacedBytes, 1U);
}

TEST(Encoding, WithoutCodePageUtf8IsRecognised) {
    const std::string utf8Text = "\xD0\x9F\xD0\xBB\xD0\xB0\xD0\xBD";
    EXPECT_EQ(textOf("AC1009", "UNDEFINED", utf8Text), plan);
    EXPECT_EQ(textOf("AC1009", "", utf8Text), plan);
    EXPECT_EQ(read(entitiesOnly(groups({{0, "TEXT"}, {1, utf8Text}}))).texts.at(0).content, plan);
    EXPECT_EQ(textOf("AC1009", "UTF-8", utf8Text), plan);
}

TEST(Encoding, WithoutCodePageOtherBytesAreWestern) {
    EXPECT_EQ(textOf("AC1009", "", "30\xB0 \xD8"), L"30\u00B0 \u00D8");
    EXPECT_EQ(withText("AC1009", "nonsense", "a").codePage, 1252U);
}

TEST(Encoding, AChanceOfUtf8InADeclaredPageIsNone) {
    // The Cyrillic letter and the degree sign happen to be valid UTF-8.
    EXPECT_EQ(textOf("AC1015", "ANSI_1251", "20 \xD1\xB0"), L"20 \u0421\u00B0");
}

TEST(Encoding, ADrawingFullOfUtf8ContradictsItsDeclaration) {
    const std::string utf8Text = "\xD0\x9F\xD0\xBB\xD0\xB0\xD0\xBD \xD0\x9F\xD0\xBB\xD0\xB0\xD0\xBD";
    EXPECT_EQ(textOf("AC1015", "ANSI_1252", utf8Text), plan + L" " + plan);
    // One string that is none takes the declaration at its word.
    const dxf::Drawing mixed = read(header("AC1015", "ANSI_1252") +
                                    entitiesOnly(groups({{0, "TEXT"}, {1, utf8Text}, {0, "TEXT"}, {1, "30\xB0"}})));
    EXPECT_FALSE(mixed.utf8);
    EXPECT_EQ(mixed.texts.at(1).content, L"30\u00B0");
}

TEST(Encoding, NamesAreDecodedAndTheirEscapesResolved) {
    const dxf::Drawing drawing =
        read(header("AC1015", "ANSI_1251") +
             section("TABLES", table("LAYER", groups({{0, "LAYER"}, {2, "\xCF\xEB\xE0\xED"}, {62, "5"}})) +
                                   table("STYLE", groups({{0, "STYLE"}, {2, "\\U+041F\\U+043B"}, {3, "txt"}}))) +
             entitiesOnly(groups({{0, "TEXT"}, {8, "\xEF\xCB\xC0\xCD"}, {7, "\\U+043F\\U+041B"}, {1, "\\U+0041"}})));
    ASSERT_EQ(drawing.texts.size(), 1U);
    EXPECT_NE(drawing.findLayer(drawing.texts[0].layer), nullptr);
    EXPECT_NE(drawing.findStyle(drawing.texts[0].style), nullptr);
    EXPECT_EQ(drawing.texts[0].content, L"\\U+0041"); // Texts keep their codes.
}

TEST(Encoding, TheHeaderMayComeLast) {
    const dxf::Drawing drawing = read(section("ENTITIES", groups({{0, "TEXT"}, {1, "\xCF\xEB\xE0\xED"}})) +
                                      header("AC1015", "ANSI_1251") + endMark());
    EXPECT_EQ(drawing.texts.at(0).content, plan);
}

} // namespace
