#include "Program.h"

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include <nlohmann/json.hpp>

#include "Drawings.h"

using namespace tooltest;

namespace {

using StandardStreams = ProgramTest;

const std::string fontengine = "\"" FONTENGINE_PROGRAM "\" ";

TEST_F(StandardStreams, AnOutputOnStandardOutputSendsTheSummaryToStandardError) {
    file("plan.dxf", drawing(mtextEntity("Note")));
    for (const std::string target : {"-", "/dev/stdout"}) {
        const Outcome outcome = run("layout plan.dxf --json " + target);
        EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
        EXPECT_TRUE(nlohmann::json::accept(outcome.out)) << outcome.out;
        EXPECT_NE(outcome.err.find("plan.dxf: 1 texts laid out"), std::string::npos) << outcome.err;
    }
}

TEST_F(StandardStreams, ADrawingGoesThroughAPipeAsThroughFiles) {
    file("plan.dxf", drawing(mtextEntity("Note")));
    ASSERT_EQ(run("explode plan.dxf out.dxf --check").exitCode, 0);
    const Outcome outcome = runInShell("cat plan.dxf | " + fontengine + "explode - - --check | cat");
    EXPECT_EQ(outcome.out, contentsOf(path("out.dxf")));
    EXPECT_NE(outcome.err.find("standard input: 1 paragraph texts became 4 entities in standard output"),
              std::string::npos)
        << outcome.err;
    EXPECT_NE(outcome.err.find("4 glyphs, 0 different"), std::string::npos) << outcome.err;
}

TEST_F(StandardStreams, ADrawingIsLaidOutFromAPipe) {
    file("plan.dxf", drawing(mtextEntity("Note")));
    const Outcome outcome = runInShell("cat plan.dxf | " + fontengine + "layout - --svg - ");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_NE(outcome.err.find("standard input: 1 texts laid out"), std::string::npos) << outcome.err;
    EXPECT_NE(outcome.out.find("</svg>"), std::string::npos);
}

TEST_F(StandardStreams, WhatStandsInAnAppendedFileStays) {
    file("plan.dxf", drawing(mtextEntity("Note")));
    const Outcome outcome =
        runInShell("echo before >log; " + fontengine + "layout plan.dxf --quiet --json /dev/stdout >>log");
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
    EXPECT_TRUE(contentsOf(path("log")).starts_with("before\n{"));
}

TEST_F(StandardStreams, QuietPrintsNoSummary) {
    file("plan.dxf", drawing(mtextEntity("Note")));
    for (const std::string call : {"layout plan.dxf --quiet", "explode plan.dxf out.dxf --check --quiet"}) {
        const Outcome outcome = run(call);
        EXPECT_EQ(outcome.exitCode, 0) << call;
        EXPECT_EQ(outcome.out + outcome.err, "") << call;
    }
}

TEST_F(StandardStreams, WhoPrintsNothingNeedsNoStandardOutput) {
    file("plan.dxf", drawing(mtextEntity("Note")));
    for (const std::string closed : {">&-", ">/dev/full"}) {
        EXPECT_EQ(runInShell(fontengine + "layout plan.dxf --quiet --json out.json " + closed).exitCode, 0);
        EXPECT_TRUE(nlohmann::json::accept(contentsOf(path("out.json"))));
    }
}

TEST_F(StandardStreams, AClosedPipeIsAnError) {
    file("plan.dxf", drawing(mtextEntity("Note")));
    for (const std::string call : {"layout plan.dxf", "layout plan.dxf --json -", "explode plan.dxf -"}) {
        // The reader ends first: it is waited for by a FIFO that it opens and closes.
        const Outcome outcome = runInShell("mkfifo gone; (: <gone) & exec 3>gone; wait; " + fontengine + call + " >&3");
        EXPECT_EQ(outcome.exitCode, 4) << call;
        EXPECT_NE(outcome.err.find("fontengine: standard output: cannot be written: Broken pipe; keep the program that "
                                   "reads it running\n"),
                  std::string::npos)
            << outcome.err;
        std::filesystem::remove(path("gone"));
    }
}

TEST_F(StandardStreams, OutputsOfAFailedCallStayAsTheyWere) {
    file("plan.dxf", drawing(mtextEntity("Note")));
    for (const std::string output : {"--json out.json", "--svg out.svg", "--png out.png"}) {
        const std::string name = output.substr(output.find(' ') + 1);
        file(name, "old");
        // No file may grow beyond 512 bytes, so each of them fails in the middle.
        const Outcome outcome = runInShell("ulimit -f 1; " + fontengine + "layout plan.dxf --quiet " + output);
        EXPECT_EQ(outcome.exitCode, 4) << output;
        EXPECT_EQ(outcome.err,
                  "fontengine: " + name + ": cannot be written: File too large; make room or give another path\n");
        EXPECT_EQ(contentsOf(path(name)), "old") << output;
    }
    file("out.dxf", "old");
    const Outcome outcome = runInShell("ulimit -f 1; " + fontengine + "explode plan.dxf out.dxf --quiet");
    EXPECT_EQ(outcome.exitCode, 4);
    EXPECT_EQ(outcome.err, "fontengine: out.dxf: cannot be written: File too large; make room or give another path\n");
    EXPECT_EQ(contentsOf(path("out.dxf")), "old");
}

/// A running program that waits for the rest of its input.
class WaitingProgram {
public:
    explicit WaitingProgram(const std::string& folder) : m_temporary(folder + "/tmp") {
        std::filesystem::create_directory(m_temporary);
        int ends[2] = {-1, -1};
        EXPECT_EQ(pipe2(ends, O_CLOEXEC), 0);
        m_input = ends[1];
        m_process = fork();
        if (m_process == 0) {
            dup2(ends[0], STDIN_FILENO);
            // A shell that started the tests in the background lets them ignore some.
            for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
                std::signal(signal, SIG_DFL);
            }
            setenv("TMPDIR", m_temporary.c_str(), 1);
            const std::string output = folder + "/out.dxf";
            execl(FONTENGINE_PROGRAM, "fontengine", "explode", "-", output.c_str(), nullptr);
            _exit(127);
        }
        close(ends[0]);
        while (std::filesystem::is_empty(m_temporary) && waitpid(m_process, nullptr, WNOHANG) == 0) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }
    ~WaitingProgram() { close(m_input); }
    WaitingProgram(const WaitingProgram&) = delete;
    WaitingProgram& operator=(const WaitingProgram&) = delete;

    /// Gives the wait status.
    int end(int signal) const {
        kill(m_process, signal);
        int status = 0;
        waitpid(m_process, &status, 0);
        return status;
    }

    [[nodiscard]] const std::string& temporaryFolder() const { return m_temporary; }

private:
    std::string m_temporary;
    int m_input = -1;
    pid_t m_process = -1;
};

TEST_F(StandardStreams, ASignalInTheMiddleLeavesNothing) {
    file("out.dxf", "old");
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        const WaitingProgram program(path("."));
        ASSERT_FALSE(std::filesystem::is_empty(program.temporaryFolder()));
        const int status = program.end(signal);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal) << status;
        EXPECT_TRUE(std::filesystem::is_empty(program.temporaryFolder()));
    }
    EXPECT_EQ(contentsOf(path("out.dxf")), "old");
}

} // namespace
