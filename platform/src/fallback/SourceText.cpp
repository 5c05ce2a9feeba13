#include "fallback/SourceText.h"

#include <algorithm>
#include <type_traits>

namespace platform {

HRESULT SourceText::fetch(std::size_t count) {
    const std::size_t wanted = std::min<std::size_t>(count, m_length);
    while (m_units.size() < wanted) {
        const WCHAR* piece = nullptr;
        UINT32 length = 0;
        const auto at = static_cast<UINT32>(m_position + m_units.size());
        if (const HRESULT result = m_source.GetTextAtPosition(at, &piece, &length); FAILED(result)) {
            return result;
        }
        if (piece == nullptr || length == 0) {
            m_complete = true;
            return S_OK;
        }
        const std::size_t taken = std::min<std::size_t>(length, wanted - m_units.size());
        const std::size_t before = m_units.size();
        m_units.resize(before + taken);
        for (std::size_t i = 0; i < taken; ++i) {
            const auto element = static_cast<std::make_unsigned_t<WCHAR>>(piece[i]);
            if (element > 0xFFFF) {
                return E_INVALIDARG;
            }
            m_units[before + i] = static_cast<char16_t>(element);
        }
    }
    m_complete = m_units.size() >= m_length;
    return S_OK;
}

} // namespace platform
