#pragma once

#include <optional>
#include <string>
#include <vector>

#include <dxf/Limits.h>

#include "InputError.h"
#include "TextLayout.h"

namespace tool {

struct LayoutOptions {
    std::vector<std::string> drawings;
    std::optional<std::string> json;
    std::optional<std::string> svg;
    std::optional<std::string> png;
    std::optional<std::string> fontMap;
    bool boxes = false;
    TextLayoutOptions layout;
    dxf::Limits limits;
};

// Lays out all texts of the drawings, writes what was asked for, and says on
// standard output what was found, replaced and ignored. A drawing that cannot be
// used is named on standard error, and in the JSON, and the others are worked on;
// the exit code is the worst of them. Throws InputError for a file that cannot be
// written.
ExitCode runLayout(const LayoutOptions& options);

} // namespace tool
