#pragma once

#include "format/FormatOperations.h"

namespace platform_test {

/// Another implementation's format: it answers for its own interface alone, and its counts say nothing.
template <class Operations>
class ForeignFormat final : public Operations {
public:
    using Interface = typename Operations::value_type;

    platform::FormatSettings settings;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
        const bool isKnown = riid == __uuidof(Interface);
        *object = isKnown ? static_cast<Interface*>(this) : nullptr;
        return isKnown ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

protected:
    platform::ParagraphSettings& paragraph() noexcept override { return settings.paragraph; }
    const platform::FontSettings& font() const noexcept override { return settings.font; }
};

} // namespace platform_test
