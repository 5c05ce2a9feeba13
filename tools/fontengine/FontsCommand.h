#pragma once

#include <optional>
#include <string>

#include "InputError.h"

namespace tool {

struct FontsOptions {
    std::optional<std::string> family; // as the system names families, or a Win32 name of one of its fonts
};

// Lists the system's font families, or the fonts of one.
ExitCode runFonts(const FontsOptions& options);

} // namespace tool
