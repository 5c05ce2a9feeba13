#include "InputError.h"

namespace tool {

namespace {

bool isOneOf(std::error_code reason, std::initializer_list<std::errc> conditions) {
    for (const std::errc condition : conditions) {
        if (reason == condition) {
            return true;
        }
    }
    return false;
}

std::string adviceForWriting(std::error_code reason) {
    if (isOneOf(reason, {std::errc::no_such_file_or_directory, std::errc::not_a_directory})) {
        return "create the folder or give another path";
    }
    if (isOneOf(reason,
                {std::errc::permission_denied, std::errc::operation_not_permitted, std::errc::read_only_file_system})) {
        return "give a path that you may write to";
    }
    if (isOneOf(reason, {std::errc::no_space_on_device, std::errc::file_too_large})) {
        return "make room or give another path";
    }
    if (reason == std::errc::broken_pipe) {
        return "keep the program that reads it running";
    }
    return "give another path";
}

std::string adviceForReading(std::error_code reason) {
    if (isOneOf(reason, {std::errc::permission_denied, std::errc::operation_not_permitted})) {
        return "give a file that you may read";
    }
    return "check the path";
}

} // namespace

std::string inputName(const std::string& path) {
    return path == standardStreamName ? "standard input" : path;
}

std::string outputName(const std::string& path) {
    return path == standardStreamName ? "standard output" : path;
}

InputError unreadable(const std::string& path, std::error_code reason) {
    if (reason == std::errc::is_a_directory) {
        return InputError(inputName(path) + ": is a folder; give the path of a file");
    }
    return InputError(inputName(path) + ": cannot be opened: " + reason.message() + "; " + adviceForReading(reason));
}

InputError unwritable(const std::string& path, std::error_code reason) {
    if (reason == std::errc::is_a_directory) {
        return InputError(outputName(path) + ": cannot be written: is a folder; give the path of a file",
                          ExitCode::UnwritableOutput);
    }
    return InputError(outputName(path) + ": cannot be written: " + reason.message() + "; " + adviceForWriting(reason),
                      ExitCode::UnwritableOutput);
}

} // namespace tool
