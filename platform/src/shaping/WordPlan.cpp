#include "shaping/WordPlan.h"

#include <array>
#include <iterator>
#include <memory>

#include <hb-aat.h>
#include <hb-ot.h>
#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include "fonts/FontFace.h"

namespace platform {

namespace {

constexpr std::u16string_view twoSpaces = u"  ";

struct DestroySet {
    void operator()(hb_set_t* set) const noexcept { hb_set_destroy(set); }
};
using SetPtr = std::unique_ptr<hb_set_t, DestroySet>;

/// Where the kerning of a font knows of the space.
struct SpaceKerning {
    bool inPairs = false;
    /// As something that has to stand nearby for others to be kerned.
    bool inContexts = false;
};

SpaceKerning findSpaceKerning(hb_face_t* face, hb_codepoint_t space) {
    constexpr std::array<hb_tag_t, 2> kern{HB_TAG('k', 'e', 'r', 'n'), HB_TAG_NONE};
    const SetPtr lookups(hb_set_create());
    hb_ot_layout_collect_lookups(face, HB_OT_TAG_GPOS, nullptr, nullptr, kern.data(), lookups.get());
    SpaceKerning kerning;
    for (hb_codepoint_t lookup = HB_SET_VALUE_INVALID; hb_set_next(lookups.get(), &lookup) != 0;) {
        const SetPtr before(hb_set_create());
        const SetPtr input(hb_set_create());
        const SetPtr after(hb_set_create());
        hb_ot_layout_lookup_collect_glyphs(face, HB_OT_TAG_GPOS, lookup, before.get(), input.get(), after.get(),
                                           nullptr);
        kerning.inPairs = kerning.inPairs || hb_set_has(input.get(), space) != 0;
        kerning.inContexts =
            kerning.inContexts || hb_set_has(before.get(), space) != 0 || hb_set_has(after.get(), space) != 0;
    }
    return kerning;
}

/// Whether HarfBuzz may take a letter of `word` apart into base and mark. In scripts other than these it leaves the
/// parts in words without marks, but puts them together again where any mark stands in the same run.
bool isTakenApart(std::u16string_view word, hb_script_t script) {
    switch (script) {
    case HB_SCRIPT_ARABIC:
    case HB_SCRIPT_COMMON:
    case HB_SCRIPT_CYRILLIC:
    case HB_SCRIPT_GREEK:
    case HB_SCRIPT_HAN:
    case HB_SCRIPT_HANGUL:
    case HB_SCRIPT_HEBREW:
    case HB_SCRIPT_HIRAGANA:
    case HB_SCRIPT_KATAKANA:
    case HB_SCRIPT_LATIN:
        return false;
    default:
        break;
    }
    for (std::size_t position = 0; position < word.size();) {
        UChar32 character = 0;
        U16_NEXT(word.data(), position, word.size(), character);
        if (u_getIntPropertyValue(character, UCHAR_DECOMPOSITION_TYPE) == U_DT_CANONICAL) {
            return true;
        }
    }
    return false;
}

bool isShapedByAppleTables(hb_face_t* face) {
    return hb_aat_layout_has_substitution(face) != 0 || hb_aat_layout_has_positioning(face) != 0 ||
           hb_aat_layout_has_tracking(face) != 0;
}

} // namespace

WordPlan::WordPlan(const ShapeRequest& request) : m_request(request) {
    m_request.text = {};
    m_request.start = 0;
    m_request.features = {};
    m_request.asksUnsafeToConcat = true;
    const std::uint16_t glyph = request.face->nominalGlyph(U' ');
    m_space.glyph = glyph;
    m_space.advance = request.face->advance(glyph);
    const SpaceKerning kerning = request.isKerned ? findSpaceKerning(request.face->hbFace(), glyph) : SpaceKerning();
    m_kernsSpaces = kerning.inPairs;
    const ShapedRun spaces = shapeText(twoSpaces, {});
    m_isSeparable = glyph != 0 && !kerning.inContexts && !isShapedByAppleTables(request.face->hbFace()) &&
                    spaces.size() == twoSpaces.size() && isPlainSpace(spaces[0], 0) && isPlainSpace(spaces[1], 1);
}

ShapedRun WordPlan::shapeText(std::u16string_view text, std::span<const hb_feature_t> features) const {
    ShapeRequest request = m_request;
    request.text = text;
    request.length = text.size();
    request.features = features;
    ShapedRun run;
    platform::shape(request, run);
    return run;
}

bool WordPlan::isSpace(const ShapedGlyph& glyph, std::uint32_t cluster) const noexcept {
    return glyph.glyph == m_space.glyph && glyph.cluster == cluster && glyph.advanceOffset == 0 &&
           glyph.ascenderOffset == 0;
}

bool WordPlan::isPlainSpace(const ShapedGlyph& glyph, std::uint32_t cluster) const noexcept {
    return isSpace(glyph, cluster) && glyph.advance == m_space.advance;
}

ShapedWord WordPlan::shape(std::u16string_view word, WordEdges edges) const {
    if (isTakenApart(word, m_request.script)) {
        return {};
    }
    const std::size_t before = edges.spaceBefore ? twoSpaces.size() : 0;
    const std::size_t after = edges.spaceAfter ? twoSpaces.size() : 0;
    std::u16string text;
    text.reserve(before + word.size() + after);
    text.append(twoSpaces.substr(0, before)).append(word).append(twoSpaces.substr(0, after));
    const auto wordStart = static_cast<std::uint32_t>(before);
    const auto wordEnd = static_cast<std::uint32_t>(before + word.size());

    const ShapedRun run = shapeText(text, {});
    ShapedWord shaped;
    if (run.size() < before + after) {
        return shaped;
    }
    const std::size_t firstAfter = run.size() - after;
    const bool startsAtItsStart = firstAfter == before || run[before].cluster == wordStart;
    if (edges.spaceBefore && !(isPlainSpace(run[0], 0) && isSpace(run[1], 1) && startsAtItsStart)) {
        return shaped;
    }
    if (edges.spaceAfter && !(isPlainSpace(run[firstAfter], wordEnd) && isPlainSpace(run.back(), wordEnd + 1))) {
        return shaped;
    }
    shaped.spaceAdvance = edges.spaceBefore ? run[1].advance : 0;
    shaped.spaceAfterIsUnsafe = edges.spaceAfter && run[firstAfter].isUnsafeToBreak;

    static constexpr std::array<hb_feature_t, 1> noKerning{
        {{HB_TAG('k', 'e', 'r', 'n'), 0, HB_FEATURE_GLOBAL_START, HB_FEATURE_GLOBAL_END}}};
    const ShapedRun& proof = m_kernsSpaces ? shapeText(text, noKerning) : run;
    shaped.isSeparable =
        !(edges.spaceBefore && proof.front().isUnsafeToConcat) && !(edges.spaceAfter && proof.back().isUnsafeToConcat);
    shaped.glyphs.assign(run.begin() + static_cast<std::ptrdiff_t>(before),
                         run.begin() + static_cast<std::ptrdiff_t>(firstAfter));
    for (ShapedGlyph& glyph : shaped.glyphs) {
        glyph.cluster -= wordStart;
    }
    return shaped;
}

} // namespace platform
