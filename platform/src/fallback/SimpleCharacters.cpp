#include "fallback/SimpleCharacters.h"

#include <mutex>

#include <unicode/uchar.h>

namespace platform {

namespace {

bool isSimple(UChar32 character) {
    switch (u_getIntPropertyValue(character, UCHAR_GRAPHEME_CLUSTER_BREAK)) {
    case U_GCB_OTHER:
        return u_charType(character) != U_SURROGATE && !u_hasBinaryProperty(character, UCHAR_EXTENDED_PICTOGRAPHIC) &&
               !u_hasBinaryProperty(character, UCHAR_DEFAULT_IGNORABLE_CODE_POINT);
    case U_GCB_LV:
    case U_GCB_LVT:
        return true;
    default:
        return false;
    }
}

} // namespace

std::array<std::atomic<const SimpleCharacters::Page*>, 256> SimpleCharacters::s_pages{};

const SimpleCharacters::Page& SimpleCharacters::fill(unsigned index) {
    static std::array<Page, 256> pages;
    static std::mutex filling;
    const std::lock_guard lock(filling);
    if (const Page* done = s_pages[index].load(std::memory_order_acquire)) {
        return *done;
    }
    Page& page = pages[index];
    for (unsigned low = 0; low < 256; ++low) {
        page[low] = isSimple(static_cast<UChar32>(index << 8 | low));
    }
    s_pages[index].store(&page, std::memory_order_release);
    return page;
}

} // namespace platform
