#include "RawShaper.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

#include <fontconfig/fontconfig.h>
#include <hb-ot.h>
#include <unicode/uchar.h>
#include <unicode/utf16.h>

namespace bench {

namespace {

constexpr int subUnits = 64;

struct Destroy {
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
    void operator()(FcFontSet* set) const { FcFontSetDestroy(set); }
};

bool has(FcPattern* font, char32_t character) {
    FcCharSet* coverage = nullptr;
    return FcPatternGetCharSet(font, FC_CHARSET, 0, &coverage) == FcResultMatch &&
           FcCharSetHasChar(coverage, character) != FcFalse;
}

/// The file and face of the first font in Fontconfig's order for the family that has the character.
std::pair<std::string, unsigned> findFont(char32_t character) {
    const std::unique_ptr<FcPattern, Destroy> pattern(FcPatternCreate());
    FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>("DejaVu Sans"));
    FcConfigSubstitute(nullptr, pattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pattern.get());
    FcResult result = FcResultMatch;
    const std::unique_ptr<FcFontSet, Destroy> sorted(FcFontSort(nullptr, pattern.get(), FcTrue, nullptr, &result));
    for (int i = 0; sorted && i < sorted->nfont; ++i) {
        FcChar8* file = nullptr;
        int index = 0;
        if (has(sorted->fonts[i], character) &&
            FcPatternGetString(sorted->fonts[i], FC_FILE, 0, &file) == FcResultMatch) {
            FcPatternGetInteger(sorted->fonts[i], FC_INDEX, 0, &index);
            return {reinterpret_cast<const char*>(file), static_cast<unsigned>(index) & 0xFFFFU};
        }
    }
    throw std::runtime_error("no font for a character of the corpus");
}

hb_font_t* openFont(const std::string& file, unsigned index) {
    hb_blob_t* const blob = hb_blob_create_from_file(file.c_str());
    hb_face_t* const face = hb_face_create(blob, index);
    hb_font_t* const font = hb_font_create(face);
    const int scale = static_cast<int>(emSize) * subUnits;
    hb_font_set_scale(font, scale, scale);
    hb_ot_font_set_funcs(font);
    hb_font_make_immutable(font);
    hb_face_destroy(face);
    hb_blob_destroy(blob);
    return font;
}

} // namespace

struct RawShaper::Box {
    double left = std::numeric_limits<double>::max();
    double bottom = std::numeric_limits<double>::max();
    double right = std::numeric_limits<double>::lowest();
    double top = std::numeric_limits<double>::lowest();
};

RawShaper::RawShaper() : m_scripts(0x10000), m_buffer(hb_buffer_create()) {
    static_assert(USCRIPT_CODE_LIMIT <= 256);
    for (std::size_t c = 0; c < m_scripts.size(); ++c) {
        UErrorCode error = U_ZERO_ERROR;
        m_scripts[c] = static_cast<unsigned char>(uscript_getScript(static_cast<UChar32>(c), &error));
    }
}

RawShaper::~RawShaper() {
    hb_buffer_destroy(m_buffer);
}

UScriptCode RawShaper::scriptOf(char32_t character) const {
    if (character < m_scripts.size()) {
        return static_cast<UScriptCode>(m_scripts[character]);
    }
    UErrorCode error = U_ZERO_ERROR;
    return uscript_getScript(static_cast<UChar32>(character), &error);
}

void RawShaper::itemize(const std::u16string& text) {
    m_runs.clear();
    const auto size = static_cast<unsigned>(text.size());
    unsigned start = 0;
    UScriptCode current = USCRIPT_COMMON;
    for (unsigned at = 0; at < size;) {
        const unsigned here = at;
        UChar32 c = 0;
        U16_NEXT(text.data(), at, size, c);
        const UScriptCode script = scriptOf(static_cast<char32_t>(c));
        if (script == USCRIPT_COMMON || script == USCRIPT_INHERITED || script == current) {
            continue;
        }
        if (current != USCRIPT_COMMON) {
            m_runs.push_back({start, here - start, current});
            start = here;
        }
        current = script;
    }
    m_runs.push_back({start, size - start, current == USCRIPT_COMMON ? USCRIPT_LATIN : current});
}

hb_font_t* RawShaper::fontFor(const std::u16string& text, const Run& run) {
    hb_font_t*& font = m_fontOfScript[static_cast<std::size_t>(run.script)];
    if (font == nullptr) {
        // A script's first letter stands for the script.
        char32_t sample = U' ';
        for (unsigned at = run.start; at < run.start + run.length && scriptOf(sample) != run.script;) {
            UChar32 c = 0;
            U16_NEXT(text.data(), at, run.start + run.length, c);
            sample = static_cast<char32_t>(c);
        }
        const auto [file, index] = findFont(scriptOf(sample) == run.script ? sample : U' ');
        auto& shared = m_fonts[file + "#" + std::to_string(index)];
        if (!shared) {
            shared.reset(openFont(file, index));
        }
        font = shared.get();
    }
    return font;
}

void RawShaper::shape(const std::u16string& text, const Run& run, hb_font_t* font) {
    hb_buffer_clear_contents(m_buffer);
    hb_buffer_add_utf16(m_buffer, reinterpret_cast<const std::uint16_t*>(text.data()), static_cast<int>(text.size()),
                        run.start, static_cast<int>(run.length));
    const hb_script_t script = hb_script_from_string(uscript_getShortName(run.script), 4);
    hb_buffer_set_script(m_buffer, script);
    hb_buffer_set_direction(m_buffer, hb_script_get_horizontal_direction(script));
    hb_shape(font, m_buffer, nullptr, 0);
}

void RawShaper::collect(Question question, hb_font_t* font, double& x, Box& ink, Sums& sums) {
    unsigned count = 0;
    const hb_glyph_info_t* const infos = hb_buffer_get_glyph_infos(m_buffer, &count);
    const hb_glyph_position_t* const positions = hb_buffer_get_glyph_positions(m_buffer, &count);
    for (unsigned i = 0; i < count; ++i) {
        m_missing += infos[i].codepoint == 0 ? 1 : 0;
        const double left = x + positions[i].x_offset;
        hb_glyph_extents_t extents;
        if (question == Question::Ink && hb_font_get_glyph_extents(font, infos[i].codepoint, &extents) != 0 &&
            extents.width != 0) {
            const double top = positions[i].y_offset + extents.y_bearing;
            ink.left = std::min(ink.left, left + extents.x_bearing);
            ink.right = std::max(ink.right, left + extents.x_bearing + extents.width);
            ink.top = std::max(ink.top, top);
            ink.bottom = std::min(ink.bottom, top + extents.height);
        } else if (question == Question::Glyphs) {
            sums.positions += left;
        }
        x += positions[i].x_advance;
    }
    sums.glyphs += question == Question::Glyphs ? count : 0;
}

void RawShaper::ask(Question question, const std::u16string& paragraph, Sums& sums) {
    itemize(paragraph);
    double x = 0.0;
    double height = 0.0;
    Box ink;
    for (const Run& run : m_runs) {
        hb_font_t* const font = fontFor(paragraph, run);
        shape(paragraph, run, font);
        collect(question, font, x, ink, sums);
        hb_font_extents_t extents;
        hb_font_get_h_extents(font, &extents);
        height = std::max(height, static_cast<double>(extents.ascender - extents.descender + extents.line_gap));
    }
    if (question == Question::Box) {
        sums.width += x / subUnits;
        sums.height += height / subUnits;
    } else if (question == Question::Ink && ink.left <= ink.right) {
        sums.width += (ink.right - ink.left) / subUnits;
        sums.height += (ink.top - ink.bottom) / subUnits;
    }
}

} // namespace bench
