#pragma once

#include <optional>
#include <string>

#include <dxf/Limits.h>

#include "Exploder.h"
#include "InputError.h"

namespace tool {

struct ExplodeOptions {
    std::string input;
    std::string output;
    PieceKind kind = PieceKind::Clusters;
    std::optional<std::string> fontMap;
    std::optional<std::string> report; // JSON
    bool check = false;                // lay the result out again and compare
    dxf::Limits limits;
};

// Writes a copy of a drawing in which pieces stand for every paragraph text, and
// says on standard output what became of them. Throws InputError for a drawing
// that cannot be used and a file that cannot be written.
ExitCode runExplode(const ExplodeOptions& options);

} // namespace tool
