#include "MeasureCommand.h"

#include <cstdio>
#include <iostream>
#include <optional>

#include <nlohmann/json.hpp>

#include <Common/Utf.h>

#include "Session.h"

namespace tool {

namespace {

struct Measured {
    std::wstring family; // of the font found for the family asked for
    bool installed = false;
    MbRect box;
    MbRect ink;
    double baseline = 0.0;
    double emSize = 0.0;
    fonts::SFontMetrics metrics;
};

Measured measure(Session& session, const MeasureOptions& options) {
    const std::wstring text = common::wideFromUtf8(options.text);
    const std::wstring family = common::wideFromUtf8(options.font);
    const auto capSize = static_cast<float>(options.capSize);
    const render::SRichTextFontStyle style{options.bold, options.italic, false};

    Measured measured;
    fonts::IFont* font =
        session.engine().getFont(family, fonts::weightFromBool(options.bold), fonts::styleFromBool(options.italic));
    measured.installed = font != session.engine().getFallbackFont();
    measured.family = font->fontFamily().c_str();
    measured.emSize = font->capitalLetterSizeToFontSize(options.capSize);
    measured.metrics = session.metrics().getFontMetrics(family, options.capSize, options.italic, options.bold);
    measured.box = session.metrics().getTextRect(text, family, capSize, style);
    measured.ink = session.metrics().getTextGeometryRect(text, family, capSize, std::nullopt, style);
    measured.baseline = session.metrics().getTextBaseline(text, family, capSize, std::nullopt, style);
    return measured;
}

nlohmann::ordered_json toJson(const MbRect& rect) {
    if (rect.isEmpty()) {
        return nullptr;
    }
    return {rect.xmin, rect.ymin, rect.xmax, rect.ymax};
}

void printJson(const MeasureOptions& options, const Measured& measured) {
    nlohmann::ordered_json json;
    json["text"] = options.text;
    json["requestedFont"] = options.font;
    json["family"] = common::utf8FromWide(measured.family);
    json["installed"] = measured.installed;
    json["capSize"] = options.capSize;
    json["emSize"] = measured.emSize;
    json["box"] = toJson(measured.box);
    json["ink"] = toJson(measured.ink);
    json["baseline"] = measured.baseline;
    json["metrics"] = {{"ascent", measured.metrics.ascent},
                       {"descent", measured.metrics.descent},
                       {"capitalTopToAscent", measured.metrics.capitalTopToAscent},
                       {"lineGap", measured.metrics.lineGap}};
    std::cout << json.dump(1, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
}

void printRect(const char* name, const MbRect& rect) {
    if (rect.isEmpty()) {
        std::printf("%-9s none\n", name);
        return;
    }
    std::printf("%-9s x %.4f to %.4f, y %.4f to %.4f (%.4f wide, %.4f high)\n", name, rect.xmin, rect.xmax, rect.ymin,
                rect.ymax, rect.xmax - rect.xmin, rect.ymax - rect.ymin);
}

void printText(const MeasureOptions& options, const Measured& measured) {
    std::printf("font      %s%s, capitals %.4f, em %.4f\n", common::utf8FromWide(measured.family).c_str(),
                measured.installed ? "" : (" (instead of " + options.font + ", which is not installed)").c_str(),
                options.capSize, measured.emSize);
    std::printf("metrics   ascent %.4f, descent %.4f, line gap %.4f, ascent above capitals %.4f\n",
                measured.metrics.ascent, measured.metrics.descent, measured.metrics.lineGap,
                measured.metrics.capitalTopToAscent);
    printRect("box", measured.box);
    printRect("ink", measured.ink);
    std::printf("baseline  y %.4f\n", measured.baseline);
}

} // namespace

ExitCode runMeasure(const MeasureOptions& options) {
    Session session;
    const Measured measured = measure(session, options);
    if (options.json) {
        printJson(options, measured);
    } else {
        printText(options, measured);
    }
    return ExitCode::Success;
}

} // namespace tool
