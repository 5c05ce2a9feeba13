#include "LayoutCommand.h"

#include <iostream>

#include <Common/Utf.h>

#include "DrawingLayout.h"
#include "JsonReport.h"
#include "LayoutPaths.h"
#include "Picture.h"
#include "PicturePaths.h"
#include "Session.h"

namespace tool {

namespace {

void report(const LaidOutDrawing& drawing) {
    std::cout << inputName(drawing.path) << ": " << drawing.texts.size() << " texts laid out";
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
    if (drawing.missingGlyphs > 0) {
        std::cout << "  " << drawing.missingGlyphs << " characters are in no installed font and are shown as boxes\n";
    }
    for (const IgnoredCode& ignored : drawing.ignored) {
        std::cout << "  " << ignored.count << " x " << mtext::diagnosticDescription(ignored.code)
                  << " (first: " << common::utf8FromWide(ignored.example) << " in the text at line "
                  << drawing.placed[ignored.exampleText].text->line << ")\n";
    }
}

ExitCode worst(const std::vector<LaidOutDrawing>& drawings) {
    ExitCode code = ExitCode::Success;
    for (const LaidOutDrawing& drawing : drawings) {
        if (!drawing.failures.empty()) {
            return ExitCode::Failure;
        }
        if (drawing.drawing.truncated()) {
            code = ExitCode::DamagedInput;
        } else if (drawing.texts.empty() && drawing.hiddenTexts == 0 && code == ExitCode::Success) {
            std::cerr << "fontengine: " << inputName(drawing.path) << ": holds no text; there is nothing to lay out\n";
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
