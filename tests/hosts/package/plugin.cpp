#include <exception>

#include <Common/Violations.h>
#include <FontEngine/FontEngine.h>

// The height of a line of text; -1 when something was thrown.
extern "C" __attribute__((visibility("default"))) double lineHeight() {
    try {
        const auto engine = fonts::createFontEngine(L"DejaVu Sans");
        const auto metrics = fonts::createTextMetricsService(engine.get());
        const MbRect box = metrics->getTextRect(L"H", L"DejaVu Sans", 2.5F, {});
        return box.ymax - box.ymin;
    } catch (const common::EAssertionViolation&) {
        return -1.0;
    } catch (const std::exception&) {
        return -1.0;
    }
}
