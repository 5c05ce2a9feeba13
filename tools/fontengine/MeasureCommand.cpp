#include "MeasureCommand.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iostream>
#include <optional>
#include <vector>

#include <nlohmann/json.hpp>

#include <Common/Utf.h>
#include <FontEngine/FontUtils.h>

#include "Session.h"

namespace tool {

namespace {

struct Measured {
    std::wstring family; // whose numbers these are
    bool installed = false;
    std::vector<std::wstring> drawnBy; // families, in the order of the text
    MbRect box;
    MbRect ink;
    double baseline = 0.0;
    double emSize = 0.0;
    fonts::SFontMetrics metrics;
};

std::vector<std::wstring> familiesThatDraw(fonts::IFontEngine& engine, const render::SRichTextToken& token) {
    std::vector<std::wstring> families;
    for (const render::SRichTextToken& run : engine.splitTokenByFallbackFonts(token)) {
        if (std::find(families.begin(), families.end(), run.fontFamily) == families.end()) {
            families.push_back(run.fontFamily);
        }
    }
    return families;
}

Measured measure(Session& session, const MeasureOptions& options) {
    const std::wstring text = common::wideFromUtf8(options.text);
    const std::wstring requested = common::wideFromUtf8(options.font);
    const std::wstring family = session.fontMap().familyFor(requested);
    const auto capSize = static_cast<float>(options.capSize);
    const render::SRichTextFontStyle style{options.bold, options.italic, false};

    Measured measured;
    measured.installed = session.fontMap().replacements().empty();
    measured.drawnBy = familiesThatDraw(session.engine(), {text, family, capSize, {}, style});
    const bool drawsItself =
        measured.drawnBy.empty() || std::ranges::find(measured.drawnBy, family) != measured.drawnBy.end();
    measured.family = drawsItself ? family : measured.drawnBy.front();
    fonts::IFont* font =
        session.engine().getFont(measured.family, options.bold ? fonts::Weight::Bold : fonts::Weight::Normal,
                                 options.italic ? fonts::Style::Italic : fonts::Style::Normal);
    measured.emSize = font->capitalLetterSizeToFontSize(options.capSize);
    measured.metrics = session.metrics().getFontMetrics(measured.family, options.capSize, options.italic, options.bold);
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
    json["drawnBy"] = nlohmann::ordered_json::array();
    for (const std::wstring& family : measured.drawnBy) {
        json["drawnBy"].push_back(common::utf8FromWide(family));
    }
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

// As many digits as the library's lengths have, and no zero with a sign.
std::string number(double value) {
    std::array<char, 32> digits{};
    std::snprintf(digits.data(), digits.size(), "%.7g", value == 0.0 ? 0.0 : value);
    return digits.data();
}

void printRect(const char* name, const MbRect& rect) {
    if (rect.isEmpty()) {
        std::cout << name << "none\n";
        return;
    }
    std::cout << name << "x " << number(rect.xmin) << " to " << number(rect.xmax) << ", y " << number(rect.ymin)
              << " to " << number(rect.ymax) << " (" << number(rect.xmax - rect.xmin) << " wide, "
              << number(rect.ymax - rect.ymin) << " high)\n";
}

void printText(const MeasureOptions& options, const Measured& measured) {
    const fonts::SFontMetrics& metrics = measured.metrics;
    std::cout << "font      " << common::utf8FromWide(measured.family);
    if (!measured.installed) {
        std::cout << " (instead of " << options.font << ", which is not installed)";
    } else if (common::utf8FromWide(measured.family) != options.font) {
        std::cout << " (draws the text of " << options.font << ')';
    }
    std::cout << ", capitals " << number(options.capSize) << ", em " << number(measured.emSize) << '\n';
    for (const std::wstring& family : measured.drawnBy) {
        if (family != measured.family) {
            std::cout << "          some characters come from " << common::utf8FromWide(family) << '\n';
        }
    }
    std::cout << "metrics   ascent " << number(metrics.ascent) << ", descent " << number(metrics.descent)
              << ", line gap " << number(metrics.lineGap) << ", ascent above capitals "
              << number(metrics.capitalTopToAscent) << '\n';
    printRect("box       ", measured.box);
    printRect("ink       ", measured.ink);
    std::cout << "baseline  y " << number(measured.baseline) << '\n';
}

} // namespace

ExitCode runMeasure(const MeasureOptions& options) {
    Session session;
    if (options.fontMap) {
        session.fontMap().load(*options.fontMap);
    }
    const Measured measured = measure(session, options);
    if (options.json) {
        printJson(options, measured);
    } else {
        printText(options, measured);
    }
    return ExitCode::Success;
}

} // namespace tool
