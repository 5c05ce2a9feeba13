#pragma once

#include <optional>
#include <string>
#include <vector>

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
};

// Lays out all texts of the drawings, writes what was asked for, and says on
// standard output what was found, replaced and ignored. Throws InputError for
// the first drawing that cannot be used.
ExitCode runLayout(const LayoutOptions& options);

} // namespace tool
