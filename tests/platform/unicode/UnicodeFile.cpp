#include "unicode/UnicodeFile.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>
#include <unicode/utf16.h>

namespace platform_test {

namespace {

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

void visitLines(std::istream& stream, const std::function<void(std::string_view line)>& visit) {
    for (std::string line; std::getline(stream, line);) {
        const std::string_view content = trimmed(std::string_view(line).substr(0, line.find('#')));
        if (!content.empty()) {
            visit(content);
        }
    }
}

} // namespace

void forEachLine(const std::string& file, const std::function<void(std::string_view line)>& visit) {
    std::ifstream stream(FONTENGINE_UNICODE_DATA "/" + file);
    ASSERT_TRUE(stream) << file << " is missing from " FONTENGINE_UNICODE_DATA
                        << ": install the package unicode-data (scripts/install-packages test does)";
    visitLines(stream, visit);
}

void forEachLineOfData(const std::string& file, const std::function<void(std::string_view line)>& visit) {
    std::ifstream stream(FONTENGINE_TEST_DATA "/platform/unicode/data/" + file);
    ASSERT_TRUE(stream) << file;
    visitLines(stream, visit);
}

std::u16string textOfCodes(std::string_view codes) {
    std::u16string text;
    for (const std::string_view code : split(codes, ' ')) {
        append(text, numberOf(code, 16));
    }
    return text;
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find(separator, start), text.size());
        parts.push_back(trimmed(text.substr(start, end - start)));
        start = end + 1;
    }
    return parts;
}

unsigned numberOf(std::string_view text, int base) {
    unsigned number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number, base);
    EXPECT_EQ(text.data() + text.size(), result.ptr) << text;
    return number;
}

void append(std::u16string& text, char32_t character) {
    if (U_IS_BMP(character)) {
        text += static_cast<char16_t>(character);
    } else {
        text += static_cast<char16_t>(U16_LEAD(character));
        text += static_cast<char16_t>(U16_TRAIL(character));
    }
}

std::vector<BreakCase> readBreakCasesOfData(const std::string& file) {
    std::vector<BreakCase> cases;
    forEachLineOfData(file, [&](std::string_view line) {
        BreakCase& added = cases.emplace_back();
        for (const std::string_view part : split(line, ' ')) {
            if (part == "\u00F7" || part == "\u00D7") {
                added.breaks.resize(added.text.size());
                added.breaks.push_back(part == "\u00F7");
            } else {
                append(added.text, numberOf(part, 16));
            }
        }
        EXPECT_EQ(added.text.size() + 1, added.breaks.size()) << line;
    });
    return cases;
}

std::string hexadecimal(std::u16string_view text) {
    std::ostringstream stream;
    stream << std::hex << std::uppercase;
    for (const char16_t unit : text) {
        stream << static_cast<unsigned>(unit) << ' ';
    }
    return stream.str();
}

} // namespace platform_test
