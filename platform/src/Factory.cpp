#include "Factory.h"

#include <cwchar>
#include <utility>

#include "fallback/FontFallback.h"
#include "fonts/FontCollection.h"
#include "layout/EllipsisSign.h"
#include "layout/TextFormat.h"
#include "layout/TextLayout.h"
#include "layout/Typography.h"

namespace platform {

namespace {

/// Another object for the system's collection: everything it hands out is the system's.
class CCollectionView final : public CHeapObject<IDWriteFontCollection> {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
        return riid == ownFontCollectionId ? m_system.QueryInterface(riid, object)
                                           : CHeapObject::QueryInterface(riid, object);
    }
    using IUnknown::QueryInterface;
    UINT32 STDMETHODCALLTYPE GetFontFamilyCount() override { return m_system.GetFontFamilyCount(); }
    HRESULT STDMETHODCALLTYPE GetFontFamily(UINT32 index, IDWriteFontFamily** fontFamily) override {
        return m_system.GetFontFamily(index, fontFamily);
    }
    HRESULT STDMETHODCALLTYPE FindFamilyName(const WCHAR* familyName, UINT32* index, BOOL* exists) override {
        return m_system.FindFamilyName(familyName, index, exists);
    }
    HRESULT STDMETHODCALLTYPE GetFontFromFontFace(IDWriteFontFace* fontFace, IDWriteFont** font) override {
        return m_system.GetFontFromFontFace(fontFace, font);
    }

private:
    CFontCollection& m_system = CFontCollection::system();
};

/// Locale names are limited, terminator included.
constexpr std::size_t maxLocaleSize = 85;

bool isValidName(const WCHAR* name) {
    return name != nullptr && isUtf16(name);
}

template <class Object, class Interface>
HRESULT handOutNew(Object* created, Interface** out) {
    *out = created;
    return S_OK;
}

} // namespace

HRESULT FactoryOperations::GetSystemFontCollection(IDWriteFontCollection** fontCollection, BOOL) {
    *fontCollection = nullptr;
    return guarded([&] {
        handOut(systemCollection(), fontCollection);
        return S_OK;
    });
}

HRESULT FactoryOperations::CreateTextFormat(const WCHAR* fontFamilyName, IDWriteFontCollection* fontCollection,
                                            DWRITE_FONT_WEIGHT fontWeight, DWRITE_FONT_STYLE fontStyle,
                                            DWRITE_FONT_STRETCH fontStretch, FLOAT fontSize, const WCHAR* localeName,
                                            IDWriteTextFormat** textFormat) {
    *textFormat = nullptr;
    if (!isValidName(fontFamilyName) || !isValidName(localeName) || std::wcslen(localeName) >= maxLocaleSize ||
        !isValidWeight(fontWeight) || !isValidStyle(fontStyle) || !isValidStretch(fontStretch) ||
        !isValidSize(fontSize) || !CFontCollection::isUsable(fontCollection)) {
        return E_INVALIDARG;
    }
    return guarded([&] {
        FormatSettings settings;
        settings.paragraph.incrementalTabStop = 4.0F * fontSize;
        settings.font.collection = fontCollection != nullptr ? fontCollection : &systemCollection();
        settings.font.family = makeName(fontFamilyName);
        settings.font.locale = makeLocaleName(localeName);
        settings.font.weight = fontWeight;
        settings.font.style = fontStyle;
        settings.font.stretch = fontStretch;
        settings.font.size = fontSize;
        return handOutNew(new CTextFormat(std::move(settings)), textFormat);
    });
}

HRESULT FactoryOperations::CreateTypography(IDWriteTypography** typography) {
    *typography = nullptr;
    return guarded([&] { return handOutNew(new CTypography, typography); });
}

HRESULT FactoryOperations::CreateTextLayout(const WCHAR* string, UINT32 stringLength, IDWriteTextFormat* textFormat,
                                            FLOAT maxWidth, FLOAT maxHeight, IDWriteTextLayout** textLayout) {
    *textLayout = nullptr;
    if (string == nullptr || textFormat == nullptr || maxWidth < 0.0F || maxHeight < 0.0F ||
        !isUtf16({string, stringLength})) {
        return E_INVALIDARG;
    }
    return guarded([&] {
        FormatSettings settings;
        if (const HRESULT result = readFormat(*textFormat, settings); FAILED(result)) {
            return result;
        }
        return handOutNew(new CTextLayout(string, stringLength, settings, Box{maxWidth, maxHeight}), textLayout);
    });
}

HRESULT FactoryOperations::CreateEllipsisTrimmingSign(IDWriteTextFormat* textFormat,
                                                      IDWriteInlineObject** trimmingSign) {
    *trimmingSign = nullptr;
    if (textFormat == nullptr) {
        return E_INVALIDARG;
    }
    return guarded([&] {
        FormatSettings settings;
        const HRESULT result = readFormat(*textFormat, settings);
        return FAILED(result) ? result : CEllipsisSign::make(settings, trimmingSign);
    });
}

HRESULT FactoryOperations::GetSystemFontFallback(IDWriteFontFallback** fontFallback) {
    *fontFallback = nullptr;
    return guarded([&] {
        handOut(CFontFallback::system(), fontFallback);
        return S_OK;
    });
}

CSharedFactory& CSharedFactory::instance() {
    // Never destroyed: callers may hold it while the process ends.
    static CSharedFactory* const factory = new CSharedFactory;
    return *factory;
}

IDWriteFontCollection& CSharedFactory::systemCollection() {
    return CFontCollection::system();
}

CIsolatedFactory::CIsolatedFactory() : m_collection(new CCollectionView, false) {}

} // namespace platform

HRESULT WINAPI DWriteCreateFactory(DWRITE_FACTORY_TYPE factoryType, REFIID iid, IUnknown** factory) {
    *factory = nullptr;
    return platform::guarded([&] {
        if (factoryType == DWRITE_FACTORY_TYPE_SHARED) {
            return platform::CSharedFactory::instance().QueryInterface(iid, reinterpret_cast<void**>(factory));
        }
        const platform::Reference<IUnknown> isolated(new platform::CIsolatedFactory, false);
        return isolated->QueryInterface(iid, reinterpret_cast<void**>(factory));
    });
}
