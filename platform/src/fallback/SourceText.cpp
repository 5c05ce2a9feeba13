#include "fallback/SourceText.h"

#include <algorithm>
#include <cstdint>
#include <type_traits>

namespace platform {

namespace {

constexpr std::uint32_t elementOf(WCHAR c) {
    return static_cast<std::make_unsigned_t<WCHAR>>(c);
}

} // namespace

void SourceText::fetchBefore(std::size_t count) {
    while (m_start < std::min<std::size_t>(count, m_position)) {
        const WCHAR* piece = nullptr;
        UINT32 length = 0;
        const auto at = static_cast<UINT32>(m_position - m_start);
        if (FAILED(m_source.GetTextBeforePosition(at, &piece, &length)) || piece == nullptr || length == 0) {
            return;
        }
        const std::size_t taken = std::min<std::size_t>(length, count - m_start);
        const std::basic_string_view<WCHAR> nearest(piece + (length - taken), taken);
        if (std::any_of(nearest.begin(), nearest.end(), [](WCHAR c) { return elementOf(c) > 0xFFFF; })) {
            return;
        }
        m_units.insert(0, taken, u'\0');
        std::transform(nearest.begin(), nearest.end(), m_units.begin(),
                       [](WCHAR c) { return static_cast<char16_t>(c); });
        m_start += taken;
    }
}

HRESULT SourceText::fetch(std::size_t count) {
    const std::size_t wanted = std::min<std::size_t>(count, m_length);
    while (length() < wanted) {
        const WCHAR* piece = nullptr;
        UINT32 pieceLength = 0;
        const auto at = static_cast<UINT32>(m_position + length());
        if (const HRESULT result = m_source.GetTextAtPosition(at, &piece, &pieceLength); FAILED(result)) {
            return result;
        }
        if (piece == nullptr || pieceLength == 0) {
            m_complete = true;
            return S_OK;
        }
        const std::size_t taken = std::min<std::size_t>(pieceLength, wanted - length());
        const std::size_t before = m_units.size();
        m_units.resize(before + taken);
        for (std::size_t i = 0; i < taken; ++i) {
            const std::uint32_t element = elementOf(piece[i]);
            if (element > 0xFFFF) {
                return E_INVALIDARG;
            }
            m_units[before + i] = static_cast<char16_t>(element);
        }
    }
    m_complete = length() >= m_length;
    return S_OK;
}

} // namespace platform
