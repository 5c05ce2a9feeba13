#pragma once

#include <dwrite.h>

#include <oslayer/com_ptr.h>

// The fonts of the platform that the test runs on, be it a fake one.
inline oslayer::com_ptr<IDWriteFontCollection> systemCollection() {
    oslayer::com_ptr<IUnknown> unknown;
    DWriteCreateFactory(DWRITE_FACTORY_TYPE_SHARED, __uuidof(IDWriteFactory), &unknown);
    oslayer::com_ptr<IDWriteFactory> factory;
    factory.queryFrom(unknown);
    oslayer::com_ptr<IDWriteFontCollection> collection;
    factory->GetSystemFontCollection(&collection);
    return collection;
}
