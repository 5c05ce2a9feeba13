#include "fonts/LocalizedStrings.h"

#include <algorithm>
#include <string_view>

namespace platform {

namespace {

constexpr UINT32 noIndex = 0xFFFFFFFF;

bool sameLocale(std::wstring_view left, std::wstring_view right) {
    // Locale names are ASCII.
    const auto lower = [](wchar_t c) { return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c; };
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [&](wchar_t a, wchar_t b) { return lower(a) == lower(b); });
}

HRESULT copyText(const std::wstring* text, WCHAR* buffer, UINT32 size) {
    if (size > 0) {
        buffer[0] = L'\0';
    }
    if (text == nullptr) {
        return E_FAIL;
    }
    if (size <= text->size()) {
        return E_NOT_SUFFICIENT_BUFFER;
    }
    std::copy(text->begin(), text->end(), buffer);
    buffer[text->size()] = L'\0';
    return S_OK;
}

HRESULT tellLength(const std::wstring* text, UINT32* length) {
    *length = text != nullptr ? static_cast<UINT32>(text->size()) : noIndex;
    return text != nullptr ? S_OK : E_FAIL;
}

const LocalizedName* entry(const LocalizedNames& names, UINT32 index) {
    return index < names.size() ? &names[index] : nullptr;
}

const std::wstring* localeAt(const LocalizedNames& names, UINT32 index) {
    const LocalizedName* name = entry(names, index);
    return name != nullptr ? &name->locale : nullptr;
}

const std::wstring* textAt(const LocalizedNames& names, UINT32 index) {
    const LocalizedName* name = entry(names, index);
    return name != nullptr ? &name->text : nullptr;
}

} // namespace

UINT32 CLocalizedStrings::GetCount() {
    return static_cast<UINT32>(m_names.size());
}

HRESULT CLocalizedStrings::FindLocaleName(const WCHAR* localeName, UINT32* index, BOOL* exists) {
    const auto found = std::find_if(m_names.begin(), m_names.end(),
                                    [&](const LocalizedName& name) { return sameLocale(name.locale, localeName); });
    *exists = found != m_names.end() ? TRUE : FALSE;
    *index = found != m_names.end() ? static_cast<UINT32>(found - m_names.begin()) : noIndex;
    return S_OK;
}

HRESULT CLocalizedStrings::GetLocaleNameLength(UINT32 index, UINT32* length) {
    return tellLength(localeAt(m_names, index), length);
}

HRESULT CLocalizedStrings::GetLocaleName(UINT32 index, WCHAR* localeName, UINT32 size) {
    return copyText(localeAt(m_names, index), localeName, size);
}

HRESULT CLocalizedStrings::GetStringLength(UINT32 index, UINT32* length) {
    return tellLength(textAt(m_names, index), length);
}

HRESULT CLocalizedStrings::GetString(UINT32 index, WCHAR* stringBuffer, UINT32 size) {
    return copyText(textAt(m_names, index), stringBuffer, size);
}

} // namespace platform
