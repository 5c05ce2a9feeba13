#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include <FontEngine/ParagraphLayout.h>

namespace tool {

// Numbers faces, so that glyphs of different layouts can be compared: two faces
// have one number where they come from one file, or, without one, bear the same
// names, and are simulated alike.
class FaceNumbers {
public:
    // Of a layout's faces, in their order.
    std::vector<std::uint32_t> of(const fonts::CParagraphLayout& layout);

private:
    // File or family, index, name within the family, emboldened, slanted.
    using Key = std::tuple<std::wstring, std::uint32_t, std::wstring, bool, bool>;

    std::map<Key, std::uint32_t> m_numbers;
};

} // namespace tool
