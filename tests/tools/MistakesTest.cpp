#include "Program.h"

#include <sstream>
#include <vector>

#include "Drawings.h"

using namespace tooltest;

namespace {

/// One case of mistakes.txt.
struct Mistake {
    std::string name;
    std::string command;
    int exitCode = 0;
    std::string error;
};

/// The name of a case that failed.
void PrintTo(const Mistake& mistake, std::ostream* out) {
    *out << mistake.name;
}

std::vector<Mistake> mistakes() {
    std::vector<Mistake> cases;
    std::istringstream file(contentsOf(FONTENGINE_TEST_DATA "/tools/mistakes.txt"));
    std::string line;
    while (std::getline(file, line)) {
        if (line.empty() || line.starts_with('#')) {
            continue;
        }
        Mistake mistake;
        mistake.name = line;
        std::getline(file, mistake.command);
        std::getline(file, line);
        mistake.exitCode = std::stoi(line);
        while (std::getline(file, line) && !line.empty()) {
            mistake.error += line + "\n";
        }
        cases.push_back(mistake);
    }
    return cases;
}

class Mistakes : public ProgramTest, public testing::WithParamInterface<Mistake> {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        std::filesystem::create_directory(path("folder"));
        std::filesystem::create_symlink("plan.dxf", path("link.svg"));
        const std::string two = drawing(mtextEntity("First") + "\n" + mtextEntity("Second", "", "21"));
        file("plan.dxf", plan);
        file("folder/plan.dxf", plan);
        file("cut.dxf", two.substr(0, two.find("Second") + 3));
        file("bare.dxf", drawing(""));
        file("absurd.dxf", drawing("0 MTEXT\n5 20\n8 0\n10 0.0\n20 0.0\n40 1e300\n1 Note\n7 STANDARD"));
        file("empty.dxf", "");
        file("poem.txt", "O Captain! my Captain!\nour fearful trip is done\n");
        file("binary.dxf", std::string("Abcdefg Binary DXF\r\n\x1a\0", 22));
        file("drawing.dwg", std::string("AC1032\0\0\0\0\0", 11));
        file("map.json", "{}");
    }

    const std::string plan = drawing(mtextEntity("Note"));
};

TEST_P(Mistakes, EndWithAMessageAndAnExitCode) {
    const Mistake& mistake = GetParam();
    const Outcome outcome = runInShell("fontengine() { \"" FONTENGINE_PROGRAM "\" \"$@\"; }; " + mistake.command);
    EXPECT_EQ(outcome.exitCode, mistake.exitCode) << mistake.command << '\n' << outcome.out << outcome.err;
    EXPECT_EQ(outcome.err, mistake.error) << mistake.command;
    if (mistake.exitCode == 2) {
        EXPECT_EQ(outcome.out, "") << "the command line is judged before any work";
    }
    EXPECT_EQ(contentsOf(path("plan.dxf")), plan);
    EXPECT_EQ(contentsOf(path("folder/plan.dxf")), plan);
    for (const auto& entry : std::filesystem::directory_iterator(path(""))) {
        EXPECT_FALSE(entry.path().filename().string().starts_with(".")) << entry.path() << " was left behind";
    }
}

INSTANTIATE_TEST_SUITE_P(All, Mistakes, testing::ValuesIn(mistakes()),
                         [](const auto& tested) { return tested.param.name; });

} // namespace
