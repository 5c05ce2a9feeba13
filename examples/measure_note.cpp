// Measures a note in a box 60 units wide, as README shows it.
#include <FontEngine/FontEngine.h>
#include <iostream>
#include <render/RichTextDocument.h>

int main() {
    auto engine = fonts::createFontEngine(L"DejaVu Sans");
    auto metrics = fonts::createTextMetricsService(engine.get());
    fonts::CRichTextDocumentLayoutingFactory layoutings(metrics.get());

    auto note =
        render::makeSingleParagraphDocument(L"All dimensions shall be checked on site.", L"Liberation Sans", 2.5F, {});
    auto layouting = layoutings.create(note);
    layouting->setLayoutRect(MbRect(0.0, -100.0, 60.0, 0.0));
    layouting->layout();
    for (const MbRect& box : layouting->getRects()) {
        std::cout << box.xmax - box.xmin << " x " << box.ymax - box.ymin << '\n';
    }
}
