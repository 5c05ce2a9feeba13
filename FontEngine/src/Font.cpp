#include "Font.h"

#include <utility>

#include <oslayer/checkHResult.h>

namespace fonts {

namespace {

// Takes a half-fetched name back, so that the next question fetches it anew.
struct FailedFetch {
    std::wstring& name;
    bool happened = true;

    ~FailedFetch() {
        if (happened)
            name.clear();
    }
};

} // namespace

CFont::CFont(oslayer::com_ptr<IDWriteFont> pDWriteFont, std::wstring requestedFontFamily)
    : m_pDWriteFont(std::move(pDWriteFont)), m_requestedFontFamily(std::move(requestedFontFamily)) {}

std::wstring CFont::requestedFontFamily() {
    return m_requestedFontFamily;
}

std::wstring CFont::fontFamily() {
    if (m_fontFamily.empty()) {
        oslayer::com_ptr<IDWriteFontFamily> pFontFamily;
        OSLAYER_CHECK(m_pDWriteFont->GetFontFamily(&pFontFamily));
        oslayer::com_ptr<IDWriteLocalizedStrings> pFontFamilyNames;
        OSLAYER_CHECK(pFontFamily->GetFamilyNames(&pFontFamilyNames));
        UINT32 stringLength = 0;
        OSLAYER_CHECK(pFontFamilyNames->GetStringLength(0, &stringLength));
        // Room for the terminating NUL, which stays: the name is used through c_str().
        m_fontFamily.resize(stringLength + 1);
        FailedFetch failedFetch{m_fontFamily};
        OSLAYER_CHECK(pFontFamilyNames->GetString(0, m_fontFamily.data(), stringLength + 1));
        failedFetch.happened = false;
    }
    return m_fontFamily;
}

void CFont::fetchMetrics() {
    if (m_metrics.designUnitsPerEm == 0)
        m_pDWriteFont->GetMetrics(&m_metrics);
}

double CFont::capitalLetterSizeToFontSize(double capitalSize) {
    fetchMetrics();
    return capitalSize / (static_cast<double>(m_metrics.capHeight) / static_cast<double>(m_metrics.designUnitsPerEm));
}

SFontMetrics CFont::metricsByCapitalLetterSize(double capitalSize) {
    fetchMetrics();
    const double scale = capitalSize / m_metrics.capHeight;
    SFontMetrics metrics;
    metrics.ascent = m_metrics.ascent * scale;
    metrics.descent = m_metrics.descent * scale;
    metrics.capitalTopToAscent = m_metrics.ascent * scale - m_metrics.capHeight * scale;
    metrics.lineGap = m_metrics.lineGap * scale;
    return metrics;
}

} // namespace fonts
