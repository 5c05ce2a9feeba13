#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <unistd.h>

#include <gtest/gtest.h>

/// The program as a script sees it: exit code, standard output, standard error.
namespace tooltest {

struct Outcome {
    int exitCode = -1;
    std::string out;
    std::string err;
};

inline std::string contentsOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

inline void write(const std::filesystem::path& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

/// A folder of its own for each test, gone with it.
class ProgramTest : public testing::Test {
protected:
    void SetUp() override {
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        std::string name = std::string(test->test_suite_name()) + "-" + test->name();
        std::replace(name.begin(), name.end(), '/', '-'); // of suites with parameters
        m_folder = std::filesystem::temp_directory_path() / ("fontengine-" + name + "-" + std::to_string(getpid()));
        std::filesystem::remove_all(m_folder);
        std::filesystem::create_directories(m_folder);
    }
    void TearDown() override { std::filesystem::remove_all(m_folder); }

    [[nodiscard]] std::string path(const std::string& name) const { return (m_folder / name).string(); }

    /// Writes a file into the test's folder and gives its path.
    std::string file(const std::string& name, const std::string& bytes) const {
        write(m_folder / name, bytes);
        return path(name);
    }

    /// Runs the program with these arguments, paths quoted by the caller.
    [[nodiscard]] Outcome run(const std::string& arguments) const {
        return runInShell("\"" FONTENGINE_PROGRAM "\" " + arguments);
    }

    /// Runs a command line of the shell in the test's folder.
    [[nodiscard]] Outcome runInShell(const std::string& line) const {
        const std::string out = path("stdout.txt");
        const std::string err = path("stderr.txt");
        const std::string command = "cd \"" + path("") + "\" && (" + line + ") >\"" + out + "\" 2>\"" + err + "\"";
        const int status = std::system(command.c_str());
        Outcome outcome;
        // Where the shell's answer is a wait status, the exit code is its second byte.
        outcome.exitCode = status > 255 ? status >> 8 : status;
        outcome.out = contentsOf(out);
        outcome.err = contentsOf(err);
        return outcome;
    }

private:
    std::filesystem::path m_folder;
};

inline std::string quoted(const std::string& path) {
    return "\"" + path + "\"";
}

inline std::string example() {
    return FONTENGINE_EXAMPLES "/floor-plan.dxf";
}

inline std::size_t countOf(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size())) {
        ++count;
    }
    return count;
}

} // namespace tooltest
