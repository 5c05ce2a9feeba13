#include <dxf/TextList.h>

#include "SmallDrawing.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using namespace dxftest;
using dxf::TextEntity;
using dxf::TextList;

/// No field has its default.
TextEntity unusualText() {
    TextEntity text;
    text.kind = dxf::TextKind::TableCell;
    text.content = L"content";
    text.replacedBytes = 300;
    text.offset = 1ULL << 40;
    text.line = 128;
    text.handle = ~0ULL;
    text.owner = 127;
    text.layer = L"layer";
    text.style = L"style";
    text.styleHandle = 5;
    text.color = 0;
    text.trueColor = 0;
    text.invisible = true;
    text.paperSpace = true;
    text.layout = L"layout";
    text.block = L"block";
    text.insertion = {1.5, -0.1, 1e300};
    text.extrusion = {0.0, 0.0, -1.0};
    text.height = 1e-300;
    text.rotation = -90.0;
    text.direction = dxf::Point{0.0, 1.0, 0.0};
    text.attachment = dxf::Attachment::BottomRight;
    text.width = 1.0;
    text.definedHeight = 2.0;
    text.measuredWidth = 3.0;
    text.measuredHeight = 4.0;
    text.lineSpacingStyle = dxf::LineSpacingStyle::Exact;
    text.lineSpacingFactor = 0.25;
    text.drawingDirection = dxf::DrawingDirection::ByStyle;
    text.columns = {dxf::ColumnKind::Dynamic, 3, 1.0, 2.0, true, true, 4.0, {5.0, 6.0}, {7, 8}};
    text.alignmentPoint = dxf::Point{};
    text.horizontal = dxf::HorizontalJustification::Fit;
    text.vertical = dxf::VerticalJustification::Top;
    text.widthFactor = 0.5;
    text.oblique = 15.0;
    text.backward = true;
    text.upsideDown = true;
    text.multiLine = true;
    text.constant = true;
    text.tag = L"tag";
    text.prompt = L"prompt";
    text.graphicsBlock = L"graphics";
    text.dimStyle = L"dimension";
    text.measurement = 0.0;
    text.row = 9;
    text.column = 10;
    return text;
}

TEST(TextList, GivesBackEveryField) {
    TextList list;
    list.push_back({});
    list.push_back(unusualText());
    list.push_back({});
    TextEntity expected = unusualText();
    expected.ordinal = 1;
    EXPECT_EQ(list[1], expected);
    expected = {};
    EXPECT_EQ(list[0], expected);
    expected.ordinal = 2;
    EXPECT_EQ(list[2], expected);
}

TEST(TextList, GivesBackWhateverUnitsAContentHolds) {
    for (const wchar_t unit : {wchar_t{0}, wchar_t{0x7F}, wchar_t{0x80}, wchar_t{0x3FFF}, wchar_t{0x4000},
                               wchar_t{0xD800}, wchar_t{0xFFFF}}) {
        TextEntity text;
        text.content.assign(3, unit);
        text.layer.assign(2, unit);
        TextList list;
        list.push_back(text);
        EXPECT_EQ(list.front(), text) << static_cast<int>(unit);
    }
}

TEST(TextList, KeepsTheOrderOfMany) {
    TextList list;
    for (std::uint64_t i = 0; i < 1000; ++i) {
        TextEntity text;
        text.line = i;
        text.layer = std::to_wstring(i % 3);
        list.push_back(text);
    }
    EXPECT_EQ(list.size(), 1000U);
    std::uint64_t line = 0;
    for (const TextEntity& text : list) {
        EXPECT_EQ(text.line, line);
        EXPECT_EQ(text.ordinal, line);
        EXPECT_EQ(text.layer, std::to_wstring(line % 3));
        ++line;
    }
    EXPECT_EQ(line, 1000U);
    EXPECT_EQ(list.at(999).line, 999U);
    EXPECT_THROW(list.at(1000), std::out_of_range);
}

TEST(TextList, ACopyIsAListOfItsOwn) {
    TextList list;
    list.push_back(unusualText());
    const TextList copy = list;
    list.change([](TextEntity& text) {
        text.content = L"changed";
        text.layer = L"another";
    });
    list.push_back({});
    EXPECT_EQ(copy.size(), 1U);
    EXPECT_EQ(copy.front(), unusualText());
    EXPECT_EQ(list.front().content, L"changed");
    EXPECT_EQ(list.front().layer, L"another");
}

TEST(TextList, ManySmallTextsTakeFewBytesEach) {
    std::string entities;
    constexpr int count = 2000;
    for (int i = 0; i < count; ++i) {
        const std::string number = std::to_string(i);
        entities += groups({{0, "MTEXT"},
                            {5, "1" + number},
                            {8, "A LAYER WITH A LONG NAME"},
                            {410, "Layout1"},
                            {10, number + ".25"},
                            {20, number + ".5"},
                            {40, "2.5"},
                            {41, "100.0"},
                            {71, "5"},
                            {1, "Note " + number},
                            {7, "A STYLE WITH A LONG NAME"}});
    }
    const dxf::Drawing drawing = read(entitiesOnly(entities));
    ASSERT_EQ(drawing.texts.size(), std::size_t{count});
    EXPECT_LT(drawing.texts.byteCount(), std::size_t{100} * count);
}

} // namespace
