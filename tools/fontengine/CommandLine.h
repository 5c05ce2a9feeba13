#pragma once

#include <optional>

#include "ExplodeCommand.h"
#include "FontsCommand.h"
#include "LayoutCommand.h"
#include "MeasureCommand.h"

namespace tool {

enum class Command { Layout, Explode, Measure, Fonts };

// What the command line asks for: a command, its options and how much it says.
struct Call {
    Command command = Command::Layout;
    LayoutOptions layout;
    ExplodeOptions explode;
    MeasureOptions measure;
    FontsOptions fonts;
    bool quiet = false;
};

// Nothing where help or the version was asked for, which it prints. Throws
// InputError (Usage) for arguments that mean nothing.
std::optional<Call> readCommandLine(int argc, char** argv);

} // namespace tool
