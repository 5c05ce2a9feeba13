#include "DrawingLayout.h"

#include <algorithm>
#include <new>

#include "Failure.h"
#include "InputError.h"
#include "Progress.h"

namespace tool {

dxf::Drawing readDrawingFile(const std::string& path) {
    InputFile file(path, InputFile::Readings::One);
    return readDrawingFile(path, file);
}

dxf::Drawing readDrawingFile(const std::string& path, InputFile& file) {
    Progress progress("Reading " + inputName(path) + ", bytes");
    try {
        dxf::Drawing drawing = dxf::readDrawing(file.stream(), [&](std::uint64_t bytes) {
            progress.update(static_cast<std::size_t>(bytes), static_cast<std::size_t>(file.size()));
            return true;
        });
        file.requireRead();
        return drawing;
    } catch (const dxf::Error& failure) {
        file.requireRead();
        throw InputError(inputName(path) + ": " + failure.what());
    }
}

namespace {

std::string nameOf(const dxf::TextEntity& text) {
    return "text at line " + std::to_string(text.line);
}

// A text that the platform refuses (a height that is not a number, say) must not
// keep the others from being laid out.
void layOutOne(Session& session, LaidOutDrawing& result, const dxf::PlacedText& placed,
               const TextLayoutOptions& options) {
    const TextDocument document = makeTextDocument(result.drawing, placed, session.fontMap());
    try {
        LaidOutText text = layOutText(session, placed, document, options);
        std::vector<mtext::Diagnostic> diagnostics = unmetDiagnostics(document, text);
        result.notes.add(diagnostics, missingCharacters(text), placed.text->line);
        result.emptyTexts += showsNothing(text) ? 1U : 0U;
        result.texts.push_back(std::move(text));
        result.placed.push_back(placed);
        result.diagnostics.push_back(std::move(diagnostics));
    } catch (const std::bad_alloc&) {
        throw;
    } catch (...) {
        result.failures.push_back(nameOf(*placed.text) + ": " + describeFailure());
    }
}

} // namespace

LaidOutDrawing layOutDrawing(Session& session, const std::string& path, const TextLayoutOptions& options) {
    LaidOutDrawing result;
    result.path = path;
    result.drawing = readDrawingFile(path);
    Progress progress("Laying out " + path + ", texts");
    std::size_t done = 0;
    dxf::placeTexts(result.drawing, [&](const dxf::PlacedText& placed) {
        progress.update(++done, 0);
        if (placed.visible) {
            layOutOne(session, result, placed, options);
        } else {
            ++result.hiddenTexts;
        }
        return true;
    });
    return result;
}

} // namespace tool
