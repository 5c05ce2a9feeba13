#pragma once

// The documents that two platforms lay out for comparison.

#include <string>
#include <string_view>
#include <vector>

#include <FontEngine/FontEngine.h>
#include <render/RichTextDocument.h>

namespace parity {

struct Document {
    // What it is about; results are counted by group.
    std::string group;
    // Unique within its group.
    std::string name;
    render::CRichTextDocument document;
    // The box it is measured in; a width or height of 0 sets no limit.
    double maxWidth = 0.0;
    double maxHeight = 0.0;
};

using Documents = std::vector<Document>;

// The capital height at which the family's em is 2048 units: a whole number of pixels
// wherever a rasterizer scales the outlines, and no hinting worth the name.
float designSize(fonts::IFontEngine& engine, std::string_view family);

// ---- builders ----

struct Style {
    bool bold = false;
    bool italic = false;
    bool underline = false;
};

render::SRichTextToken makeToken(std::string_view text, std::string_view family, float capSize, Style style = {});
// A paragraph of one line: it does not wrap.
render::CRichTextParagraph makeLine(std::vector<render::SRichTextToken> tokens);
render::CRichTextParagraph makeWrapped(std::vector<render::SRichTextToken> tokens);
Document makeDocument(std::string group, std::string name, std::vector<render::CRichTextParagraph> paragraphs,
                      double maxWidth = 0.0, double maxHeight = 0.0);

// ---- the groups, one function per file's subject ----

void addLabels(fonts::IFontEngine& engine, Documents& documents);
void addNotes(fonts::IFontEngine& engine, Documents& documents);
void addLines(fonts::IFontEngine& engine, Documents& documents);
void addScripts(fonts::IFontEngine& engine, Documents& documents);

Documents allDocuments(fonts::IFontEngine& engine);

} // namespace parity
