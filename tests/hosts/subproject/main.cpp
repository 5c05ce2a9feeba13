#include <Common/Export.h>

#include <FontEngine/FontEngine.h>
#include <FontEngine/FontUtils.h>
#include <FontEngine/RichTextDocumentProcessor.h>
#include <oslayer/checkHResult.h>

#ifndef THE_HOSTS_OWN_EXPORT
#error "The host's own Common/Export.h was not found."
#endif

int main() {
    const auto engine = fonts::createFontEngine(L"DejaVu Sans");
    const auto metrics = fonts::createTextMetricsService(engine.get());
    const MbRect box = metrics->getTextRect(L"H", L"DejaVu Sans", 2.5F, {});
    return box.ymin < box.ymax ? 0 : 1;
}
