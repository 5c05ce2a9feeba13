#include "Documents.h"

#include <optional>
#include <string>
#include <vector>

#include <FontEngine/FontEngine.h>
#include <FontEngine/RichTextDocumentProcessor.h>
#include <mtext/MText.h>

#include "Counter.h"
#include "Outlines.h"
#include "Session.h"

namespace growth {

namespace {

constexpr double boxWidth = 100.0;

tool::Session& session() {
    static tool::Session one;
    return one;
}

mtext::Result read(const std::wstring& content) {
    mtext::Defaults defaults;
    defaults.fontFamily = L"DejaVu Sans";
    defaults.capSize = 10.0F;
    return mtext::parse(content, defaults);
}

/// Calls `ask` for each paragraph.
template <class Ask>
void forEach(const render::CRichTextDocument& document, Ask ask) {
    for (std::size_t i = 0; i < document.paragraphs.size(); ++i) {
        ask(document.paragraphs.at(static_cast<std::int32_t>(i)));
    }
}

} // namespace

void askDocument(const Shape& shape, std::size_t units) {
    const std::wstring content = shape.text(units);
    const auto name = [&](const char* work) { return shape.name + '/' + work + '/' + std::to_string(content.size()); };
    const fonts::ITextMetrics& metrics = session().metrics();
    render::CRichTextDocument document;
    count(name("read"), [&] { document = read(content).document; });
    count(name("box"), [&] {
        metrics.getDocumentRect(document);
        metrics.getParagraphRects(document, boxWidth, 0.0);
    });
    count(name("ink"), [&] { metrics.getParagraphGeometryRects(document, boxWidth, 0.0); });
    for (const double width : {0.0, boxWidth}) {
        count(name(width > 0.0 ? "glyphs of lines" : "glyphs"), [&] {
            forEach(document, [&](const render::CRichTextParagraph& paragraph) {
                std::vector<boost::intrusive_ptr<MbRegion>> regions;
                metrics.getGlyphRuns(paragraph, width, 0.0, std::nullopt, regions);
            });
        });
    }
    count(name("outlines"), [&] {
        forEach(document, [&](const render::CRichTextParagraph& paragraph) {
            const fonts::SLayoutDesc layout =
                fonts::CRichTextDocumentProcessor::process(paragraph, &session().engine(), std::nullopt);
            tool::paintParagraph(layout);
        });
    });
    count(name("place"), [&] {
        const auto layouting = session().layoutings().create(document);
        layouting->setLayoutRect(MbRect(0.0, -boxWidth, boxWidth, 0.0));
        layouting->setAlignByTextBounds(true);
        layouting->layout();
    });
}

} // namespace growth
