#include "ParityDocument.h"

#include <utility>

#include <Common/Utf.h>
#include <FontEngine/FontUtils.h>

namespace parity {

float designSize(fonts::IFontEngine& engine, std::string_view family) {
    fonts::IFont* font =
        engine.getFont(common::wideFromUtf8(family), fonts::weightFromBool(false), fonts::styleFromBool(false));
    return static_cast<float>(2048.0 / font->capitalLetterSizeToFontSize(1.0));
}

render::SRichTextToken makeToken(std::string_view text, std::string_view family, float capSize, Style style) {
    render::SRichTextToken token =
        render::makeToken(common::wideFromUtf8(text), common::wideFromUtf8(family), capSize, {});
    token.fontStyle = {style.bold, style.italic, style.underline};
    return token;
}

render::CRichTextParagraph makeLine(std::vector<render::SRichTextToken> tokens) {
    render::CRichTextParagraph paragraph = makeWrapped(std::move(tokens));
    paragraph.noWrap = true;
    return paragraph;
}

render::CRichTextParagraph makeWrapped(std::vector<render::SRichTextToken> tokens) {
    render::CRichTextParagraph paragraph;
    paragraph.tokens = std::move(tokens);
    paragraph.alignment = render::eRichTextParagraphAlignment::Left;
    paragraph.verticalAlignment = render::eRichTextParagraphVerticalAlignment::Top;
    return paragraph;
}

Document makeDocument(std::string group, std::string name, std::vector<render::CRichTextParagraph> paragraphs,
                      double maxWidth, double maxHeight) {
    return {std::move(group), std::move(name), render::makeDocument(std::move(paragraphs)), maxWidth, maxHeight};
}

Documents allDocuments(fonts::IFontEngine& engine) {
    Documents documents;
    addLabels(engine, documents);
    addNotes(engine, documents);
    addLines(engine, documents);
    addScripts(engine, documents);
    return documents;
}

} // namespace parity
