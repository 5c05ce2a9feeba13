// What others put into a file stands before ours.
#include "neighbours.h"

#include <Common/Export.h>

#include <Common/Guards.h>
#include <Common/Memoizer.h>
#include <Common/Utf.h>
#include <FontEngine/FontEngine.h>
#include <dxf/Placement.h>
#include <dxf/Rewrite.h>
#include <geometry/aecmath.h>
#include <mtext/MText.h>
#include <oslayer/Errors.h>
#include <oslayer/Logger.h>
#include <oslayer/statusName.h>

#ifndef THE_HOSTS_OWN_EXPORT
#error "The host's own Common/Export.h was not found."
#endif
#ifndef FONTENGINE_API
#error "The library's marks were not found."
#endif

// Theirs is as it was.
static_assert(None == 0L && BadRequest == 1);
static_assert(min(1, 2) == 1);

bool measuredAfter();

int main() {
    const auto engine = fonts::createFontEngine(L"DejaVu Sans");
    const auto metrics = fonts::createTextMetricsService(engine.get());
    const MbRect box = metrics->getTextRect(L"H", L"DejaVu Sans", 2.5F, {});
    return box.ymin < box.ymax && measuredAfter() ? 0 : 1;
}
