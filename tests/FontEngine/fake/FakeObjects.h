#pragma once

// The objects that the fake platform is made of, shared by its source files.

#include <d2d1.h>
#include <dwrite_2.h>

#include <charconv>
#include <cstdint>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <Common/Utf.h>

#include "FakePlatform.h"
#include "RestOf.h"

namespace fake {

// ---- records ----

inline std::string quoted(const WCHAR* text) {
    return text ? '"' + common::utf8FromWide(text) + '"' : "null";
}

inline const char* kindOf(const IDWriteFontCollection* collection) {
    return collection ? "Collection" : "null";
}

template <typename Argument>
const Argument& shown(const Argument& argument) {
    return argument;
}

// With all the digits that tell it from other floats, and no more.
inline std::string shown(FLOAT number) {
    char digits[32];
    return {digits, std::to_chars(digits, digits + sizeof(digits), number).ptr};
}

// "Operation(a, b, c)"
template <typename... Arguments>
std::string callText(const char* operation, const Arguments&... arguments) {
    std::ostringstream text;
    text << operation << '(';
    [[maybe_unused]] const char* separator = "";
    ((text << separator << shown(arguments), separator = ", "), ...);
    text << ')';
    return text.str();
}

template <typename... Arguments>
HRESULT record(const char* operation, const Arguments&... arguments) {
    return platform().record(callText(operation, arguments...));
}

// For what the library has no business to call.
HRESULT unexpected(const char* operation);

// ---- reference counting ----

// Objects that belong to the platform stay when nobody refers to them any more;
// the others go. All references of one kind are counted together.
enum class Lifetime { Platform, References };

template <typename Interface, typename... Bases>
class Object : public RestOf<Interface> {
public:
    Object(std::int64_t& references, Lifetime lifetime) : m_references(references), m_lifetime(lifetime) {}
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    virtual ~Object() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
        const bool known =
            riid == __uuidof(IUnknown) || riid == __uuidof(Interface) || (... || (riid == __uuidof(Bases)));
        *object = known ? this : nullptr;
        if (known)
            AddRef();
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override {
        ++m_references;
        return ++m_count;
    }
    ULONG STDMETHODCALLTYPE Release() override {
        --m_references;
        const ULONG count = --m_count;
        if (count == 0 && m_lifetime == Lifetime::References)
            delete this;
        return count;
    }

private:
    std::int64_t& m_references;
    Lifetime m_lifetime;
    ULONG m_count = 0;
};

// Stores a reference to the object, or null for a failed call.
template <typename Interface, typename Concrete>
HRESULT handOut(HRESULT result, Concrete* object, Interface** out) {
    *out = FAILED(result) ? nullptr : object;
    if (*out)
        (*out)->AddRef();
    return result;
}

// ---- fonts ----

class LocalizedStrings final : public Object<IDWriteLocalizedStrings> {
public:
    LocalizedStrings(const char* kind, std::vector<std::wstring> strings, std::int64_t& references, Lifetime lifetime)
        : Object(references, lifetime), m_kind(kind), m_strings(std::move(strings)) {}

    UINT32 STDMETHODCALLTYPE GetCount() override { return static_cast<UINT32>(m_strings.size()); }
    HRESULT STDMETHODCALLTYPE FindLocaleName(const WCHAR* localeName, UINT32* index, BOOL* exists) override;
    HRESULT STDMETHODCALLTYPE GetLocaleNameLength(UINT32 index, UINT32* length) override;
    HRESULT STDMETHODCALLTYPE GetLocaleName(UINT32 index, WCHAR* localeName, UINT32 size) override;
    HRESULT STDMETHODCALLTYPE GetStringLength(UINT32 index, UINT32* length) override;
    HRESULT STDMETHODCALLTYPE GetString(UINT32 index, WCHAR* stringBuffer, UINT32 size) override;

private:
    std::string operation(const char* name) const { return m_kind + ("." + std::string(name)); }

    std::string m_kind;
    std::vector<std::wstring> m_strings;
};

class Family;

class Font final : public Object<IDWriteFont> {
public:
    Font(Family& family, FontSpec spec, std::int64_t& references, std::int64_t& otherReferences)
        : Object(references, Lifetime::Platform), m_family(family), m_spec(std::move(spec)),
          m_otherReferences(otherReferences) {}

    HRESULT STDMETHODCALLTYPE GetFontFamily(IDWriteFontFamily** fontFamily) override;
    DWRITE_FONT_WEIGHT STDMETHODCALLTYPE GetWeight() override { return m_spec.weight; }
    DWRITE_FONT_STRETCH STDMETHODCALLTYPE GetStretch() override { return m_spec.stretch; }
    DWRITE_FONT_STYLE STDMETHODCALLTYPE GetStyle() override { return m_spec.style; }
    HRESULT STDMETHODCALLTYPE GetFaceNames(IDWriteLocalizedStrings** names) override;
    HRESULT STDMETHODCALLTYPE GetInformationalStrings(DWRITE_INFORMATIONAL_STRING_ID id,
                                                      IDWriteLocalizedStrings** strings, BOOL* exists) override;
    DWRITE_FONT_SIMULATIONS STDMETHODCALLTYPE GetSimulations() override;
    void STDMETHODCALLTYPE GetMetrics(DWRITE_FONT_METRICS* metrics) override;
    HRESULT STDMETHODCALLTYPE HasCharacter(UINT32 unicodeValue, BOOL* exists) override;
    HRESULT STDMETHODCALLTYPE CreateFontFace(IDWriteFontFace** fontFace) override;

private:
    Family& m_family;
    FontSpec m_spec;
    std::int64_t& m_otherReferences;
};

class Family final : public Object<IDWriteFontFamily, IDWriteFontList> {
public:
    Family(const FamilySpec& spec, Objects& objects);

    HRESULT STDMETHODCALLTYPE GetFontCollection(IDWriteFontCollection** fontCollection) override;
    UINT32 STDMETHODCALLTYPE GetFontCount() override;
    HRESULT STDMETHODCALLTYPE GetFont(UINT32 index, IDWriteFont** font) override;
    HRESULT STDMETHODCALLTYPE GetFamilyNames(IDWriteLocalizedStrings** names) override;
    HRESULT STDMETHODCALLTYPE GetFirstMatchingFont(DWRITE_FONT_WEIGHT weight, DWRITE_FONT_STRETCH stretch,
                                                   DWRITE_FONT_STYLE style, IDWriteFont** font) override;
    HRESULT STDMETHODCALLTYPE GetMatchingFonts(DWRITE_FONT_WEIGHT weight, DWRITE_FONT_STRETCH stretch,
                                               DWRITE_FONT_STYLE style, IDWriteFontList** fonts) override;

    bool hasName(const std::wstring& name) const;
    Font& font(std::size_t index) { return *m_fonts.at(index); }

private:
    std::vector<std::wstring> m_names;
    LocalizedStrings m_familyNames;
    std::vector<std::unique_ptr<Font>> m_fonts;
};

class Collection final : public Object<IDWriteFontCollection> {
public:
    using Object::Object;

    UINT32 STDMETHODCALLTYPE GetFontFamilyCount() override;
    HRESULT STDMETHODCALLTYPE GetFontFamily(UINT32 index, IDWriteFontFamily** fontFamily) override;
    HRESULT STDMETHODCALLTYPE FindFamilyName(const WCHAR* familyName, UINT32* index, BOOL* exists) override;
    HRESULT STDMETHODCALLTYPE GetFontFromFontFace(IDWriteFontFace* fontFace, IDWriteFont** font) override;
};

class Face final : public Object<IDWriteFontFace> {
public:
    using Object::Object;

    DWRITE_FONT_SIMULATIONS STDMETHODCALLTYPE GetSimulations() override;
    void STDMETHODCALLTYPE GetMetrics(DWRITE_FONT_METRICS* metrics) override;
    UINT16 STDMETHODCALLTYPE GetGlyphCount() override;
    HRESULT STDMETHODCALLTYPE GetDesignGlyphMetrics(const UINT16* glyphIndices, UINT32 glyphCount,
                                                    DWRITE_GLYPH_METRICS* metrics, BOOL isSideways) override;
    HRESULT STDMETHODCALLTYPE GetGlyphIndices(const UINT32* codePoints, UINT32 count, UINT16* glyphIndices) override;
    HRESULT STDMETHODCALLTYPE GetGlyphRunOutline(FLOAT emSize, const UINT16* glyphIndices, const FLOAT* glyphAdvances,
                                                 const DWRITE_GLYPH_OFFSET* glyphOffsets, UINT32 glyphCount,
                                                 BOOL isSideways, BOOL isRightToLeft,
                                                 IDWriteGeometrySink* geometrySink) override;
};

// ---- factories ----

class Fallback final : public Object<IDWriteFontFallback> {
public:
    using Object::Object;

    HRESULT STDMETHODCALLTYPE MapCharacters(IDWriteTextAnalysisSource* analysisSource, UINT32 textPosition,
                                            UINT32 textLength, IDWriteFontCollection* baseFontCollection,
                                            const WCHAR* baseFamilyName, DWRITE_FONT_WEIGHT baseWeight,
                                            DWRITE_FONT_STYLE baseStyle, DWRITE_FONT_STRETCH baseStretch,
                                            UINT32* mappedLength, IDWriteFont** mappedFont, FLOAT* scale) override;
};

class Factory final : public Object<IDWriteFactory2, IDWriteFactory1, IDWriteFactory> {
public:
    using Object::Object;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override;
    HRESULT STDMETHODCALLTYPE GetSystemFontCollection(IDWriteFontCollection** collection, BOOL check) override;
    HRESULT STDMETHODCALLTYPE CreateTextFormat(const WCHAR* familyName, IDWriteFontCollection* collection,
                                               DWRITE_FONT_WEIGHT weight, DWRITE_FONT_STYLE style,
                                               DWRITE_FONT_STRETCH stretch, FLOAT size, const WCHAR* localeName,
                                               IDWriteTextFormat** textFormat) override;
    HRESULT STDMETHODCALLTYPE CreateTypography(IDWriteTypography** typography) override;
    HRESULT STDMETHODCALLTYPE CreateTextLayout(const WCHAR* string, UINT32 stringLength, IDWriteTextFormat* textFormat,
                                               FLOAT maxWidth, FLOAT maxHeight, IDWriteTextLayout** layout) override;
    HRESULT STDMETHODCALLTYPE GetSystemFontFallback(IDWriteFontFallback** fallback) override;
};

// What exists once: made from Platform::families when it is first asked for.
class Objects {
public:
    Objects();

    std::int64_t familyReferences = 0;
    std::int64_t familyNamesReferences = 0;
    std::int64_t fontReferences = 0;
    std::int64_t otherReferences = 0;

    Factory factory;
    Collection collection;
    Fallback fallback;
    Face face;

    std::vector<std::unique_ptr<Family>>& families();

private:
    std::vector<std::unique_ptr<Family>> m_families;
    bool m_familiesMade = false;
};

inline Objects& objects() {
    return platform().objects();
}

// New formats and layouts, without a reference yet.
IDWriteTextFormat* newTextFormat();
IDWriteTextLayout* newTextLayout(LayoutState state);

} // namespace fake
