#include "fallback/NearbyLetters.h"

#include <algorithm>
#include <string>

#include <unicode/utf16.h>

#include "fallback/FallbackCluster.h"
#include "fallback/FallbackOrder.h"
#include "fonts/Font.h"
#include "fonts/FontFace.h"
#include "unicode/ScriptRuns.h"

namespace platform {

namespace {

char32_t nextCharacter(std::u16string_view text, std::size_t& position, std::size_t end) {
    UChar32 c = 0;
    U16_NEXT(text.data(), position, end, c);
    return static_cast<char32_t>(c);
}

} // namespace

bool NearbyLetters::baseHas(char32_t character) const {
    return m_base != nullptr && m_base->face().hasCharacter(character);
}

/// Takes the letters around a place of the same line into view.
void NearbyLetters::look(std::size_t position, const FallbackOrder& order) {
    const auto at = m_text.begin() + static_cast<std::ptrdiff_t>(position);
    const auto back = static_cast<std::ptrdiff_t>(std::min(position, reach));
    const auto ahead = static_cast<std::ptrdiff_t>(std::min(m_text.size() - position, reach));
    const auto before = std::find_if(std::make_reverse_iterator(at), std::make_reverse_iterator(at - back), isNewline);
    m_begin = static_cast<std::size_t>(before.base() - m_text.begin());
    m_end = static_cast<std::size_t>(std::find_if(at, at + ahead, isNewline) - m_text.begin());
    U16_SET_CP_START(m_text.data(), 0, m_begin);
    U16_SET_CP_LIMIT(m_text.data(), 0, m_end, m_text.size());
    m_scripts.clear();
    m_agreed = true;
    const CFontFace* const base = m_base != nullptr ? &m_base->face() : nullptr;
    for (std::size_t i = m_begin; i < m_end;) {
        const char32_t c = nextCharacter(m_text, i, m_end);
        if (base != nullptr && base->hasCharacter(c)) {
            continue;
        }
        if (CFont* const font = order.fontFor(c)) {
            note(scriptOf(c), font);
        }
    }
}

/// Keeps that a letter of a script is drawn by a font as far as that letter goes.
void NearbyLetters::note(UScriptCode script, CFont* font) {
    if (script == USCRIPT_COMMON || script == USCRIPT_INHERITED) {
        return;
    }
    m_agreed = m_agreed && (m_scripts.empty() || m_scripts.front().font == font);
    const auto known = std::find_if(m_scripts.begin(), m_scripts.end(),
                                    [script](const ScriptFont& other) { return other.script == script; });
    if (known == m_scripts.end()) {
        m_scripts.push_back({script, font, true});
    } else if (known->font != font) {
        known->isAgreed = false;
    }
}

/// The font that has most of what the base lacks of a script among the letters in view; null if none of them has any.
CFont* NearbyLetters::fontOfScript(UScriptCode script, const FallbackOrder& order) {
    const auto known = std::find_if(m_scripts.begin(), m_scripts.end(),
                                    [script](const ScriptFont& other) { return other.script == script; });
    if (known == m_scripts.end()) {
        return nullptr;
    }
    if (!known->isAgreed) {
        std::u32string lacking;
        for (std::size_t i = m_begin; i < m_end;) {
            const char32_t c = nextCharacter(m_text, i, m_end);
            if (!baseHas(c) && !isRider(c) && scriptOf(c) == script) {
                lacking.push_back(c);
            }
        }
        std::sort(lacking.begin(), lacking.end());
        lacking.erase(std::unique(lacking.begin(), lacking.end()), lacking.end());
        known->font = order.fontForMost(lacking);
        known->isAgreed = true;
    }
    return known->font;
}

CFont* NearbyLetters::fontFor(std::u32string_view characters, std::size_t position, const FallbackOrder& order) {
    CFont* const usual = order.fontForAll(characters);
    const auto letter = std::find_if_not(characters.begin(), characters.end(), isCommon);
    if (usual == nullptr || letter == characters.end()) {
        return usual;
    }
    const UScriptCode script = scriptOf(*letter);
    if (order.drawsInOneFont(script)) {
        return usual;
    }
    if (position < m_begin || position >= m_end) {
        look(position, order);
    }
    CFont* const shared = m_agreed ? nullptr : fontOfScript(script, order);
    return shared != nullptr && covers(*shared, characters) ? shared : usual;
}

bool NearbyLetters::isClear(char32_t character, std::size_t position, const FallbackOrder& order) const {
    return (m_agreed && position >= m_begin && position < m_end) || order.drawsInOneFont(scriptOf(character));
}

CFont* NearbyLetters::fontOfLetter(char32_t letter, std::size_t position, const FallbackOrder& order) {
    return baseHas(letter) ? nullptr : fontFor({&letter, 1}, position, order);
}

CFont* NearbyLetters::fontBefore(std::size_t position, const FallbackOrder& order) {
    const std::size_t limit = position - std::min(position, reach);
    while (position > limit && !isNewline(m_text[position - 1])) {
        UChar32 c = 0;
        U16_PREV(m_text.data(), 0, position, c);
        if (!isCommon(static_cast<char32_t>(c))) {
            return fontOfLetter(static_cast<char32_t>(c), position, order);
        }
    }
    return nullptr;
}

CFont* NearbyLetters::fontAfter(std::size_t position, const FallbackOrder& order) {
    const std::size_t limit = std::min(m_text.size(), position + reach);
    while (position < limit && !isNewline(m_text[position])) {
        const std::size_t at = position;
        const char32_t c = nextCharacter(m_text, position, m_text.size());
        if (!isCommon(c)) {
            return fontOfLetter(c, at, order);
        }
    }
    return nullptr;
}

} // namespace platform
