#include "Measuring.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include <Common/Utf.h>
#include <Common/Violations.h>
#include <oslayer/Errors.h>

namespace parity {

namespace {

std::string indexed(std::string_view name, std::size_t index, std::string_view rest = {}) {
    return std::string(name) + '[' + std::to_string(index) + ']' + std::string(rest);
}

void writeRect(JsonWriter& json, const std::string& name, const MbRect& rect) {
    if (rect.isEmpty()) {
        json.write(name, "empty");
        return;
    }
    json.write(name + ".xmin", rect.xmin);
    json.write(name + ".ymin", rect.ymin);
    json.write(name + ".xmax", rect.xmax);
    json.write(name + ".ymax", rect.ymax);
}

void writeRects(JsonWriter& json, const std::string& name, const std::vector<MbRect>& rects) {
    json.write(name + ".count", static_cast<double>(rects.size()));
    for (std::size_t i = 0; i < rects.size(); ++i) {
        writeRect(json, indexed(name, i), rects[i]);
    }
}

void writeRegions(JsonWriter& json, const std::string& name,
                  const std::vector<boost::intrusive_ptr<MbRegion>>& regions) {
    json.write(name + ".count", static_cast<double>(regions.size()));
    for (std::size_t i = 0; i < regions.size(); ++i) {
        writeRect(json, indexed(name, i), regions[i]->boundingRect());
    }
}

bool isWhitespace(wchar_t unit) {
    return unit == L' ' || unit == 0x00A0 || (unit >= 0x2000 && unit <= 0x200A) || unit == 0x3000;
}

bool isControl(wchar_t unit) {
    return unit < 0x20 || (unit >= 0x7F && unit < 0xA0) || unit == 0x00AD || (unit >= 0x200B && unit <= 0x200F) ||
           (unit >= 0x2028 && unit <= 0x202E) || (unit >= 0x2066 && unit <= 0x2069) || unit == 0xFEFF;
}

// Platforms may cut the same text into other runs, so characters are what is compared:
// each one's place is that of its cluster's first glyph.
void writeCharacters(JsonWriter& json, const std::string& name, const fonts::SGlyphRunDesc& run) {
    for (std::size_t i = 0; i < run.text.size(); ++i) {
        const char* kind = isControl(run.text[i]) ? ".control" : isWhitespace(run.text[i]) ? ".space" : ".character";
        const std::string place = indexed(name + kind, run.textPosition + i);
        if (run.clusterMap[i] >= run.glyphOrigins.size()) {
            json.write(place, "no glyph");
            continue;
        }
        const bool startsCluster = i == 0 || run.clusterMap[i] != run.clusterMap[i - 1];
        json.write(place + ".x", run.glyphOrigins[run.clusterMap[i]].x);
        json.write(place + ".y", run.glyphOrigins[run.clusterMap[i]].y);
        json.write(place + ".baseline", run.baselineOrigin.y);
        json.write(place + ".starts a cluster", startsCluster ? 1.0 : 0.0);
        json.write(place + ".family", common::utf8FromWide(run.token.fontFamily));
    }
}

// Spaces may or may not have glyphs (without ink); they are not counted.
void writeGlyphRuns(JsonWriter& json, const std::string& name, const std::vector<fonts::SGlyphRunDesc>& runs) {
    std::size_t glyphs = 0;
    MbRect ink;
    for (const fonts::SGlyphRunDesc& run : runs) {
        writeCharacters(json, name, run);
        glyphs += run.glyphOrigins.size();
        for (std::size_t i = 0; i < run.text.size(); ++i) {
            if (isWhitespace(run.text[i]) && run.clusterMap[i] < run.glyphOrigins.size()) {
                --glyphs;
            }
        }
        ink |= run.bounds;
    }
    json.write(name + ".glyphs", static_cast<double>(glyphs));
    writeRect(json, name + ".ink", ink);
}

void writeLayouting(JsonWriter& json, const std::string& name, fonts::IRichTextDocumentLayouting& layouting,
                    const Document& document) {
    // Boxes without a limit of their own get one that no document here reaches.
    const double width = document.maxWidth > 0.0 ? document.maxWidth : 200000.0;
    const double height = document.maxHeight > 0.0 ? document.maxHeight : 100000.0;
    layouting.setLayoutRect(MbRect(100.0, 50.0, 100.0 + width, 50.0 + height));
    layouting.setHorizontalMargin(10.0f);
    layouting.layout();
    writeRects(json, name + ".rects", layouting.getRects());
    writeRegions(json, name + ".regions", layouting.getRegions());
}

// By clusters, the paragraph's text is part of the result. A cluster goes by the number of
// units drawn before it, so that one cut in two does not shift those after it; spaces are
// left to the glyph runs.
void writeClusters(JsonWriter& json, const std::string& name, fonts::IRichTextDocumentLayouting& layouting,
                   const Document& document) {
    const double width = document.maxWidth > 0.0 ? document.maxWidth : 200000.0;
    const double height = document.maxHeight > 0.0 ? document.maxHeight : 100000.0;
    layouting.setLayoutRect(MbRect(100.0, 50.0, 100.0 + width, 50.0 + height));
    layouting.layout();
    const std::vector<MbRect> rects = layouting.getRects();
    const std::vector<render::CRichTextParagraph> paragraphs = layouting.getParagraphs();
    std::size_t drawn = 0;
    for (std::size_t i = 0; i < rects.size(); ++i) {
        const std::wstring& text = paragraphs.at(i).tokens.at(0).text;
        const auto units = std::count_if(text.begin(), text.end(),
                                         [](wchar_t unit) { return !isWhitespace(unit) && !isControl(unit); });
        if (units == 0) {
            continue;
        }
        json.write(indexed(name, drawn, ".text"), common::utf8FromWide(text));
        writeRect(json, indexed(name, drawn), rects[i]);
        drawn += static_cast<std::size_t>(units);
    }
    writeRegions(json, name + ".regions", layouting.getRegions());
}

void attempt(JsonWriter& json, const std::string& name, const std::function<void()>& call) {
    try {
        call();
    } catch (const oslayer::EOsLayerError& error) {
        json.write(name + ".error", error.what());
    } catch (const common::EAssertionViolation& violation) {
        json.write(name + ".error", violation.message.c_str());
    }
}

void measureLine(JsonWriter& json, const fonts::ITextMetrics& metrics, const render::SRichTextToken& token) {
    const auto text = [&](const char* name, const std::function<void()>& call) {
        attempt(json, std::string("line.") + name, call);
    };
    text("box", [&] {
        writeRect(json, "line.box",
                  metrics.getTextRect(token.text, token.fontFamily, token.fontCapSize, token.fontStyle));
    });
    text("ink", [&] {
        writeRect(
            json, "line.ink",
            metrics.getTextGeometryRect(token.text, token.fontFamily, token.fontCapSize, 5000.0, token.fontStyle));
    });
    text("baseline", [&] {
        json.write("line.baseline",
                   metrics.getTextBaseline(token.text, token.fontFamily, token.fontCapSize, {}, token.fontStyle));
    });
    text("metrics", [&] {
        const fonts::SFontMetrics font =
            metrics.getFontMetrics(token.fontFamily, token.fontCapSize, token.fontStyle.italic, token.fontStyle.bold);
        json.write("line.metrics.ascent", font.ascent);
        json.write("line.metrics.descent", font.descent);
        json.write("line.metrics.capitalTopToAscent", font.capitalTopToAscent);
        json.write("line.metrics.lineGap", font.lineGap);
    });
}

void measureBoxes(JsonWriter& json, const fonts::ITextMetrics& metrics, const Document& document) {
    attempt(json, "document", [&] { writeRect(json, "document.box", metrics.getDocumentRect(document.document)); });
    attempt(json, "document.ink", [&] {
        writeRect(json, "document.ink",
                  metrics.getDocumentGeometryRect(document.document, document.maxWidth, document.maxHeight));
    });
    attempt(json, "paragraphs", [&] {
        writeRects(json, "paragraphs",
                   metrics.getParagraphRects(document.document, document.maxWidth, document.maxHeight));
    });
    attempt(json, "paragraphs.ink", [&] {
        writeRects(json, "paragraphs.ink",
                   metrics.getParagraphGeometryRects(document.document, document.maxWidth, document.maxHeight));
    });
}

void measureRuns(JsonWriter& json, const fonts::ITextMetrics& metrics, const Document& document) {
    const auto count = static_cast<std::int32_t>(document.document.paragraphs.size());
    for (std::int32_t i = 0; i < count; ++i) {
        const std::string name = indexed("paragraph", static_cast<std::size_t>(i));
        std::wstring text;
        for (const render::SRichTextToken& token : document.document.paragraphs.at(i).tokens) {
            text += token.text;
        }
        json.write(name + ".text", common::utf8FromWide(text));
        attempt(json, name, [&] {
            std::vector<boost::intrusive_ptr<MbRegion>> bars;
            const auto runs = metrics.getGlyphRuns(document.document.paragraphs.at(i), document.maxWidth,
                                                   document.maxHeight, document.document.tabStopWidth, bars);
            writeGlyphRuns(json, name, runs);
            writeRegions(json, name + ".bars", bars);
        });
    }
}

void measureLayoutings(JsonWriter& json, const fonts::ITextMetrics& metrics, const Document& document) {
    const fonts::CRichTextDocumentLayoutingFactory factory(&metrics);
    for (const bool byInk : {false, true}) {
        const std::string suffix = byInk ? " by text bounds" : "";
        attempt(json, "plain" + suffix, [&] {
            const auto layouting = factory.create(document.document);
            layouting->setAlignByTextBounds(byInk);
            writeLayouting(json, "plain" + suffix, *layouting, document);
        });
        attempt(json, "dxf" + suffix, [&] {
            const auto layouting = factory.createForDxfMTexts(document.document);
            layouting->setAlignByTextBounds(byInk);
            writeLayouting(json, "dxf" + suffix, *layouting, document);
        });
    }
    attempt(json, "clusters", [&] {
        writeClusters(json, "cluster", *factory.createForDxfMTextsByClusters(document.document), document);
    });
}

} // namespace

void measure(JsonWriter& json, const fonts::ITextMetrics& metrics, const Document& document) {
    measureBoxes(json, metrics, document);
    measureLine(json, metrics, document.document.paragraphs.at(0).tokens.at(0));
    measureRuns(json, metrics, document);
    measureLayoutings(json, metrics, document);
}

} // namespace parity
