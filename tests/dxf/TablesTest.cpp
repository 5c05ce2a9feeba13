#include "SmallDrawing.h"

#include <gtest/gtest.h>

namespace {

using namespace dxftest;

TEST(Header, ReadsTheVariables) {
    const dxf::Drawing drawing =
        read(section("HEADER", groups({{9, "$ACADVER"},     {1, "AC1018"}, {9, "$DWGCODEPAGE"}, {3, "ansi_1251"},
                                       {9, "$INSUNITS"},    {70, "    4"}, {9, "$EXTMIN"},      {10, "-1.5"},
                                       {20, "2"},           {30, "0.0"},   {9, "$EXTMAX"},      {10, "100"},
                                       {20, "50"},          {30, "0.0"},   {9, "$TEXTSIZE"},    {40, "3.5"},
                                       {9, "$TEXTSTYLE"},   {7, "Notes"},  {9, "$HANDSEED"},    {5, "1A2B"},
                                       {9, "$MEASUREMENT"}, {70, "1"},     {9, "$DIMSCALE"},    {40, "10"},
                                       {9, "$DIMTXT"},      {40, "0.25"},  {9, "$DIMTXSTY"},    {7, "Dims"},
                                       {9, "$MIRRTEXT"},    {70, "     1"}})) +
             endMark());
    const dxf::Header& header = drawing.header;
    EXPECT_EQ(header.version, L"AC1018");
    EXPECT_TRUE(header.hasVersion);
    EXPECT_EQ(header.versionNumber(), 1018);
    EXPECT_EQ(header.codePageName, L"ansi_1251");
    EXPECT_EQ(drawing.codePage, 1251U);
    EXPECT_EQ(header.insUnits, 4);
    EXPECT_EQ(header.extentsMin, (dxf::Point{-1.5, 2, 0}));
    EXPECT_EQ(header.extentsMax, (dxf::Point{100, 50, 0}));
    EXPECT_EQ(header.textSize, 3.5);
    EXPECT_EQ(header.textStyle, L"Notes");
    EXPECT_EQ(header.handleSeed, 0x1A2BU);
    EXPECT_EQ(drawing.maxHandle, 0U); // The seed is no object's handle.
    EXPECT_TRUE(header.metric);
    EXPECT_TRUE(header.mirrorText);
    EXPECT_EQ(header.dimTextSize, 2.5);
    EXPECT_EQ(header.dimTextStyle, L"Dims");
}

TEST(Header, HasDefaultsForWhatIsMissing) {
    const dxf::Drawing drawing = read(endMark());
    const dxf::Header& header = drawing.header;
    EXPECT_EQ(header.version, L"AC1009");
    EXPECT_FALSE(header.hasVersion);
    EXPECT_EQ(header.versionNumber(), 1009);
    EXPECT_EQ(header.textStyle, L"STANDARD");
    EXPECT_EQ(header.textSize, 0.2);
    EXPECT_EQ(header.dimTextSize, 0.2);
    EXPECT_EQ(header.handleSeed, 0U);
    EXPECT_FALSE(header.extentsMin);
    EXPECT_EQ(drawing.codePage, 1252U);
    EXPECT_FALSE(drawing.truncated());
    EXPECT_EQ(read(section("HEADER", groups({{9, "$MEASUREMENT"}, {70, "1"}})) + endMark()).header.textSize, 2.5);
}

TEST(Header, VersionsThatAreNoneCountAsTheOldest) {
    for (const char* version : {"", "AC", "ACxxxx", "R12", "AC10091009"}) {
        EXPECT_EQ(read(header(version, "ANSI_1252") + endMark()).header.versionNumber(), 1009) << version;
    }
}

TEST(Header, ExtentsOfAnEmptyDrawingAreNone) {
    const dxf::Drawing drawing =
        read(section("HEADER", groups({{9, "$EXTMIN"}, {10, "1e20"}, {20, "1e20"}, {30, "1e20"}})) + endMark());
    EXPECT_FALSE(drawing.header.extentsMin);
}

TEST(StyleTable, ReadsFontFilesAndTrueTypeData) {
    const dxf::Drawing drawing =
        read(section("TABLES", table("STYLE", groups({{0, "STYLE"},
                                                      {5, "11"},
                                                      {2, "Notes"},
                                                      {70, "4"},
                                                      {40, "2.5"},
                                                      {41, "0.8"},
                                                      {50, "15"},
                                                      {71, "6"},
                                                      {42, "3"},
                                                      {3, "arial.ttf"},
                                                      {4, "bigfont.shx"},
                                                      {1001, "OTHER"},
                                                      {1000, "not it"},
                                                      {1071, "0"},
                                                      {1001, "ACAD"},
                                                      {1000, "Arial Narrow"},
                                                      {1071, "50383906"}}) + // bold, italic, character set 204
                                                  groups({{0, "STYLE"}, {2, ""}, {70, "1"}, {3, "symbols.shx"}}))) +
             endMark());
    ASSERT_EQ(drawing.styles.size(), 2U);
    const dxf::TextStyle& style = drawing.styles[0];
    EXPECT_EQ(style.name, L"Notes");
    EXPECT_EQ(style.handle, 0x11U);
    EXPECT_EQ(style.fontFile, L"arial.ttf");
    EXPECT_EQ(style.bigFontFile, L"bigfont.shx");
    EXPECT_EQ(style.family, L"Arial Narrow");
    EXPECT_TRUE(style.bold);
    EXPECT_TRUE(style.italic);
    EXPECT_EQ(style.charset, 204U);
    EXPECT_EQ(style.fixedHeight, 2.5);
    EXPECT_EQ(style.lastHeight, 3.0);
    EXPECT_EQ(style.widthFactor, 0.8);
    EXPECT_EQ(style.oblique, 15.0);
    EXPECT_TRUE(style.backward);
    EXPECT_TRUE(style.upsideDown);
    EXPECT_TRUE(style.vertical);
    EXPECT_FALSE(style.shapeFile);
    EXPECT_TRUE(drawing.styles[1].shapeFile);
    EXPECT_EQ(drawing.findStyle(L"NOTES"), &drawing.styles[0]);
    EXPECT_EQ(drawing.findStyle(L""), nullptr);
    EXPECT_EQ(drawing.findStyle(L"absent"), nullptr);
}

TEST(StyleTable, AStyleWithoutValuesHasDefaults) {
    const dxf::Drawing drawing =
        read(section("TABLES", table("STYLE", groups({{0, "STYLE"}, {2, "A"}, {41, "0"}, {40, "-1"}}))) + endMark());
    ASSERT_EQ(drawing.styles.size(), 1U);
    EXPECT_EQ(drawing.styles[0].widthFactor, 1.0);
    EXPECT_EQ(drawing.styles[0].fixedHeight, 0.0);
    EXPECT_FALSE(drawing.styles[0].charset);
}

TEST(StyleTable, ATextWithoutRecordOfItsStyleHasOneAllTheSame) {
    const dxf::Drawing drawing = read(entitiesOnly(groups({{0, "TEXT"}, {1, "a"}, {7, "absent"}})));
    ASSERT_EQ(drawing.texts.size(), 1U);
    EXPECT_EQ(drawing.texts[0].style, L"absent");
    EXPECT_EQ(drawing.styleOf(drawing.texts[0]).fontFile, L"txt");
    EXPECT_EQ(drawing.styleOf(drawing.texts[0]).widthFactor, 1.0);
}

TEST(LayerTable, ReadsColoursAndStates) {
    const dxf::Drawing drawing =
        read(section("TABLES",
                     table("LAYER", groups({{0, "LAYER"}, {2, "Walls"}, {70, "5"}, {62, "-3"}, {420, "16711935"}}) +
                                        groups({{0, "LAYER"}, {2, "Text"}, {70, "0"}, {62, "0"}}))) +
             endMark());
    ASSERT_EQ(drawing.layers.size(), 2U);
    const dxf::Layer* walls = drawing.findLayer(L"WALLS");
    ASSERT_NE(walls, nullptr);
    EXPECT_EQ(walls->color, 3);
    EXPECT_TRUE(walls->off);
    EXPECT_TRUE(walls->frozen);
    EXPECT_TRUE(walls->locked);
    EXPECT_EQ(walls->trueColor, 0xFF00FFU);
    EXPECT_EQ(drawing.layers[1].color, 7);
    EXPECT_FALSE(drawing.layers[1].off);
    EXPECT_EQ(drawing.findLayer(L"absent"), nullptr);
}

TEST(Tables, TheFirstOfTwoRecordsWithOneNameHolds) {
    const dxf::Drawing drawing =
        read(section("TABLES",
                     table("LAYER", groups({{0, "LAYER"}, {2, "A"}, {62, "1"}, {0, "LAYER"}, {2, "a"}, {62, "2"}}))) +
             endMark());
    EXPECT_EQ(drawing.findLayer(L"a")->color, 1);
}

TEST(Tables, TheHighestHandleIsFoundWhereverItStands) {
    const dxf::Drawing drawing =
        read(section("TABLES", table("DIMSTYLE", groups({{0, "DIMSTYLE"}, {105, "2F"}, {2, "A"}, {5, "FFFF"}}))) +
             section("ENTITIES", groups({{0, "LINE"}, {5, "30"}})) +
             section("OBJECTS", groups({{0, "DICTIONARY"}, {5, "ABC"}, {0, "XRECORD"}, {5, "31"}})) + endMark());
    EXPECT_EQ(drawing.maxHandle, 0xABCU);
}

} // namespace
