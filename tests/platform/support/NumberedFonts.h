#pragma once

#include <cstddef>
#include <filesystem>

namespace platform::test {

/// Fills `folder` with `count` fonts in families of three, "Test 000000" on, each a regular, a bold and a light italic
/// face: copies of the fonts Slopes-*.ttf of `data` with another family name. `reversed` numbers the files, which
/// otherwise go as the families do, from the end.
void makeNumberedFonts(const std::filesystem::path& data, const std::filesystem::path& folder, std::size_t count,
                       bool reversed);

/// Writes a Fontconfig configuration of that folder alone, with a cache beside it.
void configureFolder(const std::filesystem::path& folder, const std::filesystem::path& configuration);

} // namespace platform::test
