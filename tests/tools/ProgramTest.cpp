#include "Program.h"

#include <nlohmann/json.hpp>

#include "Drawings.h"

using namespace tooltest;

namespace {

using Program = ProgramTest;

TEST_F(Program, SaysHowItIsUsedWithoutArguments) {
    const Outcome outcome = run("");
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_NE(outcome.err.find("a command is missing"), std::string::npos) << outcome.err;
}

TEST_F(Program, HelpSucceeds) {
    const Outcome outcome = run("layout --help");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_NE(outcome.out.find("--font-map"), std::string::npos);
}

TEST_F(Program, RefusesAnUnknownOption) {
    const Outcome outcome = run("layout --colour " + quoted(example()));
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_NE(outcome.err.find("--colour"), std::string::npos) << outcome.err;
}

TEST_F(Program, RefusesAnUnknownMode) {
    const Outcome outcome = run("layout --mode letters " + quoted(example()));
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_NE(outcome.err.find("--mode"), std::string::npos) << outcome.err;
}

TEST_F(Program, RefusesACapSizeThatIsNotPositive) {
    EXPECT_EQ(run("measure Text --font \"DejaVu Sans\" --cap-size 0").exitCode, 2);
    EXPECT_EQ(run("measure Text --font \"DejaVu Sans\" --cap-size=-1").exitCode, 2);
    EXPECT_EQ(run("measure Text --font \"DejaVu Sans\" --cap-size large").exitCode, 2);
}

TEST_F(Program, NamesAMissingFile) {
    const Outcome outcome = run("layout " + quoted(path("missing.dxf")));
    EXPECT_EQ(outcome.exitCode, 3);
    EXPECT_NE(outcome.err.find("missing.dxf: cannot be opened: No such file"), std::string::npos) << outcome.err;
}

TEST_F(Program, NamesAFolder) {
    const Outcome outcome = run("layout " + quoted(path("")));
    EXPECT_EQ(outcome.exitCode, 3);
    EXPECT_NE(outcome.err.find("is a folder; give the path of a file"), std::string::npos) << outcome.err;
}

TEST_F(Program, RefusesWhatIsNoDrawing) {
    const Outcome outcome =
        run("layout " + quoted(file("poem.dxf", "O Captain! my Captain!\nour fearful trip is done\n")));
    EXPECT_EQ(outcome.exitCode, 3);
    EXPECT_EQ(countOf(outcome.err, "poem.dxf"), 1U) << outcome.err;
    EXPECT_EQ(run("layout " + quoted(file("empty.dxf", ""))).exitCode, 3);
    const std::string binary("Abcdefg Binary DXF\r\n\x1a\0", 22);
    const Outcome refused = run("layout " + quoted(file("binary.dxf", binary)));
    EXPECT_EQ(refused.exitCode, 3);
    EXPECT_NE(refused.err.find("Save it as ASCII DXF"), std::string::npos) << refused.err;
}

TEST_F(Program, SaysThatADrawingHoldsNoText) {
    const Outcome outcome = run("layout " + quoted(file("bare.dxf", drawing(""))));
    EXPECT_EQ(outcome.exitCode, 6);
    EXPECT_NE(outcome.err.find("holds no text"), std::string::npos) << outcome.err;
}

TEST_F(Program, LaysOutWhatATruncatedDrawingStillHolds) {
    const std::string whole = drawing(mtextEntity("First") + "\n" + mtextEntity("Second", "", "21"));
    const Outcome outcome = run("layout " + quoted(file("cut.dxf", whole.substr(0, whole.find("\n21\n") - 8))));
    EXPECT_EQ(outcome.exitCode, 5);
    EXPECT_NE(outcome.out.find("1 texts laid out"), std::string::npos) << outcome.out;
    EXPECT_NE(outcome.out.find("damaged: "), std::string::npos) << outcome.out;
}

TEST_F(Program, NamesOutputsThatCannotBeWritten) {
    for (const std::string option : {"--json", "--svg", "--png"}) {
        const std::string target = path("no-such-folder/out");
        const Outcome outcome = run("layout " + option + " " + quoted(target) + " " + quoted(example()));
        EXPECT_EQ(outcome.exitCode, 4) << option;
        EXPECT_NE(outcome.err.find(target + ": cannot be written"), std::string::npos) << outcome.err;
        EXPECT_EQ(outcome.out, "") << "noticed before any work";
    }
}

TEST_F(Program, RefusesAFontMapThatIsNone) {
    const std::string drawingPath = quoted(example());
    Outcome outcome = run("layout --font-map " + quoted(path("missing.json")) + " " + drawingPath);
    EXPECT_EQ(outcome.exitCode, 3);
    EXPECT_NE(outcome.err.find("missing.json: cannot be opened"), std::string::npos) << outcome.err;
    outcome = run("layout --font-map " + quoted(file("list.json", "[1, 2]")) + " " + drawingPath);
    EXPECT_EQ(outcome.exitCode, 3);
    EXPECT_NE(outcome.err.find("is not a font map"), std::string::npos) << outcome.err;
    outcome = run("layout --font-map " + quoted(file("number.json", R"({"romans.shx": 7})")) + " " + drawingPath);
    EXPECT_EQ(outcome.exitCode, 3);
    EXPECT_NE(outcome.err.find("\"romans.shx\" must be a family name"), std::string::npos) << outcome.err;
}

TEST_F(Program, NamesEachReplacedFontOnce) {
    const std::string input =
        file("fonts.dxf", drawing(mtextEntity(R"({\Fnosuch.shx;A}B{\Fnosuch.shx;C})") + "\n" +
                                      mtextEntity(R"({\Fnosuch.shx;A}{\fArial|b0|i0;B})", "", "21"),
                                  "AC1032", "romans.shx"));
    const Outcome outcome = run("layout " + quoted(input));
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
    EXPECT_EQ(countOf(outcome.out, "font romans.shx is not installed"), 1U) << outcome.out;
    EXPECT_EQ(countOf(outcome.out, "font nosuch.shx is not installed"), 1U) << outcome.out;
    EXPECT_EQ(countOf(outcome.out, "font Arial is not installed: Liberation Sans stands in"), 1U) << outcome.out;
}

TEST_F(Program, NamesEachIgnoredCodeOnceWithItsCount) {
    const std::string input = file(
        "codes.dxf", drawing(mtextEntity(R"({\Q15;a}{\Q10;b})") + "\n" + mtextEntity(R"({\Q15;c}{\T2;d})", "", "21")));
    const Outcome outcome = run("layout " + quoted(input));
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
    EXPECT_EQ(countOf(outcome.out, "oblique angle ignored"), 1U) << outcome.out;
    EXPECT_NE(outcome.out.find("3 x oblique angle ignored"), std::string::npos) << outcome.out;
    EXPECT_NE(outcome.out.find("1 x character spacing ignored"), std::string::npos) << outcome.out;
}

TEST_F(Program, IgnoresAlignmentWithinALineOnlyWhereItsHeightsDiffer) {
    const auto out = [&](const std::string& content) {
        const std::string width = "41 20.0";
        return run("layout " + quoted(file("in.dxf", drawing(mtextEntity(content, width))))).out;
    };
    const std::string words = "alignment within a line ignored";
    EXPECT_EQ(out(R"(\A1;one line)").find(words), std::string::npos);
    EXPECT_NE(out(R"(\A1;one {\H5;two})").find(words), std::string::npos);
    // Wrapped, each height has lines of its own.
    EXPECT_EQ(out(R"(\A1;oneoneoneone {\H5;twotwo})").find(words), std::string::npos);
}

TEST_F(Program, NamesTheFirstFewCharactersThatNoFontHas) {
    std::string many;
    for (char last = '\x80'; last < '\x88'; ++last) {
        many += std::string("\xEE\x80") + last; // U+E000 to U+E007
    }
    const std::string json = path("out.json");
    const Outcome outcome =
        run("layout --json " + quoted(json) + " " +
            quoted(file("in.dxf", drawing(mtextEntity(many + "\xF0\x90\x80\x80\xF3\xB0\x80\x80")))));
    EXPECT_NE(outcome.out.find("are in no installed font and are shown as boxes: U+E000 \"\xEE\x80\x80\" (1, first in "
                               "the text at line 49), U+E001"),
              std::string::npos)
        << outcome.out;
    EXPECT_NE(outcome.out.find("U+E004"), std::string::npos) << outcome.out;
    EXPECT_EQ(outcome.out.find("U+E005"), std::string::npos) << outcome.out;
    const nlohmann::json drawing = nlohmann::json::parse(contentsOf(json))["drawings"][0];
    const nlohmann::json& last = drawing["missingCharacters"].back();
    EXPECT_EQ(last["codePoint"], "U+F0000");
    EXPECT_EQ(last["character"], "\xF3\xB0\x80\x80");
    EXPECT_EQ(last["line"], 49);
}

TEST_F(Program, CountsTextsThatShowNothingApart) {
    const std::string two = drawing(mtextEntity("Shown") + "\n" + mtextEntity(R"(\W2; )", "", "21"));
    const Outcome outcome = run("layout " + quoted(file("two.dxf", two)));
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_NE(outcome.out.find("1 texts laid out, 1 show nothing"), std::string::npos) << outcome.out;
    EXPECT_EQ(outcome.out.find("ignored"), std::string::npos) << outcome.out;
    const Outcome blank = run("layout " + quoted(file("blank.dxf", drawing(mtextEntity("  ")))));
    EXPECT_EQ(blank.exitCode, 6);
    EXPECT_NE(blank.err.find("holds no text that shows anything"), std::string::npos) << blank.err;
}

TEST_F(Program, SaysHowManyTextsStandInBlocksThatNothingInserts) {
    const std::string block = "0 BLOCK\n5 30\n8 0\n2 DOOR\n70 0\n10 0.0\n20 0.0\n30 0.0\n";
    const std::string definition = "0 ATTDEF\n5 33\n8 0\n10 0.0\n20 0.0\n40 1.0\n1 value\n2 TAG\n70 0\n";
    const Outcome library =
        run("layout " +
            quoted(file("library.dxf", drawing("", "AC1032", "DejaVuSans.ttf",
                                               block + mtextEntity("A", "", "31") + "\n" + mtextEntity("B", "", "32") +
                                                   "\n" + definition + "0 ENDBLK\n5 34"))));
    EXPECT_EQ(library.exitCode, 6);
    EXPECT_NE(library.err.find("shows no text; its blocks hold 2 that no reference places"), std::string::npos)
        << library.err;
    const Outcome bare = run(
        "layout " + quoted(file("bare.dxf", drawing("", "AC1032", "DejaVuSans.ttf", block + definition + "0 ENDBLK"))));
    EXPECT_EQ(bare.exitCode, 6);
    EXPECT_NE(bare.err.find("holds no text;"), std::string::npos) << bare.err;
}

TEST_F(Program, CountsHiddenTexts) {
    const std::string input =
        file("hidden.dxf", drawing(mtextEntity("Shown") + "\n" + mtextEntity("Hidden", "60 1", "21")));
    const Outcome outcome = run("layout " + quoted(input));
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_NE(outcome.out.find("1 texts laid out, 1 hidden ones left out"), std::string::npos) << outcome.out;
}

TEST_F(Program, WorksOnTheOtherDrawingsWhenOneCannotBeUsed) {
    const std::string one = file("one.dxf", drawing(mtextEntity("One")));
    const std::string poem = file("poem.dxf", "O Captain! my Captain!\n");
    const std::string cut = file("cut.dxf", drawing(mtextEntity("Two")).substr(0, 240));
    const Outcome outcome =
        run("layout --json " + quoted(path("out.json")) + " --png " + quoted(path("out.png")) + " " +
            quoted(path("missing.dxf")) + " " + quoted(one) + " " + quoted(poem) + " " + quoted(cut));
    EXPECT_EQ(outcome.exitCode, 3);
    EXPECT_NE(outcome.err.find("missing.dxf: cannot be opened"), std::string::npos) << outcome.err;
    EXPECT_NE(outcome.err.find("poem.dxf: This is not a DXF drawing"), std::string::npos) << outcome.err;
    EXPECT_NE(outcome.out.find("one.dxf: 1 texts laid out"), std::string::npos) << outcome.out;
    const nlohmann::json drawings = nlohmann::json::parse(contentsOf(path("out.json"))).at("drawings");
    ASSERT_EQ(drawings.size(), 4U);
    EXPECT_NE(drawings[0].at("error").get<std::string>().find("missing.dxf"), std::string::npos);
    EXPECT_EQ(drawings[1].at("texts").at(0).at("paragraphs").at(0).at("text"), "One");
    EXPECT_FALSE(drawings[1].contains("error"));
    EXPECT_NE(drawings[2].at("error").get<std::string>().find("poem.dxf"), std::string::npos);
    EXPECT_EQ(drawings[3].at("problems").size(), 1U);
    EXPECT_FALSE(contentsOf(path("out-one.png")).empty());
}

TEST_F(Program, AnswersWithTheWorstOfItsDrawings) {
    const std::string bare = file("bare.dxf", drawing(""));
    const std::string good = file("good.dxf", drawing(mtextEntity("One")));
    const std::string whole = drawing(mtextEntity("First"));
    const std::string cut = file("cut.dxf", whole.substr(0, whole.size() - 8));
    EXPECT_EQ(run("layout " + quoted(good) + " " + quoted(bare)).exitCode, 6);
    EXPECT_EQ(run("layout " + quoted(bare) + " " + quoted(cut) + " " + quoted(good)).exitCode, 5);
    EXPECT_EQ(run("layout " + quoted(path("missing.dxf")) + " " + quoted(cut)).exitCode, 3);
}

TEST_F(Program, GivesSeveralDrawingsAPictureEach) {
    const std::string one = file("one.dxf", drawing(mtextEntity("One")));
    const std::string two = file("two.dxf", drawing(mtextEntity("Two")));
    EXPECT_EQ(run("layout --svg " + quoted(path("out.svg")) + " " + quoted(one) + " " + quoted(two)).exitCode, 0);
    EXPECT_FALSE(contentsOf(path("out-one.svg")).empty());
    EXPECT_FALSE(contentsOf(path("out-two.svg")).empty());
}

TEST_F(Program, MeasuresALineAsTheFontsOwnTablesSay) {
    // DejaVu Sans: H is 1540 of 2048 units wide; capitals are 1493 high.
    const Outcome outcome = run("measure HH --font \"DejaVu Sans\" --cap-size 1493 --json");
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err;
    const nlohmann::json json = nlohmann::json::parse(outcome.out);
    EXPECT_NEAR(json["emSize"].get<double>(), 2048.0, 0.01);
    EXPECT_NEAR(json["box"][2].get<double>() - json["box"][0].get<double>(), 3080.0, 0.1);
    EXPECT_TRUE(json["installed"].get<bool>());
}

TEST_F(Program, MeasuresAnUnknownFamilyWithTheFallbackFontAndSaysSo) {
    const Outcome outcome = run("measure Text --font \"No Such Family\" --cap-size 10");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_NE(outcome.out.find("instead of No Such Family, which is not installed"), std::string::npos) << outcome.out;
}

TEST_F(Program, MeasuresAReplacedFamilyByTheNumbersOfItsReplacement) {
    // Liberation Sans: H is 1479 of 2048 units wide, capitals are 1409 high, the ascent is 1854 and the descent 434
    // (fontTools: hmtx, OS/2.sCapHeight, head, hhea).
    const Outcome outcome = run("measure HH --font Arial --cap-size 1409 --json");
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err;
    const nlohmann::json json = nlohmann::json::parse(outcome.out);
    EXPECT_EQ(json["requestedFont"], "Arial");
    EXPECT_EQ(json["family"], "Liberation Sans");
    EXPECT_FALSE(json["installed"].get<bool>());
    EXPECT_EQ(json["drawnBy"], nlohmann::json::parse(R"(["Liberation Sans"])"));
    EXPECT_NEAR(json["emSize"].get<double>(), 2048.0, 0.01);
    EXPECT_NEAR(json["metrics"]["ascent"].get<double>(), 1854.0, 0.01);
    EXPECT_NEAR(json["metrics"]["descent"].get<double>(), 434.0, 0.01);
    EXPECT_NEAR(json["box"][2].get<double>() - json["box"][0].get<double>(), 2958.0, 0.1);
}

TEST_F(Program, MeasureReplacesFontsAsDrawingsDo) {
    const std::string map = " --font-map " + quoted(file("map.json", R"({"romans.shx": "Liberation Mono"})"));
    EXPECT_NE(run("measure A --font ROMANS --cap-size 1" + map)
                  .out.find("Liberation Mono (instead of ROMANS, which is not installed)"),
              std::string::npos);
    EXPECT_NE(run("measure A --font LiberationSerif-Regular.ttf --cap-size 1")
                  .out.find("Liberation Serif (draws the "
                            "text of"),
              std::string::npos);
}

TEST_F(Program, MeasureNamesEveryFamilyThatDraws) {
    const Outcome outcome = run("measure \"u寸\" --font \"DejaVu Sans\" --cap-size 1 --json");
    const nlohmann::json json = nlohmann::json::parse(outcome.out, nullptr, false);
    ASSERT_TRUE(json.is_object()) << outcome.err;
    EXPECT_EQ(json["family"], "DejaVu Sans");
    ASSERT_EQ(json["drawnBy"].size(), 2U) << json["drawnBy"];
    EXPECT_EQ(json["drawnBy"][0], "DejaVu Sans");
    EXPECT_TRUE(json["drawnBy"][1].get<std::string>().starts_with("Noto Sans CJK")) << json["drawnBy"];
}

TEST_F(Program, MeasureNamesTheFamilyThatDrawsTheTextOfOneOfItsWidths) {
    // The families of the Win32 model are faces of one family where text is laid out.
    const Outcome outcome = run("measure u --font \"DejaVu Sans Condensed\" --cap-size 1");
    EXPECT_NE(outcome.out.find("DejaVu Sans (draws the text of DejaVu Sans Condensed)"), std::string::npos)
        << outcome.out;
}

TEST_F(Program, ListsFamiliesAndTheFontsOfOne) {
    EXPECT_NE(run("fonts").out.find("DejaVu Sans ("), std::string::npos);
    const Outcome outcome = run("fonts --family \"DejaVu Sans\"");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_NE(outcome.out.find("capitals 1493 of 2048"), std::string::npos) << outcome.out;
}

TEST_F(Program, RefusesToListAnUnknownFamily) {
    const Outcome outcome = run("fonts --family \"No Such Family\"");
    EXPECT_EQ(outcome.exitCode, 3);
    EXPECT_NE(outcome.err.find("no font of the family \"No Such Family\" is installed"), std::string::npos)
        << outcome.err;
}

} // namespace
