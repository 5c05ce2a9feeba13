#pragma once

// A host's own fonts, in memory, with everything that may go wrong with them.

#include <dwrite_2.h>

#include <oslayer/com_ptr.h>

#include <map>
#include <string>
#include <vector>

namespace platform::test {

/// What exists and is held at the moment.
struct HostCounts {
    int objects = 0;
    int fragments = 0;
    int streamsMade = 0;
    UINT64 bytesRead = 0;
};

/// A file in memory, and what a host's code answers about it.
struct HostFile {
    std::string bytes;
    HRESULT openResult = S_OK;
    HRESULT sizeResult = S_OK;
    HRESULT readResult = E_FAIL;
    /// So many reads succeed; all of them if negative.
    int goodReads = -1;
    /// Where a stream is expected, nothing is given, and all the same it is a success.
    bool givesNoStream = false;
    bool givesNoBytes = false;
    /// Fragments are copies, so that a memory checker sees whoever reads past one or after its release.
    bool copiesFragments = false;
    /// How much longer the file pretends to be.
    UINT64 missingBytes = 0;
};

/// An object that counts its references and ends with the last one.
template <typename Interface>
class HostObject : public Interface {
public:
    explicit HostObject(HostCounts& counts) : m_counts(counts) { ++m_counts.objects; }
    HostObject(const HostObject&) = delete;
    HostObject& operator=(const HostObject&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
        const bool isKnown = IsEqualGUID(riid, __uuidof(IUnknown)) || IsEqualGUID(riid, __uuidof(Interface));
        *object = isKnown ? this : nullptr;
        if (isKnown) {
            AddRef();
        }
        return isKnown ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --m_references;
        if (left == 0) {
            delete this;
        }
        return left;
    }

    ULONG references() const { return m_references; }

protected:
    virtual ~HostObject() { --m_counts.objects; }

    HostCounts& counts() { return m_counts; }

private:
    HostCounts& m_counts;
    ULONG m_references = 1;
};

class HostStream final : public HostObject<IDWriteFontFileStream> {
public:
    HostStream(HostCounts& counts, HostFile& file) : HostObject(counts), m_file(file) { ++counts.streamsMade; }

    HRESULT STDMETHODCALLTYPE ReadFileFragment(const void** start, UINT64 offset, UINT64 size,
                                               void** context) override {
        if (m_file.goodReads == 0) {
            return m_file.readResult;
        }
        if (offset > m_file.bytes.size() || size > m_file.bytes.size() - offset) {
            return pastTheEnd;
        }
        m_file.goodReads -= m_file.goodReads > 0 ? 1 : 0;
        auto* const copy = new std::string(m_file.copiesFragments ? m_file.bytes.substr(offset, size) : "");
        ++counts().fragments;
        counts().bytesRead += size;
        const char* const fragment = m_file.copiesFragments ? copy->data() : m_file.bytes.data() + offset;
        *start = m_file.givesNoBytes ? nullptr : fragment;
        *context = copy;
        return S_OK;
    }
    void STDMETHODCALLTYPE ReleaseFileFragment(void* context) override {
        delete static_cast<std::string*>(context);
        --counts().fragments;
    }
    HRESULT STDMETHODCALLTYPE GetFileSize(UINT64* size) override {
        *size = m_file.bytes.size() + m_file.missingBytes;
        return m_file.sizeResult;
    }
    HRESULT STDMETHODCALLTYPE GetLastWriteTime(UINT64* time) override {
        *time = 1;
        return S_OK;
    }

    /// What reading past the end is answered with: no status that anything else gives.
    static constexpr HRESULT pastTheEnd = static_cast<HRESULT>(0x8000000BU);

private:
    HostFile& m_file;
};

/// Files by their keys.
class HostLoader final : public HostObject<IDWriteFontFileLoader> {
public:
    using HostObject::HostObject;

    HRESULT STDMETHODCALLTYPE CreateStreamFromKey(const void* key, UINT32 keySize,
                                                  IDWriteFontFileStream** stream) override {
        *stream = nullptr;
        const auto file = files.find(std::string(static_cast<const char*>(key), keySize));
        if (file == files.end()) {
            return E_INVALIDARG;
        }
        if (FAILED(file->second.openResult) || file->second.givesNoStream) {
            return file->second.openResult;
        }
        *stream = new HostStream(counts(), file->second);
        return S_OK;
    }

    std::map<std::string, HostFile> files;
};

/// Collections of the files whose keys a key names, one letter each.
class HostCollectionLoader final : public HostObject<IDWriteFontCollectionLoader> {
public:
    HostCollectionLoader(HostCounts& counts, HostLoader& files) : HostObject(counts), m_files(files) {}

    HRESULT STDMETHODCALLTYPE CreateEnumeratorFromKey(IDWriteFactory* factory, const void* key, UINT32 keySize,
                                                      IDWriteFontFileEnumerator** enumerator) override {
        *enumerator = nullptr;
        askedBy = factory;
        if (SUCCEEDED(enumeratorResult) && !givesNoEnumerator) {
            *enumerator = new Enumerator(counts(), *this, *factory, {static_cast<const char*>(key), keySize});
        }
        return enumeratorResult;
    }

    IDWriteFactory* askedBy = nullptr;
    HRESULT enumeratorResult = S_OK;
    HRESULT moveResult = S_OK;
    HRESULT fileResult = S_OK;
    bool givesNoEnumerator = false;
    bool givesNoFile = false;

private:
    class Enumerator final : public HostObject<IDWriteFontFileEnumerator> {
    public:
        Enumerator(HostCounts& counts, HostCollectionLoader& loader, IDWriteFactory& factory, std::string keys)
            : HostObject(counts), m_loader(loader), m_factory(factory), m_keys(std::move(keys)) {}

        HRESULT STDMETHODCALLTYPE MoveNext(BOOL* hasFile) override {
            *hasFile = m_next < m_keys.size() ? TRUE : FALSE;
            ++m_next;
            return m_next == 2 ? m_loader.moveResult : S_OK;
        }
        HRESULT STDMETHODCALLTYPE GetCurrentFontFile(IDWriteFontFile** file) override {
            *file = nullptr;
            if (m_next == 2 && (FAILED(m_loader.fileResult) || m_loader.givesNoFile)) {
                return m_loader.fileResult;
            }
            return m_factory.CreateCustomFontFileReference(&m_keys.at(m_next - 1), 1, &m_loader.m_files, file);
        }

    private:
        HostCollectionLoader& m_loader;
        IDWriteFactory& m_factory;
        const std::string m_keys;
        std::size_t m_next = 0;
    };

    HostLoader& m_files;
};

/// A factory of its own with a host's loaders, which are gone with it.
class HostFonts {
public:
    HostFonts();
    ~HostFonts();

    IDWriteFactory& factory() { return *m_factory; }
    HostFile& file(const std::string& key) { return loader->files[key]; }
    oslayer::com_ptr<IDWriteFontFile> reference(const std::string& key);
    HRESULT makeFace(const std::string& key, oslayer::com_ptr<IDWriteFontFace>& face,
                     DWRITE_FONT_FACE_TYPE type = DWRITE_FONT_FACE_TYPE_TRUETYPE, UINT32 index = 0,
                     DWRITE_FONT_SIMULATIONS simulations = DWRITE_FONT_SIMULATIONS_NONE);
    HRESULT makeCollection(const std::string& keys, oslayer::com_ptr<IDWriteFontCollection>& collection);
    oslayer::com_ptr<IDWriteFontCollection> collection(const std::string& keys);

    /// The host's objects that live besides the two loaders: those that the platform holds.
    int held() const { return counts.objects - 2; }

    HostCounts counts;
    oslayer::com_ptr<HostLoader> loader;
    oslayer::com_ptr<HostCollectionLoader> collectionLoader;

private:
    oslayer::com_ptr<IDWriteFactory> m_factory;
};

/// The bytes of a pinned font ("fonts-dejavu-core/DejaVuSans.ttf"), or of one of these tests' own.
std::string fontBytes(const std::string& file);

/// The bytes of a face's table; nothing if it has none. Releases what it got.
std::string tableBytes(IDWriteFontFace& face, const char (&tag)[5]);

/// The name of a family in the first of its languages.
std::wstring familyName(IDWriteFontCollection& collection, UINT32 index);

} // namespace platform::test
