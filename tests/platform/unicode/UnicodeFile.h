#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace platform_test {

/// Calls `visit` for every line of one of Unicode's data files, with comments and empty lines left out. A file that is
/// missing fails the test with the name of the package that has it.
void forEachLine(const std::string& file, const std::function<void(std::string_view line)>& visit);

/// The same for a file of the data folder of these tests.
void forEachLineOfData(const std::string& file, const std::function<void(std::string_view line)>& visit);

/// The characters whose numbers stand in `codes`.
std::u16string textOfCodes(std::string_view codes);

/// The parts of `text` between separators, without the blanks around them.
std::vector<std::string_view> split(std::string_view text, char separator);

/// The number that stands in `text`.
unsigned numberOf(std::string_view text, int base = 10);

/// Appends a character as UTF-16.
void append(std::u16string& text, char32_t character);

/// A text and where something may begin in it, as the break tests write them.
struct BreakCase {
    std::u16string text;
    /// One more than there are units; units inside a character are never a place to break.
    std::vector<bool> breaks;
};

/// All cases of a break test file of Unicode's in the data folder of these tests.
std::vector<BreakCase> readBreakCasesOfData(const std::string& file);

/// The units of `text` in hexadecimal, for messages.
std::string hexadecimal(std::u16string_view text);

} // namespace platform_test
