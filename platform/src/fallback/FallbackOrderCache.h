#pragma once

#include <array>
#include <memory>
#include <shared_mutex>
#include <string>

#include <dwrite_2.h>

#include "fallback/FallbackOrder.h"

namespace platform {

/// The orders of fallback that were asked for, each made at its first question: sorting all fonts takes milliseconds.
///
/// Any number of threads may ask. A bounded number is kept; an order that makes room lives on while somebody holds it.
class FallbackOrderCache {
public:
    /// `collection` outlives this object.
    explicit FallbackOrderCache(const CFontCollection& collection) : m_collection(collection) {}

    /// The order for a BCP 47 locale name, empty for the user's own.
    std::shared_ptr<const FallbackOrder> get(const std::wstring& locale, DWRITE_FONT_WEIGHT weight,
                                             DWRITE_FONT_STYLE style, DWRITE_FONT_STRETCH stretch);

private:
    // Asked by locale; locales that mean the same to Fontconfig share an order.
    struct Slot {
        std::wstring locale;
        FallbackKey key;
        std::shared_ptr<const FallbackOrder> order;
    };

    const Slot* find(const std::wstring& locale, DWRITE_FONT_WEIGHT weight, DWRITE_FONT_STYLE style,
                     DWRITE_FONT_STRETCH stretch) const;
    std::shared_ptr<const FallbackOrder> make(const FallbackKey& key) const;

    const CFontCollection& m_collection;
    mutable std::shared_mutex m_guard;
    std::array<Slot, 32> m_slots;
    std::size_t m_next = 0;
};

} // namespace platform
