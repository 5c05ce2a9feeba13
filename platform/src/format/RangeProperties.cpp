#include "format/RangeProperties.h"

#include <algorithm>
#include <iterator>

namespace platform {

bool sameNumber(FLOAT left, FLOAT right) noexcept {
    return left == right || (left != left && right != right);
}

bool sameSpacing(const CharacterSpacing& left, const CharacterSpacing& right) noexcept {
    return sameNumber(left.leading, right.leading) && sameNumber(left.trailing, right.trailing) &&
           sameNumber(left.minimumAdvance, right.minimumAdvance);
}

bool sameShaping(const RunStyle& left, const RunStyle& right) noexcept {
    return left.size == right.size && left.weight == right.weight && left.style == right.style &&
           left.stretch == right.stretch && left.isKerned == right.isKerned &&
           left.collection.get() == right.collection.get() && left.typography.get() == right.typography.get() &&
           left.inlineObject.get() == right.inlineObject.get() && sameName(left.family, right.family) &&
           sameName(left.locale, right.locale);
}

bool sameStyle(const RunStyle& left, const RunStyle& right) noexcept {
    return left.underline == right.underline && left.strikethrough == right.strikethrough &&
           left.effect.get() == right.effect.get() && sameSpacing(left.spacing, right.spacing) &&
           sameShaping(left, right);
}

RangeProperties::RangeProperties(const FontSettings& initial) {
    RunStyle& style = m_stretches[0];
    style.collection = initial.collection;
    style.family = initial.family;
    style.locale = initial.locale;
    style.weight = initial.weight;
    style.style = initial.style;
    style.stretch = initial.stretch;
    style.size = initial.size;
}

RangeProperties::Stretches::const_iterator RangeProperties::find(UINT32 position) const noexcept {
    return std::prev(m_stretches.upper_bound(position));
}

const RunStyle& RangeProperties::at(UINT32 position, DWRITE_TEXT_RANGE* range) const noexcept {
    const auto next = m_stretches.upper_bound(position);
    const auto stretch = std::prev(next);
    if (range != nullptr) {
        range->startPosition = stretch->first;
        range->length = (next == m_stretches.end() ? end : next->first) - stretch->first;
    }
    return stretch->second;
}

bool RangeProperties::hasInlineObjects() const noexcept {
    return std::any_of(m_stretches.begin(), m_stretches.end(),
                       [](const auto& stretch) { return stretch.second.inlineObject.get() != nullptr; });
}

RangeProperties::Stretches::iterator RangeProperties::split(UINT32 position) {
    const auto next = m_stretches.upper_bound(position);
    const auto stretch = std::prev(next);
    return stretch->first == position ? stretch : m_stretches.emplace_hint(next, position, stretch->second);
}

void RangeProperties::join(UINT32 first, UINT32 last) {
    for (auto stretch = m_stretches.lower_bound(first); stretch != m_stretches.end() && stretch->first <= last;) {
        if (stretch != m_stretches.begin() && sameStyle(std::prev(stretch)->second, stretch->second)) {
            stretch = m_stretches.erase(stretch);
        } else {
            ++stretch;
        }
    }
}

} // namespace platform
