#pragma once

#include <cstddef>
#include <string_view>

/// The folder, with a trailing slash, below which source paths are reported. The build defines FONTENGINE_SOURCE_ROOT;
/// a translation unit without it reports its path whole.
#ifdef FONTENGINE_SOURCE_ROOT
#define COMMON_SOURCE_ROOT FONTENGINE_SOURCE_ROOT
#else
#define COMMON_SOURCE_ROOT ""
#endif

namespace common {

/// The path of a source file as messages show it: a zero-terminated text that holds at most Size characters.
template <std::size_t Size>
struct SourcePath {
    char text[Size]{};
};

/// Turns the compiler's idea of a file's path into the one that messages show: relative to `root`, with forward
/// slashes and without extension. A path outside `root` stays whole, except that the "./" and "../" of a build that
/// compiles with relative paths go. Whichever slash either text uses counts as the same character.
template <std::size_t Size>
[[nodiscard]] consteval SourcePath<Size> sourcePath(const char (&file)[Size], std::string_view root) {
    const auto unified = [](char character) { return character == '\\' ? '/' : character; };
    std::string_view rest(file, Size - 1);

    bool underRoot = rest.size() >= root.size();
    for (std::size_t i = 0; underRoot && i < root.size(); ++i) {
        underRoot = unified(rest[i]) == unified(root[i]);
    }
    if (underRoot) {
        rest.remove_prefix(root.size());
    }
    const auto startsWithStep = [&](std::string_view step) {
        return rest.starts_with(step) && rest.size() > step.size() && unified(rest[step.size()]) == '/';
    };
    while (startsWithStep(".") || startsWithStep("..")) {
        rest.remove_prefix(startsWithStep(".") ? 2 : 3);
    }

    const std::size_t lastSlash = rest.find_last_of("/\\");
    const std::size_t nameStart = lastSlash == std::string_view::npos ? 0 : lastSlash + 1;
    const std::size_t lastDot = rest.rfind('.');
    if (lastDot != std::string_view::npos && lastDot > nameStart) {
        rest = rest.substr(0, lastDot);
    }

    SourcePath<Size> path;
    for (std::size_t i = 0; i < rest.size(); ++i) {
        path.text[i] = unified(rest[i]);
    }
    return path;
}

} // namespace common

/// The path of the file that this macro stands in, as a `const char*` that lives as long as the program.
#define COMMON_SOURCE_PATH                                                                                             \
    ([]() noexcept -> const char* {                                                                                    \
        static constexpr auto path = ::common::sourcePath(__FILE__, COMMON_SOURCE_ROOT);                               \
        return path.text;                                                                                              \
    }())
