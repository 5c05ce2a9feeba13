#include "Session.h"

#include <dwrite.h>

#include <oslayer/checkHResult.h>
#include <oslayer/com_ptr.h>

#include "InputError.h"

namespace tool {

namespace {

// The engine's fallback font is the system's first family at worst, so without
// any font there is nothing that it could answer.
void requireFonts() {
    oslayer::com_ptr<IDWriteFactory> factory;
    OSLAYER_CHECK(DWriteCreateFactory(DWRITE_FACTORY_TYPE_SHARED, __uuidof(IDWriteFactory),
                                      reinterpret_cast<IUnknown**>(&factory)));
    oslayer::com_ptr<IDWriteFontCollection> collection;
    OSLAYER_CHECK(factory->GetSystemFontCollection(&collection));
    if (collection->GetFontFamilyCount() == 0) {
        throw InputError("no fonts are installed; install some (on Debian: apt-get install fonts-dejavu-core)");
    }
}

std::unique_ptr<fonts::IFontEngine> createEngine() {
    requireFonts();
    return fonts::createFontEngine(L"DejaVu Sans");
}

} // namespace

Session::Session()
    : m_engine(createEngine()), m_metrics(fonts::createTextMetricsService(m_engine.get())),
      m_layoutings(m_metrics.get()), m_fontMap(*m_engine) {}

} // namespace tool
