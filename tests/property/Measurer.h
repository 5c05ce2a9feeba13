#pragma once

#include <memory>
#include <vector>

#include <FontEngine/FontEngine.h>

namespace property {

/// An engine and a service of their own, so that what one remembers the other has to find out.
struct Measurer {
    std::unique_ptr<fonts::IFontEngine> engine = fonts::createFontEngine(L"DejaVu Sans");
    std::unique_ptr<fonts::ITextMetrics> metrics = fonts::createTextMetricsService(engine.get());

    [[nodiscard]] std::vector<fonts::SGlyphRunDesc> runs(const render::CRichTextParagraph& paragraph,
                                                         double maxWidth) const {
        std::vector<boost::intrusive_ptr<MbRegion>> regions;
        return metrics->getGlyphRuns(paragraph, maxWidth, 0.0, {}, regions);
    }
};

} // namespace property
