#include "fallback/FallbackOrder.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>
#include <tuple>

#include "fonts/Font.h"
#include "fonts/FontCollection.h"
#include "fonts/FontFace.h"

namespace platform {

namespace {

// Places of fonts as the pages keep them: an entry's fitting font, its own font, or one of these.
constexpr std::uint16_t unknownPlace = 0;
constexpr std::uint16_t noPlace = 0xFFFF;
constexpr std::size_t mostEntries = (noPlace - 1U) / 2U;

constexpr std::uint16_t placeOf(std::size_t entry, bool own) {
    return static_cast<std::uint16_t>(1U + 2U * entry + (own ? 1U : 0U));
}

/// Sequences are rare (marks that the first choice lacks), so forgetting them all now and then costs little.
constexpr std::size_t mostSequences = 4096;

std::string_view stringOf(FcPattern* pattern, const char* object) {
    FcChar8* text = nullptr;
    return FcPatternGetString(pattern, object, 0, &text) == FcResultMatch ? reinterpret_cast<const char*>(text)
                                                                          : std::string_view();
}

int integerOf(FcPattern* pattern, const char* object) {
    int value = 0;
    return FcPatternGetInteger(pattern, object, 0, &value) == FcResultMatch ? value : 0;
}

/// How far a font is from the plain sans that stands beside anything: 0 is closest.
int oddness(FcPattern* font) {
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

/// Where Fontconfig finds two fonts equally good, it keeps the order it was given. This one does not depend on folders.
struct Candidate {
    FcPattern* pattern;
    int oddness;
    std::string_view fileName;
    int index;
    std::string_view file;

    explicit Candidate(FcPattern* font)
        : pattern(font), oddness(platform::oddness(font)), index(integerOf(font, FC_INDEX)),
          file(stringOf(font, FC_FILE)) {
        fileName = file.substr(file.rfind('/') + 1);
    }
    bool operator<(const Candidate& other) const {
        return std::tie(oddness, fileName, index, file) <
               std::tie(other.oddness, other.fileName, other.index, other.file);
    }
};

FontSetPtr candidates(FcConfig* config, const CFontCollection& collection) {
    std::vector<Candidate> found;
    for (const FcSetName name : {FcSetSystem, FcSetApplication}) {
        const FcFontSet* const fonts = FcConfigGetFonts(config, name);
        for (int i = 0; fonts != nullptr && i < fonts->nfont; ++i) {
            const Candidate candidate(fonts->fonts[i]);
            if (collection.fontOfFile(candidate.file, candidate.index) != nullptr) {
                found.push_back(candidate);
            }
        }
    }
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

const FcChar8* text(const std::string& string) {
    return reinterpret_cast<const FcChar8*>(string.c_str());
}

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
        FcPatternAddString(pattern.get(), FC_LANG, text(key.language));
    }
    FcConfigSubstitute(config, pattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pattern.get());
    return pattern;
}

bool covers(const FcCharSet* coverage, std::u32string_view characters) {
    return std::all_of(characters.begin(), characters.end(),
                       [coverage](char32_t c) { return FcCharSetHasChar(coverage, c) != FcFalse; });
}

bool covers(CFont& font, std::u32string_view characters) {
    const CFontFace& face = font.face();
    return std::all_of(characters.begin(), characters.end(), [&face](char32_t c) { return face.hasCharacter(c); });
}

} // namespace

FallbackOrder::FallbackOrder(const CFontCollection& collection, const FallbackKey& key) {
    const ConfigPtr config(FcConfigReference(nullptr));
    FontSetPtr given = candidates(config.get(), collection);
    if (given->nfont == 0) {
        return;
    }
    const PatternPtr pattern = wish(config.get(), key);
    FcFontSet* sets[] = {given.get()};
    FcResult result = FcResultMatch;
    m_sorted.reset(FcFontSetSort(config.get(), sets, 1, pattern.get(), FcFalse, nullptr, &result));
    if (!m_sorted) {
        throw std::bad_alloc();
    }
    for (int i = 0; i < m_sorted->nfont && m_entries.size() < mostEntries; ++i) {
        FcPattern* const sorted = m_sorted->fonts[i];
        FcCharSet* coverage = nullptr;
        CFont* const own = collection.fontOfFile(stringOf(sorted, FC_FILE), integerOf(sorted, FC_INDEX));
        if (own != nullptr && FcPatternGetCharSet(sorted, FC_CHARSET, 0, &coverage) == FcResultMatch) {
            m_entries.push_back({coverage, &own->family().match(key.weight, key.stretch, key.style), own});
        }
    }
}

FallbackOrder::~FallbackOrder() {
    for (std::atomic<Page*>& page : m_pages) {
        delete page.load(std::memory_order_relaxed);
    }
}

CFont* FallbackOrder::first() const {
    return m_entries.empty() ? nullptr : m_entries.front().fitting;
}

CFont* FallbackOrder::resolve(std::uint16_t place) const {
    if (place == noPlace) {
        return nullptr;
    }
    const Entry& entry = m_entries[(place - 1U) / 2U];
    return (place - 1U) % 2U == 0U ? entry.fitting : entry.own;
}

std::uint16_t FallbackOrder::find(std::u32string_view characters) const {
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        const Entry& entry = m_entries[i];
        // Fontconfig's list is at hand without opening a file; what the font itself says decides.
        if (!covers(entry.coverage, characters)) {
            continue;
        }
        if (covers(*entry.fitting, characters)) {
            return placeOf(i, false);
        }
        if (covers(*entry.own, characters)) {
            return placeOf(i, true);
        }
    }
    return noPlace;
}

FallbackOrder::Page& FallbackOrder::pageOf(char32_t character) const {
    std::atomic<Page*>& slot = m_pages[character >> 8];
    if (Page* const page = slot.load(std::memory_order_acquire)) {
        return *page;
    }
    auto made = std::make_unique<Page>();
    Page* expected = nullptr;
    if (slot.compare_exchange_strong(expected, made.get(), std::memory_order_acq_rel, std::memory_order_acquire)) {
        return *made.release();
    }
    return *expected;
}

CFont* FallbackOrder::fontFor(char32_t character) const {
    if (m_entries.empty() || character > 0x10FFFF) {
        return nullptr;
    }
    std::atomic<std::uint16_t>& slot = pageOf(character)[character & 0xFFU];
    std::uint16_t place = slot.load(std::memory_order_relaxed);
    if (place == unknownPlace) {
        place = find({&character, 1});
        slot.store(place, std::memory_order_relaxed);
    }
    return resolve(place);
}

CFont* FallbackOrder::fontForAll(std::u32string_view characters) const {
    if (characters.size() == 1) {
        return fontFor(characters.front());
    }
    CFont* const usual = fontFor(characters.front());
    if (usual == nullptr || covers(*usual, characters)) {
        return usual;
    }
    const std::u32string sequence(characters);
    {
        const std::lock_guard lock(m_sequencesGuard);
        if (const auto known = m_sequences.find(sequence); known != m_sequences.end()) {
            return resolve(known->second);
        }
    }
    const std::uint16_t place = find(characters);
    const std::lock_guard lock(m_sequencesGuard);
    if (m_sequences.size() >= mostSequences) {
        m_sequences.clear();
    }
    m_sequences.emplace(sequence, place);
    return resolve(place);
}

} // namespace platform
