#pragma once

// The way in: the factory of everything that fonts and text layouts need.

#include <dwrite_font.h>
#include <dwrite_layout.h>
#include <dwrite_types.h>

// The interfaces are the platform's: no destructors, and operations of one name in derived ones.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
#pragma GCC diagnostic ignored "-Woverloaded-virtual"

/// Thread-safe.
struct IDWriteFactory : IUnknown {
    /// The fonts of the system: the same object each time, with a reference for the
    /// caller. It is read once; `checkForUpdates` changes nothing within a process.
    virtual HRESULT STDMETHODCALLTYPE GetSystemFontCollection(IDWriteFontCollection** fontCollection,
                                                              BOOL checkForUpdates = FALSE) = 0;
    /// A format for text of one family. The family is not looked up here; a null
    /// collection means the system's. E_INVALIDARG: a size of 0 or below, a weight of
    /// 1000 or above, a style or stretch outside its enumeration, text that is not UTF-16.
    virtual HRESULT STDMETHODCALLTYPE CreateTextFormat(const WCHAR* fontFamilyName,
                                                       IDWriteFontCollection* fontCollection,
                                                       DWRITE_FONT_WEIGHT fontWeight, DWRITE_FONT_STYLE fontStyle,
                                                       DWRITE_FONT_STRETCH fontStretch, FLOAT fontSize,
                                                       const WCHAR* localeName, IDWriteTextFormat** textFormat) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateTypography(IDWriteTypography** typography) = 0;
    /// A layout of `stringLength` UTF-16 units, copied, in a box. E_INVALIDARG and null:
    /// no string or format, a negative extent, an element above 0xFFFF.
    virtual HRESULT STDMETHODCALLTYPE CreateTextLayout(const WCHAR* string, UINT32 stringLength,
                                                       IDWriteTextFormat* textFormat, FLOAT maxWidth, FLOAT maxHeight,
                                                       IDWriteTextLayout** textLayout) = 0;
    /// An ellipsis in the format's font and locale, to stand where text is trimmed. It has no height of its own. It may
    /// be used by any number of formats and threads. E_INVALIDARG and null: no format.
    virtual HRESULT STDMETHODCALLTYPE CreateEllipsisTrimmingSign(IDWriteTextFormat* textFormat,
                                                                 IDWriteInlineObject** trimmingSign) = 0;
};

PLATFORM_UUID(IDWriteFactory, "b859ee5a-d838-4b5b-a2e8-1adc7d93db48");

extern "C" {

/// The shared factory (one object for the process) or an isolated one. E_NOINTERFACE
/// and null for an interface it does not have. Thread-safe.
PLATFORM_EXPORT HRESULT WINAPI DWriteCreateFactory(DWRITE_FACTORY_TYPE factoryType, REFIID iid, IUnknown** factory);
}

#pragma GCC diagnostic pop
