// What others put into a file stands behind ours.
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

static_assert(static_cast<int>(fonts::Underline::None) == 0 && static_cast<int>(dxf::ColumnKind::None) == 0 &&
              dxf::ErrorKind::BadRequest != dxf::ErrorKind::Empty);

#include "neighbours.h"

#include <Common/Export.h>

bool measuredAfter() {
    const auto engine = fonts::createFontEngine(L"DejaVu Sans");
    const auto metrics = fonts::createTextMetricsService(engine.get());
    const MbRect box = metrics->getTextRect(L"H", L"DejaVu Sans", 2.5F, {});
    return box.ymin < box.ymax;
}
