// Rich text documents of any text, style and size: measured, laid out in all three ways and taken apart into runs.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include <Common/Exception.h>
#include <Common/Violations.h>
#include <FontEngine/FontEngine.h>

#include "Input.h"

namespace {

render::SRichTextToken takeToken(fuzz::Input& input) {
    static constexpr const wchar_t* families[] = {L"DejaVu Sans",      L"Liberation Serif", L"Noto Naskh Arabic",
                                                  L"Noto Sans CJK JP", L"not installed",    L""};
    static constexpr float sizes[] = {1.0F, 3.5F, 12.0F, 1e-3F, 1e6F};
    const wchar_t* const family = families[input.below(std::size(families))];
    const std::size_t size = input.below(std::size(sizes) + 1);
    const auto style = static_cast<unsigned>(input.below(8));
    render::SRichTextToken token;
    token.fontFamily = family;
    token.fontCapSize = size < std::size(sizes) ? sizes[size] : input.take<float>();
    token.fontStyle = {(style & 1) != 0, (style & 2) != 0, (style & 4) != 0};
    token.text = input.text();
    return token;
}

render::CRichTextDocument takeDocument(fuzz::Input& input) {
    std::vector<render::CRichTextParagraph> paragraphs(1 + input.below(3));
    for (render::CRichTextParagraph& paragraph : paragraphs) {
        paragraph.alignment = static_cast<render::eRichTextParagraphAlignment>(input.below(6));
        paragraph.verticalAlignment = static_cast<render::eRichTextParagraphVerticalAlignment>(input.below(5));
        paragraph.noWrap = input.below(4) == 0;
        for (std::size_t left = 1 + input.below(3); left > 0; --left) {
            paragraph.tokens.push_back(takeToken(input));
        }
    }
    render::CRichTextDocument document = render::makeDocument(std::move(paragraphs));
    document.tabStopWidth = input.below(2) == 0 ? 40.0F : input.take<float>();
    return document;
}

/// Asks, and takes a refusal for an answer: of a size that the platform does not take, or that is not a number.
template <class Ask>
void attempt(Ask ask) {
    try {
        ask();
    } catch (const common::EException&) {
        return;
    } catch (const common::ECheckViolation&) {
        return;
    }
}

void layOut(fonts::IRichTextDocumentLayouting& layouting, const MbRect& box, bool byInk) {
    layouting.setLayoutRect(box);
    layouting.setAlignByTextBounds(byInk);
    layouting.layout();
    // A box that is empty may leave a layouting without results.
    fuzz::require(layouting.getRects().empty() || layouting.getRects().size() == layouting.getParagraphs().size());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::unique_ptr<fonts::IFontEngine> engine = fonts::createFontEngine(L"DejaVu Sans");
    static const std::unique_ptr<fonts::ITextMetrics> metrics = fonts::createTextMetricsService(engine.get());
    const fonts::CRichTextDocumentLayoutingFactory factory(metrics.get());

    fuzz::Input input(data, size);
    const double width = input.below(2) == 0 ? static_cast<double>(input.below(200)) : input.take<float>();
    const double height = input.below(2) == 0 ? static_cast<double>(input.below(200)) : input.take<float>();
    const bool byInk = input.below(2) == 0;
    const render::CRichTextDocument document = takeDocument(input);
    const MbRect box(0.0, -height, width, 0.0);

    attempt([&] { metrics->getDocumentRect(document); });
    attempt([&] { metrics->getParagraphGeometryRects(document, width, height); });
    attempt([&] {
        std::vector<boost::intrusive_ptr<MbRegion>> regions;
        metrics->getGlyphRuns(document.paragraphs.at(0), width, height, {}, regions);
    });
    attempt([&] { layOut(*factory.create(document), box, byInk); });
    attempt([&] { layOut(*factory.createForDxfMTexts(document), box, byInk); });
    attempt([&] { layOut(*factory.createForDxfMTextsByClusters(document), box, byInk); });
    return 0;
}
