#include "Session.h"

#include <oslayer/Errors.h>

#include "InputError.h"

namespace tool {

namespace {

// The engine's fallback font is the system's first family at worst: where there
// is none, there is nothing that it could answer.
void requireFonts(fonts::IFontEngine& engine) {
    try {
        engine.getFallbackFont();
    } catch (const oslayer::EOsLayerError&) {
        throw InputError("no fonts are installed; install some (on Debian: apt-get install fonts-dejavu-core)");
    }
}

std::unique_ptr<fonts::IFontEngine> createEngine() {
    std::unique_ptr<fonts::IFontEngine> engine = fonts::createFontEngine(L"DejaVu Sans");
    requireFonts(*engine);
    return engine;
}

} // namespace

Session::Session()
    : m_engine(createEngine()), m_metrics(fonts::createTextMetricsService(m_engine.get())), m_layouts(*m_engine),
      m_fontMap(*m_engine) {}

} // namespace tool
