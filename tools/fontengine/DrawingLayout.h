#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include <dxf/Drawing.h>
#include <dxf/Limits.h>
#include <mtext/Diagnostics.h>

#include "InputFile.h"
#include "Session.h"
#include "TextLayout.h"
#include "TextNotes.h"

namespace tool {

// What a person should know of a drawing whose visible texts were laid out.
struct DrawingSummary {
    std::size_t texts = 0;       // laid out
    std::size_t emptyTexts = 0;  // of these; they show nothing
    std::size_t hiddenTexts = 0; // on layers that are off or frozen, or invisible
    TextNotes notes;
    std::vector<std::string> failures; // texts that could not be laid out, and why
};

// Takes one text after another. What it is given lasts no longer than the call: a
// drawing can have millions of texts.
using LaidOutTextVisitor =
    std::function<void(const dxf::PlacedText&, const LaidOutText&, const std::vector<mtext::Diagnostic>&)>;

// Opens and reads a drawing. Throws InputError for a file that is missing or no
// drawing, or holds a text beyond the limit.
dxf::Drawing readDrawingFile(const std::string& path, const dxf::Limits& limits);

// Reads a drawing from its file, which `path` names in messages.
dxf::Drawing readDrawingFile(const std::string& path, InputFile& file, const dxf::Limits& limits);

// Throws InputError for a drawing whose references ask for more than the limits
// allow.
void requireWithin(const dxf::Limits& limits, const std::string& path, const dxf::Drawing& drawing);

// Lays out every visible occurrence of a drawing's texts, one at a time. `task`
// tells the person who waits what is being done. What the visitor throws ends the
// work. The drawing is within the limits.
DrawingSummary layOutDrawing(Session& session, const std::string& task, const dxf::Drawing& drawing,
                             const TextLayoutOptions& options, const LaidOutTextVisitor& visit);

} // namespace tool
