#include "JsonReport.h"

#include <nlohmann/json.hpp>

#include <Common/Utf.h>

#include "OutputFile.h"

namespace tool {

namespace {

using Json = nlohmann::ordered_json;

Json toJson(const MbRect& rect) {
    if (rect.isEmpty()) {
        return nullptr;
    }
    return {rect.xmin, rect.ymin, rect.xmax, rect.ymax};
}

Json toJson(const dxf::Transform& transform) {
    return {transform.xAxis.x, transform.xAxis.y,  transform.yAxis.x,
            transform.yAxis.y, transform.origin.x, transform.origin.y};
}

std::string kindName(dxf::TextKind kind) {
    switch (kind) {
    case dxf::TextKind::MText:
        return "MTEXT";
    case dxf::TextKind::Text:
        return "TEXT";
    case dxf::TextKind::Attrib:
        return "ATTRIB";
    case dxf::TextKind::AttDef:
        return "ATTDEF";
    case dxf::TextKind::Dimension:
        return "DIMENSION";
    case dxf::TextKind::MultiLeader:
        return "MULTILEADER";
    case dxf::TextKind::TableCell:
        return "ACAD_TABLE";
    }
    return {};
}

std::string hexadecimal(std::uint64_t handle) {
    constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    do {
        text.insert(text.begin(), digits[handle % 16]);
        handle /= 16;
    } while (handle != 0);
    return text;
}

// A cluster without ink has no rectangle: nothing is to be drawn for it.
Json toJson(const LaidOutCluster& cluster) {
    Json json;
    json["text"] = common::utf8FromWide(cluster.token.text);
    json["family"] = common::utf8FromWide(cluster.token.fontFamily);
    json["capHeight"] = cluster.token.fontCapSize;
    json["bold"] = cluster.token.fontStyle.bold;
    json["italic"] = cluster.token.fontStyle.italic;
    json["rect"] = cluster.hasInk ? toJson(cluster.rect) : Json(nullptr);
    return json;
}

Json toJson(const LaidOutParagraph& paragraph) {
    Json json;
    json["text"] = common::utf8FromWide(paragraph.text);
    json["box"] = toJson(paragraph.box);
    json["ink"] = toJson(paragraph.ink);
    json["baselines"] = Json::array();
    for (const double baseline : paragraph.painted.baselines) {
        json["baselines"].push_back(paragraph.origin.y + baseline);
    }
    for (const LaidOutCluster& cluster : paragraph.clusters) {
        json["clusters"].push_back(toJson(cluster));
    }
    for (const MbRect& underline : paragraph.underlines) {
        json["underlines"].push_back(toJson(underline));
    }
    return json;
}

Json toJson(const dxf::PlacedText& placed, const LaidOutText& text, const std::vector<mtext::Diagnostic>& diagnostics) {
    Json json;
    json["kind"] = kindName(placed.text->kind);
    json["handle"] = placed.text->handle == 0 ? Json(nullptr) : Json(hexadecimal(placed.text->handle));
    json["line"] = placed.text->line;
    json["layer"] = common::utf8FromWide(placed.layer);
    json["block"] = placed.text->block.empty() ? Json(nullptr) : Json(common::utf8FromWide(placed.text->block));
    json["capHeight"] = placed.text->height;
    json["box"] = toJson(text.box);
    json["ink"] = toJson(text.ink);
    json["toDrawing"] = toJson(text.toDrawing);
    json["paragraphs"] = Json::array();
    for (const LaidOutParagraph& paragraph : text.paragraphs) {
        json["paragraphs"].push_back(toJson(paragraph));
    }
    json["diagnostics"] = Json::array();
    for (const mtext::Diagnostic& diagnostic : diagnostics) {
        json["diagnostics"].push_back({{"code", mtext::diagnosticName(diagnostic.code)},
                                       {"position", diagnostic.position},
                                       {"length", diagnostic.length},
                                       {"text", common::utf8FromWide(diagnostic.text)}});
    }
    return json;
}

Json toJson(const LaidOutDrawing& drawing) {
    Json json;
    json["path"] = drawing.path;
    json["version"] = common::utf8FromWide(drawing.drawing.header.version);
    json["codePage"] = drawing.drawing.utf8 ? Json("utf-8") : Json(drawing.drawing.codePage);
    json["problems"] = Json::array();
    for (const dxf::Problem& problem : drawing.drawing.problems) {
        json["problems"].push_back(
            {{"kind", dxf::errorKindName(problem.kind)}, {"line", problem.line}, {"message", problem.message}});
    }
    json["failures"] = drawing.failures;
    json["hiddenTexts"] = drawing.hiddenTexts;
    json["emptyTexts"] = drawing.emptyTexts;
    addNotes(json, drawing.notes);
    json["texts"] = Json::array();
    for (std::size_t i = 0; i < drawing.texts.size(); ++i) {
        json["texts"].push_back(toJson(drawing.placed[i], drawing.texts[i], drawing.diagnostics[i]));
    }
    return json;
}

} // namespace

void writeJson(const std::string& path, const std::vector<LaidOutDrawing>& drawings,
               const std::vector<FontMap::Replacement>& replacements) {
    Json json;
    json["replacedFonts"] = Json::array();
    for (const FontMap::Replacement& replacement : replacements) {
        json["replacedFonts"].push_back({{"requested", common::utf8FromWide(replacement.requested)},
                                         {"family", common::utf8FromWide(replacement.family)}});
    }
    json["drawings"] = Json::array();
    for (const LaidOutDrawing& drawing : drawings) {
        json["drawings"].push_back(toJson(drawing));
    }
    OutputFile file(path);
    file.stream() << json.dump(1, ' ', false, Json::error_handler_t::replace) << '\n';
    file.commit();
}

} // namespace tool
