#pragma once

#include <dwrite.h>

#include <string>

#include <FontEngine/IFont.h>
#include <oslayer/com_ptr.h>

namespace fonts {

class CFont : public IFont {
public:
    CFont(oslayer::com_ptr<IDWriteFont> pDWriteFont, std::wstring requestedFontFamily);

    std::wstring requestedFontFamily() override;
    std::wstring fontFamily() override;
    double capitalLetterSizeToFontSize(double capitalSize) override;
    SFontMetrics metricsByCapitalLetterSize(double capitalSize) override;

private:
    void fetchMetrics();

    oslayer::com_ptr<IDWriteFont> m_pDWriteFont;
    std::wstring m_requestedFontFamily;
    // Empty until it is asked for.
    std::wstring m_fontFamily;
    // Without an em until they are asked for.
    DWRITE_FONT_METRICS m_metrics{};
};

} // namespace fonts
