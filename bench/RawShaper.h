#pragma once

#include <array>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <hb.h>
#include <unicode/uscript.h>

#include "Layouter.h"

namespace bench {

/// The least that any layout has to do: cut the text where the script changes and shape each piece with HarfBuzz, with
/// one font per script. No bidi, no line breaks, no fallback inside a piece.
class RawShaper {
public:
    RawShaper();
    ~RawShaper();
    RawShaper(const RawShaper&) = delete;
    RawShaper& operator=(const RawShaper&) = delete;

    void ask(Question question, const std::u16string& paragraph, Sums& sums);
    /// Glyphs so far that were missing in the font of their script.
    long long missing() const { return m_missing; }

private:
    struct Run {
        unsigned start;
        unsigned length;
        UScriptCode script;
    };
    struct Box;

    UScriptCode scriptOf(char32_t character) const;
    void itemize(const std::u16string& text);
    hb_font_t* fontFor(const std::u16string& text, const Run& run);
    void shape(const std::u16string& text, const Run& run, hb_font_t* font);
    void collect(Question question, hb_font_t* font, double& x, Box& ink, Sums& sums);

    struct DestroyFont {
        void operator()(hb_font_t* font) const { hb_font_destroy(font); }
    };
    std::vector<unsigned char> m_scripts;
    std::map<std::string, std::unique_ptr<hb_font_t, DestroyFont>> m_fonts;
    std::array<hb_font_t*, USCRIPT_CODE_LIMIT> m_fontOfScript{};
    std::vector<Run> m_runs;
    hb_buffer_t* m_buffer;
    long long m_missing = 0;
};

} // namespace bench
