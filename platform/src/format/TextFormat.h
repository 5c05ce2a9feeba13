#pragma once

#include "format/FormatOperations.h"

namespace platform {

/// A text format on its own, not part of a layout.
class CTextFormat final : public CHeapObject<LaterFormatOperations, IDWriteTextFormat> {
public:
    explicit CTextFormat(FormatSettings settings);

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override;
    using IUnknown::QueryInterface;

protected:
    ParagraphSettings& paragraph() noexcept override { return m_settings.paragraph; }
    const FontSettings& font() const noexcept override { return m_settings.font; }

private:
    FormatSettings m_settings;
};

} // namespace platform
