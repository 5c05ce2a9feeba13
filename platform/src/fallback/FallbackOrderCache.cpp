#include "fallback/FallbackOrderCache.h"

#include <algorithm>
#include <mutex>

#include "fallback/Locale.h"

namespace platform {

const FallbackOrderCache::Slot* FallbackOrderCache::find(const std::wstring& locale, DWRITE_FONT_WEIGHT weight,
                                                         DWRITE_FONT_STYLE style, DWRITE_FONT_STRETCH stretch) const {
    const auto found = std::find_if(m_slots.begin(), m_slots.end(), [&](const Slot& slot) {
        return slot.order && slot.key.weight == weight && slot.key.style == style && slot.key.stretch == stretch &&
               slot.locale == locale;
    });
    return found != m_slots.end() ? &*found : nullptr;
}

std::shared_ptr<const FallbackOrder> FallbackOrderCache::make(const FallbackKey& key) const {
    const auto same = std::find_if(m_slots.begin(), m_slots.end(),
                                   [&key](const Slot& slot) { return slot.order && slot.key == key; });
    return same != m_slots.end() ? same->order : std::make_shared<const FallbackOrder>(m_collection, key);
}

std::shared_ptr<const FallbackOrder> FallbackOrderCache::get(const std::wstring& locale, DWRITE_FONT_WEIGHT weight,
                                                             DWRITE_FONT_STYLE style, DWRITE_FONT_STRETCH stretch) {
    {
        const std::shared_lock lock(m_guard);
        if (const Slot* const slot = find(locale, weight, style, stretch)) {
            return slot->order;
        }
    }
    FallbackKey key{fontconfigLanguage(locale), weight, style, stretch};
    const std::unique_lock lock(m_guard);
    if (const Slot* const slot = find(locale, weight, style, stretch)) {
        return slot->order;
    }
    std::shared_ptr<const FallbackOrder> order = make(key);
    m_slots[m_next] = {locale, std::move(key), order};
    m_next = (m_next + 1) % m_slots.size();
    return order;
}

} // namespace platform
