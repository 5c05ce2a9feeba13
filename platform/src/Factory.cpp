#include "Factory.h"

#include <cwchar>
#include <utility>

#include "fallback/FontFallback.h"
#include "fonts/FontCollection.h"
#include "fonts/FontFileReference.h"
#include "fonts/HostFonts.h"
#include "fonts/LocalFontData.h"
#include "fonts/LocalFontFileLoader.h"
#include "fonts/LocalPath.h"
#include "format/TextFormat.h"
#include "format/Typography.h"
#include "layout/EllipsisSign.h"
#include "layout/TextLayout.h"

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

std::uint64_t ticksOf(const FILETIME& time) {
    return std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
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

HRESULT FactoryOperations::CreateCustomFontCollection(IDWriteFontCollectionLoader* collectionLoader,
                                                      const void* collectionKey, UINT32 collectionKeySize,
                                                      IDWriteFontCollection** fontCollection) {
    *fontCollection = nullptr;
    return guarded([&] {
        return m_collectionLoaders.knows(collectionLoader)
                   ? createCollection(*this, *collectionLoader, collectionKey, collectionKeySize, fontCollection)
                   : E_INVALIDARG;
    });
}

HRESULT FactoryOperations::RegisterFontCollectionLoader(IDWriteFontCollectionLoader* fontCollectionLoader) {
    return guarded([&] { return m_collectionLoaders.add(fontCollectionLoader); });
}

HRESULT FactoryOperations::UnregisterFontCollectionLoader(IDWriteFontCollectionLoader* fontCollectionLoader) {
    return m_collectionLoaders.remove(fontCollectionLoader);
}

HRESULT FactoryOperations::CreateFontFileReference(const WCHAR* filePath, const FILETIME* lastWriteTime,
                                                   IDWriteFontFile** fontFile) {
    *fontFile = nullptr;
    return guarded([&] {
        std::optional<std::string> path = filePath != nullptr ? localPath(filePath) : std::nullopt;
        if (!path) {
            return E_INVALIDARG;
        }
        std::shared_ptr<FontData> data;
        if (lastWriteTime != nullptr) {
            data = std::make_shared<LocalFontData>(std::move(*path), ticksOf(*lastWriteTime));
        } else {
            HRESULT failure = S_OK;
            const std::unique_ptr<LocalFontFile> file = LocalFontFile::open(*path, &failure);
            if (!file) {
                return failure;
            }
            data = std::make_shared<LocalFontData>(std::move(*path), file->identity());
        }
        return handOutNew(new CFontFileReference(std::move(data)), fontFile);
    });
}

HRESULT FactoryOperations::CreateCustomFontFileReference(const void* fontFileReferenceKey,
                                                         UINT32 fontFileReferenceKeySize,
                                                         IDWriteFontFileLoader* fontFileLoader,
                                                         IDWriteFontFile** fontFile) {
    *fontFile = nullptr;
    const bool hasKey = fontFileReferenceKey != nullptr || fontFileReferenceKeySize == 0;
    if (!hasKey || (fontFileLoader != &CLocalFontFileLoader::instance() && !m_fileLoaders.knows(fontFileLoader))) {
        return E_INVALIDARG;
    }
    return guarded([&] {
        std::string key;
        if (fontFileReferenceKeySize > 0) {
            key.assign(static_cast<const char*>(fontFileReferenceKey), fontFileReferenceKeySize);
        }
        std::shared_ptr<FontData> data;
        if (const HRESULT result = makeFontData(*fontFileLoader, std::move(key), data); FAILED(result)) {
            return result;
        }
        return handOutNew(new CFontFileReference(std::move(data)), fontFile);
    });
}

HRESULT FactoryOperations::CreateFontFace(DWRITE_FONT_FACE_TYPE fontFaceType, UINT32 numberOfFiles,
                                          IDWriteFontFile* const* fontFiles, UINT32 faceIndex,
                                          DWRITE_FONT_SIMULATIONS fontFaceSimulationFlags, IDWriteFontFace** fontFace) {
    *fontFace = nullptr;
    constexpr int allSimulations = DWRITE_FONT_SIMULATIONS_BOLD | DWRITE_FONT_SIMULATIONS_OBLIQUE;
    const bool isOneFile = numberOfFiles == 1 && fontFiles != nullptr && *fontFiles != nullptr;
    const bool isKnownType = fontFaceType == DWRITE_FONT_FACE_TYPE_CFF ||
                             fontFaceType == DWRITE_FONT_FACE_TYPE_TRUETYPE ||
                             fontFaceType == DWRITE_FONT_FACE_TYPE_OPENTYPE_COLLECTION;
    if (!isOneFile || !isKnownType || (fontFaceSimulationFlags & ~allSimulations) != 0) {
        return E_INVALIDARG;
    }
    return guarded(
        [&] { return createFontFace(fontFaceType, **fontFiles, faceIndex, fontFaceSimulationFlags, fontFace); });
}

HRESULT FactoryOperations::RegisterFontFileLoader(IDWriteFontFileLoader* fontFileLoader) {
    return guarded([&] { return m_fileLoaders.add(fontFileLoader); });
}

HRESULT FactoryOperations::UnregisterFontFileLoader(IDWriteFontFileLoader* fontFileLoader) {
    return m_fileLoaders.remove(fontFileLoader);
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
