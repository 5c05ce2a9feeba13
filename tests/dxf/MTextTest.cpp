#include "SmallDrawing.h"

#include <gtest/gtest.h>

namespace {

using namespace dxftest;

TEST(MText, HasDefaultsForMissingGroups) {
    const dxf::TextEntity text = readText(groups({{0, "MTEXT"}, {1, "a"}}));
    EXPECT_EQ(text.kind, dxf::TextKind::MText);
    EXPECT_TRUE(text.isParagraphText());
    EXPECT_EQ(text.content, L"a");
    EXPECT_EQ(text.layer, L"0");
    EXPECT_EQ(text.style, L"STANDARD");
    EXPECT_EQ(text.color, 256);
    EXPECT_FALSE(text.trueColor);
    EXPECT_FALSE(text.invisible);
    EXPECT_FALSE(text.paperSpace);
    EXPECT_EQ(text.handle, 0U);
    EXPECT_EQ(text.owner, 0U);
    EXPECT_EQ(text.insertion, (dxf::Point{0, 0, 0}));
    EXPECT_EQ(text.extrusion, (dxf::Point{0, 0, 1}));
    EXPECT_EQ(text.height, 0.2); // $TEXTSIZE, missing too
    EXPECT_EQ(text.rotation, 0.0);
    EXPECT_FALSE(text.direction);
    EXPECT_EQ(text.attachment, dxf::Attachment::TopLeft);
    EXPECT_EQ(text.width, 0.0);
    EXPECT_EQ(text.lineSpacingFactor, 1.0);
    EXPECT_EQ(text.lineSpacingStyle, dxf::LineSpacingStyle::AtLeast);
    EXPECT_EQ(text.drawingDirection, dxf::DrawingDirection::LeftToRight);
    EXPECT_EQ(text.columns.kind, dxf::ColumnKind::None);
}

TEST(MText, ReadsEverythingThatPlacesIt) {
    const dxf::TextEntity text = readText(groups({{0, "MTEXT"},        {5, "2F"},          {102, "{ACAD_REACTORS"},
                                                  {330, "99"},         {102, "}"},         {330, "1F"},
                                                  {100, "AcDbEntity"}, {67, "1"},          {410, "Layout1"},
                                                  {8, "Notes"},        {62, "1"},          {420, "255"},
                                                  {60, "1"},           {100, "AcDbMText"}, {10, "1"},
                                                  {20, "2"},           {30, "3"},          {40, "2.5"},
                                                  {41, "64"},          {46, "12"},         {71, "5"},
                                                  {72, "5"},           {1, "text"},        {7, "Arial"},
                                                  {210, "0"},          {220, "0"},         {230, "-1"},
                                                  {11, "0"},           {21, "1"},          {31, "0"},
                                                  {42, "60"},          {43, "10"},         {73, "2"},
                                                  {44, "1.5"},         {90, "3"},          {63, "254"},
                                                  {45, "1.5"},         {441, "0"}}));
    EXPECT_EQ(text.handle, 0x2FU);
    EXPECT_EQ(text.owner, 0x1FU); // and not the reactor
    EXPECT_EQ(text.layer, L"Notes");
    EXPECT_EQ(text.color, 1);
    EXPECT_EQ(text.trueColor, 255U);
    EXPECT_TRUE(text.invisible);
    EXPECT_TRUE(text.paperSpace);
    EXPECT_EQ(text.layout, L"Layout1");
    EXPECT_EQ(text.insertion, (dxf::Point{1, 2, 3}));
    EXPECT_EQ(text.height, 2.5);
    EXPECT_EQ(text.width, 64.0);
    EXPECT_EQ(text.definedHeight, 12.0);
    EXPECT_EQ(text.attachment, dxf::Attachment::MiddleCenter);
    EXPECT_EQ(text.drawingDirection, dxf::DrawingDirection::ByStyle);
    EXPECT_EQ(text.style, L"Arial");
    EXPECT_EQ(text.extrusion, (dxf::Point{0, 0, -1}));
    EXPECT_EQ(text.direction, (dxf::Point{0, 1, 0}));
    EXPECT_EQ(text.measuredWidth, 60.0);
    EXPECT_EQ(text.measuredHeight, 10.0);
    EXPECT_EQ(text.lineSpacingStyle, dxf::LineSpacingStyle::Exact);
    EXPECT_EQ(text.lineSpacingFactor, 1.5);
}

TEST(MText, ValuesOutOfRangeHaveTheDefault) {
    const dxf::TextEntity text =
        readText(groups({{0, "MTEXT"}, {1, "a"}, {71, "12"}, {72, "9"}, {73, "7"}, {44, "0"}, {41, "-5"}, {40, "-2"}}));
    EXPECT_EQ(text.attachment, dxf::Attachment::TopLeft);
    EXPECT_EQ(text.drawingDirection, dxf::DrawingDirection::LeftToRight);
    EXPECT_EQ(text.lineSpacingStyle, dxf::LineSpacingStyle::AtLeast);
    EXPECT_EQ(text.lineSpacingFactor, 1.0);
    EXPECT_EQ(text.width, 0.0);
    EXPECT_EQ(text.height, 0.2);
    EXPECT_EQ(readText(groups({{0, "MTEXT"}, {1, "a"}, {44, "9"}})).lineSpacingFactor, 4.0);
    EXPECT_EQ(readText(groups({{0, "MTEXT"}, {1, "a"}, {44, "0.1"}})).lineSpacingFactor, 0.25);
}

TEST(MText, TheLastOfDirectionAndRotationHolds) {
    const dxf::TextEntity turned = readText(groups({{0, "MTEXT"}, {11, "0"}, {21, "1"}, {50, "30"}, {1, "a"}}));
    EXPECT_FALSE(turned.direction);
    EXPECT_EQ(turned.rotation, 30.0);
    const dxf::TextEntity directed = readText(groups({{0, "MTEXT"}, {50, "30"}, {11, "0"}, {21, "1"}, {1, "a"}}));
    EXPECT_EQ(directed.direction, (dxf::Point{0, 1, 0}));
}

TEST(MText, ChunksAreJoinedWhereverTheyEnd) {
    const dxf::TextEntity text =
        readText(groups({{0, "MTEXT"}, {3, "{\\H1"}, {3, ".5x;big} \\fAri"}, {3, "al|b1;\\M+5"}, {1, "D6D0 end "}}));
    EXPECT_EQ(text.content, L"{\\H1.5x;big} \\fArial|b1;\\M+5D6D0 end ");
}

TEST(MText, ChunksAreJoinedInsideACharacterOfSeveralBytes) {
    const dxf::Drawing drawing =
        read(header("AC1018", "ANSI_932") + entitiesOnly(groups({{0, "MTEXT"}, {3, "abc\x95"}, {1, "\x5C\\Pdef"}})));
    ASSERT_EQ(drawing.texts.size(), 1U);
    EXPECT_EQ(drawing.texts[0].content, L"abc\u8868\\Pdef");
    EXPECT_EQ(drawing.replacedBytes, 0U);
}

TEST(MText, BlanksAtTheEndsOfChunksAreText) {
    EXPECT_EQ(readText(groups({{0, "MTEXT"}, {3, "  one "}, {1, " two  "}})).content, L"  one  two  ");
}

TEST(MText, ColumnsOfNewerDrawingsComeFromTheEmbeddedObject) {
    const dxf::TextEntity text = readText(groups({{0, "MTEXT"},
                                                  {100, "AcDbEntity"},
                                                  {100, "AcDbMText"},
                                                  {10, "5"},
                                                  {40, "2.5"},
                                                  {41, "20"},
                                                  {71, "1"},
                                                  {1, "text"},
                                                  {101, "Embedded Object"},
                                                  {70, "1"},
                                                  {10, "1"},
                                                  {20, "0"},
                                                  {30, "0"},
                                                  {11, "99"},
                                                  {21, "98"},
                                                  {31, "0"},
                                                  {40, "20"},
                                                  {41, "7"},
                                                  {42, "50"},
                                                  {43, "10"},
                                                  {71, "2"},
                                                  {72, "3"},
                                                  {44, "15"},
                                                  {45, "2"},
                                                  {73, "0"},
                                                  {74, "1"},
                                                  {46, "4"},
                                                  {46, "5"},
                                                  {46, "6"}}));
    EXPECT_EQ(text.insertion.x, 5.0);
    EXPECT_EQ(text.height, 2.5);
    EXPECT_EQ(text.width, 20.0);
    EXPECT_EQ(text.attachment, dxf::Attachment::TopLeft);
    EXPECT_FALSE(text.direction);
    EXPECT_EQ(text.columns.kind, dxf::ColumnKind::Dynamic);
    EXPECT_EQ(text.columns.count, 3);
    EXPECT_EQ(text.columns.width, 15.0);
    EXPECT_EQ(text.columns.gutter, 2.0);
    EXPECT_EQ(text.columns.definedHeight, 7.0);
    EXPECT_FALSE(text.columns.autoHeight);
    EXPECT_TRUE(text.columns.reversed);
    EXPECT_EQ(text.columns.heights, (std::vector<double>{4, 5, 6}));
}

TEST(MText, ColumnsOfOlderDrawingsComeFromExtendedData) {
    const dxf::TextEntity text = readText(groups({{0, "MTEXT"},
                                                  {1, "first column"},
                                                  {1001, "OTHER"},
                                                  {1070, "75"},
                                                  {1070, "1"},
                                                  {1001, "ACAD"},
                                                  {1000, "ACAD_MTEXT_COLUMN_INFO_BEGIN"},
                                                  {1070, "75"},
                                                  {1070, "2"},
                                                  {1070, "79"},
                                                  {1070, "0"},
                                                  {1070, "76"},
                                                  {1070, "2"},
                                                  {1070, "78"},
                                                  {1070, "0"},
                                                  {1070, "48"},
                                                  {1040, "15.5"},
                                                  {1070, "49"},
                                                  {1040, "2.5"},
                                                  {1070, "50"},
                                                  {1070, "2"},
                                                  {1040, "30"},
                                                  {1040, "20"},
                                                  {1000, "ACAD_MTEXT_COLUMN_INFO_END"},
                                                  {1000, "ACAD_MTEXT_COLUMNS_BEGIN"},
                                                  {1070, "47"},
                                                  {1070, "2"},
                                                  {1005, "1B"},
                                                  {1000, "ACAD_MTEXT_COLUMNS_END"},
                                                  {1000, "ACAD_MTEXT_DEFINED_HEIGHT_BEGIN"},
                                                  {1070, "46"},
                                                  {1040, "31"},
                                                  {1000, "ACAD_MTEXT_DEFINED_HEIGHT_END"}}));
    EXPECT_EQ(text.columns.kind, dxf::ColumnKind::Dynamic);
    EXPECT_EQ(text.columns.count, 2);
    EXPECT_FALSE(text.columns.autoHeight);
    EXPECT_EQ(text.columns.width, 15.5);
    EXPECT_EQ(text.columns.gutter, 2.5);
    EXPECT_EQ(text.columns.heights, (std::vector<double>{30, 20}));
    EXPECT_EQ(text.columns.linkedColumns, (std::vector<std::uint64_t>{0x1B}));
    EXPECT_EQ(text.columns.definedHeight, 31.0);
}

TEST(MText, TheHeightComesFromTheStyleOrTheHeaderWhereItIsMissing) {
    const std::string styles = section("TABLES", table("STYLE", groups({{0, "STYLE"}, {2, "Fixed"}, {40, "4"}}) +
                                                                    groups({{0, "STYLE"}, {2, "Free"}, {40, "0"}})));
    const std::string size = section("HEADER", groups({{9, "$TEXTSIZE"}, {40, "3"}}));
    const dxf::Drawing drawing = read(size + styles +
                                      entitiesOnly(groups({{0, "MTEXT"}, {1, "a"}, {7, "fixed"}}) +
                                                   groups({{0, "MTEXT"}, {1, "a"}, {7, "FREE"}}) +
                                                   groups({{0, "MTEXT"}, {1, "a"}, {7, "Fixed"}, {40, "9"}}) +
                                                   groups({{0, "TEXT"}, {1, "a"}, {7, "Fixed"}, {40, "0"}})));
    ASSERT_EQ(drawing.texts.size(), 4U);
    EXPECT_EQ(drawing.texts[0].height, 4.0);
    EXPECT_EQ(drawing.texts[1].height, 3.0);
    EXPECT_EQ(drawing.texts[2].height, 9.0);
    EXPECT_EQ(drawing.texts[3].height, 4.0);
}

TEST(MText, KnowsItsPlaceInTheFile) {
    const std::string line = groups({{0, "LINE"}, {8, "0"}});
    const std::string bytes = entitiesOnly(line + groups({{0, "MTEXT"}, {1, "a"}, {0, "MTEXT"}, {1, "b"}}));
    const dxf::Drawing drawing = read(bytes);
    ASSERT_EQ(drawing.texts.size(), 2U);
    EXPECT_EQ(drawing.texts[0].offset, bytes.find("  0\nMTEXT"));
    EXPECT_EQ(drawing.texts[0].line, 9U);
    EXPECT_EQ(drawing.texts[1].line, 13U);
    EXPECT_EQ(drawing.texts[1].ordinal, 1U);
    EXPECT_EQ(drawing.byteCount, bytes.size());
    EXPECT_EQ(drawing.lineCount, 20U);
}

} // namespace
