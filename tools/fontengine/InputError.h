#pragma once

#include <stdexcept>
#include <string>
#include <system_error>

namespace tool {

// What the program's exit tells a script.
enum class ExitCode {
    Success = 0,
    Failure = 1,       // of the program or the system under it
    Usage = 2,         // the command line
    UnusableInput = 3, // missing, unreadable or not what it should be
    UnwritableOutput = 4,
    DamagedInput = 5, // what could be read was worked on
    NoText = 6,       // nothing to work on
};

// Something that the person at the terminal can mend. The message says what,
// where and what to do.
class InputError : public std::runtime_error {
public:
    explicit InputError(const std::string& message, ExitCode code = ExitCode::UnusableInput)
        : std::runtime_error(message), m_code(code) {}

    ExitCode code() const noexcept { return m_code; }

private:
    ExitCode m_code;
};

// "-" where a file is read: standard input. Where one is written: standard output.
inline constexpr const char* standardStreamName = "-";

// What messages call the file of this path.
std::string inputName(const std::string& path);
std::string outputName(const std::string& path);

// The errors for a file that the system refuses, with its reason.
InputError unreadable(const std::string& path, std::error_code reason);
InputError unwritable(const std::string& path, std::error_code reason);

} // namespace tool
