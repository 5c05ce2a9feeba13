#pragma once

#include <map>
#include <string>
#include <vector>

#include <FontEngine/IFontEngine.h>

namespace tool {

// Which installed family stands for a font that a drawing names: by family name
// ("Arial"), by file ("arial.ttf", "romans.shx", in any case, with or without
// the ending), or not at all.
//
// The user's own table, a JSON file, is asked first:
//
//   { "romans.shx": "DejaVu Sans", "ISOCPEUR": ["GOST type A", "Liberation Sans"] }
//
// Then an installed family stands for itself, and a built-in table knows the
// usual fonts of drawings. The first installed family of a list wins. What no
// row names becomes the default family, so text never vanishes because its font
// is missing.
class FontMap {
public:
    struct Replacement {
        std::wstring requested;
        std::wstring family;
    };

    // The engine is borrowed and answers which families are installed.
    explicit FontMap(fonts::IFontEngine& engine);

    // Takes the rows of a JSON file. Throws InputError for a file that cannot be
    // read or is not such a table.
    void load(const std::string& path);

    // The family to use for `requested`. Remembers each replacement once.
    std::wstring familyFor(const std::wstring& requested);

    // Notes that `family`, and font fallback behind it, stands in for the font of
    // two-byte characters that a style or a code names beside its own. Does
    // nothing for an empty name.
    void coverBigFont(const std::wstring& bigFont, const std::wstring& family);

    // What was replaced so far, in the order of first use.
    const std::vector<Replacement>& replacements() const { return m_replacements; }

private:
    using Rows = std::map<std::wstring, std::vector<std::wstring>>; // by lower-case name without ending

    bool isInstalled(const std::wstring& family);
    std::wstring firstInstalled(const Rows& rows, const std::wstring& key);
    std::wstring replacementFor(const std::wstring& requested);

    fonts::IFontEngine& m_engine;
    Rows m_userRows;
    Rows m_fileRows;
    Rows m_builtInRows;
    std::map<std::wstring, std::wstring> m_answers;
    std::vector<Replacement> m_replacements;
};

// Says on standard output which fonts stand in for which.
void reportReplacements(const std::vector<FontMap::Replacement>& replacements);

} // namespace tool
