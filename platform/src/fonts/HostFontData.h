#pragma once

#include "fonts/FontData.h"

namespace platform {

/// A file of a host's loader. Its stream is asked for once and kept.
class HostFontData final : public FontData {
public:
    HostFontData(IDWriteFontFileLoader& loader, std::string key) : m_loader(&loader), m_key(std::move(key)) {}

    HRESULT open(std::shared_ptr<const FontFile>& file) override;
    IDWriteFontFileLoader& loader() noexcept override { return *m_loader; }
    const std::string& key() override { return m_key; }
    const std::string& path() const noexcept override { return m_noPath; }
    bool isSameFile(FontData& other) override;

private:
    const Reference<IDWriteFontFileLoader> m_loader;
    const std::string m_key;
    const std::string m_noPath;
    std::mutex m_fileGuard;
    std::shared_ptr<const FontFile> m_file;
};

} // namespace platform
