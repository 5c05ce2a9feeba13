#include "LayoutCommand.h"

#include <algorithm>
#include <iostream>

#include "DrawingLayout.h"
#include "JsonReport.h"
#include "LayoutPaths.h"
#include "Picture.h"
#include "PicturePaths.h"
#include "Session.h"

namespace tool {

namespace {

void report(const LaidOutDrawing& drawing) {
    std::cout << inputName(drawing.path) << ": " << drawing.texts.size() - drawing.emptyTexts << " texts laid out";
    if (drawing.emptyTexts > 0) {
        std::cout << ", " << drawing.emptyTexts << " show nothing";
    }
    if (drawing.hiddenTexts > 0) {
        std::cout << ", " << drawing.hiddenTexts << " hidden ones left out";
    }
    std::cout << '\n';
    for (const dxf::Problem& problem : drawing.drawing.problems) {
        std::cout << "  damaged: " << problem.message << '\n';
    }
    for (const std::string& failure : drawing.failures) {
        std::cout << "  not laid out: " << failure << '\n';
    }
    if (drawing.drawing.replacedBytes > 0) {
        std::cout << "  " << drawing.drawing.replacedBytes
                  << " bytes are no characters of the drawing's code page and are shown as U+FFFD\n";
    }
    report(drawing.notes);
}

// Texts in blocks that show when somebody inserts them.
std::size_t countInBlocks(const dxf::Drawing& drawing) {
    return static_cast<std::size_t>(
        std::count_if(drawing.texts.begin(), drawing.texts.end(), [](const dxf::TextEntity& text) {
            return !text.block.empty() && (text.kind != dxf::TextKind::AttDef || text.constant);
        }));
}

// Why nothing of a sound drawing was laid out.
std::string reasonForNothing(const LaidOutDrawing& drawing) {
    if (drawing.emptyTexts > 0) {
        return "holds no text that shows anything; there is nothing to lay out";
    }
    const std::size_t inBlocks = countInBlocks(drawing.drawing);
    if (inBlocks == 0) {
        return "holds no text; there is nothing to lay out";
    }
    return "shows no text; its blocks hold " + std::to_string(inBlocks) +
           " that no reference places; lay out a drawing that inserts them";
}

ExitCode worst(const std::vector<LaidOutDrawing>& drawings) {
    ExitCode code = ExitCode::Success;
    for (const LaidOutDrawing& drawing : drawings) {
        if (!drawing.failures.empty()) {
            return ExitCode::Failure;
        }
        if (drawing.drawing.truncated()) {
            code = ExitCode::DamagedInput;
        } else if (drawing.texts.size() == drawing.emptyTexts && drawing.hiddenTexts == 0 &&
                   code == ExitCode::Success) {
            std::cerr << "fontengine: " << inputName(drawing.path) << ": " << reasonForNothing(drawing) << '\n';
            code = ExitCode::NoText;
        }
    }
    return code;
}

} // namespace

ExitCode runLayout(const LayoutOptions& options) {
    checkPaths(options);
    Session session;
    if (options.fontMap) {
        session.fontMap().load(*options.fontMap);
    }
    const bool several = options.drawings.size() > 1;
    const PictureOptions picture{.boxes = options.boxes};
    std::vector<LaidOutDrawing> drawings;
    for (const std::string& path : options.drawings) {
        drawings.push_back(layOutDrawing(session, path, options.layout));
        report(drawings.back());
        if (options.png) {
            writePng(picturePath(*options.png, path, several), drawings.back().texts, picture);
        }
        if (options.svg) {
            writeSvg(picturePath(*options.svg, path, several), drawings.back().texts, picture);
        }
    }
    reportReplacements(session.fontMap().replacements());
    if (options.json) {
        writeJson(*options.json, drawings, session.fontMap().replacements());
    }
    return worst(drawings);
}

} // namespace tool
