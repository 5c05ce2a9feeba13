#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include <dxf/Drawing.h>
#include <mtext/Diagnostics.h>

#include "InputFile.h"
#include "Session.h"
#include "TextLayout.h"
#include "TextNotes.h"

namespace tool {

// A drawing with all visible texts laid out, and what a person should know.
struct LaidOutDrawing {
    std::string path;
    dxf::Drawing drawing;
    std::vector<dxf::PlacedText> placed; // one per text, same order as `texts`
    std::vector<LaidOutText> texts;
    std::vector<std::vector<mtext::Diagnostic>> diagnostics; // one list per text
    TextNotes notes;
    std::size_t emptyTexts = 0;        // of the texts; they show nothing
    std::size_t hiddenTexts = 0;       // on layers that are off or frozen, or invisible
    std::vector<std::string> failures; // texts that could not be laid out, and why
};

// Opens and reads a drawing. Throws InputError for a file that is missing or no
// drawing.
dxf::Drawing readDrawingFile(const std::string& path);

// Reads a drawing from its file, which `path` names in messages.
dxf::Drawing readDrawingFile(const std::string& path, InputFile& file);

// Reads a drawing and lays out every visible occurrence of its texts.
LaidOutDrawing layOutDrawing(Session& session, const std::string& path, const TextLayoutOptions& options);

} // namespace tool
