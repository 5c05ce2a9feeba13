#pragma once

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include <FontEngine/FontEngine.h>

#include "TestDocuments.h"

// An engine and a service over the pinned fonts, for one test.
class RealFontsTest : public testing::Test {
protected:
    std::unique_ptr<fonts::IFontEngine> engine = fonts::createFontEngine(L"Liberation Sans");
    std::unique_ptr<fonts::ITextMetrics> service = fonts::createTextMetricsService(engine.get());

    std::vector<fonts::SGlyphRunDesc> glyphRuns(const render::CRichTextParagraph& paragraph, double maxWidth = 0.0) {
        std::vector<boost::intrusive_ptr<MbRegion>> regions;
        return service->getGlyphRuns(paragraph, maxWidth, 0.0, {}, regions);
    }
};

inline void expectNear(const MbRect& actual, const MbRect& expected, double tolerance) {
    EXPECT_NEAR(actual.xmin, expected.xmin, tolerance);
    EXPECT_NEAR(actual.ymin, expected.ymin, tolerance);
    EXPECT_NEAR(actual.xmax, expected.xmax, tolerance);
    EXPECT_NEAR(actual.ymax, expected.ymax, tolerance);
}
