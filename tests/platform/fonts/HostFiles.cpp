#include "fonts/HostFiles.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace platform::test {

using oslayer::com_ptr;

HostFonts::HostFonts()
    : loader(com_ptr<HostLoader>::adopt(new HostLoader(counts))),
      collectionLoader(com_ptr<HostCollectionLoader>::adopt(new HostCollectionLoader(counts, *loader))) {
    IUnknown* made = nullptr;
    if (FAILED(DWriteCreateFactory(DWRITE_FACTORY_TYPE_ISOLATED, __uuidof(IDWriteFactory), &made))) {
        throw std::runtime_error("no factory");
    }
    m_factory = com_ptr<IDWriteFactory>::adopt(static_cast<IDWriteFactory*>(made));
    m_factory->RegisterFontFileLoader(loader);
    m_factory->RegisterFontCollectionLoader(collectionLoader);
}

HostFonts::~HostFonts() {
    m_factory->UnregisterFontFileLoader(loader);
    m_factory->UnregisterFontCollectionLoader(collectionLoader);
}

com_ptr<IDWriteFontFile> HostFonts::reference(const std::string& key) {
    com_ptr<IDWriteFontFile> file;
    if (FAILED(m_factory->CreateCustomFontFileReference(key.data(), static_cast<UINT32>(key.size()), loader, &file))) {
        throw std::runtime_error("no file " + key);
    }
    return file;
}

HRESULT HostFonts::makeFace(const std::string& key, com_ptr<IDWriteFontFace>& face, DWRITE_FONT_FACE_TYPE type,
                            UINT32 index, DWRITE_FONT_SIMULATIONS simulations) {
    const com_ptr<IDWriteFontFile> file = reference(key);
    IDWriteFontFile* const files[] = {file};
    return m_factory->CreateFontFace(type, 1, files, index, simulations, &face);
}

HRESULT HostFonts::makeCollection(const std::string& keys, com_ptr<IDWriteFontCollection>& collection) {
    return m_factory->CreateCustomFontCollection(collectionLoader, keys.data(), static_cast<UINT32>(keys.size()),
                                                 &collection);
}

com_ptr<IDWriteFontCollection> HostFonts::collection(const std::string& keys) {
    com_ptr<IDWriteFontCollection> made;
    if (FAILED(makeCollection(keys, made))) {
        throw std::runtime_error("no collection of " + keys);
    }
    return made;
}

std::string fontBytes(const std::string& file) {
    const bool isPinned = file.find('/') != std::string::npos;
    const std::string path = isPinned ? std::string(FONTENGINE_TEST_FONTS) + "/" + file
                                      : std::string(FONTENGINE_TEST_DATA) + "/platform/fonts/data/" + file;
    std::ifstream stream(path, std::ios::binary);
    if (!stream) {
        throw std::runtime_error("cannot read " + path);
    }
    std::ostringstream bytes;
    bytes << stream.rdbuf();
    return bytes.str();
}

std::string tableBytes(IDWriteFontFace& face, const char (&tag)[5]) {
    const void* data = nullptr;
    UINT32 size = 0;
    void* context = nullptr;
    BOOL exists = FALSE;
    if (FAILED(face.TryGetFontTable(DWRITE_MAKE_OPENTYPE_TAG(tag[0], tag[1], tag[2], tag[3]), &data, &size, &context,
                                    &exists)) ||
        exists == FALSE) {
        return {};
    }
    std::string bytes(static_cast<const char*>(data), size);
    face.ReleaseFontTable(context);
    return bytes;
}

std::wstring familyName(IDWriteFontCollection& collection, UINT32 index) {
    com_ptr<IDWriteFontFamily> family;
    com_ptr<IDWriteLocalizedStrings> names;
    UINT32 length = 0;
    if (FAILED(collection.GetFontFamily(index, &family)) || FAILED(family->GetFamilyNames(&names)) ||
        FAILED(names->GetStringLength(0, &length))) {
        return {};
    }
    std::wstring name(length + 1, L'?');
    names->GetString(0, name.data(), length + 1);
    name.resize(length);
    return name;
}

} // namespace platform::test
