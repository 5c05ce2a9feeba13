#pragma once

#include <cstddef>
#include <fstream>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include <Common/Utf.h>
#include <FontEngine/FontUtils.h>
#include <FontEngine/IFontEngine.h>

// Holds fonts against a table in data/, which a script beside it recorded from the
// font files with another reader of fonts.
inline void expectRecordedMetrics(const std::string& table, std::size_t fontCount) {
    const auto engine = fonts::createFontEngine(L"Liberation Sans");
    std::ifstream file(FONTENGINE_TEST_DATA "/FontEngine/data/" + table);
    std::string line;
    std::getline(file, line);
    std::size_t count = 0;
    for (; std::getline(file, line); ++count) {
        SCOPED_TRACE(line);
        std::istringstream fields(line);
        std::string family;
        std::getline(fields, family, '\t');
        bool bold = false;
        bool italic = false;
        double unitsPerEm = 0.0;
        double ascent = 0.0;
        double descent = 0.0;
        double lineGap = 0.0;
        double capHeight = 0.0;
        fields >> bold >> italic >> unitsPerEm >> ascent >> descent >> lineGap >> capHeight;
        ASSERT_TRUE(fields);
        const std::wstring name = common::wideFromUtf8(family);
        fonts::IFont& font = *engine->getFont(name, fonts::weightFromBool(bold), fonts::styleFromBool(italic));
        EXPECT_EQ(font.requestedFontFamily(), name);
        // A capital as high as the font's own makes one unit of length one design unit.
        EXPECT_NEAR(font.capitalLetterSizeToFontSize(capHeight), unitsPerEm, 1e-9);
        const fonts::SFontMetrics metrics = font.metricsByCapitalLetterSize(capHeight);
        EXPECT_NEAR(metrics.ascent, ascent, 1e-9);
        EXPECT_NEAR(metrics.descent, descent, 1e-9);
        EXPECT_NEAR(metrics.lineGap, lineGap, 1e-9);
        EXPECT_NEAR(metrics.capitalTopToAscent, ascent - capHeight, 1e-9);
    }
    EXPECT_EQ(count, fontCount);
}
