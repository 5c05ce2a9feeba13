#pragma once

// What tests of the platform need of fonts.

#include "fonts/FontCollection.h"
#include "fonts/FontFace.h"

#include <oslayer/com_ptr.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace platform::test {

/// A family of the pinned fonts. Throws when it is not there, which fails the test.
CFontFamily& family(const std::wstring& name);

/// The font of a pinned family that matches best.
CFont& font(const std::wstring& familyName, DWRITE_FONT_WEIGHT weight = DWRITE_FONT_WEIGHT_NORMAL,
            DWRITE_FONT_STYLE style = DWRITE_FONT_STYLE_NORMAL,
            DWRITE_FONT_STRETCH stretch = DWRITE_FONT_STRETCH_NORMAL);

/// The real font of a pinned file, named as "fonts-dejavu-core/DejaVuSans.ttf".
CFont& fontOfFile(const std::string& file, int index = 0);

/// The path of a file in the data folder of these tests.
std::string dataPath(const std::string& name);

/// The rows of a tab-separated file there; lines that start with # are left out.
std::vector<std::vector<std::string>> readTable(const std::string& name);

/// A collection of fonts of the data folder; `index` as in FontSetEntry.
CFontCollection& dataCollection();
CFont& dataFont(const std::string& name, int index = 0);

/// Metrics as the tables of facts list them: em, ascent, descent, gap, capital and x height, then place and thickness
/// of the underline and of the strikethrough.
std::array<int, 10> listed(const DWRITE_FONT_METRICS& metrics);

std::wstring textAt(IDWriteLocalizedStrings& strings, std::uint32_t index);
std::wstring localeAt(IDWriteLocalizedStrings& strings, std::uint32_t index);
/// All strings as "locale=text", in order.
std::vector<std::wstring> listed(IDWriteLocalizedStrings& strings);

/// A font's informational string; empty (and no reference) where it has none.
oslayer::com_ptr<IDWriteLocalizedStrings> informationalStrings(IDWriteFont& font, DWRITE_INFORMATIONAL_STRING_ID id);
oslayer::com_ptr<IDWriteLocalizedStrings> faceNames(IDWriteFont& font);
oslayer::com_ptr<IDWriteLocalizedStrings> familyNames(IDWriteFontFamily& family);

} // namespace platform::test
