#include "SmallDrawing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <random>

namespace {

using namespace dxftest;

std::string sampleDrawing(const std::string& ending) {
    std::string bytes =
        header("AC1027", "ANSI_1252") +
        section(
            "TABLES",
            table(
                "STYLE",
                groups({{0, "STYLE"}, {2, "Notes"}, {3, "arial.ttf"}, {1001, "ACAD"}, {1000, "Arial"}, {1071, "34"}})) +
                table("LAYER", groups({{0, "LAYER"}, {2, "0"}, {62, "7"}}))) +
        section("BLOCKS", groups({{0, "BLOCK"}, {2, "B"}, {10, "1"}, {0, "TEXT"}, {1, "in block"}, {0, "ENDBLK"}})) +
        section("ENTITIES",
                groups({{0, "MTEXT"}, {5, "1F"}, {10, "1.5"}, {3, "first \xD0\x9F"}, {1, "second"}, {40, "2.5"}}) +
                    groups({{0, "INSERT"}, {66, "1"}, {2, "B"}, {10, "1"}, {0, "ATTRIB"}, {1, "value"}, {2, "TAG"}}) +
                    groups({{0, "SEQEND"}, {0, "MULTILEADER"}, {300, "CONTEXT_DATA{"}, {304, "leader"}, {301, "}"}}) +
                    groups({{0, "ACAD_TABLE"}, {100, "AcDbTable"}, {92, "1"}, {171, "1"}, {1, "cell"}})) +
        endMark();
    for (std::size_t at = 0; ending != "\n" && (at = bytes.find('\n', at)) != std::string::npos; at += ending.size()) {
        bytes.replace(at, 1, ending);
    }
    return bytes;
}

TEST(DamagedDrawing, ASoundOneHasNoProblem) {
    for (const std::string ending : {"\n", "\r\n"}) {
        const dxf::Drawing drawing = read(sampleDrawing(ending));
        EXPECT_TRUE(drawing.problems.empty());
        EXPECT_EQ(drawing.texts.size(), 5U);
        EXPECT_EQ(drawing.inserts.size(), 1U);
        EXPECT_EQ(drawing.texts[1].content, L"first \u041Fsecond");
    }
}

TEST(DamagedDrawing, CutAnywhereGivesWhatStoodBeforeAndSaysSo) {
    for (const std::string ending : {"\n", "\r\n"}) {
        const std::string bytes = sampleDrawing(ending);
        const dxf::Drawing whole = read(bytes);
        // Without its last line ending the end mark is still one.
        const std::size_t sound = bytes.find("EOF") + 3;
        std::size_t texts = 0;
        for (std::size_t length = 0; length < sound; ++length) {
            dxf::Drawing drawing;
            try {
                drawing = read(bytes.substr(0, length));
            } catch (const dxf::Error& error) {
                EXPECT_LT(length, bytes.find("HEADER")) << error.what();
                continue;
            }
            ASSERT_TRUE(drawing.truncated()) << length;
            EXPECT_EQ(drawing.problems.at(0).kind, dxf::ErrorKind::Truncated);
            EXPECT_GE(drawing.texts.size(), texts) << length; // More bytes never give fewer texts.
            texts = drawing.texts.size();
            ASSERT_LE(texts, whole.texts.size());
            for (std::size_t i = 0; i + 1 < texts; ++i) {
                EXPECT_EQ(drawing.texts[i].content, whole.texts[i].content) << length;
            }
            if (texts > 1) {
                // Half a number is no number.
                const double x = drawing.texts[1].insertion.x;
                EXPECT_TRUE(x == 0.0 || x == 1.5) << length;
            }
        }
        EXPECT_EQ(texts, whole.texts.size());
    }
}

TEST(DamagedDrawing, ChangedBytesNeverDoMoreThanHarmTheText) {
    const std::string bytes = sampleDrawing("\n");
    std::mt19937 random(20240501);
    std::size_t readable = 0;
    for (int round = 0; round < 2000; ++round) {
        std::string damaged = bytes;
        for (int change = 0; change < 4; ++change) {
            damaged[random() % damaged.size()] = static_cast<char>(random() % 256);
        }
        try {
            const dxf::Drawing drawing = read(damaged);
            EXPECT_LE(drawing.texts.size(), 20U);
            ++readable;
        } catch (const dxf::Error& error) {
            EXPECT_NE(std::string(error.what()), "");
        }
    }
    EXPECT_GT(readable, 1000U);
}

TEST(DamagedDrawing, TheTruncationIsNamed) {
    const dxf::Drawing drawing = read(groups({{0, "SECTION"}, {2, "ENTITIES"}, {0, "MTEXT"}, {3, "half a t"}}));
    ASSERT_EQ(drawing.problems.size(), 1U);
    EXPECT_EQ(drawing.problems[0].line, 8U);
    EXPECT_EQ(drawing.problems[0].message,
              "The drawing is cut off at line 8, inside MTEXT from line 5, in section ENTITIES: its end mark is "
              "missing. What stands before was read; export or copy the drawing again.");
    ASSERT_EQ(drawing.texts.size(), 1U);
    EXPECT_EQ(drawing.texts[0].content, L"half a t");
}

TEST(DamagedDrawing, TheTextBeforeABadLineIsKept) {
    const dxf::Drawing drawing = read(entitiesOnly(groups({{0, "TEXT"}, {1, "good"}, {0, "TEXT"}, {1, "line\nbreak"}}) +
                                                   groups({{0, "TEXT"}, {1, "lost"}})));
    ASSERT_EQ(drawing.problems.size(), 1U);
    EXPECT_EQ(drawing.problems[0].kind, dxf::ErrorKind::BadGroupCode);
    EXPECT_EQ(drawing.problems[0].line, 13U);
    ASSERT_EQ(drawing.texts.size(), 2U);
    EXPECT_EQ(drawing.texts[0].content, L"good");
    EXPECT_EQ(drawing.texts[1].content, L"line");
}

TEST(DamagedDrawing, WithoutSectionsOrTablesIsStillOne) {
    const dxf::Drawing drawing = read(entitiesOnly(groups({{0, "INSERT"}, {2, "absent"}, {0, "TEXT"}, {1, "a"}})));
    EXPECT_TRUE(drawing.problems.empty());
    EXPECT_EQ(drawing.texts.size(), 1U);
    EXPECT_TRUE(read(endMark()).texts.empty());
    EXPECT_TRUE(read(section("NONSENSE", groups({{0, "MTEXT"}, {1, "a"}})) + endMark()).texts.empty());
}

TEST(DamagedDrawing, SectionsInAnyOrderAndWithoutEndAreRead) {
    const std::string bytes = groups({{0, "SECTION"},
                                      {2, "ENTITIES"},
                                      {0, "TEXT"},
                                      {1, "a"},
                                      {0, "SECTION"},
                                      {2, "TABLES"},
                                      {0, "TABLE"},
                                      {2, "LAYER"},
                                      {0, "LAYER"},
                                      {2, "L"}}) +
                              endMark();
    const dxf::Drawing drawing = read(bytes);
    EXPECT_EQ(drawing.texts.size(), 1U);
    EXPECT_EQ(drawing.layers.size(), 1U);
}

TEST(DamagedDrawing, WhatStandsBehindTheEndMarkIsNotRead) {
    EXPECT_TRUE(read(entitiesOnly("") + "garbage\x1a").problems.empty());
}

TEST(DamagedDrawing, NotADrawingIsAnError) {
    EXPECT_THROW(read(""), dxf::Error);
    EXPECT_THROW(read("hello"), dxf::Error);
    std::ifstream absent("no-such-drawing.dxf", std::ios::binary);
    try {
        dxf::readDrawing(absent);
        FAIL();
    } catch (const dxf::Error& error) {
        EXPECT_EQ(error.kind(), dxf::ErrorKind::Unreadable);
    }
}

TEST(DamagedDrawing, AStoppedReadingIsLikeACutFile) {
    std::string entities;
    const std::string text = groups({{0, "TEXT"}, {1, std::string(300, 'x')}});
    for (int i = 0; i < 10'000; ++i) {
        entities += text;
    }
    std::istringstream input(entitiesOnly(entities));
    int calls = 0;
    const dxf::Drawing drawing = dxf::readDrawing(input, [&](std::uint64_t bytes) {
        EXPECT_GT(bytes, 0U);
        return ++calls < 2;
    });
    EXPECT_EQ(calls, 2);
    EXPECT_TRUE(drawing.truncated());
    EXPECT_LT(drawing.texts.size(), 10'000U);
    EXPECT_GT(drawing.texts.size(), 1'000U);
}

} // namespace
