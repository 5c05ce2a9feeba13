#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>
#include <unistd.h>

// A folder of fonts of a test process's own (several may run at once), which the
// platform sees instead of any other. Make it before the first engine.
class FontFolder {
public:
    explicit FontFolder(const std::string& name)
        : m_root(std::filesystem::path(testing::TempDir()) / (name + '-' + std::to_string(getpid()))) {
        std::filesystem::remove_all(m_root);
        std::filesystem::create_directories(fonts());
        std::ofstream(m_root / "fonts.conf")
            << "<?xml version=\"1.0\"?>\n<fontconfig>\n  <dir>" << fonts().string() << "</dir>\n  <cachedir>"
            << (m_root / "cache").string() << "</cachedir>\n</fontconfig>\n";
        setenv("FONTCONFIG_FILE", (m_root / "fonts.conf").c_str(), 1);
    }
    ~FontFolder() { std::filesystem::remove_all(m_root); }
    FontFolder(const FontFolder&) = delete;
    FontFolder& operator=(const FontFolder&) = delete;

    std::filesystem::path fonts() const { return m_root / "fonts"; }

    // Copies the first `bytes` of a pinned font (package/file) under another name.
    void addPart(const std::string& pinnedFont, std::size_t bytes, const std::string& name) const {
        std::ifstream source(std::filesystem::path(FONTENGINE_TEST_FONTS) / pinnedFont, std::ios::binary);
        std::string content(bytes, '\0');
        source.read(content.data(), static_cast<std::streamsize>(bytes));
        EXPECT_GT(source.gcount(), 0) << pinnedFont;
        content.resize(static_cast<std::size_t>(source.gcount()));
        addFile(name, content);
    }

    void addFile(const std::string& name, const std::string& content) const {
        std::ofstream(fonts() / name, std::ios::binary) << content;
    }

private:
    std::filesystem::path m_root;
};
