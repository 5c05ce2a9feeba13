#include "fonts/HostFontData.h"

#include <atomic>
#include <cstring>

namespace platform {

namespace {

/// A file as a host's stream hands it out, fragment by fragment. Fragments are copied and given back at once.
class HostFontFile final : public FontFile {
public:
    HostFontFile(Reference<IDWriteFontFileStream> stream, std::uint64_t size)
        : FontFile(size), m_stream(std::move(stream)) {
        readStart();
    }

    bool isUnchanged() const override { return true; }
    HRESULT failure() const noexcept override { return m_failure.load(std::memory_order_acquire); }

protected:
    bool copyBytes(std::uint64_t offset, std::size_t length, char* to) const noexcept override {
        const void* fragment = nullptr;
        void* context = nullptr;
        const HRESULT result = m_stream->ReadFileFragment(&fragment, offset, length, &context);
        if (FAILED(result)) {
            return fail(result);
        }
        if (fragment != nullptr) {
            std::memcpy(to, fragment, length);
        }
        m_stream->ReleaseFileFragment(context);
        return fragment != nullptr || fail(E_FAIL);
    }

private:
    bool fail(HRESULT result) const noexcept {
        HRESULT none = S_OK;
        m_failure.compare_exchange_strong(none, result, std::memory_order_acq_rel);
        return false;
    }

    const Reference<IDWriteFontFileStream> m_stream;
    mutable std::atomic<HRESULT> m_failure = S_OK;
};

HRESULT openStream(IDWriteFontFileLoader& loader, const std::string& key, std::shared_ptr<const FontFile>& file) {
    IDWriteFontFileStream* created = nullptr;
    HRESULT result = loader.CreateStreamFromKey(key.data(), static_cast<UINT32>(key.size()), &created);
    if (FAILED(result)) {
        return result; // What a failing call leaves in its results is nobody's.
    }
    Reference<IDWriteFontFileStream> stream(created, false);
    UINT64 size = 0;
    result = stream ? stream->GetFileSize(&size) : E_FAIL;
    if (FAILED(result)) {
        return result;
    }
    auto opened = std::make_shared<HostFontFile>(std::move(stream), size);
    if (SUCCEEDED(opened->failure())) {
        file = std::move(opened);
        return S_OK;
    }
    return opened->failure();
}

} // namespace

HRESULT HostFontData::open(std::shared_ptr<const FontFile>& file) {
    const std::lock_guard lock(m_fileGuard);
    const HRESULT result = m_file ? S_OK : openStream(*m_loader, m_key, m_file);
    file = m_file;
    return FAILED(result) ? result : S_OK;
}

bool HostFontData::isSameFile(FontData& other) {
    return this == &other || (&other.loader() == m_loader.get() && other.key() == m_key);
}

} // namespace platform
