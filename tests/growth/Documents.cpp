#include "Documents.h"

#include <optional>
#include <string>
#include <vector>

#include <FontEngine/FontEngine.h>
#include <FontEngine/ParagraphLayout.h>
#include <mtext/MText.h>

#include "Counter.h"
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

/// Takes outlines and keeps nothing.
class NoSink final : public fonts::IOutlineSink {
public:
    void moveTo(MbCartPoint) override {}
    void lineTo(MbCartPoint) override {}
    void cubicTo(MbCartPoint, MbCartPoint, MbCartPoint) override {}
    void close() override {}
};

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
    std::vector<fonts::CParagraphLayout> layouts;
    count(name("result"), [&] {
        forEach(document, [&](const render::CRichTextParagraph& paragraph) {
            layouts.push_back(session().layouts().make(paragraph, {.maxWidth = boxWidth}));
        });
    });
    count(name("outlines"), [&] {
        NoSink sink;
        for (const fonts::CParagraphLayout& layout : layouts) {
            layout.outline(sink);
        }
    });
    layouts.clear();
    count(name("place"), [&] {
        const fonts::CRichTextDocumentLayoutingFactory layoutings(&metrics);
        const auto layouting = layoutings.create(document);
        layouting->setLayoutRect(MbRect(0.0, -boxWidth, boxWidth, 0.0));
        layouting->setAlignByTextBounds(true);
        layouting->layout();
    });
}

} // namespace growth
