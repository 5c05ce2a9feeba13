#include "support/Fonts.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>

#include <Common/Utf.h>
#include <gtest/gtest.h>

namespace platform::test {
namespace {

namespace files = std::filesystem;

/// Writes the families that a new process finds, and the width of the first one's H, and ends the process.
[[noreturn]] void answerWithFonts(const std::string& configuration) {
    setenv("FONTCONFIG_FILE", configuration.c_str(), 1);
    for (const auto& family : CFontCollection::system().families()) {
        const CFontFace& face = family->fonts().front()->face();
        std::cerr << common::utf8FromWide(family->names()[0].text) << '=' << face.advance(face.nominalGlyph(U'H'))
                  << ';';
    }
    std::cerr << std::endl;
    std::_Exit(0);
}

/// A folder of fonts with a configuration and a cache of its own, gone in the end.
class ChangingFonts : public testing::Test {
protected:
    ChangingFonts() : m_folder(files::path(testing::TempDir()) / "changing-fonts") {
        // Every answer comes from a process that runs the test up to there anew.
        testing::FLAGS_gtest_death_test_style = "threadsafe";
        if (!testing::internal::InDeathTestChild()) {
            files::remove_all(m_folder);
            files::create_directories(m_folder / "fonts");
            std::ofstream(configuration())
                << "<?xml version=\"1.0\"?><fontconfig><dir>" << (m_folder / "fonts").string() << "</dir><cachedir>"
                << (m_folder / "cache").string() << "</cachedir></fontconfig>";
        }
    }
    ~ChangingFonts() override {
        if (!testing::internal::InDeathTestChild()) {
            files::remove_all(m_folder);
        }
    }

    std::string configuration() const { return (m_folder / "fonts.conf").string(); }
    void install(const std::string& font) const {
        if (!testing::internal::InDeathTestChild()) {
            files::copy_file(dataPath(font), m_folder / "fonts" / files::path(font).filename());
        }
    }
    void remove(const std::string& font) const {
        if (!testing::internal::InDeathTestChild()) {
            files::remove(m_folder / "fonts" / font);
        }
    }

private:
    const files::path m_folder;
};

TEST_F(ChangingFonts, AreThoseThatAreThereWhenAProcessFirstAsks) {
    install("Cff.otf");
    EXPECT_EXIT(answerWithFonts(configuration()), testing::ExitedWithCode(0), "^Test Cff=700;\n$");
    install("Wws.ttf");
    EXPECT_EXIT(answerWithFonts(configuration()), testing::ExitedWithCode(0), "^Test Cff=700;Test Wws=700;\n$");
    remove("Cff.otf");
    EXPECT_EXIT(answerWithFonts(configuration()), testing::ExitedWithCode(0), "^Test Wws=700;\n$");
    remove("Wws.ttf");
    EXPECT_EXIT(answerWithFonts(configuration()), testing::ExitedWithCode(0), "^\n$");
}

} // namespace
} // namespace platform::test
