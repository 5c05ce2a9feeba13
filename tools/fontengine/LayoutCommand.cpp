#include "LayoutCommand.h"

#include <algorithm>
#include <array>
#include <iostream>
#include <optional>
#include <vector>

#include "DrawingLayout.h"
#include "Failure.h"
#include "JsonReport.h"
#include "LayoutPaths.h"
#include "OutputFile.h"
#include "Picture.h"
#include "PicturePaths.h"
#include "Session.h"

namespace tool {

namespace {

void report(const std::string& path, const dxf::Drawing& drawing, const DrawingSummary& summary) {
    std::cout << inputName(path) << ": " << summary.texts - summary.emptyTexts << " texts laid out";
    if (summary.emptyTexts > 0) {
        std::cout << ", " << summary.emptyTexts << " show nothing";
    }
    if (summary.hiddenTexts > 0) {
        std::cout << ", " << summary.hiddenTexts << " hidden ones left out";
    }
    std::cout << '\n';
    for (const dxf::Problem& problem : drawing.problems) {
        std::cout << "  damaged: " << problem.message << '\n';
    }
    for (const std::string& failure : summary.failures) {
        std::cout << "  not laid out: " << failure << '\n';
    }
    if (drawing.replacedBytes > 0) {
        std::cout << "  " << drawing.replacedBytes
                  << " bytes are no characters of the drawing's code page and are shown as U+FFFD\n";
    }
    report(summary.notes);
}

// Texts in blocks that show when somebody inserts them.
std::size_t countInBlocks(const dxf::Drawing& drawing) {
    return static_cast<std::size_t>(
        std::count_if(drawing.texts.begin(), drawing.texts.end(), [](const dxf::TextEntity& text) {
            return !text.block.empty() && (text.kind != dxf::TextKind::AttDef || text.constant);
        }));
}

// Why nothing of a sound drawing was laid out.
std::string reasonForNothing(const dxf::Drawing& drawing, const DrawingSummary& summary) {
    if (summary.emptyTexts > 0) {
        return "holds no text that shows anything; there is nothing to lay out";
    }
    const std::size_t inBlocks = countInBlocks(drawing);
    if (inBlocks == 0) {
        return "holds no text; there is nothing to lay out";
    }
    return "shows no text; its blocks hold " + std::to_string(inBlocks) +
           " that no reference places; lay out a drawing that inserts them";
}

ExitCode exitCodeOf(const std::string& path, const dxf::Drawing& drawing, const DrawingSummary& summary) {
    if (!summary.failures.empty()) {
        return ExitCode::Failure;
    }
    if (drawing.truncated()) {
        return ExitCode::DamagedInput;
    }
    if (summary.texts == summary.emptyTexts && summary.hiddenTexts == 0) {
        std::cerr << "fontengine: " << inputName(path) << ": " << reasonForNothing(drawing, summary) << '\n';
        return ExitCode::NoText;
    }
    return ExitCode::Success;
}

ExitCode worse(ExitCode a, ExitCode b) {
    constexpr std::array fromBadToGood{ExitCode::Failure, ExitCode::UnusableInput, ExitCode::DamagedInput,
                                       ExitCode::NoText, ExitCode::Success};
    const auto badness = [&](ExitCode code) { return std::find(fromBadToGood.begin(), fromBadToGood.end(), code); };
    return badness(a) <= badness(b) ? a : b;
}

// Lays the texts out once more, with their glyphs: how far they reach is known at
// the end of the first time, and the glyphs of all take more memory than that
// takes time.
void drawPictures(Session& session, const LayoutOptions& options, const std::string& path, const dxf::Drawing& drawing,
                  const PictureExtent& extent) {
    const bool several = options.drawings.size() > 1;
    std::vector<Picture> pictures;
    const auto add = [&](PictureFormat format, const std::optional<std::string>& asked) {
        if (asked) {
            pictures.emplace_back(format, picturePath(*asked, path, several), extent,
                                  PictureOptions{.boxes = options.boxes});
        }
    };
    add(PictureFormat::Png, options.png);
    add(PictureFormat::Svg, options.svg);
    if (pictures.empty()) {
        return;
    }
    TextLayoutOptions layout = options.layout;
    layout.detail = fonts::EParagraphDetail::All;
    layOutDrawing(session, "Drawing " + inputName(path), drawing, layout,
                  [&](const dxf::PlacedText&, const LaidOutText& text, const auto&) {
                      for (Picture& picture : pictures) {
                          picture.draw(text);
                      }
                  });
    for (Picture& picture : pictures) {
        picture.finish();
    }
}

ExitCode layOut(Session& session, const LayoutOptions& options, const std::string& path, const dxf::Drawing& drawing,
                JsonReport* json) {
    TextLayoutOptions layout = options.layout;
    const bool clusters = json != nullptr && layout.mode == LayoutMode::Clusters;
    layout.detail = clusters ? fonts::EParagraphDetail::All : fonts::EParagraphDetail::Lines;
    PictureExtent extent;
    if (json != nullptr) {
        json->beginDrawing(path, drawing);
    }
    const DrawingSummary summary =
        layOutDrawing(session, "Laying out " + inputName(path), drawing, layout,
                      [&](const dxf::PlacedText& placed, const LaidOutText& text, const auto& diagnostics) {
                          extent.include(text);
                          if (json != nullptr) {
                              json->add(placed, text, diagnostics);
                          }
                      });
    if (json != nullptr) {
        json->endDrawing(summary);
    }
    report(path, drawing, summary);
    drawPictures(session, options, path, drawing, extent);
    return exitCodeOf(path, drawing, summary);
}

// Says what is wrong with a drawing that cannot be used, and lets the others be
// worked on.
std::optional<dxf::Drawing> tryRead(const std::string& path, const dxf::Limits& limits, JsonReport* json) {
    try {
        dxf::Drawing drawing = readDrawingFile(path, limits);
        requireWithin(limits, path, drawing);
        return drawing;
    } catch (const InputError& error) {
        complain(error.what());
        if (json != nullptr) {
            json->addUnusable(path, error.what());
        }
        return std::nullopt;
    }
}

ExitCode layOutAll(Session& session, const LayoutOptions& options, JsonReport* json) {
    ExitCode code = ExitCode::Success;
    for (const std::string& path : options.drawings) {
        const std::optional<dxf::Drawing> drawing = tryRead(path, options.limits, json);
        code = worse(code, drawing ? layOut(session, options, path, *drawing, json) : ExitCode::UnusableInput);
    }
    reportReplacements(session.fontMap().replacements());
    return code;
}

} // namespace

ExitCode runLayout(const LayoutOptions& options) {
    checkPaths(options);
    Session session;
    if (options.fontMap) {
        session.fontMap().load(*options.fontMap);
    }
    if (!options.json) {
        return layOutAll(session, options, nullptr);
    }
    OutputFile file(*options.json);
    JsonReport json(file.stream());
    const ExitCode code = layOutAll(session, options, &json);
    json.finish(session.fontMap().replacements());
    file.commit();
    return code;
}

} // namespace tool
