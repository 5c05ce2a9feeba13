#include <cstdlib>
#include <iostream>
#include <sstream>
#include <string>

#include <FontEngine/FontEngine.h>
#include <dxf/Drawing.h>
#include <mtext/MText.h>

// A drawing's text, read, parsed and measured.
int main() {
    std::istringstream file("0\nSECTION\n2\nENTITIES\n0\nMTEXT\n8\n0\n10\n0.0\n20\n0.0\n30\n0.0\n40\n2.5\n1\n"
                            "{\\fDejaVu Sans;one}\\Ptwo\n0\nENDSEC\n0\nEOF\n");
    const dxf::Drawing drawing = dxf::readDrawing(file);
    if (drawing.texts.size() != 1) {
        std::cerr << drawing.texts.size() << " texts\n";
        return EXIT_FAILURE;
    }
    const dxf::TextEntity text = drawing.texts.at(0);
    mtext::Defaults defaults;
    defaults.fontFamily = L"Liberation Sans";
    defaults.capSize = static_cast<float>(text.height);
    const mtext::Result result = mtext::parse(text.content, defaults);

    const auto engine = fonts::createFontEngine(L"DejaVu Sans");
    const auto metrics = fonts::createTextMetricsService(engine.get());
    const bool read = mtext::plainText(result.document) == L"one\ntwo";
    const bool measured = metrics->getParagraphRects(result.document, 0.0, 0.0).size() == 2;
    return read && measured ? EXIT_SUCCESS : EXIT_FAILURE;
}
