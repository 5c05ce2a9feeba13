#include "JsonReport.h"

#include <ostream>
#include <string_view>

#include <nlohmann/json.hpp>

#include <Common/Utf.h>

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
    json["rect"] = toJson(cluster.rect);
    return json;
}

Json toJson(const LaidOutParagraph& paragraph) {
    Json json;
    json["text"] = common::utf8FromWide(paragraph.layout.text());
    json["box"] = toJson(paragraph.box);
    json["ink"] = toJson(paragraph.ink);
    json["baselines"] = paragraph.baselines();
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

Json toJson(const std::vector<dxf::Problem>& problems) {
    Json json = Json::array();
    for (const dxf::Problem& problem : problems) {
        json.push_back(
            {{"kind", dxf::errorKindName(problem.kind)}, {"line", problem.line}, {"message", problem.message}});
    }
    return json;
}

Json toJson(const std::vector<FontMap::Replacement>& replacements) {
    Json json = Json::array();
    for (const FontMap::Replacement& replacement : replacements) {
        json.push_back({{"requested", common::utf8FromWide(replacement.requested)},
                        {"family", common::utf8FromWide(replacement.family)}});
    }
    return json;
}

constexpr std::size_t drawingDepth = 2; // of the braces and brackets around it
constexpr std::size_t textDepth = 4;

} // namespace

JsonReport::JsonReport(std::ostream& output) : m_output(output) {
    m_output << "{\n \"drawings\": [";
}

void JsonReport::newLine(std::size_t depth) {
    m_output << '\n' << std::string(depth, ' ');
}

void JsonReport::value(std::size_t depth, const std::string& json) {
    // Only whitespace between values holds line breaks.
    std::size_t start = 0;
    for (std::size_t end = json.find('\n'); end != std::string::npos; end = json.find('\n', start)) {
        m_output << std::string_view(json).substr(start, end - start);
        newLine(depth);
        start = end + 1;
    }
    m_output << std::string_view(json).substr(start);
}

template <typename Value>
void JsonReport::member(std::size_t depth, const char* name, const Value& json) {
    newLine(depth);
    m_output << '"' << name << "\": ";
    value(depth, Json(json).dump(1, ' ', false, Json::error_handler_t::replace));
}

void JsonReport::openDrawing(const std::string& path) {
    m_output << (m_firstDrawing ? "" : ",");
    m_firstDrawing = false;
    newLine(drawingDepth);
    m_output << '{';
    member(drawingDepth + 1, "path", path);
}

void JsonReport::closeDrawing() {
    newLine(drawingDepth);
    m_output << '}';
}

void JsonReport::beginDrawing(const std::string& path, const dxf::Drawing& drawing) {
    constexpr std::size_t depth = drawingDepth + 1;
    openDrawing(path);
    m_output << ',';
    member(depth, "version", common::utf8FromWide(drawing.header.version));
    m_output << ',';
    member(depth, "codePage", drawing.utf8 ? Json("utf-8") : Json(drawing.codePage));
    m_output << ',';
    member(depth, "problems", toJson(drawing.problems));
    m_output << ',';
    newLine(depth);
    m_output << "\"texts\": [";
    m_firstText = true;
}

void JsonReport::add(const dxf::PlacedText& placed, const LaidOutText& text,
                     const std::vector<mtext::Diagnostic>& diagnostics) {
    m_output << (m_firstText ? "" : ",");
    m_firstText = false;
    newLine(textDepth);
    value(textDepth, toJson(placed, text, diagnostics).dump(1, ' ', false, Json::error_handler_t::replace));
}

void JsonReport::endDrawing(const DrawingSummary& summary) {
    constexpr std::size_t depth = drawingDepth + 1;
    if (!m_firstText) {
        newLine(depth);
    }
    m_output << "],";
    member(depth, "failures", summary.failures);
    m_output << ',';
    member(depth, "hiddenTexts", summary.hiddenTexts);
    m_output << ',';
    member(depth, "emptyTexts", summary.emptyTexts);
    Json notes;
    addNotes(notes, summary.notes);
    for (const auto& [name, note] : notes.items()) {
        m_output << ',';
        member(depth, name.c_str(), note);
    }
    closeDrawing();
}

void JsonReport::addUnusable(const std::string& path, const std::string& error) {
    openDrawing(path);
    m_output << ',';
    member(drawingDepth + 1, "error", error);
    closeDrawing();
}

void JsonReport::finish(const std::vector<FontMap::Replacement>& replacements) {
    newLine(m_firstDrawing ? 0 : 1);
    m_output << "],";
    member(1, "replacedFonts", toJson(replacements));
    m_output << "\n}\n";
}

} // namespace tool
