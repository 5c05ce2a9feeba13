#include "Arguments.h"

#include <windows.h>

#include <shellapi.h>

#include <Common/Utf.h>

namespace tool {

// argv went through the system's code page; the command line itself is whole.
std::vector<std::string> commandLineArguments(int, char**) {
    int count = 0;
    wchar_t** wide = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) {
        arguments.push_back(common::utf8FromWide(wide[i]));
    }
    LocalFree(wide);
    return arguments;
}

} // namespace tool
