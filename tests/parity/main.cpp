// Writes what the library says of the parity documents and of the fonts, as JSON:
//   parity FILE

#include <cstdio>
#include <exception>
#include <fstream>

#include "Measuring.h"
#include "ParityDocument.h"

namespace {

void run(std::ostream& out) {
    // A fallback family whose file states its capital height.
    const auto engine = fonts::createFontEngine(L"Liberation Sans");
    const auto metrics = fonts::createTextMetricsService(engine.get());
    parity::JsonWriter json(out);
    json.beginObject("fonts");
    parity::measureFonts(json, *engine);
    json.end();
    json.beginObject("documents");
    for (const parity::Document& document : parity::allDocuments(*engine)) {
        json.beginObject(document.group + "/" + document.name);
        json.write("group", document.group);
        parity::measure(json, *metrics, document);
        json.end();
    }
    json.end();
    json.end();
    out << '\n';
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: parity FILE\n");
        return 2;
    }
    try {
        std::ofstream out(argv[1], std::ios::binary);
        run(out);
        out.close();
        if (!out) {
            std::fprintf(stderr, "parity: %s cannot be written\n", argv[1]);
            return 1;
        }
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "parity: %s\n", error.what());
        return 1;
    }
}
