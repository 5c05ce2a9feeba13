#include "DrawingLayout.h"

#include <algorithm>
#include <new>
#include <optional>

#include "Failure.h"
#include "InputError.h"
#include "Progress.h"

namespace tool {

namespace {

// What a person can do about it, where the drawing is right and large.
std::string advice(dxf::ErrorKind kind) {
    switch (kind) {
    case dxf::ErrorKind::PlacementLimit:
        return " Set another limit with --max-placements.";
    case dxf::ErrorKind::DepthLimit:
        return " Set another limit with --max-depth.";
    case dxf::ErrorKind::TextLengthLimit:
        return " Set another limit with --max-text-length.";
    case dxf::ErrorKind::PlacedLengthLimit:
        return " Set another limit with --max-placed-length.";
    default:
        return {};
    }
}

} // namespace

dxf::Drawing readDrawingFile(const std::string& path, const dxf::Limits& limits) {
    InputFile file(path, InputFile::Readings::One);
    return readDrawingFile(path, file, limits);
}

dxf::Drawing readDrawingFile(const std::string& path, InputFile& file, const dxf::Limits& limits) {
    Progress progress("Reading " + inputName(path) + ", bytes");
    const auto report = [&](std::uint64_t bytes) {
        progress.update(static_cast<std::size_t>(bytes), static_cast<std::size_t>(file.size()));
        return true;
    };
    try {
        dxf::Drawing drawing = dxf::readDrawing(file.stream(), report, limits);
        file.requireRead();
        return drawing;
    } catch (const dxf::Error& failure) {
        file.requireRead();
        throw InputError(inputName(path) + ": " + failure.what() + advice(failure.kind()));
    }
}

void requireWithin(const dxf::Limits& limits, const std::string& path, const dxf::Drawing& drawing) {
    try {
        dxf::checkPlacements(drawing, limits);
    } catch (const dxf::Error& failure) {
        throw InputError(inputName(path) + ": " + failure.what() + advice(failure.kind()));
    }
}

namespace {

std::string nameOf(const dxf::TextEntity& text) {
    return "text at line " + std::to_string(text.line);
}

// A text that the platform refuses (a height that is not a number, say) must not
// keep the others from being laid out.
std::optional<LaidOutText> tryLayOut(Session& session, const dxf::PlacedText& placed, const TextDocument& document,
                                     const TextLayoutOptions& options, DrawingSummary& summary) {
    try {
        return layOutText(session, placed, document, options);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (...) {
        summary.failures.push_back(nameOf(*placed.text) + ": " + describeFailure());
    }
    return std::nullopt;
}

void layOutOne(Session& session, const dxf::Drawing& drawing, const dxf::PlacedText& placed,
               const TextLayoutOptions& options, DrawingSummary& summary, const LaidOutTextVisitor& visit) {
    const TextDocument document = makeTextDocument(drawing, placed, session.fontMap());
    const std::optional<LaidOutText> text = tryLayOut(session, placed, document, options, summary);
    if (!text) {
        return;
    }
    const std::vector<mtext::Diagnostic> diagnostics = unmetDiagnostics(document, *text);
    summary.notes.add(diagnostics, missingCharacters(*text), placed.text->line);
    summary.emptyTexts += showsNothing(*text) ? 1U : 0U;
    ++summary.texts;
    visit(placed, *text, diagnostics);
}

} // namespace

DrawingSummary layOutDrawing(Session& session, const std::string& task, const dxf::Drawing& drawing,
                             const TextLayoutOptions& options, const LaidOutTextVisitor& visit) {
    DrawingSummary summary;
    Progress progress(task + ", texts");
    std::size_t done = 0;
    const auto take = [&](const dxf::PlacedText& placed) {
        progress.update(++done, 0);
        if (placed.visible) {
            layOutOne(session, drawing, placed, options, summary, visit);
        } else {
            ++summary.hiddenTexts;
        }
        return true;
    };
    const dxf::Limits checked{
        .placements = dxf::Limits::none, .depth = dxf::Limits::none, .placedLength = dxf::Limits::none};
    dxf::placeTexts(drawing, take, checked);
    return summary;
}

} // namespace tool
