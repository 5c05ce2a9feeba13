#include <OutputFile.h>

#include <InputError.h>

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include <FileIdentity.h>
#include <TemporaryFile.h>

#include "Program.h"

using namespace tooltest;

namespace {

class OutputFileTest : public ProgramTest {
protected:
    void TearDown() override {
        EXPECT_EQ(filesOf(path("")), m_expected) << "something else was left behind";
        ProgramTest::TearDown();
    }

    /// The names in the test's folder; what a run left behind shows in TearDown().
    static std::vector<std::string> filesOf(const std::string& folder) {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    static void writeOut(const std::string& target, const std::string& bytes) {
        tool::OutputFile output(target);
        output.stream() << bytes;
        output.commit();
    }

    /// What the system says of a target that cannot be written.
    static std::string refusal(const std::string& target, const std::string& bytes = "new") {
        try {
            writeOut(target, bytes);
        } catch (const tool::InputError& error) {
            EXPECT_EQ(error.code(), tool::ExitCode::UnwritableOutput);
            return error.what();
        }
        return "no error";
    }

    /// Runs this in a process of its own and gives its wait status.
    template <typename Work>
    static int inAnotherProcess(Work work) {
        const pid_t child = fork();
        if (child == 0) {
            work();
            _exit(0);
        }
        int status = 0;
        waitpid(child, &status, 0);
        return status;
    }

    std::vector<std::string> m_expected;
};

mode_t modeOf(const std::string& path) {
    struct stat found {};
    EXPECT_EQ(stat(path.c_str(), &found), 0) << path;
    return found.st_mode;
}

/// Without end; each step needs what the one below it gives.
int descend(int depth) {
    volatile char block[4096] = {};
    return depth < 0 ? 0 : descend(depth + 1) + block[depth % 4096];
}

TEST_F(OutputFileTest, ANewFileHasTheModeThatAnyNewFileHas) {
    const mode_t before = umask(027);
    writeOut(path("out"), "bytes");
    umask(before);
    EXPECT_EQ(contentsOf(path("out")), "bytes");
    EXPECT_EQ(modeOf(path("out")) & 07777U, 0640U);
    m_expected = {"out"};
}

TEST_F(OutputFileTest, AnExistingFileKeepsModeAndOwner) {
    const std::string target = file("out", "old");
    ASSERT_EQ(chmod(target.c_str(), 0604), 0);
    const bool root = geteuid() == 0;
    ASSERT_TRUE(!root || chown(target.c_str(), 12345, 54321) == 0);
    writeOut(target, "new");
    EXPECT_EQ(contentsOf(target), "new");
    EXPECT_EQ(modeOf(target) & 07777U, 0604U);
    struct stat found {};
    ASSERT_EQ(stat(target.c_str(), &found), 0);
    EXPECT_EQ(found.st_uid, root ? 12345U : geteuid());
    EXPECT_EQ(found.st_gid, root ? 54321U : getegid());
    m_expected = {"out"};
}

TEST_F(OutputFileTest, WithoutCommitTheOldFileStays) {
    const std::string target = file("out", "old");
    {
        tool::OutputFile output(target);
        output.stream() << "new";
        EXPECT_EQ(contentsOf(output.collected()), "new");
        EXPECT_EQ(filesOf(path("")).size(), 2U);
    }
    EXPECT_EQ(contentsOf(target), "old");
    m_expected = {"out"};
}

TEST_F(OutputFileTest, ReadersOfTheOldFileKeepIt) {
    const std::string target = file("out", "old");
    std::ifstream reader(target);
    writeOut(target, "new");
    std::string read;
    reader >> read;
    EXPECT_EQ(read, "old");
    m_expected = {"out"};
}

TEST_F(OutputFileTest, LinksAreFollowed) {
    file("target", "old");
    std::filesystem::create_symlink("target", path("second"));
    std::filesystem::create_symlink(path("second"), path("first"));
    writeOut(path("first"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(path("first")));
    EXPECT_TRUE(std::filesystem::is_symlink(path("second")));
    EXPECT_EQ(contentsOf(path("target")), "new");
    m_expected = {"first", "second", "target"};
}

TEST_F(OutputFileTest, ALinkToNothingIsWhereTheFileIsMade) {
    std::filesystem::create_symlink("made", path("link"));
    writeOut(path("link"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(path("link")));
    EXPECT_EQ(contentsOf(path("made")), "new");
    m_expected = {"link", "made"};
}

TEST_F(OutputFileTest, LinksInACircleAreRefused) {
    std::filesystem::create_symlink("b", path("a"));
    std::filesystem::create_symlink("a", path("b"));
    EXPECT_EQ(refusal(path("a")),
              path("a") + ": cannot be written: Too many levels of symbolic links; give another path");
    m_expected = {"a", "b"};
}

TEST_F(OutputFileTest, ADeviceIsWrittenToAndStays) {
    EXPECT_EQ(refusal("/dev/full"),
              "/dev/full: cannot be written: No space left on device; make room or give another path");
    writeOut("/dev/null", "gone");
    EXPECT_TRUE(S_ISCHR(modeOf("/dev/full")));
    EXPECT_TRUE(S_ISCHR(modeOf("/dev/null")));
}

TEST_F(OutputFileTest, AFifoGetsTheBytesAndStays) {
    const std::string target = path("fifo");
    ASSERT_EQ(mkfifo(target.c_str(), 0600), 0);
    std::string read;
    std::thread reader([&] { read = contentsOf(target); });
    writeOut(target, std::string(200000, 'x'));
    reader.join();
    EXPECT_EQ(read, std::string(200000, 'x'));
    EXPECT_TRUE(S_ISFIFO(modeOf(target)));
    m_expected = {"fifo"};
}

TEST_F(OutputFileTest, AReaderThatHasGoneIsAnError) {
    int ends[2] = {-1, -1};
    ASSERT_EQ(pipe(ends), 0);
    close(ends[0]);
    const auto before = std::signal(SIGPIPE, SIG_IGN);
    const std::string target = "/dev/fd/" + std::to_string(ends[1]);
    EXPECT_EQ(refusal(target), target + ": cannot be written: Broken pipe; keep the program that reads it running");
    std::signal(SIGPIPE, before);
    close(ends[1]);
}

TEST_F(OutputFileTest, AnOpenFileOfTheCallersIsContinued) {
    const int descriptor = open(path("log").c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    ASSERT_GE(descriptor, 0);
    ASSERT_EQ(write(descriptor, "before ", 7), 7);
    writeOut("/dev/fd/" + std::to_string(descriptor), "after");
    close(descriptor);
    EXPECT_EQ(contentsOf(path("log")), "before after");
    m_expected = {"log"};
}

TEST_F(OutputFileTest, AFolderIsRefused) {
    std::filesystem::create_directory(path("folder"));
    for (const std::string name : {"folder", "folder/", "folder/."}) {
        EXPECT_EQ(refusal(path(name)), path(name) + ": cannot be written: is a folder; give the path of a file");
    }
    EXPECT_EQ(refusal(path("none/out")), path("none/out") + ": cannot be written: No such file or directory; create "
                                                            "the folder or give another path");
    file("plain", "");
    EXPECT_EQ(refusal(path("plain/out")),
              path("plain/out") + ": cannot be written: Not a directory; create the folder or give another path");
    m_expected = {"folder", "plain"};
}

TEST_F(OutputFileTest, TheLongestNameThatAFileCanHaveIsTaken) {
    const std::string name(255, 'n');
    writeOut(path(name), "bytes");
    EXPECT_EQ(contentsOf(path(name)), "bytes");
    EXPECT_EQ(refusal(path(name + "n")),
              path(name + "n") + ": cannot be written: File name too long; give another path");
    m_expected = {name};
}

TEST_F(OutputFileTest, WhatMayNotBeWrittenIsLeftAlone) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can become somebody who may not";
    }
    const std::string readOnly = file("read-only", "old");
    ASSERT_EQ(chmod(readOnly.c_str(), 0444), 0);
    const std::string open = file("open", "old");
    ASSERT_EQ(chmod(open.c_str(), 0666), 0);
    ASSERT_EQ(chmod(path("").c_str(), 0755), 0);
    const int status = inAnotherProcess([&] {
        if (setgid(65534) != 0 || setuid(65534) != 0) {
            _exit(2);
        }
        const std::string denied = ": cannot be written: Permission denied; give a path that you may write to";
        // Its folder takes no file, so that this one is written into.
        writeOut(open, "new");
        _exit(refusal(readOnly) == readOnly + denied && refusal(path("made")) == path("made") + denied ? 0 : 1);
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(contentsOf(readOnly), "old");
    EXPECT_EQ(contentsOf(open), "new");
    m_expected = {"open", "read-only"};
}

TEST_F(OutputFileTest, AFileSizeLimitIsAnErrorAndTheOldFileStays) {
    const std::string target = file("out", "old");
    const int status = inAnotherProcess([&] {
        tool::removeTemporaryFilesOnSignals();
        const rlimit limit{100000, 100000};
        setrlimit(RLIMIT_FSIZE, &limit);
        _exit(refusal(target, std::string(200000, 'x')) ==
                      target + ": cannot be written: File too large; make room or give another path"
                  ? 0
                  : 1);
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(contentsOf(target), "old");
    m_expected = {"out"};
}

TEST_F(OutputFileTest, NoSignalThatEndsTheProgramLeavesAnything) {
    const std::string target = file("out", "old");
    for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGABRT, SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGSYS,
                             SIGTRAP, SIGALRM, SIGVTALRM, SIGPROF, SIGUSR1, SIGUSR2, SIGXCPU, SIGIO}) {
        const int status = inAnotherProcess([&] {
            const rlimit none{0, 0};
            setrlimit(RLIMIT_CORE, &none);
            std::signal(signal, SIG_DFL);
            tool::removeTemporaryFilesOnSignals();
            tool::OutputFile output(target);
            tool::OutputFile other(path("other"));
            output.stream() << "new" << std::flush;
            raise(signal);
        });
        ASSERT_TRUE(WIFSIGNALED(status)) << signal;
        EXPECT_EQ(WTERMSIG(status), signal);
        EXPECT_EQ(filesOf(path("")), std::vector<std::string>{"out"}) << signal;
    }
    EXPECT_EQ(contentsOf(target), "old");
    m_expected = {"out"};
}

TEST_F(OutputFileTest, AStackThatRunsOverLeavesNothingEither) {
    const int status = inAnotherProcess([&] {
        const rlimit none{0, 0};
        setrlimit(RLIMIT_CORE, &none);
        std::signal(SIGSEGV, SIG_DFL);
        tool::removeTemporaryFilesOnSignals();
        tool::OutputFile output(path("out"));
        _exit(descend(0));
    });
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGSEGV);
}

TEST_F(OutputFileTest, AnIgnoredSignalStaysIgnored) {
    const int status = inAnotherProcess([&] {
        std::signal(SIGHUP, SIG_IGN);
        tool::removeTemporaryFilesOnSignals();
        tool::OutputFile output(path("out"));
        raise(SIGHUP);
        output.stream() << "new";
        output.commit();
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(contentsOf(path("out")), "new");
    m_expected = {"out"};
}

TEST_F(OutputFileTest, TwoAtOnceBothWriteWholeFiles) {
    const std::string target = path("out");
    {
        tool::OutputFile first(target);
        tool::OutputFile second(target);
        first.stream() << std::string(100000, '1');
        second.stream() << std::string(50000, '2');
        first.commit();
        EXPECT_EQ(contentsOf(target), std::string(100000, '1'));
        second.commit();
    }
    EXPECT_EQ(contentsOf(target), std::string(50000, '2'));
    m_expected = {"out"};
}

TEST_F(OutputFileTest, TheStreamSeeks) {
    {
        tool::OutputFile output(path("out"));
        output.stream() << "one two three";
        EXPECT_EQ(output.stream().tellp(), std::ostream::pos_type(13));
        output.stream().seekp(4);
        output.stream() << "TWO";
        output.stream().seekp(0, std::ios::end);
        output.stream() << " four";
        output.commit();
    }
    EXPECT_EQ(contentsOf(path("out")), "one TWO three four");
    m_expected = {"out"};
}

TEST_F(OutputFileTest, NamesThatAFolderTellsApartAreTwoFiles) {
    EXPECT_FALSE(tool::wouldBeOneFile(path("plan.png"), path("Plan.png")));
    EXPECT_TRUE(tool::wouldBeOneFile(path("plan.png"), path("./plan.png")));
}

TEST_F(OutputFileTest, AFileThatIsNotThereIsKnownByAllItsNames) {
    std::filesystem::create_directory(path("folder"));
    std::filesystem::create_directory_symlink("folder", path("alias"));
    std::filesystem::create_symlink("folder/out", path("link"));
    const auto identity = tool::identityOf(path("folder/out"), 1);
    ASSERT_TRUE(identity.has_value());
    EXPECT_EQ(tool::identityOf(path("alias/out"), 1), identity);
    EXPECT_EQ(tool::identityOf(path("folder/../alias/./out"), 1), identity);
    EXPECT_EQ(tool::identityOf(path("link"), 1), identity);
    EXPECT_NE(tool::identityOf(path("folder/other"), 1), identity);
    EXPECT_EQ(tool::identityOf("/dev/null", 1), std::nullopt);
    m_expected = {"alias", "folder", "link"};
}

} // namespace
