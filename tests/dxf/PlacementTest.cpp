#include <dxf/Placement.h>

#include "SmallDrawing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace {

using namespace dxftest;
using dxf::PlacedText;
using dxf::Point;

struct Placed {
    std::wstring content;
    PlacedText text;
};

std::vector<Placed> placed(const dxf::Drawing& drawing) {
    std::vector<Placed> result;
    dxf::placeTexts(drawing, [&](const PlacedText& text) {
        result.push_back({text.text->content, text});
        return true;
    });
    return result;
}

void expectNear(const Point& a, const Point& b) {
    EXPECT_NEAR(a.x, b.x, 1e-9);
    EXPECT_NEAR(a.y, b.y, 1e-9);
    EXPECT_NEAR(a.z, b.z, 1e-9);
}

std::string block(const std::string& name, const std::string& content, const std::string& x = "0",
                  const std::string& y = "0") {
    return groups({{0, "BLOCK"}, {8, "0"}, {2, name}, {70, "0"}, {10, x}, {20, y}, {3, name}}) + content +
           groups({{0, "ENDBLK"}, {8, "0"}});
}

dxf::Drawing withBlocks(const std::string& blocks, const std::string& entities, const std::string& tables = "") {
    return read(section("TABLES", tables) + section("BLOCKS", blocks) + entitiesOnly(entities));
}

const std::string textAtOneTwo = groups({{0, "TEXT"}, {8, "0"}, {10, "1"}, {20, "2"}, {1, "a"}});

TEST(Frame, OfAParagraphTextFollowsDirectionRotationAndExtrusion) {
    const auto frame = [](std::initializer_list<Group> list) {
        return dxf::frameOf(readText(groups({{0, "MTEXT"}, {1, "a"}, {10, "5"}, {20, "6"}}) + groups(list)));
    };
    EXPECT_EQ(frame({}), dxf::Transform::translation({5, 6, 0}));
    EXPECT_EQ(frame({{50, "90"}}).xAxis, (Point{0, 1, 0}));
    EXPECT_EQ(frame({{50, "90"}}).yAxis, (Point{-1, 0, 0}));
    expectNear(frame({{11, "3"}, {21, "4"}}).xAxis, {0.6, 0.8, 0});
    // A mirrored text: its direction and insertion are the world's, its rotation is not.
    const dxf::Transform mirrored = frame({{230, "-1"}, {11, "-1"}, {21, "0"}});
    expectNear(mirrored.xAxis, {-1, 0, 0});
    expectNear(mirrored.yAxis, {0, 1, 0});
    expectNear(mirrored.origin, {5, 6, 0});
    expectNear(frame({{230, "-1"}, {50, "0"}}).xAxis, {-1, 0, 0});
    // A direction that is none, or stands upright on the text's plane.
    EXPECT_EQ(frame({{11, "0"}, {21, "0"}}).xAxis, (Point{1, 0, 0}));
    EXPECT_EQ(frame({{11, "0"}, {21, "0"}, {31, "1"}}).xAxis, (Point{1, 0, 0}));
}

TEST(Frame, OfALineTextStandsAtThePointThatItsJustificationNames) {
    const auto frame = [](std::initializer_list<Group> list) {
        return dxf::frameOf(
            readText(groups({{0, "TEXT"}, {1, "a"}, {10, "1"}, {20, "2"}, {11, "4"}, {21, "6"}}) + groups(list)));
    };
    EXPECT_EQ(frame({}).origin, (Point{1, 2, 0}));
    EXPECT_EQ(frame({{72, "1"}}).origin, (Point{4, 6, 0}));
    EXPECT_EQ(frame({{72, "2"}}).origin, (Point{4, 6, 0}));
    EXPECT_EQ(frame({{72, "4"}}).origin, (Point{4, 6, 0}));
    EXPECT_EQ(frame({{73, "2"}}).origin, (Point{4, 6, 0}));
    EXPECT_EQ(frame({{72, "3"}, {50, "10"}}).origin, (Point{1, 2, 0}));
    expectNear(frame({{72, "3"}, {50, "10"}}).xAxis, {0.6, 0.8, 0});
    expectNear(frame({{72, "5"}}).xAxis, {0.6, 0.8, 0});
    EXPECT_EQ(frame({{71, "2"}}).xAxis, (Point{-1, 0, 0}));
    EXPECT_EQ(frame({{71, "4"}}).yAxis, (Point{0, -1, 0}));
    EXPECT_EQ(frame({{230, "-1"}}).origin, (Point{-1, 2, 0}));
    // Justified, but without a second point.
    EXPECT_EQ(dxf::frameOf(readText(groups({{0, "TEXT"}, {1, "a"}, {10, "1"}, {20, "2"}, {72, "1"}}))).origin,
              (Point{1, 2, 0}));
}

TEST(Frame, FittedTextsHaveALength) {
    const std::string text = groups({{0, "TEXT"}, {1, "a"}, {10, "1"}, {20, "2"}, {11, "4"}, {21, "6"}});
    EXPECT_EQ(dxf::fitLength(readText(text + groups({{72, "5"}}))), 5.0);
    EXPECT_EQ(dxf::fitLength(readText(text + groups({{72, "3"}}))), 5.0);
    EXPECT_EQ(dxf::fitLength(readText(text + groups({{72, "2"}}))), 0.0);
}

TEST(Placement, ATextInABlockStandsAtEveryReference) {
    const dxf::Drawing drawing = withBlocks(
        block("B", textAtOneTwo, "1", "1"),
        groups({{0, "INSERT"}, {8, "0"}, {2, "b"}, {10, "10"}, {20, "20"}}) +
            groups({{0, "INSERT"}, {8, "0"}, {2, "B"}, {10, "10"}, {20, "20"}, {41, "2"}, {42, "-3"}, {50, "90"}}));
    const auto texts = placed(drawing);
    ASSERT_EQ(texts.size(), 2U);
    expectNear(texts[0].text.frame.origin, {10, 21, 0});
    EXPECT_EQ(texts[0].text.depth, 1U);
    expectNear(texts[1].text.frame.origin, {13, 20, 0});
    expectNear(texts[1].text.frame.xAxis, {0, 2, 0});
    expectNear(texts[1].text.frame.yAxis, {3, 0, 0});
}

TEST(Placement, ReferencesInRowsAndColumnsAreTurnedAsAWhole) {
    const dxf::Drawing drawing =
        withBlocks(block("B", groups({{0, "TEXT"}, {1, "a"}})),
                   groups({{0, "INSERT"}, {2, "B"}, {50, "90"}, {70, "2"}, {71, "3"}, {44, "10"}, {45, "100"}}));
    const auto texts = placed(drawing);
    ASSERT_EQ(texts.size(), 6U);
    expectNear(texts[1].text.frame.origin, {0, 10, 0});
    expectNear(texts[2].text.frame.origin, {-100, 0, 0});
    expectNear(texts[5].text.frame.origin, {-200, 10, 0});
}

TEST(Placement, NestedReferencesCombine) {
    const dxf::Drawing drawing =
        withBlocks(block("OUTER", groups({{0, "INSERT"}, {8, "0"}, {2, "INNER"}, {10, "5"}, {41, "2"}, {42, "2"}})) +
                       block("INNER", textAtOneTwo),
                   groups({{0, "INSERT"}, {8, "0"}, {2, "OUTER"}, {20, "100"}, {230, "-1"}}));
    const auto texts = placed(drawing);
    ASSERT_EQ(texts.size(), 1U);
    expectNear(texts[0].text.frame.origin, {-7, 104, 0});
    EXPECT_EQ(texts[0].text.depth, 2U);
}

TEST(Placement, LayerZeroAndColoursByBlockComeFromTheReference) {
    const std::string layers = table("LAYER", groups({{0, "LAYER"}, {2, "RED"}, {62, "1"}}) +
                                                  groups({{0, "LAYER"}, {2, "GREEN"}, {62, "3"}, {420, "65280"}}));
    const std::string texts = groups({{0, "TEXT"}, {8, "0"}, {1, "bylayer"}}) +
                              groups({{0, "TEXT"}, {8, "GREEN"}, {1, "own layer"}}) +
                              groups({{0, "TEXT"}, {8, "GREEN"}, {62, "0"}, {1, "byblock"}}) +
                              groups({{0, "TEXT"}, {8, "GREEN"}, {62, "5"}, {1, "own colour"}}) +
                              groups({{0, "TEXT"}, {8, "GREEN"}, {420, "255"}, {1, "own true colour"}});
    const auto result =
        placed(withBlocks(block("B", texts), groups({{0, "INSERT"}, {8, "RED"}, {62, "6"}, {2, "B"}}), layers));
    ASSERT_EQ(result.size(), 5U);
    EXPECT_EQ(result[0].text.layer, L"RED");
    EXPECT_EQ(result[0].text.color, 1);
    EXPECT_EQ(result[1].text.layer, L"GREEN");
    EXPECT_EQ(result[1].text.color, 3);
    EXPECT_EQ(result[1].text.trueColor, 65280U);
    EXPECT_EQ(result[2].text.color, 6);
    EXPECT_FALSE(result[2].text.trueColor);
    EXPECT_EQ(result[3].text.color, 5);
    EXPECT_EQ(result[4].text.trueColor, 255U);
}

TEST(Placement, AFrozenReferenceHidesItsTextsAndOneSwitchedOffOnlyThoseOfItsLayer) {
    const std::string layers = table("LAYER", groups({{0, "LAYER"}, {2, "FROZEN"}, {70, "1"}}) +
                                                  groups({{0, "LAYER"}, {2, "OFF"}, {62, "-1"}}));
    const std::string texts = groups({{0, "TEXT"}, {8, "0"}, {1, "a"}}) + groups({{0, "TEXT"}, {8, "OTHER"}, {1, "b"}});
    const auto result = placed(withBlocks(block("B", texts),
                                          groups({{0, "INSERT"}, {8, "FROZEN"}, {2, "B"}}) +
                                              groups({{0, "INSERT"}, {8, "OFF"}, {2, "B"}}) +
                                              groups({{0, "INSERT"}, {8, "0"}, {60, "1"}, {2, "B"}}),
                                          layers));
    ASSERT_EQ(result.size(), 6U);
    const std::vector<bool> expected{false, false, false, true, false, false};
    for (std::size_t i = 0; i < 6; ++i) {
        EXPECT_EQ(result[i].text.visible, expected[i]) << i;
    }
}

TEST(Placement, AttributeDefinitionsShowOnlyWhereTheyAreConstantOrOutsideBlocks) {
    const std::string definitions = groups({{0, "ATTDEF"}, {1, "variable"}, {2, "V"}, {70, "0"}}) +
                                    groups({{0, "ATTDEF"}, {1, "constant"}, {2, "C"}, {70, "2"}});
    const auto result =
        placed(withBlocks(block("B", definitions), groups({{0, "INSERT"}, {66, "1"}, {2, "B"}, {10, "50"}}) +
                                                       groups({{0, "ATTRIB"}, {10, "51"}, {1, "value"}, {2, "V"}}) +
                                                       groups({{0, "SEQEND"}, {0, "ATTDEF"}, {1, "loose"}, {2, "L"}})));
    ASSERT_EQ(result.size(), 3U);
    EXPECT_EQ(result[0].content, L"value");
    expectNear(result[0].text.frame.origin, {51, 0, 0}); // Attributes stand in the world already.
    EXPECT_EQ(result[1].content, L"loose");
    EXPECT_EQ(result[2].content, L"constant");
}

TEST(Placement, ADimensionIsShownByItsBlockWhereThatHasTexts) {
    const std::string dimension = groups({{0, "DIMENSION"}, {2, "*D1"}, {1, "override"}, {11, "5"}});
    const auto shown = placed(withBlocks(block("*D1", groups({{0, "MTEXT"}, {10, "5"}, {1, "12.5"}})), dimension));
    ASSERT_EQ(shown.size(), 1U);
    EXPECT_EQ(shown[0].content, L"12.5");
    expectNear(shown[0].text.frame.origin, {5, 0, 0});
    const auto alone = placed(withBlocks(block("*D1", groups({{0, "LINE"}, {10, "5"}})), dimension));
    ASSERT_EQ(alone.size(), 1U);
    EXPECT_EQ(alone[0].content, L"override");
}

TEST(Placement, ATableIsShownByItsBlockTurnedAsTheTable) {
    const std::string tableEntity = groups({{0, "ACAD_TABLE"},
                                            {100, "AcDbBlockReference"},
                                            {2, "*T1"},
                                            {10, "5"},
                                            {100, "AcDbTable"},
                                            {11, "0"},
                                            {21, "1"},
                                            {92, "1"},
                                            {141, "1"},
                                            {142, "1"},
                                            {171, "1"},
                                            {1, "cell"}});
    const auto shown = placed(withBlocks(block("*T1", groups({{0, "MTEXT"}, {10, "3"}, {1, "cell"}})), tableEntity));
    ASSERT_EQ(shown.size(), 1U);
    expectNear(shown[0].text.frame.origin, {5, 3, 0});
}

TEST(Placement, LayoutsOtherThanTheActiveOneAreSheetsAndNotBlocks) {
    const dxf::Drawing drawing =
        withBlocks(block("*Model_Space", "") +
                       block("*Paper_Space0", groups({{0, "TEXT"}, {67, "1"}, {10, "7"}, {1, "on a sheet"}})),
                   groups({{0, "TEXT"}, {1, "in the model"}}));
    const auto result = placed(drawing);
    ASSERT_EQ(result.size(), 2U);
    EXPECT_EQ(result[0].content, L"on a sheet");
    EXPECT_TRUE(result[0].text.paperSpace);
    EXPECT_EQ(result[0].text.depth, 0U);
    EXPECT_FALSE(result[1].text.paperSpace);
}

TEST(Placement, TextsOfABlockThatNothingRefersToAreNotShown) {
    EXPECT_TRUE(placed(withBlocks(block("B", textAtOneTwo), "")).empty());
}

TEST(Placement, ReferencesInACircleEnd) {
    const std::string toA = groups({{0, "INSERT"}, {2, "A"}});
    const std::string toB = groups({{0, "INSERT"}, {2, "B"}});
    const auto result = placed(withBlocks(block("A", textAtOneTwo + toB + toA) + block("B", toA), toA + toB));
    EXPECT_EQ(result.size(), 2U);
}

TEST(Placement, TheVisitorCanStopAnExplosionOfReferences) {
    std::string blocks = block("B0", textAtOneTwo);
    for (int i = 1; i <= 20; ++i) {
        const std::string to = groups({{0, "INSERT"}, {2, "B" + std::to_string(i - 1)}, {70, "1000"}, {71, "1000"}});
        blocks += block("B" + std::to_string(i), to + to);
    }
    const dxf::Drawing drawing = withBlocks(blocks, groups({{0, "INSERT"}, {2, "B20"}}));
    std::size_t seen = 0;
    const dxf::Limits none{.placements = dxf::Limits::none, .placedLength = dxf::Limits::none};
    const std::size_t given = dxf::placeTexts(
        drawing, [&](const PlacedText&) { return ++seen < 100; }, none);
    EXPECT_EQ(seen, 100U);
    EXPECT_EQ(given, 100U);
}

TEST(Placement, ReferencesToBlocksWithoutTextsAreNotKept) {
    std::string entities;
    for (int i = 0; i < 1000; ++i) {
        entities += groups({{0, "INSERT"}, {2, "SYMBOL"}});
    }
    const dxf::Drawing drawing =
        withBlocks(block("SYMBOL", groups({{0, "LINE"}})) + block("GROUP", groups({{0, "INSERT"}, {2, "Label"}})) +
                       block("LABEL", textAtOneTwo) + block("SYMBOLS", groups({{0, "INSERT"}, {2, "SYMBOL"}})),
                   entities + groups({{0, "INSERT"}, {2, "group"}}));
    EXPECT_EQ(drawing.inserts.size(), 2U);
    EXPECT_EQ(placed(drawing).size(), 1U);
}

} // namespace
