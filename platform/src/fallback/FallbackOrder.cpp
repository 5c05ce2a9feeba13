#include "fallback/FallbackOrder.h"

#include <algorithm>
#include <memory>

#include <unicode/uchar.h>
#include <unicode/uset.h>

#include "fallback/DrawingSymbols.h"
#include "fallback/FallbackCluster.h"
#include "fallback/Locale.h"
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

/// The same for the letters around places of a text.
constexpr std::size_t mostSets = 256;

UScriptCode scriptOfAll(std::u32string_view characters) {
    const auto letter = std::find_if_not(characters.begin(), characters.end(), isCommon);
    return letter != characters.end() ? scriptOf(*letter) : USCRIPT_COMMON;
}

struct CharSetDelete {
    void operator()(FcCharSet* set) const { FcCharSetDestroy(set); }
};
using CharSetPtr = std::unique_ptr<FcCharSet, CharSetDelete>;

struct CodePointsDelete {
    void operator()(USet* set) const { uset_close(set); }
};

/// The characters of a script in the form in which Fontconfig knows what fonts have.
CharSetPtr lettersOf(UScriptCode script) {
    UErrorCode error = U_ZERO_ERROR;
    const std::unique_ptr<USet, CodePointsDelete> codePoints(uset_openEmpty());
    uset_applyIntPropertyValue(codePoints.get(), UCHAR_SCRIPT, script, &error);
    CharSetPtr letters(FcCharSetCreate());
    for (std::int32_t i = 0; i < uset_getRangeCount(codePoints.get()); ++i) {
        UChar32 first = 0;
        UChar32 last = 0;
        uset_getItem(codePoints.get(), i, &first, &last, nullptr, 0, &error);
        for (UChar32 c = first; c <= last; ++c) {
            FcCharSetAddChar(letters.get(), static_cast<FcChar32>(c));
        }
    }
    return letters;
}

CharSetPtr drawingSymbolSet() {
    CharSetPtr set(FcCharSetCreate());
    for (const char32_t symbol : drawingSymbols) {
        FcCharSetAddChar(set.get(), symbol);
    }
    return set;
}

std::size_t countIn(CFont& font, std::u32string_view characters) {
    const CFontFace& face = font.face();
    return static_cast<std::size_t>(
        std::count_if(characters.begin(), characters.end(), [&face](char32_t c) { return face.hasCharacter(c); }));
}

bool isMadeFor(const ListedFont& font, const std::string& language) {
    const FcLangSet* const languages = font.languages();
    return languages != nullptr && font.isMadeFor(language) &&
           FcLangSetHasLang(languages, reinterpret_cast<const FcChar8*>(language.c_str())) != FcLangDifferentLang;
}

} // namespace

bool covers(CFont& font, std::u32string_view characters) {
    const CFontFace& face = font.face();
    return std::all_of(characters.begin(), characters.end(), [&face](char32_t c) { return face.hasCharacter(c); });
}

FallbackOrder::FallbackOrder(const CFontCollection& collection, const FallbackKey& key) : m_language(key.language) {
    std::vector<ListedFont> fonts = fontconfigOrder(collection, key);
    m_entries.reserve(std::min(fonts.size(), mostEntries));
    for (ListedFont& listed : fonts) {
        if (listed.coverage() != nullptr && m_entries.size() < mostEntries) {
            CFont& fitting = listed.font->family().match(key.weight, key.stretch, key.style);
            m_entries.push_back({std::move(listed), &fitting});
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
    return (place - 1U) % 2U == 0U ? entry.fitting : entry.listed.font;
}

const FallbackOrder::Preference& FallbackOrder::preferenceFor(UScriptCode script) const {
    const std::lock_guard lock(m_guard);
    const auto [known, isNew] = m_preferences.try_emplace(script, m_entries.size(), false);
    if (isNew) {
        if (const std::string language = languageOfScript(script, m_language); !language.empty()) {
            std::transform(m_entries.begin(), m_entries.end(), known->second.begin(),
                           [&language](const Entry& entry) { return isMadeFor(entry.listed, language); });
        }
    }
    return known->second;
}

std::uint16_t FallbackOrder::placeIn(std::size_t entry, std::u32string_view characters) const {
    const Entry& candidate = m_entries[entry];
    const FcCharSet* const coverage = candidate.listed.coverage();
    // Fontconfig's list is at hand without opening a file; what the font itself says decides.
    const bool listed = std::all_of(characters.begin(), characters.end(),
                                    [coverage](char32_t c) { return FcCharSetHasChar(coverage, c) != FcFalse; });
    if (!listed) {
        return noPlace;
    }
    if (covers(*candidate.fitting, characters)) {
        return placeOf(entry, false);
    }
    return covers(*candidate.listed.font, characters) ? placeOf(entry, true) : noPlace;
}

std::size_t FallbackOrder::entryOfDrawings() const {
    const std::lock_guard lock(m_guard);
    if (!m_entryOfDrawings) {
        const CharSetPtr symbols = drawingSymbolSet();
        const auto most =
            std::max_element(m_entries.begin(), m_entries.end(), [&symbols](const Entry& left, const Entry& right) {
                return FcCharSetIntersectCount(left.listed.coverage(), symbols.get()) <
                       FcCharSetIntersectCount(right.listed.coverage(), symbols.get());
            });
        m_entryOfDrawings = static_cast<std::size_t>(std::distance(m_entries.begin(), most));
    }
    return *m_entryOfDrawings;
}

std::uint16_t FallbackOrder::find(std::u32string_view characters) const {
    if (isDrawingSymbol(characters.front())) {
        if (const std::uint16_t place = placeIn(entryOfDrawings(), characters); place != noPlace) {
            return place;
        }
    }
    const UScriptCode script = scriptOfAll(characters);
    const Preference& preferred = preferenceFor(script);
    for (const bool wanted : {true, false}) {
        for (std::size_t i = 0; i < m_entries.size(); ++i) {
            if (preferred[i] != wanted) {
                continue;
            }
            if (const std::uint16_t place = placeIn(i, characters); place != noPlace) {
                return place;
            }
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
        const std::lock_guard lock(m_guard);
        if (const auto known = m_sequences.find(sequence); known != m_sequences.end()) {
            return resolve(known->second);
        }
    }
    const std::uint16_t place = find(characters);
    const std::lock_guard lock(m_guard);
    if (m_sequences.size() >= mostSequences) {
        m_sequences.clear();
    }
    m_sequences.emplace(sequence, place);
    return resolve(place);
}

std::uint16_t FallbackOrder::bestPlaceFor(std::u32string_view characters) const {
    const Preference& preferred = preferenceFor(scriptOfAll(characters));
    std::uint16_t best = noPlace;
    std::size_t most = 0;
    for (const bool wanted : {true, false}) {
        for (std::size_t i = 0; i < m_entries.size() && most < characters.size(); ++i) {
            const FcCharSet* const coverage = m_entries[i].listed.coverage();
            const auto isListed = [coverage](char32_t c) { return FcCharSetHasChar(coverage, c) != FcFalse; };
            const auto listed = std::count_if(characters.begin(), characters.end(), isListed);
            if (preferred[i] != wanted || static_cast<std::size_t>(listed) <= most) {
                continue;
            }
            for (const bool own : {false, true}) {
                const std::uint16_t place = placeOf(i, own);
                if (const std::size_t count = countIn(*resolve(place), characters); count > most) {
                    most = count;
                    best = place;
                }
            }
        }
        if (best != noPlace) {
            break;
        }
    }
    return best;
}

CFont* FallbackOrder::fontForMost(const std::u32string& characters) const {
    {
        const std::lock_guard lock(m_guard);
        if (const auto known = m_sets.find(characters); known != m_sets.end()) {
            return resolve(known->second);
        }
    }
    const std::uint16_t place = bestPlaceFor(characters);
    const std::lock_guard lock(m_guard);
    if (m_sets.size() >= mostSets) {
        m_sets.clear();
    }
    m_sets.emplace(characters, place);
    return resolve(place);
}

bool FallbackOrder::findWhetherOneFontDraws(UScriptCode script) const {
    const CharSetPtr letters = lettersOf(script);
    const Preference& preferred = preferenceFor(script);
    const Entry* first = nullptr;
    for (const bool wanted : {true, false}) {
        for (std::size_t i = 0; i < m_entries.size(); ++i) {
            const Entry& entry = m_entries[i];
            if (preferred[i] != wanted || FcCharSetIntersectCount(entry.listed.coverage(), letters.get()) == 0) {
                continue;
            }
            if (first == nullptr) {
                first = &entry;
                // The fitting member's own coverage is not at hand.
                if (entry.fitting != entry.listed.font) {
                    return false;
                }
            }
            const CharSetPtr shared(FcCharSetIntersect(entry.listed.coverage(), letters.get()));
            if (FcCharSetIsSubset(shared.get(), first->listed.coverage()) == FcFalse) {
                return false;
            }
        }
    }
    return true;
}

bool FallbackOrder::drawsInOneFont(UScriptCode script) const {
    const auto index = static_cast<std::size_t>(script);
    if (script == USCRIPT_COMMON || script == USCRIPT_INHERITED || index >= m_scriptsOfOneFont.size()) {
        return false;
    }
    std::atomic<Answer>& slot = m_scriptsOfOneFont[index];
    Answer answer = slot.load(std::memory_order_relaxed);
    if (answer == Answer::Unknown) {
        answer = findWhetherOneFontDraws(script) ? Answer::Yes : Answer::No;
        slot.store(answer, std::memory_order_relaxed);
    }
    return answer == Answer::Yes;
}

CFont* FallbackOrder::emojiFontForAll(std::u32string_view characters, const CFont* preferred) const {
    CFont* first = nullptr;
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        if (!m_entries[i].listed.isColor()) {
            continue;
        }
        const std::uint16_t place = placeIn(i, characters);
        if (place == noPlace) {
            continue;
        }
        CFont* const font = resolve(place);
        if (font == preferred) {
            return font;
        }
        first = first != nullptr ? first : font;
    }
    return first;
}

} // namespace platform
