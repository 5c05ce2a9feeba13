#include <cstdlib>
#include <iostream>
#include <string>

#include <FontEngine/FontEngine.h>
#include <render/RichTextDocument.h>

// What the header says is what the package says.
int main() {
    const std::string version = std::to_string(FONTENGINE_VERSION_MAJOR) + '.' +
                                std::to_string(FONTENGINE_VERSION_MINOR) + '.' +
                                std::to_string(FONTENGINE_VERSION_PATCH);
    if (version != EXPECTED_VERSION || version != FONTENGINE_VERSION) {
        std::cerr << "The headers are of version " FONTENGINE_VERSION ", the package is of " EXPECTED_VERSION ".\n";
        return EXIT_FAILURE;
    }
    const auto engine = fonts::createFontEngine(L"DejaVu Sans");
    const auto metrics = fonts::createTextMetricsService(engine.get());
    // Capitals of DejaVu Sans are 1493 of 2048 high, its lines 2384.
    const MbRect box = metrics->getTextRect(L"H", L"DejaVu Sans", 1493.0F, {});
    const double height = box.ymax - box.ymin;
    std::cout << height << '\n';
    return height > 2383.0 && height < 2385.0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
