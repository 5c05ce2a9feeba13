#pragma once

#include <dwrite.h>

#include <cstdint>
#include <unordered_map>
#include <vector>

#include <FontEngine/ParagraphLayout.h>

namespace fonts {

// Collects the characters that a drawn paragraph shows as the glyph for missing ones.
class CMissingCharacters {
public:
    // Looks through a run as a renderer gets it. A font that cannot say which character of a cluster it lacks is taken
    // to lack the first.
    void add(const DWRITE_GLYPH_RUN& run, const DWRITE_GLYPH_RUN_DESCRIPTION& description);

    std::vector<SMissingCharacter> take();

private:
    void addCluster(IDWriteFontFace* face, const WCHAR* text, UINT32 length, UINT32 position, std::size_t boxes);
    void addCharacter(char32_t character, std::uint32_t position);

    std::vector<SMissingCharacter> m_characters;
    std::unordered_map<char32_t, std::size_t> m_places;
};

} // namespace fonts
