#include "Program.h"

#include <nlohmann/json.hpp>

#include "Drawings.h"

using namespace tooltest;

namespace {

using ProgramLimits = ProgramTest;

std::string block(const std::string& name, const std::string& content) {
    return "0 BLOCK\n8 0\n2 " + name + "\n70 0\n10 0\n20 0\n" + content + "\n0 ENDBLK\n8 0";
}

std::string reference(const std::string& name, const std::string& more = "") {
    return "0 INSERT\n8 0\n2 " + name + "\n10 0\n20 0" + (more.empty() ? "" : "\n" + more);
}

/// One text in 32767 rows of 32767 columns.
std::string grid() {
    return drawing(reference("GRID", "70 32767\n71 32767"), "AC1032", "DejaVuSans.ttf",
                   block("GRID", mtextEntity("ha")));
}

/// Blocks that each place the next one ten times.
std::string laughs() {
    std::string blocks = block("B0", mtextEntity("ha"));
    for (int i = 1; i < 10; ++i) {
        std::string content;
        for (int k = 0; k < 10; ++k) {
            content += (k == 0 ? "" : "\n") + reference("B" + std::to_string(i - 1));
        }
        blocks += "\n" + block("B" + std::to_string(i), content);
    }
    return drawing(reference("B9"), "AC1032", "DejaVuSans.ttf", blocks);
}

TEST_F(ProgramLimits, AreHeldByBothCommandsAndNamedWithBlockAndDrawing) {
    const std::string small = file("grid.dxf", grid());
    const std::string nested = file("laughs.dxf", laughs());
    for (const auto& [path, name] : {std::pair(small, "block \"GRID\""), std::pair(nested, "block \"B")}) {
        const std::string explode = "explode " + quoted(path) + " " + quoted(this->path("out.dxf"));
        for (const std::string& command : {"layout " + quoted(path), explode}) {
            const Outcome outcome = run(command);
            EXPECT_EQ(outcome.exitCode, 3) << outcome.err;
            EXPECT_NE(outcome.err.find(path + ": "), std::string::npos) << outcome.err;
            EXPECT_NE(outcome.err.find(name), std::string::npos) << outcome.err;
            EXPECT_NE(outcome.err.find("limit of 500000 "), std::string::npos) << outcome.err;
            EXPECT_NE(outcome.err.find("--max-placements"), std::string::npos) << outcome.err;
        }
    }
    EXPECT_FALSE(std::filesystem::exists(path("out.dxf")));
}

TEST_F(ProgramLimits, AreSetByOptions) {
    const std::string twoByThree = file("grid.dxf", drawing(reference("GRID", "70 2\n71 3"), "AC1032", "DejaVuSans.ttf",
                                                            block("GRID", mtextEntity("ha"))));
    // Six blocks and six texts of two characters; one of each is free.
    EXPECT_EQ(run("layout --max-placements 10 " + quoted(twoByThree)).exitCode, 0);
    const std::vector<std::pair<std::string, std::string>> tooSmall{
        {"--max-placements", "9"}, {"--max-depth", "0"}, {"--max-text-length", "1"}, {"--max-placed-length", "11"}};
    for (const auto& [option, value] : tooSmall) {
        const std::string set = option + " " + value + " ";
        for (const std::string& command : {"layout " + set + quoted(twoByThree),
                                           "explode " + set + quoted(twoByThree) + " " + quoted(path("out.dxf"))}) {
            const Outcome outcome = run(command);
            EXPECT_EQ(outcome.exitCode, 3) << command;
            EXPECT_NE(outcome.err.find(option), std::string::npos) << outcome.err;
            EXPECT_NE(outcome.err.find("limit of " + value + " "), std::string::npos) << outcome.err;
        }
    }
}

TEST_F(ProgramLimits, StopOneDrawingAndNotTheOthers) {
    const std::string good = file("good.dxf", drawing(mtextEntity("One")));
    const Outcome outcome =
        run("layout --json " + quoted(path("out.json")) + " " + quoted(file("grid.dxf", grid())) + " " + quoted(good));
    EXPECT_EQ(outcome.exitCode, 3);
    const nlohmann::json drawings = nlohmann::json::parse(contentsOf(path("out.json"))).at("drawings");
    ASSERT_EQ(drawings.size(), 2U);
    EXPECT_NE(drawings[0].at("error").get<std::string>().find("GRID"), std::string::npos);
    EXPECT_EQ(drawings[1].at("texts").size(), 1U);
}

} // namespace
