#include "SmallDrawing.h"

#include <gtest/gtest.h>

#include <numbers>

namespace {

using namespace dxftest;

TEST(Dimension, GivesItsOverrideTextAndPlace) {
    const std::string tables =
        section("TABLES",
                table("STYLE", groups({{0, "STYLE"}, {5, "11"}, {2, "Arch"}})) +
                    table("DIMSTYLE",
                          groups({{0, "DIMSTYLE"}, {105, "27"}, {2, "Main"}, {40, "10"}, {140, "0.25"}, {340, "11"}})));
    const dxf::Drawing drawing = read(tables + entitiesOnly(groups({{0, "DIMENSION"},
                                                                    {100, "AcDbEntity"},
                                                                    {8, "Dims"},
                                                                    {100, "AcDbDimension"},
                                                                    {2, "*D7"},
                                                                    {10, "9"},
                                                                    {11, "5"},
                                                                    {21, "6"},
                                                                    {70, "32"},
                                                                    {71, "2"},
                                                                    {72, "2"},
                                                                    {41, "1.5"},
                                                                    {42, "12.75"},
                                                                    {53, "30"},
                                                                    {1, "<> TYP"},
                                                                    {3, "MAIN"},
                                                                    {100, "AcDbAlignedDimension"},
                                                                    {13, "1"},
                                                                    {50, "90"}})));
    ASSERT_EQ(drawing.texts.size(), 1U);
    const dxf::TextEntity& text = drawing.texts[0];
    EXPECT_EQ(text.kind, dxf::TextKind::Dimension);
    EXPECT_EQ(text.content, L"<> TYP");
    EXPECT_EQ(text.graphicsBlock, L"*D7");
    EXPECT_EQ(text.insertion, (dxf::Point{5, 6, 0}));
    EXPECT_EQ(text.attachment, dxf::Attachment::TopCenter);
    EXPECT_EQ(text.lineSpacingStyle, dxf::LineSpacingStyle::Exact);
    EXPECT_EQ(text.lineSpacingFactor, 1.5);
    EXPECT_EQ(text.measurement, 12.75);
    EXPECT_EQ(text.rotation, 30.0);
    EXPECT_EQ(text.style, L"Arch");
    EXPECT_EQ(text.height, 2.5);
    EXPECT_TRUE(text.isParagraphText());
}

TEST(Dimension, WithoutStyleTakesTheHeadersValues) {
    const dxf::Drawing drawing =
        read(section("HEADER", groups({{9, "$DIMTXT"}, {40, "3"}, {9, "$DIMTXSTY"}, {7, "Dims"}})) +
             entitiesOnly(groups({{0, "DIMENSION"}, {1, "a"}, {11, "5"}, {230, "-1"}})));
    ASSERT_EQ(drawing.texts.size(), 1U);
    EXPECT_EQ(drawing.texts[0].style, L"Dims");
    EXPECT_EQ(drawing.texts[0].height, 3.0);
    EXPECT_EQ(drawing.texts[0].attachment, dxf::Attachment::MiddleCenter);
    EXPECT_EQ(drawing.texts[0].insertion.x, -5.0); // The text's middle lies in the entity's own plane.
    EXPECT_FALSE(drawing.texts[0].measurement);
}

TEST(Dimension, AFixedHeightOfItsTextStyleHolds) {
    const dxf::Drawing drawing =
        read(section("TABLES", table("STYLE", groups({{0, "STYLE"}, {5, "11"}, {2, "Fixed"}, {40, "7"}})) +
                                   table("DIMSTYLE", groups({{0, "DIMSTYLE"}, {2, "Main"}, {140, "2"}, {340, "11"}}))) +
             entitiesOnly(groups({{0, "DIMENSION"}, {1, "a"}, {3, "Main"}})));
    EXPECT_EQ(drawing.texts.at(0).height, 7.0);
}

std::string multiLeader(const std::string& text) {
    return groups({{0, "MULTILEADER"},
                   {5, "78"},
                   {330, "21"},
                   {100, "AcDbEntity"},
                   {8, "Leaders"},
                   {310, "0123"},
                   {100, "AcDbMLeader"},
                   {270, "2"},
                   {300, "CONTEXT_DATA{"},
                   {40, "1"},
                   {10, "1.2"},
                   {41, "0.09"},
                   {174, "1"},
                   {290, "1"},
                   {304, text},
                   {11, "0"},
                   {21, "0"},
                   {31, "1"},
                   {340, "11"},
                   {12, "1.9"},
                   {22, "6.9"},
                   {32, "0"},
                   {13, "0"},
                   {23, "1"},
                   {33, "0"},
                   {42, "1.5707963267948966"},
                   {43, "8"},
                   {44, "2"},
                   {45, "1.25"},
                   {170, "2"},
                   {90, "-1"},
                   {171, "3"},
                   {172, "5"},
                   {297, "0"},
                   {302, "LEADER{"},
                   {290, "1"},
                   {10, "2.1"},
                   {40, "0.125"},
                   {304, "LEADER_LINE{"},
                   {10, "2.7"},
                   {91, "0"},
                   {305, "}"},
                   {271, "0"},
                   {303, "}"},
                   {272, "9"},
                   {301, "}"},
                   {340, "C1C"},
                   {41, "0.5"},
                   {343, "12"},
                   {171, "-1"}});
}

TEST(MultiLeader, GivesItsTextAndPlace) {
    const dxf::Drawing drawing =
        read(section("TABLES", table("STYLE", groups({{0, "STYLE"}, {5, "11"}, {2, "Arch"}}))) +
             entitiesOnly(multiLeader("A\\PB")));
    ASSERT_EQ(drawing.texts.size(), 1U);
    const dxf::TextEntity& text = drawing.texts[0];
    EXPECT_EQ(text.kind, dxf::TextKind::MultiLeader);
    EXPECT_EQ(text.content, L"A\\PB");
    EXPECT_EQ(text.layer, L"Leaders");
    EXPECT_EQ(text.style, L"Arch");
    EXPECT_EQ(text.height, 0.09);
    EXPECT_EQ(text.insertion, (dxf::Point{1.9, 6.9, 0}));
    EXPECT_EQ(text.direction, (dxf::Point{0, 1, 0}));
    EXPECT_NEAR(text.rotation, 90.0, 1e-9);
    EXPECT_EQ(text.extrusion, (dxf::Point{0, 0, 1}));
    EXPECT_EQ(text.width, 8.0);
    EXPECT_EQ(text.definedHeight, 2.0);
    EXPECT_EQ(text.lineSpacingFactor, 1.25);
    EXPECT_EQ(text.lineSpacingStyle, dxf::LineSpacingStyle::Exact);
    EXPECT_EQ(text.attachment, dxf::Attachment::TopRight);
    EXPECT_EQ(text.drawingDirection, dxf::DrawingDirection::ByStyle);
}

TEST(MultiLeader, TextThatLooksLikeABracketIsText) {
    EXPECT_EQ(readText(multiLeader("LEADER_LINE{")).content, L"LEADER_LINE{");
}

TEST(MultiLeader, WithoutTextIsNoText) {
    EXPECT_TRUE(read(entitiesOnly(multiLeader(""))).texts.empty());
}

std::string tableEntity(const std::string& cells) {
    return groups({{0, "ACAD_TABLE"},
                   {5, "90"},
                   {100, "AcDbEntity"},
                   {8, "Tables"},
                   {100, "AcDbBlockReference"},
                   {2, "*T1"},
                   {10, "100"},
                   {20, "200"},
                   {100, "AcDbTable"},
                   {11, "1"},
                   {21, "0"},
                   {31, "0"},
                   {91, "2"},
                   {92, "2"},
                   {141, "10"},
                   {141, "20"},
                   {142, "30"},
                   {142, "40"}}) +
           cells;
}

TEST(TableCells, StandInTheirRowsAndColumns) {
    const std::string title =
        groups({{171, "1"}, {175, "2"}, {176, "1"}, {1, "Title"}, {7, "Arch"}, {140, "2.5"}, {170, "5"}});
    const std::string covered = groups({{171, "1"}, {173, "1"}});
    const std::string left = groups({{171, "1"}, {2, "long "}, {1, "text"}, {170, "1"}});
    const std::string right = groups({{171, "1"},
                                      {170, "9"},
                                      {301, "CELL_VALUE"},
                                      {93, "0"},
                                      {90, "4"},
                                      {1, "raw"},
                                      {303, "new "},
                                      {302, "value"},
                                      {304, "ACVALUE_END"},
                                      {140, "3"}});
    const dxf::Drawing drawing = read(entitiesOnly(tableEntity(title + covered + left + right)));
    ASSERT_EQ(drawing.texts.size(), 3U);

    const dxf::TextEntity& first = drawing.texts[0];
    EXPECT_EQ(first.kind, dxf::TextKind::TableCell);
    EXPECT_EQ(first.content, L"Title");
    EXPECT_EQ(first.style, L"Arch");
    EXPECT_EQ(first.height, 2.5);
    EXPECT_EQ(first.width, 70.0);
    EXPECT_EQ(first.insertion, (dxf::Point{135, 195, 0}));
    EXPECT_EQ(first.graphicsBlock, L"*T1");
    EXPECT_EQ(first.layer, L"Tables");

    const dxf::TextEntity& second = drawing.texts[1];
    EXPECT_EQ(second.content, L"long text");
    EXPECT_EQ(second.row, 1);
    EXPECT_EQ(second.column, 0);
    EXPECT_EQ(second.insertion, (dxf::Point{100, 190, 0}));
    EXPECT_EQ(second.width, 30.0);
    EXPECT_EQ(second.definedHeight, 20.0);

    const dxf::TextEntity& third = drawing.texts[2];
    EXPECT_EQ(third.content, L"new value");
    EXPECT_EQ(third.column, 1);
    EXPECT_EQ(third.height, 3.0);
    EXPECT_EQ(third.attachment, dxf::Attachment::BottomRight);
    EXPECT_EQ(third.insertion, (dxf::Point{170, 170, 0}));
}

TEST(TableCells, WithoutGridDoNotFail) {
    const std::string bytes = entitiesOnly(groups({{0, "ACAD_TABLE"},
                                                   {100, "AcDbTable"},
                                                   {92, "-3"},
                                                   {171, "1"},
                                                   {1, "a"},
                                                   {171, "1"},
                                                   {1, "b"},
                                                   {175, "99999999"}}));
    const dxf::Drawing drawing = read(bytes);
    ASSERT_EQ(drawing.texts.size(), 2U);
    EXPECT_EQ(drawing.texts[1].row, 1);
    EXPECT_EQ(drawing.texts[1].width, 0.0);
}

} // namespace
