#include "fonts/FaceNames.h"

#include "fonts/NameTable.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <vector>

namespace platform {

namespace {

enum class Aspect { stretch, weight, slope, regular };

struct StyleWord {
    std::wstring_view text;
    Aspect aspect;
    int value;
};

// Lower case; a blank stands for an optional separation ("extralight", "extra light").
constexpr auto styleWords = std::to_array<StyleWord>({
    {L"ultra condensed", Aspect::stretch, DWRITE_FONT_STRETCH_ULTRA_CONDENSED},
    {L"extra condensed", Aspect::stretch, DWRITE_FONT_STRETCH_EXTRA_CONDENSED},
    {L"semi condensed", Aspect::stretch, DWRITE_FONT_STRETCH_SEMI_CONDENSED},
    {L"condensed", Aspect::stretch, DWRITE_FONT_STRETCH_CONDENSED},
    {L"cond", Aspect::stretch, DWRITE_FONT_STRETCH_CONDENSED},
    {L"compressed", Aspect::stretch, DWRITE_FONT_STRETCH_EXTRA_CONDENSED},
    {L"narrow", Aspect::stretch, DWRITE_FONT_STRETCH_CONDENSED},
    {L"ultra expanded", Aspect::stretch, DWRITE_FONT_STRETCH_ULTRA_EXPANDED},
    {L"extra expanded", Aspect::stretch, DWRITE_FONT_STRETCH_EXTRA_EXPANDED},
    {L"semi expanded", Aspect::stretch, DWRITE_FONT_STRETCH_SEMI_EXPANDED},
    {L"expanded", Aspect::stretch, DWRITE_FONT_STRETCH_EXPANDED},
    {L"extended", Aspect::stretch, DWRITE_FONT_STRETCH_EXPANDED},
    {L"wide", Aspect::stretch, DWRITE_FONT_STRETCH_EXPANDED},
    {L"hairline", Aspect::weight, DWRITE_FONT_WEIGHT_THIN},
    {L"thin", Aspect::weight, DWRITE_FONT_WEIGHT_THIN},
    {L"extra light", Aspect::weight, DWRITE_FONT_WEIGHT_EXTRA_LIGHT},
    {L"ultra light", Aspect::weight, DWRITE_FONT_WEIGHT_ULTRA_LIGHT},
    {L"semi light", Aspect::weight, DWRITE_FONT_WEIGHT_SEMI_LIGHT},
    {L"demi light", Aspect::weight, DWRITE_FONT_WEIGHT_SEMI_LIGHT},
    {L"light", Aspect::weight, DWRITE_FONT_WEIGHT_LIGHT},
    {L"medium", Aspect::weight, DWRITE_FONT_WEIGHT_MEDIUM},
    {L"semi bold", Aspect::weight, DWRITE_FONT_WEIGHT_SEMI_BOLD},
    {L"demi bold", Aspect::weight, DWRITE_FONT_WEIGHT_DEMI_BOLD},
    {L"demi", Aspect::weight, DWRITE_FONT_WEIGHT_DEMI_BOLD},
    {L"extra bold", Aspect::weight, DWRITE_FONT_WEIGHT_EXTRA_BOLD},
    {L"ultra bold", Aspect::weight, DWRITE_FONT_WEIGHT_ULTRA_BOLD},
    {L"bold", Aspect::weight, DWRITE_FONT_WEIGHT_BOLD},
    {L"extra black", Aspect::weight, DWRITE_FONT_WEIGHT_EXTRA_BLACK},
    {L"ultra black", Aspect::weight, DWRITE_FONT_WEIGHT_ULTRA_BLACK},
    {L"black", Aspect::weight, DWRITE_FONT_WEIGHT_BLACK},
    {L"heavy", Aspect::weight, DWRITE_FONT_WEIGHT_HEAVY},
    {L"italic", Aspect::slope, DWRITE_FONT_STYLE_ITALIC},
    {L"oblique", Aspect::slope, DWRITE_FONT_STYLE_OBLIQUE},
    {L"slanted", Aspect::slope, DWRITE_FONT_STYLE_OBLIQUE},
    {L"inclined", Aspect::slope, DWRITE_FONT_STYLE_OBLIQUE},
    {L"regular", Aspect::regular, 0},
    {L"normal", Aspect::regular, 0},
    {L"book", Aspect::regular, 0},
    {L"plain", Aspect::regular, 0},
});

std::vector<std::wstring_view> splitWords(std::wstring_view text) {
    std::vector<std::wstring_view> words;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(L' '), text.size());
        if (end > 0) {
            words.push_back(text.substr(0, end));
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return words;
}

void append(std::wstring& text, std::wstring_view word) {
    if (!text.empty()) {
        text += L' ';
    }
    text += word;
}

/// A word, or two that belong together, and what they state.
struct NamePart {
    std::wstring text;
    const StyleWord* style = nullptr;
};

wchar_t lower(wchar_t c) {
    return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
}

/// Whether `text` is the word, letter case and the word's blank left aside.
bool spells(std::wstring_view text, std::wstring_view word) {
    std::size_t i = 0;
    for (const wchar_t c : word) {
        const bool matches = i < text.size() && lower(text[i]) == c;
        if (!matches && c != L' ') {
            return false;
        }
        i += matches ? 1 : 0;
    }
    return i == text.size();
}

const StyleWord* findStyleWord(std::wstring_view text) {
    const auto found = std::find_if(styleWords.begin(), styleWords.end(),
                                    [&](const StyleWord& word) { return spells(text, word.text); });
    return found != styleWords.end() ? &*found : nullptr;
}

std::vector<NamePart> parseName(std::wstring_view name) {
    std::vector<NamePart> parts;
    const std::vector<std::wstring_view> words = splitWords(name);
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (i + 1 < words.size()) {
            std::wstring pair(words[i]);
            append(pair, words[i + 1]);
            if (const StyleWord* style = findStyleWord(pair)) {
                parts.push_back({std::move(pair), style});
                ++i;
                continue;
            }
        }
        parts.push_back({std::wstring(words[i]), findStyleWord(words[i])});
    }
    return parts;
}

bool states(const NamePart& part, Aspect aspect) {
    return part.style != nullptr && part.style->aspect == aspect;
}

/// The parts in the order unknown words, stretch, weight, slope; the word for a regular
/// face only where nothing else is said.
std::wstring composeFaceName(const std::vector<NamePart>& parts) {
    std::wstring name;
    const auto take = [&](auto&& wanted) {
        for (const NamePart& part : parts) {
            if (wanted(part)) {
                append(name, part.text);
            }
        }
    };
    take([](const NamePart& part) { return part.style == nullptr; });
    for (const Aspect aspect : {Aspect::stretch, Aspect::weight, Aspect::slope}) {
        take([&](const NamePart& part) { return states(part, aspect); });
    }
    const auto regular =
        std::find_if(parts.begin(), parts.end(), [](const NamePart& part) { return states(part, Aspect::regular); });
    if (name.empty()) {
        name = regular != parts.end() ? regular->text : L"Regular";
    }
    return name;
}

struct Derivation {
    std::wstring family;
    std::vector<NamePart> removed;
};

/// Takes the words that state a style off a family name; its first word always stays. A
/// word of slope goes only where the face does slope: there is a script called Old Italic.
Derivation deriveFamily(const std::wstring& win32Family, const FaceTraits& stored) {
    Derivation derivation;
    const bool slopes = stored.style != DWRITE_FONT_STYLE_NORMAL;
    for (NamePart& part : parseName(win32Family)) {
        const bool statesStyle = part.style != nullptr && (slopes || !states(part, Aspect::slope));
        if (!statesStyle || derivation.family.empty()) {
            append(derivation.family, part.text);
        } else {
            derivation.removed.push_back(std::move(part));
        }
    }
    if (derivation.removed.empty()) {
        derivation.family = win32Family;
    }
    return derivation;
}

const std::wstring* textFor(const LocalizedNames& names, const std::wstring& locale) {
    const auto found =
        std::find_if(names.begin(), names.end(), [&](const LocalizedName& name) { return name.locale == locale; });
    return found != names.end() ? &found->text : preferredName(names);
}

/// How much of `text` spells the word, letter case and the word's blank left aside; 0 if it does not start with it.
std::size_t startsWith(std::wstring_view text, std::wstring_view word) {
    std::size_t i = 0;
    for (const wchar_t c : word) {
        const bool matches = i < text.size() && lower(text[i]) == c;
        if (!matches && c != L' ') {
            return 0;
        }
        i += matches ? 1 : 0;
    }
    return i;
}

/// Takes words of style written as one apart ("SemiBoldOblique", "Bold-Italic"). False if anything else is in it.
bool takeApart(std::wstring_view text, std::vector<const StyleWord*>& found) {
    while (!text.empty() && (text.front() == L'-' || text.front() == L'_')) {
        text.remove_prefix(1);
    }
    if (text.empty()) {
        return true;
    }
    for (const StyleWord& word : styleWords) {
        const std::size_t length = startsWith(text, word.text);
        if (length == 0) {
            continue;
        }
        found.push_back(&word);
        if (takeApart(text.substr(length), found)) {
            return true;
        }
        found.pop_back();
    }
    return false;
}

/// What a face name says: the words of style, and how many words say something else.
struct Statement {
    std::vector<const StyleWord*> style;
    unsigned otherWords = 0;
    bool deniesSlope = false;

    const StyleWord* about(Aspect aspect) const {
        const auto found =
            std::find_if(style.begin(), style.end(), [&](const StyleWord* word) { return word->aspect == aspect; });
        return found != style.end() ? *found : nullptr;
    }
};

Statement readStatement(const LocalizedNames& faceNames) {
    Statement statement;
    const std::wstring* const name = preferredName(faceNames);
    for (const NamePart& part : parseName(name != nullptr ? *name : std::wstring())) {
        std::vector<const StyleWord*> words;
        if (part.style != nullptr) {
            statement.style.push_back(part.style);
        } else if (takeApart(part.text, words)) {
            statement.style.insert(statement.style.end(), words.begin(), words.end());
        } else if (spells(part.text, L"roman")) {
            // Of a family name this may be part, of a face it says that it is regular.
            statement.deniesSlope = true;
        } else {
            statement.deniesSlope = statement.deniesSlope || spells(part.text, L"upright");
            ++statement.otherWords;
        }
    }
    return statement;
}

/// Adds what only a face's name says: old and carelessly made fonts leave their tables at normal.
FaceTraits completeTraits(FaceTraits traits, const LocalizedNames& faceNames) {
    const Statement statement = readStatement(faceNames);
    const StyleWord* const stretch = statement.about(Aspect::stretch);
    if (stretch != nullptr && traits.stretch == DWRITE_FONT_STRETCH_NORMAL) {
        traits.stretch = static_cast<DWRITE_FONT_STRETCH>(stretch->value);
    }
    const StyleWord* const weight = statement.about(Aspect::weight);
    if (weight != nullptr && traits.weight == DWRITE_FONT_WEIGHT_NORMAL) {
        traits.weight = static_cast<DWRITE_FONT_WEIGHT>(weight->value);
    }
    const StyleWord* const slope = statement.about(Aspect::slope);
    if (slope != nullptr && traits.style == DWRITE_FONT_STYLE_NORMAL && !statement.deniesSlope) {
        traits.style = static_cast<DWRITE_FONT_STYLE>(slope->value);
    }
    return traits;
}

WwsFace deriveFace(const StoredNames& names, const FaceTraits& stored) {
    WwsFace result;
    for (const LocalizedName& name : names.win32Family) {
        Derivation derivation = deriveFamily(name.text, stored);
        const std::wstring* const subfamily = textFor(names.win32Subfamily, name.locale);
        std::wstring face = subfamily != nullptr ? *subfamily : L"Regular";
        if (!derivation.removed.empty()) {
            std::vector<NamePart> parts = derivation.removed;
            for (NamePart& part : parseName(face)) {
                parts.push_back(std::move(part));
            }
            face = composeFaceName(parts);
        }
        result.family.push_back({name.locale, std::move(derivation.family)});
        result.face.push_back({name.locale, std::move(face)});
    }
    return result;
}

LocalizedNames firstPresent(std::initializer_list<const LocalizedNames*> choices) {
    for (const LocalizedNames* names : choices) {
        if (!names->empty()) {
            return *names;
        }
    }
    return {{L"en-us", L"Regular"}};
}

} // namespace

bool namesOblique(const LocalizedNames& faceNames) {
    const Statement statement = readStatement(faceNames);
    const auto statesStyle = [&](DWRITE_FONT_STYLE style) {
        return std::any_of(statement.style.begin(), statement.style.end(), [&](const StyleWord* word) {
            return word->aspect == Aspect::slope && word->value == style;
        });
    };
    return statesStyle(DWRITE_FONT_STYLE_OBLIQUE) && !statesStyle(DWRITE_FONT_STYLE_ITALIC);
}

Plainness plainnessOf(const LocalizedNames& faceNames) {
    const Statement statement = readStatement(faceNames);
    const bool isRegular = std::all_of(statement.style.begin(), statement.style.end(),
                                       [](const StyleWord* word) { return word->aspect == Aspect::regular; });
    return {isRegular && statement.otherWords == 0, statement.otherWords};
}

std::wstring simulatedFaceName(const std::wstring& baseFaceName, DWRITE_FONT_SIMULATIONS simulations) {
    const bool bold = (simulations & DWRITE_FONT_SIMULATIONS_BOLD) != 0;
    const bool oblique = (simulations & DWRITE_FONT_SIMULATIONS_OBLIQUE) != 0;
    std::vector<NamePart> parts = parseName(baseFaceName);
    std::erase_if(parts, [&](const NamePart& part) {
        return (bold && states(part, Aspect::weight)) || (oblique && states(part, Aspect::slope));
    });
    if (bold) {
        parts.push_back({L"Bold", findStyleWord(L"Bold")});
    }
    if (oblique) {
        parts.push_back({L"Oblique", findStyleWord(L"oblique")});
    }
    return composeFaceName(parts);
}

WwsFace wwsFace(const StoredNames& names, const FaceTraits& stored) {
    WwsFace result;
    if (!names.wwsFamily.empty()) {
        result = {names.wwsFamily,
                  firstPresent({&names.wwsSubfamily, &names.typographicSubfamily, &names.win32Subfamily}), stored};
    } else if (!names.typographicFamily.empty()) {
        result = {names.typographicFamily, firstPresent({&names.typographicSubfamily, &names.win32Subfamily}), stored};
    } else {
        result = deriveFace(names, stored);
    }
    result.traits = completeTraits(stored, result.face);
    return result;
}

} // namespace platform
