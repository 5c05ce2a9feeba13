#include <ExplodeCommand.h>
#include <RoundTrip.h>

#include <sstream>

#include <nlohmann/json.hpp>

#include "Drawings.h"
#include "Program.h"

using namespace tooltest;

namespace {

class Explode : public ProgramTest {
protected:
    /// Explodes a drawing with the program, checked, and gives the report.
    nlohmann::json explode(const std::string& bytes, const std::string& options = "--check") {
        const std::string input = file("in.dxf", bytes);
        m_outcome = run("explode " + quoted(input) + " " + quoted(path("out.dxf")) + " --report " +
                        quoted(path("report.json")) + " " + options);
        return nlohmann::json::parse(contentsOf(path("report.json")), nullptr, false);
    }

    /// Explodes one text and expects every glyph back in its place.
    nlohmann::json expectRoundTrip(const std::string& entities, const std::string& blocks = "",
                                   const std::string& version = "AC1032") {
        const nlohmann::json report = explode(drawing(entities, version, "DejaVuSans.ttf", blocks));
        EXPECT_EQ(m_outcome.exitCode, 0) << entities << m_outcome.out << m_outcome.err;
        if (!report.is_object()) {
            ADD_FAILURE() << m_outcome.err;
            return report;
        }
        EXPECT_GT(report["roundTrip"]["glyphs"], 0) << entities;
        EXPECT_EQ(report["roundTrip"]["different"], 0) << entities;
        EXPECT_LT(report["roundTrip"]["largestDeviation"], 0.002) << entities;
        EXPECT_EQ(report["outlined"], 0) << entities;
        return report;
    }

    [[nodiscard]] dxf::Drawing result() const {
        std::istringstream input(contentsOf(path("out.dxf")));
        return dxf::readDrawing(input);
    }

    Outcome m_outcome;
};

TEST_F(Explode, TheExamplePutsEveryGlyphBack) {
    const nlohmann::json report = explode(contentsOf(example()));
    EXPECT_EQ(m_outcome.exitCode, 0) << m_outcome.err;
    EXPECT_EQ(report["texts"], 31);
    EXPECT_GT(report["roundTrip"]["glyphs"], 1000);
    EXPECT_EQ(report["roundTrip"]["different"], 0);
    EXPECT_LT(report["roundTrip"]["largestDeviation"], 0.002);
    EXPECT_NE(m_outcome.out.find("round trip: "), std::string::npos);
}

TEST_F(Explode, EveryAttachmentPutsEveryGlyphBack) {
    for (int attachment = 1; attachment <= 9; ++attachment) {
        expectRoundTrip(mtextEntity(R"(First line\PSecond, longer line)", "41 30.0\n71 " + std::to_string(attachment)));
    }
}

TEST_F(Explode, RotatedAndMirroredTextPutsEveryGlyphBack) {
    expectRoundTrip(mtextEntity("Turned", "50 0.7"));
    expectRoundTrip(mtextEntity("Turned", "11 -1.0\n21 2.0\n31 0.0"));
    expectRoundTrip(mtextEntity("Mirrored", "210 0.0\n220 0.0\n230 -1.0\n11 1.0\n21 0.5\n31 0.0"));
    expectRoundTrip(mtextEntity("On a wall", "210 0.0\n220 -1.0\n230 0.0\n11 1.0\n21 0.0\n31 0.0"));
}

TEST_F(Explode, TextWithoutWidthIsNotWrapped) {
    expectRoundTrip(mtextEntity("one two three four five six seven", "41 0.0"));
    EXPECT_EQ(result().texts.front().width, 0.0);
}

TEST_F(Explode, ParagraphPropertiesPutEveryGlyphBack) {
    expectRoundTrip(mtextEntity(R"(\pqc;Centred\P\pqr;right\P\pqj;justified text that needs two lines\P\pl2,b1;moved)",
                                "41 40.0\n73 2\n44 1.25"));
}

TEST_F(Explode, TabsEmptyParagraphsAndLeadingBlanksPutEveryGlyphBack) {
    expectRoundTrip(mtextEntity("a^Ib^Ic\\P\\P   d  e"));
}

TEST_F(Explode, FontsSizesAndStylesPutEveryGlyphBack) {
    expectRoundTrip(mtextEntity(
        R"({\fDejaVu Serif|b0|i0;office}{\H5;Big}{\H0.5x;small}{\fLiberation Sans|b1|i1;bold}{\fLiberation Mono|b1|i0;mono})"));
}

TEST_F(Explode, SmallAndLargeTextPutsEveryGlyphBack) {
    for (const std::string height : {"0.002", "0.1", "3.7", "1250.0"}) {
        expectRoundTrip("0 MTEXT\n5 20\n100 AcDbEntity\n8 0\n100 AcDbMText\n10 1.0\n20 2.0\n30 0.0\n40 " + height +
                        "\n1 Text, ß\n7 STANDARD");
    }
}

TEST_F(Explode, ScriptsWhoseGlyphsDependOnOneAnotherPutEveryGlyphBack) {
    expectRoundTrip(mtextEntity("الأبعاد في الموقع B12 كما"));         // joined letters, right to left, ligatures
    expectRoundTrip(mtextEntity("יש לבדוק D-104"));                    // right to left
    expectRoundTrip(mtextEntity("टिप्पणियाँ निर्माण क्ष"));                // reordered, several glyphs per cluster
    expectRoundTrip(mtextEntity("ต้องตรวจสอบขนาดทั้งหมดที่"));              // marks on marks
    expectRoundTrip(mtextEntity("e\xCC\x81 o\xCC\x82\xCC\xA3 Ż"));     // combining marks
    expectRoundTrip(mtextEntity("\xF0\x9D\x94\xB8 \xF0\xA0\x80\x80")); // two UTF-16 units each
    expectRoundTrip(mtextEntity("寸法はすべて 모든 치수는"));
}

TEST_F(Explode, LettersInsideAnArabicWordKeepTheirShapeByJoiners) {
    const nlohmann::json report = expectRoundTrip(mtextEntity("سبب"));
    EXPECT_EQ(report["joined"], 3);
    EXPECT_EQ(report["moved"], 3);
}

TEST_F(Explode, CharactersWithAMeaningInContentsComeOutAsThemselves) {
    expectRoundTrip(mtextEntity(R"(\{a\} \\P 50%% %%%c ^ b ; |)"));
}

TEST_F(Explode, TextsInBlocksAndInPaperSpaceStayThere) {
    const std::string blocks =
        "0 BLOCK\n5 30\n100 AcDbEntity\n8 0\n100 AcDbBlockBegin\n2 DOOR\n70 0\n10 1.0\n20 1.0\n30 0.0\n" +
        mtextEntity("In block", "", "31") + "\n0 ENDBLK\n5 32";
    expectRoundTrip("0 INSERT\n5 40\n8 0\n2 DOOR\n10 100.0\n20 0.0\n30 0.0\n41 -2.0\n50 30.0\n"
                    "0 MTEXT\n5 41\n100 AcDbEntity\n67 1\n8 PAPER\n100 AcDbMText\n10 0.0\n20 0.0\n30 0.0\n40 "
                    "2.0\n1 Sheet\n7 STANDARD",
                    blocks);
    const dxf::Drawing exploded = result();
    std::size_t inBlock = 0;
    std::size_t onPaper = 0;
    for (const dxf::TextEntity& text : exploded.texts) {
        inBlock += text.block == L"DOOR" ? 1U : 0U;
        onPaper += text.paperSpace && text.layer == L"PAPER" ? 1U : 0U;
    }
    EXPECT_EQ(inBlock, 7U);
    EXPECT_EQ(onPaper, 5U);
}

TEST_F(Explode, PiecesAreSingleClustersOnTheTextsLayerWithItsHandleFirst) {
    expectRoundTrip(mtextEntity("AB C"));
    const dxf::Drawing exploded = result();
    ASSERT_EQ(exploded.texts.size(), 3U);
    EXPECT_EQ(exploded.texts[0].content, L"\\fDejaVu Sans|b0|i0;A");
    EXPECT_EQ(exploded.texts[0].handle, 0x20U);
    EXPECT_EQ(exploded.texts[1].handle, 0x1000U);
    EXPECT_EQ(exploded.texts[2].handle, 0x1001U);
    EXPECT_EQ(exploded.header.handleSeed, 0x1002U);
    EXPECT_EQ(exploded.texts[2].layer, L"NOTES");
    EXPECT_EQ(exploded.texts[2].content, L"\\fDejaVu Sans|b0|i0;C");
}

TEST_F(Explode, APieceStandsWhereTheLayoutingPutsItsRectangle) {
    const nlohmann::json report = expectRoundTrip(mtextEntity("HO"));
    EXPECT_EQ(report["moved"], 0);
    const dxf::Drawing exploded = result();
    EXPECT_NEAR(exploded.texts[0].insertion.x, 10.0, 1e-4);
    EXPECT_NEAR(exploded.texts[0].insertion.y, 20.0, 1e-4);
    // From bearing to bearing: H is 1540 wide and begins at 201, O begins at 115.
    EXPECT_NEAR(exploded.texts[1].insertion.x - 10.0, (1540.0 - 201.0 + 115.0) / 1493.0 * 2.5, 1e-3);
}

TEST_F(Explode, EverythingElseComesThroughByteForByte) {
    const std::string before = pairs("0 LINE\n5 21\n8 0\n10 0.0\n20 0.0\n11 1.5000000\n21 1.0");
    const std::string after = pairs("0 CIRCLE\n5 22\n8 0\n10 0.0\n20 0.0\n40 1.0");
    std::string bytes = drawing("0 LINE\n5 21\n8 0\n10 0.0\n20 0.0\n11 1.5000000\n21 1.0\n" + mtextEntity("AB") +
                                "\n0 CIRCLE\n5 22\n8 0\n10 0.0\n20 0.0\n40 1.0");
    explode(bytes);
    const std::string exploded = contentsOf(path("out.dxf"));
    const std::string text = pairs("0 MTEXT");
    const std::size_t seed = bytes.find("$HANDSEED");
    EXPECT_EQ(exploded.substr(0, seed), bytes.substr(0, seed));
    EXPECT_NE(exploded.find(before + text), std::string::npos);
    const std::size_t tail = bytes.find(after);
    EXPECT_EQ(exploded.substr(exploded.size() - (bytes.size() - tail)), bytes.substr(tail));
}

TEST_F(Explode, ColoursAreNumbersWhereThereIsOneAndTrueColoursElse) {
    expectRoundTrip(mtextEntity(R"(A{\C1;B}{\c1193046;C}{\C7;D})"));
    const dxf::Drawing exploded = result();
    ASSERT_EQ(exploded.texts.size(), 4U);
    EXPECT_EQ(exploded.texts[1].color, 1);
    ASSERT_TRUE(exploded.texts[2].trueColor.has_value());
    EXPECT_EQ(*exploded.texts[2].trueColor, 0x563412U); // the code names blue, green, red
    EXPECT_EQ(exploded.texts[3].color, 7);
}

TEST_F(Explode, OlderDrawingsGetTheNearestColourNumber) {
    expectRoundTrip(mtextEntity(R"({\c250;A})"), "", "AC1015"); // nearly red
    EXPECT_EQ(result().texts[0].color, 1);
    EXPECT_FALSE(result().texts[0].trueColor.has_value());
}

TEST_F(Explode, UnderlinesBecomeFilledAreas) {
    const nlohmann::json report = expectRoundTrip(mtextEntity(R"({\LAB })"));
    EXPECT_EQ(report["underlines"], 1);
    EXPECT_EQ(countOf(contentsOf(path("out.dxf")), "\nHATCH\n"), 1U);
}

TEST_F(Explode, OutlinesAreFilledAreasOnePerGlyph) {
    const nlohmann::json report = explode(drawing(mtextEntity("HO i")), "--to outlines");
    EXPECT_EQ(m_outcome.exitCode, 0) << m_outcome.err;
    EXPECT_EQ(report["outlined"], 3);
    EXPECT_TRUE(result().texts.empty());
    EXPECT_EQ(countOf(contentsOf(path("out.dxf")), "\nHATCH\n"), 3U);
}

TEST_F(Explode, DrawingsWithoutFilledAreasGetClosedPolylines) {
    explode(drawing(mtextEntity("HO"), "AC1012"), "--to outlines");
    EXPECT_EQ(m_outcome.exitCode, 0) << m_outcome.err;
    EXPECT_EQ(countOf(contentsOf(path("out.dxf")), "\nPOLYLINE\n"), 3U); // O has two contours
    EXPECT_EQ(countOf(contentsOf(path("out.dxf")), "\nHATCH\n"), 0U);
}

TEST_F(Explode, ATextThatShowsNothingStaysAsItIs) {
    const std::string bytes = drawing(mtextEntity("  ") + "\n" + mtextEntity("A", "", "21"));
    const nlohmann::json report = explode(bytes);
    EXPECT_EQ(report["emptyTexts"], 1);
    explode(drawing(mtextEntity("  ")));
    EXPECT_EQ(m_outcome.exitCode, 6);
    EXPECT_NE(m_outcome.err.find("holds no paragraph text that shows anything"), std::string::npos) << m_outcome.err;
    explode(bytes);
    EXPECT_NE(contentsOf(path("out.dxf")).find(pairs(mtextEntity("  "))), std::string::npos);
}

TEST_F(Explode, OneLineTextsStayAsTheyAreInADrawingThatHasNoOthers) {
    const std::string bytes = drawing("0 TEXT\n5 20\n8 0\n10 0.0\n20 0.0\n40 2.5\n1 Line", "AC1009");
    const nlohmann::json report = explode(bytes);
    EXPECT_EQ(m_outcome.exitCode, 6);
    EXPECT_NE(m_outcome.err.find("holds no paragraph text; the copy is unchanged"), std::string::npos) << m_outcome.err;
    EXPECT_NE(m_outcome.out.find("1 one-line texts stay as they are"), std::string::npos) << m_outcome.out;
    EXPECT_EQ(contentsOf(path("out.dxf")), bytes);
}

TEST_F(Explode, ATruncatedDrawingIsExplodedAsFarAsItGoes) {
    const std::string whole = drawing(mtextEntity("First") + "\n" + mtextEntity("Second", "", "21"));
    const nlohmann::json report = explode(whole.substr(0, whole.find("Second") + 3));
    EXPECT_EQ(report["texts"], 1);
    EXPECT_EQ(report["roundTrip"]["different"], 0);
    EXPECT_EQ(m_outcome.exitCode, 5);
    EXPECT_NE(m_outcome.out.find("damaged: "), std::string::npos);
}

TEST_F(Explode, ADamagedTextThatLooksLikeAPieceIsNotComparedWithOne) {
    // Without handles nothing but the order in the file tells the two apart.
    const std::string entity = "0 MTEXT\n8 0\n10 1.0\n20 1.0\n30 0.0\n40 2.5\n7 STANDARD\n1 ";
    const std::string piece = R"(\fDejaVu Sans|b0|i0;A)";
    const std::string whole = drawing(entity + "AB\n" + entity + piece);
    const nlohmann::json report = explode(whole.substr(0, whole.rfind(piece) + piece.size() + 1));
    EXPECT_EQ(report["texts"], 1);
    EXPECT_EQ(report["roundTrip"]["glyphs"], 2);
    EXPECT_EQ(report["roundTrip"]["different"], 0);
    EXPECT_EQ(m_outcome.exitCode, 5) << m_outcome.out;
}

TEST_F(Explode, ADrawingWithoutAVersionIsExplodedLikeAnyOther) {
    std::string bytes = drawing(mtextEntity("AB"));
    const std::string version = pairs("9 $ACADVER\n1 AC1032");
    ASSERT_NE(bytes.find(version), std::string::npos);
    bytes.erase(bytes.find(version), version.size());
    for (const std::string& old : {bytes, drawing(mtextEntity("AB"), "AC1009")}) {
        EXPECT_EQ(explode(old)["roundTrip"]["glyphs"], 2) << m_outcome.err;
        EXPECT_EQ(m_outcome.exitCode, 0) << m_outcome.err;
        explode(old, "--to outlines");
        EXPECT_EQ(m_outcome.exitCode, 0) << m_outcome.err;
    }
}

TEST_F(Explode, NamesTheCodesThatItIgnoresByTheWordsOfLayout) {
    const std::string bytes =
        drawing(mtextEntity(R"({\Q15;a}{\Q10;b} \S1/2;)") + "\n" + mtextEntity(R"(\W2; )", "", "21"));
    const nlohmann::json report = explode(bytes);
    const std::string expected = "  2 x oblique angle ignored (first: \\Q15; in the text at line 49)\n"
                                 "  1 x stacked fraction or tolerance written in one line (first: \\S1/2; in the text "
                                 "at line 49)\n";
    EXPECT_NE(m_outcome.out.find(expected), std::string::npos) << m_outcome.out;
    ASSERT_EQ(report["ignoredCodes"].size(), 2U) << "a text that stays as it is keeps its codes";
    EXPECT_EQ(report["ignoredCodes"][0]["code"], "oblique-angle");
    EXPECT_EQ(report["ignoredCodes"][0]["count"], 2);
    EXPECT_EQ(report["ignoredCodes"][0]["line"], 49);
    const Outcome layout = run("layout " + quoted(path("in.dxf")));
    EXPECT_NE(layout.out.find(expected), std::string::npos) << layout.out;
}

TEST_F(Explode, NamesTheCharactersThatNoFontHas) {
    const nlohmann::json report = explode(drawing(mtextEntity("A\xEE\x80\x80\xEE\x80\x80")));
    EXPECT_NE(
        m_outcome.out.find("2 characters are in no installed font and are shown as boxes: U+E000 \"\xEE\x80\x80\" "
                           "(2, first in the text at line 49)"),
        std::string::npos)
        << m_outcome.out;
    EXPECT_EQ(report["missingGlyphs"], 2);
    EXPECT_EQ(report["missingCharacters"][0]["codePoint"], "U+E000");
}

TEST_F(Explode, ReplacedFontsAreNamedOnceAndTheMapCounts) {
    explode(drawing(mtextEntity(R"({\Fnosuch.shx;A}B{\Fnosuch.shx;C})")),
            "--check --font-map " + quoted(file("map.json", R"({"nosuch": "Liberation Mono"})")));
    EXPECT_EQ(m_outcome.exitCode, 0) << m_outcome.err;
    EXPECT_EQ(countOf(m_outcome.out, "font nosuch.shx is not installed: Liberation Mono stands in"), 1U);
    EXPECT_EQ(result().texts[0].content, L"\\fLiberation Mono|b0|i0;A");
}

TEST_F(Explode, RefusesWhatItCannotDo) {
    const std::string input = quoted(file("in.dxf", drawing(mtextEntity("A"))));
    Outcome outcome = run("explode " + input + " " + input);
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_NE(outcome.err.find("are the same file"), std::string::npos) << outcome.err;
    outcome = run("explode " + input + " " + quoted(path("no-such-folder/out.dxf")));
    EXPECT_EQ(outcome.exitCode, 4);
    EXPECT_NE(outcome.err.find("cannot be written"), std::string::npos) << outcome.err;
    EXPECT_EQ(run("explode " + input + " " + quoted(path(""))).exitCode, 4);
    EXPECT_EQ(run("explode " + quoted(path("missing.dxf")) + " " + quoted(path("out.dxf"))).exitCode, 3);
    EXPECT_EQ(run("explode " + input).exitCode, 2);
    EXPECT_EQ(run("explode --to letters " + input + " " + quoted(path("out.dxf"))).exitCode, 2);
    outcome = run("explode --check --to outlines " + input + " " + quoted(path("out.dxf")));
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_NE(outcome.err.find("--check compares glyphs"), std::string::npos) << outcome.err;
}

TEST_F(Explode, AFailureLeavesWhatStoodAtTheOutput) {
    const std::string output = file("out.dxf", "precious");
    EXPECT_EQ(run("explode " + quoted(file("in.dxf", "no drawing\nat all\n")) + " " + quoted(output)).exitCode, 3);
    EXPECT_EQ(contentsOf(output), "precious");
    EXPECT_FALSE(std::filesystem::exists(output + ".partial"));
}

TEST_F(Explode, TheCheckSeesAPieceThatStandsElsewhere) {
    const std::string input = file("in.dxf", drawing(mtextEntity("AB")));
    ASSERT_EQ(run("explode " + quoted(input) + " " + quoted(path("out.dxf"))).exitCode, 0);
    tool::Session session;
    std::ifstream original(input, std::ios::binary);
    const dxf::Drawing read = dxf::readDrawing(original);
    tool::Exploder exploder(session, read, tool::PieceKind::Clusters, true);
    std::ifstream again(input, std::ios::binary);
    std::ostringstream ignored;
    dxf::rewriteDrawing(again, ignored, read, exploder);
    const auto check = [&](const std::string& bytes) {
        std::istringstream exploded(bytes);
        return tool::checkRoundTrip(session, dxf::readDrawing(exploded), read, exploder);
    };
    EXPECT_TRUE(check(contentsOf(path("out.dxf"))).holds());

    std::string moved = contentsOf(path("out.dxf"));
    const std::size_t at = moved.rfind("\n20\n20.0\n");
    ASSERT_NE(at, std::string::npos) << moved;
    moved.replace(at, 9, "\n20\n20.1\n");
    const tool::RoundTrip trip = check(moved);
    EXPECT_FALSE(trip.holds());
    EXPECT_NEAR(trip.largestDeviation, 0.1 / 2.5, 1e-6);
    EXPECT_EQ(trip.different, 0U);

    std::string other = contentsOf(path("out.dxf"));
    other.replace(other.rfind("i0;B"), 4, "i0;C");
    EXPECT_EQ(check(other).different, 1U);
}

} // namespace
