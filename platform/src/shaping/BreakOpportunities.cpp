#include "shaping/BreakOpportunities.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "unicode/BreakIterator.h"

namespace platform {

namespace {

/// The rules for text of a locale.
const BreakRules& rulesFor(const Name& locale) {
    const std::wstring_view name = textOf(locale);
    const std::wstring_view language = name.substr(0, name.find_first_of(L"-_"));
    if (language == L"zh") {
        return chineseLineRules;
    }
    return language == L"ja" || language == L"ko" ? japaneseLineRules : lineRules;
}

/// Adds what `rules` say of the text whose language they are for: whether a line may end behind each unit of it. All
/// of the text is gone through, since what stands before and after counts whatever its language.
void addOpportunities(std::u16string_view text, const std::vector<TextItem>& items, const BreakRules& rules,
                      BreakOpportunities& opportunities) {
    UBreakIterator* iterator = breakIterator(rules, text);
    auto item = items.begin();
    for (std::int32_t next = ubrk_next(iterator); next != UBRK_DONE; next = ubrk_next(iterator)) {
        const auto position = static_cast<UINT32>(next);
        while (item != items.end() && item->start + item->length < position) {
            ++item;
        }
        if (item == items.end() || &rulesFor(item->locale) == &rules) {
            opportunities[position] = true;
        }
    }
}

/// One side's wish about a break; NEUTRAL leaves it to the other side.
void apply(BreakOpportunities& opportunities, std::size_t position, DWRITE_BREAK_CONDITION condition) {
    if (condition != DWRITE_BREAK_CONDITION_NEUTRAL) {
        opportunities[position] = condition != DWRITE_BREAK_CONDITION_MAY_NOT_BREAK;
    }
}

void applyConditions(const std::vector<TextItem>& items, BreakOpportunities& opportunities) {
    for (const TextItem& item : items) {
        DWRITE_BREAK_CONDITION before = DWRITE_BREAK_CONDITION_NEUTRAL;
        DWRITE_BREAK_CONDITION after = DWRITE_BREAK_CONDITION_NEUTRAL;
        if (item.kind != ItemKind::Object) {
            continue;
        }
        if (FAILED(item.object->GetBreakConditions(&before, &after))) {
            before = after = DWRITE_BREAK_CONDITION_NEUTRAL;
        }
        // What an object replaces holds no break.
        std::fill_n(opportunities.begin() + item.start + 1, item.length - 1, false);
        if (item.start > 0) {
            apply(opportunities, item.start, before);
        }
        if (item.start + item.length + 1 < opportunities.size()) {
            apply(opportunities, item.start + item.length, after);
        }
    }
}

} // namespace

BreakOpportunities findBreakOpportunities(std::u16string_view text, const std::vector<TextItem>& items) {
    BreakOpportunities opportunities(text.size() + 1);
    opportunities[0] = true;
    for (const BreakRules* rules : {&lineRules, &japaneseLineRules, &chineseLineRules}) {
        const bool isNeeded = items.empty() ? rules == &lineRules
                                            : std::any_of(items.begin(), items.end(), [rules](const TextItem& item) {
                                                  return &rulesFor(item.locale) == rules;
                                              });
        if (isNeeded) {
            addOpportunities(text, items, *rules, opportunities);
        }
    }
    applyConditions(items, opportunities);
    return opportunities;
}

} // namespace platform
