#include "support/NumberedFonts.h"

#include <array>
#include <fstream>
#include <iomanip>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace platform::test {

namespace {

std::string sixDigits(std::size_t number) {
    std::ostringstream digits;
    digits << std::setw(6) << std::setfill('0') << number;
    return digits.str();
}

/// ASCII as a name table has it.
std::string bigEndian(std::string_view ascii) {
    std::string units;
    for (const char c : ascii) {
        units += '\0';
        units += c;
    }
    return units;
}

std::string readFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot read " + path.string());
    }
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The font with six digits in the place of "Slopes"; nothing of a font moves where a name keeps its length.
std::string renamed(std::string font, std::size_t family) {
    const std::string name = bigEndian("Slopes");
    const std::string digits = bigEndian(sixDigits(family));
    for (std::size_t at = font.find(name); at != std::string::npos; at = font.find(name, at)) {
        font.replace(at, name.size(), digits);
    }
    return font;
}

} // namespace

void makeNumberedFonts(const std::filesystem::path& data, const std::filesystem::path& folder, std::size_t count,
                       bool reversed) {
    const std::array<std::string, 3> faces = {readFile(data / "Slopes-Regular.ttf"), readFile(data / "Slopes-Bold.ttf"),
                                              readFile(data / "Slopes-LightItalic.ttf")};
    std::filesystem::create_directories(folder);
    for (std::size_t i = 0; i < count; ++i) {
        const std::filesystem::path file = folder / (sixDigits(reversed ? count - 1 - i : i) + ".ttf");
        std::ofstream(file, std::ios::binary) << renamed(faces[i % faces.size()], i / faces.size());
    }
}

void configureFolder(const std::filesystem::path& folder, const std::filesystem::path& configuration) {
    std::ofstream(configuration) << "<?xml version=\"1.0\"?><fontconfig><dir>" << folder.string() << "</dir><cachedir>"
                                 << configuration.string() << ".cache</cachedir></fontconfig>";
}

} // namespace platform::test
