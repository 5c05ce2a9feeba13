#include <dxf/CodePage.h>
#include <dxf/PairReader.h>
#include <dxf/PairWriter.h>
#include <dxf/Rewrite.h>

#include "SmallDrawing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <limits>
#include <set>
#include <vector>

namespace {

using namespace dxftest;
using dxf::EntityWriter;
using dxf::Error;
using dxf::ErrorKind;
using dxf::TextEntity;

/// Replaces the texts that `choose` picks by what `write` writes.
class Replacement final : public dxf::ITextReplacement {
public:
    using Choose = std::function<bool(const TextEntity&)>;
    using Write = std::function<void(const TextEntity&, EntityWriter&)>;

    explicit Replacement(
        Write write, Choose choose = [](const TextEntity&) { return true; })
        : m_write(std::move(write)), m_choose(std::move(choose)) {}
    bool replaces(const TextEntity& text) override { return m_choose(text); }
    void replace(const TextEntity& text, EntityWriter& writer) override { m_write(text, writer); }

private:
    Write m_write;
    Choose m_choose;
};

struct Rewritten {
    std::string bytes;
    dxf::RewriteResult result;
};

Rewritten rewrite(const std::string& bytes, dxf::ITextReplacement& replacement) {
    const dxf::Drawing drawing = read(bytes);
    std::istringstream input(bytes);
    std::ostringstream output;
    Rewritten rewritten;
    rewritten.result = dxf::rewriteDrawing(input, output, drawing, replacement);
    rewritten.bytes = output.str();
    return rewritten;
}

Rewritten rewrite(const std::string& bytes, const Replacement::Write& write) {
    Replacement replacement(write);
    return rewrite(bytes, replacement);
}

std::string copied(const std::string& bytes) {
    Replacement nothing([](const TextEntity&, EntityWriter&) { FAIL(); }, [](const TextEntity&) { return false; });
    return rewrite(bytes, nothing).bytes;
}

/// Two pieces: "one" and "two".
void writeTwo(const TextEntity& text, EntityWriter& writer) {
    dxf::MTextPiece piece;
    piece.content = L"one";
    piece.style = text.style;
    piece.height = 2.5;
    piece.insertion = {1, 2, 0};
    writer.mtext(piece);
    piece.content = L"two";
    piece.insertion = {3, 2, 0};
    writer.mtext(piece);
}

std::string seeded(const std::string& seed, const std::string& version = "AC1015") {
    return section("HEADER", groups({{9, "$ACADVER"},
                                     {1, version},
                                     {9, "$DWGCODEPAGE"},
                                     {3, "ANSI_1251"},
                                     {9, "$HANDSEED"},
                                     {5, seed},
                                     {9, "$OTHER"},
                                     {70, "1"}}));
}

const std::string oneMText = groups({{0, "MTEXT"},        {5, "1C"},          {102, "{ACAD_XDICTIONARY"},
                                     {360, "1D"},         {102, "}"},         {102, "{ACAD_REACTORS"},
                                     {330, "1E"},         {102, "}"},         {330, "1F"},
                                     {100, "AcDbEntity"}, {67, "1"},          {8, "Notes"},
                                     {6, "DASHED"},       {62, "3"},          {160, "4"},
                                     {310, "00112233"},   {100, "AcDbMText"}, {10, "5"},
                                     {1, "one two"},      {63, "254"},        {421, "255"},
                                     {1001, "ACAD"},      {1000, "data"},     {1001, "HYPERLINK"},
                                     {1000, "link"}});

std::string replaceAll(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
        text.replace(at, from.size(), to);
    }
    return text;
}

TEST(Rewrite, WithoutReplacementTheCopyEqualsTheOriginalByteForByte) {
    const std::string lf =
        seeded("2A") + section("ENTITIES", oneMText + groups({{0, "LINE"}, {10, " 1.50 "}})) + endMark();
    const std::string cases[] = {
        lf,
        replaceAll(lf, "\n", "\r\n"),
        replaceAll(lf, "  0\n", "0\r\n"),
        "\xEF\xBB\xBF" + lf,
        "999\nby hand\n" + lf + "\n\n\x1a",
        lf.substr(0, lf.size() - 20),
        lf.substr(0, lf.size() - 20) + "no code\nat all\n" + std::string(200'000, 'x'),
        seeded("2A") + section("ENTITIES", groups({{0, "TEXT"}, {1, std::string(500'000, 'x') + "\xFF\x80"}})),
    };
    for (const std::string& bytes : cases) {
        EXPECT_EQ(copied(bytes), bytes);
    }
}

TEST(Rewrite, AByteOrderMarkIsCopiedAlsoWhereNoPairFollows) {
    for (const std::string& bytes : {std::string("\xEF\xBB\xBF"), std::string("\xEF\xBB\xBF  0\n")}) {
        EXPECT_EQ(copied(bytes), bytes);
    }
}

TEST(Rewrite, EveryCutOfADrawingIsCopied) {
    const std::string bytes = seeded("2A") + section("ENTITIES", oneMText) + endMark();
    for (std::size_t length = bytes.find("HEADER") + 7; length <= bytes.size(); ++length) {
        const std::string cut = bytes.substr(0, length);
        EXPECT_EQ(copied(cut), cut) << length;
        // A text that the cut left unfinished stays as it is.
        const std::string replaced = rewrite(cut, writeTwo).bytes;
        const bool whole = length > bytes.find("ENDSEC", bytes.find("MTEXT"));
        EXPECT_EQ(replaced.find("one two") == std::string::npos, whole || cut.find("one two") == std::string::npos)
            << length;
    }
}

TEST(Rewrite, PiecesTakeTheTextsPlaceAndAllElseStays) {
    const std::string before = seeded("2A") + groups({{0, "SECTION"}, {2, "ENTITIES"}, {0, "LINE"}, {5, "29"}});
    const std::string after = groups({{0, "LINE"}, {5, "28"}, {0, "ENDSEC"}}) + endMark() + "rest";
    const Rewritten rewritten = rewrite(before + oneMText + after, writeTwo);
    const auto piece = [](const std::string& handle, const std::string& reactors, const std::string& content,
                          const std::string& x, const std::string& data) {
        return groups({{0, "MTEXT"}, {5, handle}}) + reactors +
               groups({{330, "1F"},     {100, "AcDbEntity"}, {67, "1"},    {8, "Notes"}, {6, "DASHED"},
                       {62, "3"},       {100, "AcDbMText"},  {10, x},      {20, "2.0"},  {30, "0.0"},
                       {40, "2.5"},     {41, "0.0"},         {71, "1"},    {72, "1"},    {1, content},
                       {7, "STANDARD"}, {210, "0.0"},        {220, "0.0"}, {230, "1.0"}, {11, "1.0"},
                       {21, "0.0"},     {31, "0.0"},         {73, "1"},    {44, "1.0"}}) +
               data;
    };
    const std::string expected = replaceAll(before, "\n2A\n", "\n0000002B\n") +
                                 piece("1C", groups({{102, "{ACAD_REACTORS"}, {330, "1E"}, {102, "}"}}), "one", "1.0",
                                       groups({{1001, "HYPERLINK"}, {1000, "link"}})) +
                                 piece("2A", "", "two", "3.0", "") + after;
    EXPECT_EQ(rewritten.bytes, expected);
    EXPECT_EQ(rewritten.result.replaced, 1U);
    EXPECT_EQ(rewritten.result.written, 2U);
    EXPECT_EQ(rewritten.result.handleSeed, 0x2BU);
}

TEST(Rewrite, LinesLookAsThoseAroundThem) {
    const std::string bytes = seeded("2A") + section("ENTITIES", oneMText) + endMark();
    const std::string expected = rewrite(bytes, writeTwo).bytes;
    EXPECT_EQ(rewrite(replaceAll(bytes, "\n", "\r\n"), writeTwo).bytes, replaceAll(expected, "\n", "\r\n"));
    // Codes without blanks in front.
    const std::string bare = replaceAll(replaceAll(bytes, "\n  ", "\n"), "\n ", "\n").substr(2);
    const std::string bareExpected = replaceAll(replaceAll(expected, "\n  ", "\n"), "\n ", "\n").substr(2);
    EXPECT_EQ(rewrite(bare, writeTwo).bytes, bareExpected);
}

TEST(Rewrite, NewHandlesAreFreeOnesEvenWhereTheSeedIsWrong) {
    const std::string other = groups({{0, "LINE"}, {5, "FFFF"}});
    for (const std::string seed : {"1", "", "zzz", "FFFF"}) {
        const Rewritten rewritten = rewrite(seeded(seed) + section("ENTITIES", oneMText + other) + endMark(), writeTwo);
        const dxf::Drawing drawing = read(rewritten.bytes);
        ASSERT_EQ(drawing.texts.size(), 2U);
        EXPECT_EQ(drawing.texts[0].handle, 0x1CU);
        EXPECT_EQ(drawing.texts[1].handle, 0x10000U);
        EXPECT_EQ(drawing.header.handleSeed, 0x10001U);
    }
}

TEST(Rewrite, AHeaderWithoutSeedGetsOne) {
    const std::string bytes = header("AC1015", "ANSI_1252") + section("ENTITIES", oneMText) + endMark();
    const Rewritten rewritten = rewrite(bytes, writeTwo);
    EXPECT_EQ(read(rewritten.bytes).header.handleSeed, rewritten.result.handleSeed);
    EXPECT_EQ(read(rewritten.bytes).header.handleSeed, 0x1EU);
    // And a drawing without a header none.
    EXPECT_EQ(
        rewrite(entitiesOnly(oneMText), [](const TextEntity&, EntityWriter& writer) { writer.text(dxf::LinePiece{}); })
            .bytes.find("$HANDSEED"),
        std::string::npos);
}

TEST(Rewrite, WithoutHandlesLeftItIsRefused) {
    const std::string other = groups({{0, "LINE"}, {5, "FFFFFFFFFFFFFFFF"}});
    const std::string bytes = seeded("2A") + section("ENTITIES", oneMText + other) + endMark();
    EXPECT_THROW(rewrite(bytes, writeTwo), Error);
}

TEST(Rewrite, WhereNothingIsWrittenTheTextStays) {
    const std::string bytes = seeded("0000002A") + section("ENTITIES", oneMText) + endMark();
    const Rewritten rewritten = rewrite(bytes, [](const TextEntity&, EntityWriter&) {});
    EXPECT_EQ(rewritten.bytes, replaceAll(bytes, "0000002A", "0000002A"));
    EXPECT_EQ(rewritten.result.replaced, 0U);
}

TEST(Rewrite, OnlyTextsThatAreEntitiesOfTheirOwnAreOffered) {
    const std::string others = groups({{0, "ATTDEF"}, {1, "a"}, {2, "T"}}) + groups({{0, "INSERT"}, {2, "B"}}) +
                               groups({{0, "ATTRIB"}, {1, "a"}, {2, "T"}, {0, "SEQEND"}}) +
                               groups({{0, "DIMENSION"}, {1, "a"}}) + groups({{0, "TEXT"}, {1, "b"}});
    std::vector<dxf::TextKind> offered;
    Replacement replacement([](const TextEntity&, EntityWriter&) {},
                            [&](const TextEntity& text) {
                                offered.push_back(text.kind);
                                return false;
                            });
    rewrite(seeded("2A") + section("ENTITIES", oneMText + others) + endMark(), replacement);
    EXPECT_EQ(offered, (std::vector{dxf::TextKind::MText, dxf::TextKind::Text}));
}

TEST(Rewrite, TextsInBlocksStayInTheirBlocks) {
    const std::string block =
        groups({{0, "BLOCK"}, {5, "20"}, {2, "B"}}) + oneMText + groups({{0, "ENDBLK"}, {5, "21"}});
    const std::string bytes =
        seeded("2A") + section("BLOCKS", block) + entitiesOnly(groups({{0, "INSERT"}, {5, "22"}, {2, "B"}}));
    const dxf::Drawing drawing = read(rewrite(bytes, writeTwo).bytes);
    ASSERT_EQ(drawing.texts.size(), 2U);
    for (const TextEntity& text : drawing.texts) {
        EXPECT_EQ(text.block, L"B");
        EXPECT_EQ(text.owner, 0x1FU);
        EXPECT_EQ(text.layer, L"Notes");
        EXPECT_TRUE(text.paperSpace);
        EXPECT_EQ(text.color, 3);
    }
}

TEST(Rewrite, TextIsWrittenInTheDrawingsCodePage) {
    const auto write = [](const TextEntity&, EntityWriter& writer) {
        dxf::MTextPiece piece;
        piece.content = L"\u041F\u2205\u00A0\tx";
        piece.style = L"\u041F";
        piece.color.color = 5;
        piece.color.trueColor = 0x010203;
        writer.mtext(piece);
    };
    const std::string entities = section("ENTITIES", oneMText) + endMark();
    const std::string cyrillic = rewrite(seeded("2A") + entities, write).bytes;
    EXPECT_NE(cyrillic.find("\n\xCF\\U+2205\xA0^Ix\n"), std::string::npos);
    EXPECT_NE(cyrillic.find("  7\n\xCF\n"), std::string::npos);
    EXPECT_NE(cyrillic.find(" 62\n5\n420\n66051\n"), std::string::npos);
    EXPECT_EQ(cyrillic.find(" 62\n3\n"), std::string::npos);
    const std::string utf8 = rewrite(seeded("2A", "AC1027") + entities, write).bytes;
    EXPECT_NE(utf8.find("\n\xD0\x9F\xE2\x88\x85\xC2\xA0^Ix\n"), std::string::npos);
}

TEST(Rewrite, LongContentsAreCutIntoChunksBetweenCharacters) {
    std::wstring content;
    for (int i = 0; i < 1000; ++i) {
        content += L"a\u2205\xD83D\xDE00";
    }
    for (const char* version : {"AC1015", "AC1027"}) {
        const std::string bytes =
            rewrite(seeded("2A", version) + section("ENTITIES", oneMText) + endMark(), [&](const TextEntity&,
                                                                                           EntityWriter& writer) {
                dxf::MTextPiece piece;
                piece.content = content;
                writer.mtext(piece);
            }).bytes;
        std::istringstream lines(bytes);
        dxf::PairReader pairs(lines);
        std::size_t chunks = 0;
        while (const auto pair = pairs.next()) {
            EXPECT_LE(pair->value.size(), 250U);
            if (pair->code == 3 && pair->value != "ANSI_1251") {
                ++chunks;
                EXPECT_FALSE(pair->value.ends_with("\\U+D83D"));
                EXPECT_NE(dxf::utf8Evidence(pair->value) > 0, std::string(version) == "AC1015");
            }
        }
        EXPECT_GT(chunks, 30U);
        const std::wstring again = dxf::resolveUnicodeEscapes(read(bytes).texts.at(0).content);
        EXPECT_EQ(again, content);
    }
}

TEST(Rewrite, AnOldDrawingWithoutHandlesAndMarkersKeepsToItsWays) {
    const std::string old = groups(
        {{0, "TEXT"}, {8, "NOTES"}, {62, "2"}, {10, "1"}, {20, "2"}, {40, "3"}, {1, "ab"}, {7, "ROMANS"}, {230, "-1"}});
    const std::string before = section("HEADER", groups({{9, "$ACADVER"}, {1, "AC1009"}, {9, "$HANDSEED"}, {5, "1"}}));
    const auto write = [](const TextEntity&, EntityWriter& writer) {
        EXPECT_FALSE(writer.hasMText());
        EXPECT_FALSE(writer.hasHatch());
        EXPECT_THROW(writer.mtext({}), Error);
        EXPECT_THROW(writer.hatch({}, {0, 0, 1}), Error);
        dxf::LinePiece piece;
        piece.content = L"a";
        piece.style = L"ROMANS";
        piece.insertion = {-1, 2, 0};
        piece.direction = {0, 1, 0};
        piece.extrusion = {0, 0, -1};
        piece.height = 3;
        writer.text(piece);
        const std::vector<dxf::Point> points{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}};
        writer.polyline(points, true, {0, 0, 1});
    };
    const std::string common = groups({{8, "NOTES"}, {62, "2"}});
    const auto vertex = [&](const std::string& x, const std::string& y) {
        return groups({{0, "VERTEX"}}) + common + groups({{10, x}, {20, y}, {30, "0.0"}});
    };
    const std::string expected =
        groups({{0, "TEXT"}}) + common +
        groups({{10, "1.0"},
                {20, "2.0"},
                {30, "0.0"},
                {40, "3.0"},
                {1, "a"},
                {50, "90.0"},
                {41, "1.0"},
                {51, "0.0"},
                {7, "ROMANS"},
                {210, "0.0"},
                {220, "0.0"},
                {230, "-1.0"}}) +
        groups({{0, "POLYLINE"}}) + common +
        groups(
            {{66, "1"}, {10, "0.0"}, {20, "0.0"}, {30, "0.0"}, {70, "1"}, {210, "0.0"}, {220, "0.0"}, {230, "1.0"}}) +
        vertex("0.0", "0.0") + vertex("1.0", "0.0") + vertex("1.0", "1.0") + groups({{0, "SEQEND"}}) + common;
    EXPECT_EQ(rewrite(before + entitiesOnly(old), write).bytes, before + entitiesOnly(expected));
}

TEST(Rewrite, OutlinesLieInThePlaneOfTheirExtrusion) {
    const std::string bytes =
        rewrite(seeded("2A", "AC1027") + section("ENTITIES", oneMText) + endMark(), [](const TextEntity&,
                                                                                       EntityWriter& writer) {
            EXPECT_TRUE(writer.hasMText());
            EXPECT_TRUE(writer.hasHatch());
            const std::vector<dxf::Point> points{{-1, 2, 7}, {-3, 2, 7}, {-3, 5, 7}};
            writer.polyline(points, true, {0, 0, -1}, {.color = 1, .trueColor = {}});
            const std::vector<std::vector<dxf::Point>> loops{points, {{0, 0, 0}}};
            writer.hatch(loops, {0, 0, -1});
            writer.hatch({}, {0, 0, 1});
            EXPECT_EQ(writer.count(), 2U);
            EXPECT_THROW(writer.polyline(std::span(points).first(1), true, {0, 0, 1}), Error);
        }).bytes;
    const std::string polyline = groups({{100, "AcDbPolyline"},
                                         {90, "3"},
                                         {70, "1"},
                                         {38, "-7.0"},
                                         {10, "1.0"},
                                         {20, "2.0"},
                                         {10, "3.0"},
                                         {20, "2.0"},
                                         {10, "3.0"},
                                         {20, "5.0"},
                                         {210, "0.0"},
                                         {220, "0.0"},
                                         {230, "-1.0"}});
    const std::string hatch =
        groups({{100, "AcDbHatch"}, {10, "0.0"}, {20, "0.0"}, {30, "-7.0"}, {210, "0.0"}, {220, "0.0"}, {230, "-1.0"},
                {2, "SOLID"},       {70, "1"},   {71, "0"},   {91, "1"},    {92, "2"},    {72, "0"},    {73, "1"},
                {93, "3"},          {10, "1.0"}, {20, "2.0"}, {10, "3.0"},  {20, "2.0"},  {10, "3.0"},  {20, "5.0"},
                {97, "0"},          {75, "0"},   {76, "1"},   {98, "0"}});
    EXPECT_NE(bytes.find(polyline), std::string::npos);
    EXPECT_NE(bytes.find(hatch), std::string::npos);
}

TEST(Rewrite, OldPolylinesOfDrawingsWithHandlesHaveHandlesInEveryPart) {
    const std::string bytes =
        rewrite(seeded("2A", "AC1012") + section("ENTITIES", oneMText) + endMark(), [](const TextEntity&,
                                                                                       EntityWriter& writer) {
            const std::vector<dxf::Point> points{{0, 0, 0}, {1, 0, 0}};
            writer.polyline(points, false, {0, 0, 1});
            writer.polyline(points, false, {0, 0, 1});
        }).bytes;
    std::istringstream input(bytes);
    dxf::PairReader pairs(input);
    std::multiset<std::uint64_t> handles;
    while (const auto pair = pairs.next()) {
        if (pair->code == 5 && pair->value.size() < 8) {
            handles.insert(pair->handle());
        }
    }
    // The text's own, and the new ones in a row: 2 vertices and the end, then a whole polyline.
    EXPECT_EQ(handles, (std::multiset<std::uint64_t>{0x1C, 0x2A, 0x2B, 0x2C, 0x2D, 0x2E, 0x2F, 0x30}));
    EXPECT_EQ(read(bytes).header.handleSeed, 0x31U);
}

TEST(Rewrite, ADrawingThatChangedInTheMeantimeIsNoticed) {
    const std::string bytes = seeded("2A") + section("ENTITIES", oneMText) + endMark();
    const dxf::Drawing drawing = read(bytes);
    const std::string others[] = {
        "999\nmore\n" + bytes,    replaceAll(bytes, "MTEXT\n", "MTEXY\n"),  replaceAll(bytes, "  5\n1C\n", "  5\n1B\n"),
        seeded("2A") + endMark(), replaceAll(bytes, "one two", "one, two"),
    };
    for (const std::string& other : others) {
        std::istringstream input(other);
        std::ostringstream output;
        Replacement replacement(writeTwo);
        try {
            dxf::rewriteDrawing(input, output, drawing, replacement);
            ADD_FAILURE() << other;
        } catch (const Error& error) {
            EXPECT_EQ(error.kind(), ErrorKind::Changed) << error.what();
        }
    }
}

TEST(Rewrite, NewDamageIsNoKnownDamage) {
    const std::string bytes = seeded("2A") + section("ENTITIES", oneMText) + endMark();
    const dxf::Drawing drawing = read(bytes);
    std::istringstream input(replaceAll(bytes, "AcDbMText\n 10\n", "AcDbMText\n xx\n"));
    std::ostringstream output;
    Replacement replacement(writeTwo);
    EXPECT_THROW(dxf::rewriteDrawing(input, output, drawing, replacement), Error);
}

/// A disk that is full after some bytes.
class FullBuffer : public std::stringbuf {
protected:
    std::streamsize xsputn(const char* from, std::streamsize count) override {
        m_written += count;
        return m_written > 300 ? 0 : std::stringbuf::xsputn(from, count);
    }

private:
    std::streamsize m_written = 0;
};

TEST(Rewrite, AFullDiskIsReported) {
    const std::string bytes = seeded("2A") + section("ENTITIES", oneMText) + endMark();
    const dxf::Drawing drawing = read(bytes);
    std::istringstream input(bytes);
    FullBuffer buffer;
    std::ostream output(&buffer);
    Replacement replacement(writeTwo);
    try {
        dxf::rewriteDrawing(input, output, drawing, replacement);
        FAIL();
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), ErrorKind::Unwritable);
    }
}

/// Cannot seek, as a pipe.
class PipeBuffer : public std::streambuf {
protected:
    int_type overflow(int_type c) override { return c; }
};

TEST(Rewrite, APipeIsRefusedBeforeAnythingIsWritten) {
    const std::string bytes = seeded("2A") + section("ENTITIES", oneMText) + endMark();
    const dxf::Drawing drawing = read(bytes);
    std::istringstream input(bytes);
    PipeBuffer buffer;
    std::ostream output(&buffer);
    Replacement replacement(writeTwo);
    try {
        dxf::rewriteDrawing(input, output, drawing, replacement);
        FAIL();
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), ErrorKind::BadRequest);
    }
}

TEST(Rewrite, ProgressCanStopIt) {
    const std::string bytes =
        entitiesOnly(groups({{0, "TEXT"}, {1, std::string(2'000'000, 'x')}, {0, "TEXT"}, {1, "y"}}));
    const dxf::Drawing drawing = read(bytes);
    std::istringstream input(bytes);
    std::ostringstream output;
    Replacement replacement([](const TextEntity&, EntityWriter&) {});
    EXPECT_THROW(dxf::rewriteDrawing(input, output, drawing, replacement, [](std::uint64_t) { return false; }), Error);
}

TEST(Rewrite, EveryExampleDrawingIsCopiedByteForByte) {
    std::size_t drawings = 0;
    for (const auto& entry : std::filesystem::directory_iterator(FONTENGINE_TEST_DATA "/../examples")) {
        if (entry.path().extension() != ".dxf") {
            continue;
        }
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
        EXPECT_TRUE(copied(bytes) == bytes) << entry.path();
        ++drawings;
    }
    EXPECT_GT(drawings, 0U);
}

TEST(EscapeMText, GivesContentThatReadsAsThePlainText) {
    EXPECT_EQ(dxf::escapeMText(L"plain"), L"plain");
    EXPECT_EQ(dxf::escapeMText(L"a\\b{c}"), L"a\\\\b\\{c\\}");
    EXPECT_EQ(dxf::escapeMText(L"x^2"), L"x^ 2");
    EXPECT_EQ(dxf::escapeMText(L"50% %%d"), L"50% \\U+0025%d");
    EXPECT_EQ(dxf::escapeMText(L"%<x>%"), L"\\U+0025<x>%");
    EXPECT_EQ(dxf::escapeMText(L"a\nb"), L"a\\Pb");
}

TEST(PairWriter, WritesNumbersThatReadBackTheSame) {
    const auto written = [](double value) {
        std::string text;
        dxf::PairWriter(text, {"\n", false}).real(40, value);
        return text;
    };
    EXPECT_EQ(written(1), "40\n1.0\n");
    EXPECT_EQ(written(-0.0), "40\n0.0\n");
    EXPECT_EQ(written(0.1), "40\n0.1\n");
    EXPECT_EQ(written(1.0 / 3), "40\n0.3333333333333333\n");
    EXPECT_EQ(written(1e300), "40\n1e+300\n");
    EXPECT_EQ(written(std::numeric_limits<double>::infinity()), "40\n0.0\n");
    EXPECT_EQ(written(std::numeric_limits<double>::quiet_NaN()), "40\n0.0\n");
    EXPECT_EQ(dxf::handleText(0x2A), "2A");
    EXPECT_EQ(dxf::handleText(0x2A, 4), "002A");
    EXPECT_EQ(dxf::handleText(UINT64_MAX, 4), "FFFFFFFFFFFFFFFF");
}

} // namespace
