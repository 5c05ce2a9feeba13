#pragma once

#include "com/ComObject.h"

#include <dwrite_font.h>

#include <string>
#include <utility>
#include <vector>

namespace platform {

/// A string in one language: the locale's name in lower case ("en-us") and the text as
/// UTF-16 units.
struct LocalizedName {
    std::wstring locale;
    std::wstring text;
};

using LocalizedNames = std::vector<LocalizedName>;

/// Interned and immutable.
class CLocalizedStrings final : public CInternedObject<IDWriteLocalizedStrings> {
public:
    explicit CLocalizedStrings(LocalizedNames names, CommonLife* life = nullptr)
        : CInternedObject(life), m_names(std::move(names)) {}

    const LocalizedNames& names() const noexcept { return m_names; }

    UINT32 STDMETHODCALLTYPE GetCount() override;
    HRESULT STDMETHODCALLTYPE FindLocaleName(const WCHAR* localeName, UINT32* index, BOOL* exists) override;
    HRESULT STDMETHODCALLTYPE GetLocaleNameLength(UINT32 index, UINT32* length) override;
    HRESULT STDMETHODCALLTYPE GetLocaleName(UINT32 index, WCHAR* localeName, UINT32 size) override;
    HRESULT STDMETHODCALLTYPE GetStringLength(UINT32 index, UINT32* length) override;
    HRESULT STDMETHODCALLTYPE GetString(UINT32 index, WCHAR* stringBuffer, UINT32 size) override;

private:
    const LocalizedNames m_names;
};

} // namespace platform
