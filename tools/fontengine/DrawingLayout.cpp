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

void countIgnored(LaidOutDrawing& result, const std::vector<mtext::Diagnostic>& diagnostics) {
    for (const mtext::Diagnostic& diagnostic : diagnostics) {
        auto known = std::find_if(result.ignored.begin(), result.ignored.end(),
                                  [&](const IgnoredCode& other) { return other.code == diagnostic.code; });
        if (known == result.ignored.end()) {
            result.ignored.push_back({diagnostic.code, 0, diagnostic.text, result.texts.size(), diagnostic.position});
            known = result.ignored.end() - 1;
        }
        ++known->count;
    }
}

// What the reader of contents could not know is laid out after all.
void dropExpressed(std::vector<mtext::Diagnostic>& diagnostics, const LaidOutText& text) {
    std::erase_if(diagnostics, [&text](const mtext::Diagnostic& diagnostic) {
        return (diagnostic.code == mtext::DiagnosticCode::ParagraphIndent && text.indentsExpressed) ||
               (diagnostic.code == mtext::DiagnosticCode::ParagraphSpacing && text.spacingExpressed);
    });
}

std::string nameOf(const dxf::TextEntity& text) {
    return "text at line " + std::to_string(text.line);
}

// A text that the platform refuses (a height that is not a number, say) must not
// keep the others from being laid out.
void layOutOne(Session& session, LaidOutDrawing& result, const dxf::PlacedText& placed,
               const TextLayoutOptions& options) {
    TextDocument document = makeTextDocument(result.drawing, placed, session.fontMap());
    try {
        LaidOutText text = layOutText(session, placed, document, options);
        dropExpressed(document.diagnostics, text);
        for (const LaidOutParagraph& paragraph : text.paragraphs) {
            result.missingGlyphs += paragraph.painted.missingGlyphs;
        }
        countIgnored(result, document.diagnostics);
        result.texts.push_back(std::move(text));
        result.placed.push_back(placed);
        result.diagnostics.push_back(std::move(document.diagnostics));
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
