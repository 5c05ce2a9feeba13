#include "SmallDrawing.h"

#include <gtest/gtest.h>

namespace {

using namespace dxftest;

TEST(LineText, HasDefaultsForMissingGroups) {
    const dxf::TextEntity text = readText(groups({{0, "TEXT"}, {1, "a"}}));
    EXPECT_EQ(text.kind, dxf::TextKind::Text);
    EXPECT_FALSE(text.isParagraphText());
    EXPECT_EQ(text.style, L"STANDARD");
    EXPECT_EQ(text.height, 0.2);
    EXPECT_EQ(text.widthFactor, 1.0);
    EXPECT_EQ(text.oblique, 0.0);
    EXPECT_EQ(text.horizontal, dxf::HorizontalJustification::Left);
    EXPECT_EQ(text.vertical, dxf::VerticalJustification::Baseline);
    EXPECT_FALSE(text.alignmentPoint);
    EXPECT_FALSE(text.backward);
    EXPECT_FALSE(text.upsideDown);
}

TEST(LineText, ReadsAnOldDrawingsText) {
    const dxf::TextEntity text = readText(
        groups({{0, "TEXT"},         {8, "NOTES"}, {62, "3"},   {10, "1"},  {20, "2"},     {30, "3"},  {40, "5"},
                {1, "%%c20 %%p0.1"}, {50, "90"},   {41, "0.8"}, {51, "15"}, {7, "ROMANS"}, {71, "6"},  {72, "2"},
                {11, "7"},           {21, "8"},    {31, "3"},   {73, "3"},  {210, "0"},    {220, "0"}, {230, "-1"}}));
    EXPECT_EQ(text.content, L"%%c20 %%p0.1");
    EXPECT_EQ(text.layer, L"NOTES");
    EXPECT_EQ(text.color, 3);
    EXPECT_EQ(text.handle, 0U);
    EXPECT_EQ(text.insertion, (dxf::Point{1, 2, 3}));
    EXPECT_EQ(text.alignmentPoint, (dxf::Point{7, 8, 3}));
    EXPECT_EQ(text.height, 5.0);
    EXPECT_EQ(text.rotation, 90.0);
    EXPECT_EQ(text.widthFactor, 0.8);
    EXPECT_EQ(text.oblique, 15.0);
    EXPECT_EQ(text.style, L"ROMANS");
    EXPECT_TRUE(text.backward);
    EXPECT_TRUE(text.upsideDown);
    EXPECT_EQ(text.horizontal, dxf::HorizontalJustification::Right);
    EXPECT_EQ(text.vertical, dxf::VerticalJustification::Top);
    EXPECT_EQ(text.extrusion, (dxf::Point{0, 0, -1}));
}

TEST(LineText, ValuesOutOfRangeHaveTheDefault) {
    const dxf::TextEntity text =
        readText(groups({{0, "TEXT"}, {1, "a"}, {72, "6"}, {73, "-1"}, {41, "0"}, {62, "999"}}));
    EXPECT_EQ(text.horizontal, dxf::HorizontalJustification::Left);
    EXPECT_EQ(text.vertical, dxf::VerticalJustification::Baseline);
    EXPECT_EQ(text.widthFactor, 1.0);
    EXPECT_EQ(text.color, 256);
}

TEST(Attribute, ReadsTagPromptFlagsAndItsOwnVerticalJustification) {
    const dxf::TextEntity text = readText(groups({{0, "ATTDEF"},       {5, "A"},      {330, "1F"},
                                                  {100, "AcDbEntity"}, {8, "0"},      {100, "AcDbText"},
                                                  {10, "1"},           {40, "2"},     {1, "X"},
                                                  {41, "0.85"},        {7, "FG"},     {71, "2"},
                                                  {72, "1"},           {11, "4"},     {100, "AcDbAttributeDefinition"},
                                                  {280, "0"},          {3, "Sheet?"}, {2, "SHEET"},
                                                  {70, "2"},           {73, "9"},     {74, "2"},
                                                  {280, "1"}}));
    EXPECT_EQ(text.kind, dxf::TextKind::AttDef);
    EXPECT_EQ(text.tag, L"SHEET");
    EXPECT_EQ(text.prompt, L"Sheet?");
    EXPECT_EQ(text.content, L"X");
    EXPECT_TRUE(text.constant);
    EXPECT_FALSE(text.invisible);
    EXPECT_TRUE(text.backward);
    EXPECT_EQ(text.horizontal, dxf::HorizontalJustification::Center);
    EXPECT_EQ(text.vertical, dxf::VerticalJustification::Middle);
    EXPECT_EQ(text.alignmentPoint, (dxf::Point{4, 0, 0}));
}

TEST(Attribute, InvisibleOnesSaySo) {
    EXPECT_TRUE(readText(groups({{0, "ATTRIB"}, {1, "a"}, {2, "T"}, {70, "1"}})).invisible);
    EXPECT_FALSE(readText(groups({{0, "ATTRIB"}, {1, "a"}, {2, "T"}, {70, "0"}})).invisible);
    EXPECT_TRUE(readText(groups({{0, "ATTRIB"}, {60, "1"}, {1, "a"}, {2, "T"}, {70, "0"}})).invisible);
}

TEST(Attribute, PrivateDataBehindItDoesNotMoveIt) {
    const dxf::TextEntity text = readText(groups({{0, "ATTRIB"}, {100, "AcDbEntity"},
                                                  {8, "0"},      {100, "AcDbText"},
                                                  {10, "1"},     {20, "2"},
                                                  {40, "3"},     {1, "value"},
                                                  {72, "1"},     {100, "AcDbAttribute"},
                                                  {2, "TAG"},    {70, "0"},
                                                  {71, "4"},     {72, "0"},
                                                  {74, "1"},     {100, "AcDbXrecord"},
                                                  {280, "1"},    {71, "2"},
                                                  {72, "0"},     {70, "1"},
                                                  {10, "50"},    {20, "60"},
                                                  {40, "0.5"},   {2, "OTHER"}}));
    EXPECT_EQ(text.insertion, (dxf::Point{1, 2, 0}));
    EXPECT_EQ(text.height, 3.0);
    EXPECT_EQ(text.tag, L"TAG");
    EXPECT_EQ(text.horizontal, dxf::HorizontalJustification::Center);
    EXPECT_EQ(text.vertical, dxf::VerticalJustification::Bottom);
    EXPECT_FALSE(text.backward);
    EXPECT_FALSE(text.invisible);
}

TEST(Attribute, ThatHoldsAParagraphIsOne) {
    const dxf::TextEntity text = readText(groups({{0, "ATTRIB"},
                                                  {5, "77"},
                                                  {100, "AcDbEntity"},
                                                  {8, "L"},
                                                  {100, "AcDbText"},
                                                  {10, "1"},
                                                  {40, "3"},
                                                  {1, "one"},
                                                  {7, "S"},
                                                  {100, "AcDbAttribute"},
                                                  {2, "TAG"},
                                                  {70, "0"},
                                                  {100, "AcDbXrecord"},
                                                  {71, "2"},
                                                  {101, "Embedded Object"},
                                                  {10, "8"},
                                                  {20, "9"},
                                                  {40, "2.5"},
                                                  {41, "30"},
                                                  {71, "5"},
                                                  {3, "one\\P"},
                                                  {1, "two"},
                                                  {7, "M"},
                                                  {11, "0"},
                                                  {21, "1"},
                                                  {44, "1.2"}}));
    EXPECT_EQ(text.kind, dxf::TextKind::Attrib);
    EXPECT_TRUE(text.multiLine);
    EXPECT_TRUE(text.isParagraphText());
    EXPECT_EQ(text.content, L"one\\Ptwo");
    EXPECT_EQ(text.insertion, (dxf::Point{8, 9, 0}));
    EXPECT_EQ(text.width, 30.0);
    EXPECT_EQ(text.attachment, dxf::Attachment::MiddleCenter);
    EXPECT_EQ(text.style, L"M");
    EXPECT_EQ(text.direction, (dxf::Point{0, 1, 0}));
    EXPECT_EQ(text.tag, L"TAG");
    EXPECT_EQ(text.handle, 0x77U);
    EXPECT_EQ(text.layer, L"L");
}

TEST(Attribute, OfSeveralLinesKeepsTheLineWhereTheParagraphIsEmpty) {
    const dxf::TextEntity text = readText(groups(
        {{0, "ATTRIB"}, {40, "3"}, {1, "one"}, {7, "S"}, {2, "TAG"}, {70, "1"}, {101, "Embedded Object"}, {10, "8"}}));
    EXPECT_EQ(text.content, L"one");
    EXPECT_EQ(text.style, L"S");
    EXPECT_EQ(text.height, 3.0);
    EXPECT_TRUE(text.invisible);
}

} // namespace
