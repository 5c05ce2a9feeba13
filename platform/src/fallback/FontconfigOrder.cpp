#include "fallback/FontconfigOrder.h"

#include <algorithm>
#include <array>
#include <memory>
#include <new>
#include <tuple>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "fonts/FontCollection.h"

namespace platform {

namespace {

std::string_view stringOf(const FcPattern* pattern, const char* object, int index = 0) {
    FcChar8* text = nullptr;
    return FcPatternGetString(pattern, object, index, &text) == FcResultMatch ? reinterpret_cast<const char*>(text)
                                                                              : std::string_view();
}

int integerOf(const FcPattern* pattern, const char* object) {
    int value = 0;
    return FcPatternGetInteger(pattern, object, 0, &value) == FcResultMatch ? value : 0;
}

const FcChar8* text(const char* string) {
    return reinterpret_cast<const FcChar8*>(string);
}

bool hasColor(const FcPattern* font) {
    FcBool color = FcFalse;
    return FcPatternGetBool(font, FC_COLOR, 0, &color) == FcResultMatch && color != FcFalse;
}

/// How far a font is from the plain sans that stands beside anything: 0 is closest.
int oddness(const FcPattern* font) {
    const std::string_view family = stringOf(font, FC_FAMILY);
    const auto has = [family](std::string_view word) { return family.find(word) != std::string_view::npos; };
    if (has("Mono") || integerOf(font, FC_SPACING) >= FC_DUAL) {
        return 3;
    }
    if (has("Serif")) {
        return 2;
    }
    return has("Sans") && !has(" UI") && !has("Display") && !has("Looped") ? 0 : 1;
}

/// Where Fontconfig finds two fonts equally good, it keeps the order it was given. This one depends on what the fonts
/// say, not on how their files are named or where they lie.
struct Candidate {
    FcPattern* pattern;
    /// The PostScript name of the first face in the file: the faces of a collection stay together, in their order.
    std::string_view title;
    int index;
    /// The font's place in our collection.
    std::size_t rank;

    bool operator<(const Candidate& other) const {
        return std::tie(title, index, rank) < std::tie(other.title, other.index, other.rank);
    }
};

/// The places of a collection's fonts.
std::unordered_map<const CFont*, std::size_t> ranksOf(const CFontCollection& collection) {
    std::unordered_map<const CFont*, std::size_t> ranks;
    for (const auto& family : collection.families()) {
        for (const auto& font : family->fonts()) {
            ranks.emplace(font.get(), ranks.size());
        }
    }
    return ranks;
}

std::vector<Candidate> listCandidates(FcConfig* config, const CFontCollection& collection) {
    const std::unordered_map<const CFont*, std::size_t> ranks = ranksOf(collection);
    std::vector<Candidate> found;
    std::unordered_map<std::string_view, std::pair<int, std::string_view>> firstFaces;
    for (const FcSetName name : {FcSetSystem, FcSetApplication}) {
        const FcFontSet* const fonts = FcConfigGetFonts(config, name);
        for (int i = 0; fonts != nullptr && i < fonts->nfont; ++i) {
            FcPattern* const pattern = fonts->fonts[i];
            const std::string_view file = stringOf(pattern, FC_FILE);
            const int index = integerOf(pattern, FC_INDEX);
            if (const CFont* const font = collection.fontOfFile(file, index)) {
                found.push_back({pattern, file, index, ranks.at(font)});
                const std::pair face(index, stringOf(pattern, FC_POSTSCRIPT_NAME));
                const auto known = firstFaces.emplace(file, face).first;
                known->second = std::min(known->second, face);
            }
        }
    }
    for (Candidate& candidate : found) {
        candidate.title = firstFaces.at(candidate.title).second;
    }
    return found;
}

FontSetPtr candidates(FcConfig* config, const CFontCollection& collection) {
    std::vector<Candidate> found = listCandidates(config, collection);
    std::sort(found.begin(), found.end());
    FontSetPtr set(FcFontSetCreate());
    if (!set) {
        throw std::bad_alloc();
    }
    for (const Candidate& candidate : found) {
        FcPatternReference(candidate.pattern);
        if (!FcFontSetAdd(set.get(), candidate.pattern)) {
            FcPatternDestroy(candidate.pattern);
            throw std::bad_alloc();
        }
    }
    return set;
}

int slantOf(DWRITE_FONT_STYLE style) {
    switch (style) {
    case DWRITE_FONT_STYLE_ITALIC:
        return FC_SLANT_ITALIC;
    case DWRITE_FONT_STYLE_OBLIQUE:
        return FC_SLANT_OBLIQUE;
    default:
        return FC_SLANT_ROMAN;
    }
}

int widthOf(DWRITE_FONT_STRETCH stretch) {
    constexpr std::array<int, 10> widths = {FC_WIDTH_NORMAL,       FC_WIDTH_ULTRACONDENSED, FC_WIDTH_EXTRACONDENSED,
                                            FC_WIDTH_CONDENSED,    FC_WIDTH_SEMICONDENSED,  FC_WIDTH_NORMAL,
                                            FC_WIDTH_SEMIEXPANDED, FC_WIDTH_EXPANDED,       FC_WIDTH_EXTRAEXPANDED,
                                            FC_WIDTH_ULTRAEXPANDED};
    const auto index = static_cast<std::size_t>(stretch);
    return index < widths.size() ? widths[index] : FC_WIDTH_NORMAL;
}

constexpr const char* undetermined = "und";

PatternPtr wish(FcConfig* config, const FallbackKey& key) {
    PatternPtr pattern(FcPatternCreate());
    if (!pattern) {
        throw std::bad_alloc();
    }
    FcPatternAddString(pattern.get(), FC_FAMILY, text("sans-serif"));
    FcPatternAddInteger(pattern.get(), FC_SLANT, slantOf(key.style));
    FcPatternAddDouble(pattern.get(), FC_WEIGHT, FcWeightFromOpenTypeDouble(static_cast<double>(key.weight)));
    FcPatternAddInteger(pattern.get(), FC_WIDTH, widthOf(key.stretch));
    if (!key.language.empty()) {
        FcPatternAddString(pattern.get(), FC_LANG, text(key.language.c_str()));
    }
    // Unless a wish names the undetermined language, Fontconfig adds what the environment says that the user speaks.
    FcPatternAddString(pattern.get(), FC_LANG, text(undetermined));
    FcPatternAddString(pattern.get(), FC_NAMELANG, text(undetermined));
    FcConfigSubstitute(config, pattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pattern.get());
    return pattern;
}

std::string folded(std::string_view family) {
    const std::string copy(family);
    struct Free {
        void operator()(FcChar8* string) const { FcStrFree(string); }
    };
    const std::unique_ptr<FcChar8, Free> lower(FcStrDowncase(text(copy.c_str())));
    return lower ? reinterpret_cast<const char*>(lower.get()) : copy;
}

std::unordered_set<std::string> familiesOf(const FcPattern* pattern) {
    std::unordered_set<std::string> families;
    for (int i = 0; !stringOf(pattern, FC_FAMILY, i).empty(); ++i) {
        families.insert(folded(stringOf(pattern, FC_FAMILY, i)));
    }
    return families;
}

/// Whether the configuration asked for one of the font's families by name.
bool isPreferred(const FcPattern* font, const std::unordered_set<std::string>& preferred) {
    for (int i = 0; !stringOf(font, FC_FAMILY, i).empty(); ++i) {
        if (preferred.contains(folded(stringOf(font, FC_FAMILY, i)))) {
            return true;
        }
    }
    return false;
}

FontSetPtr sorted(FcConfig* config, FcFontSet* fonts, FcPattern* pattern) {
    FcResult result = FcResultMatch;
    FontSetPtr set(FcFontSetSort(config, &fonts, 1, pattern, FcFalse, nullptr, &result));
    if (!set) {
        throw std::bad_alloc();
    }
    return set;
}

} // namespace

const FcCharSet* ListedFont::coverage() const {
    FcCharSet* set = nullptr;
    return FcPatternGetCharSet(pattern.get(), FC_CHARSET, 0, &set) == FcResultMatch ? set : nullptr;
}

const FcLangSet* ListedFont::languages() const {
    FcLangSet* set = nullptr;
    return FcPatternGetLangSet(pattern.get(), FC_LANG, 0, &set) == FcResultMatch ? set : nullptr;
}

bool ListedFont::isColor() const {
    return hasColor(pattern.get());
}

bool ListedFont::isMadeFor(const std::string& language) const {
    struct Market {
        std::string_view ending;
        std::string_view languages;
    };
    constexpr Market markets[] = {
        {" JP", "ja"}, {" KR", "ko"}, {" SC", "zh-cn zh-sg"}, {" TC", "zh-tw"}, {" HK", "zh-hk zh-mo"}};
    const std::string_view family = stringOf(pattern.get(), FC_FAMILY);
    const auto* const market = std::find_if(std::begin(markets), std::end(markets),
                                            [family](const Market& m) { return family.ends_with(m.ending); });
    return market == std::end(markets) || market->languages.find(language) != std::string_view::npos;
}

std::vector<ListedFont> fontconfigOrder(const CFontCollection& collection, const FallbackKey& key) {
    const ConfigPtr config(FcConfigReference(nullptr));
    const FontSetPtr given = candidates(config.get(), collection);
    if (given->nfont == 0) {
        return {};
    }
    const PatternPtr pattern = wish(config.get(), key);
    const FontSetPtr set = sorted(config.get(), given.get(), pattern.get());
    const std::unordered_set<std::string> preferred = familiesOf(pattern.get());

    constexpr std::size_t colorGroup = 5;
    std::array<std::vector<ListedFont>, colorGroup + 1> groups;
    for (int i = 0; i < set->nfont; ++i) {
        FcPattern* const listed = set->fonts[i];
        const int plainGroup = isPreferred(listed, preferred) ? 0 : 1 + oddness(listed);
        const std::size_t group = hasColor(listed) ? colorGroup : static_cast<std::size_t>(plainGroup);
        FcPatternReference(listed);
        groups[group].push_back(
            {PatternPtr(listed), collection.fontOfFile(stringOf(listed, FC_FILE), integerOf(listed, FC_INDEX))});
    }
    std::vector<ListedFont> order;
    for (std::vector<ListedFont>& group : groups) {
        std::move(group.begin(), group.end(), std::back_inserter(order));
    }
    return order;
}

} // namespace platform
