#include "layout/BreakOpportunities.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "layout/BreakIterator.h"

namespace platform {

namespace {

bool hasObjects(const std::vector<TextItem>& items) {
    return std::any_of(items.begin(), items.end(), [](const TextItem& item) { return item.kind == ItemKind::Object; });
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
        if (item.kind != ItemKind::Object || FAILED(item.object->GetBreakConditions(&before, &after))) {
            continue;
        }
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
    std::u16string substituted;
    const bool isSubstituted = hasObjects(items);
    if (isSubstituted) {
        substituted = text;
        for (const TextItem& item : items) {
            if (item.kind == ItemKind::Object) {
                // What an object replaces must not hold a break, so only its first unit stands for it.
                substituted[item.start] = u'\uFFFC';
                std::fill_n(substituted.begin() + item.start + 1, item.length - 1, u'\u0301');
            }
        }
        text = substituted;
    }
    UBreakIterator* iterator = breakIterator(UBRK_LINE, text);
    for (std::int32_t position = ubrk_first(iterator); position != UBRK_DONE; position = ubrk_next(iterator)) {
        opportunities[static_cast<std::size_t>(position)] = true;
    }
    if (isSubstituted) {
        applyConditions(items, opportunities);
    }
    return opportunities;
}

} // namespace platform
