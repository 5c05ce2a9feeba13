#include "format/Name.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace platform {

namespace {

/// Consecutive formats and ranges of a thread mostly repeat a handful of names.
class RecentNames {
public:
    Name find(std::wstring_view text) {
        for (const Name& name : m_names) {
            if (name && *name == text) {
                return name;
            }
        }
        Name name = std::make_shared<const std::wstring>(text);
        m_names[m_next] = name;
        m_next = (m_next + 1) % m_names.size();
        return name;
    }

private:
    std::array<Name, 8> m_names;
    std::size_t m_next = 0;
};

} // namespace

Name makeName(std::wstring_view text) {
    if (text.empty()) {
        return nullptr;
    }
    thread_local RecentNames recent;
    return recent.find(text);
}

Name makeLocaleName(std::wstring_view text) {
    std::wstring lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](wchar_t unit) {
        return unit >= L'A' && unit <= L'Z' ? static_cast<wchar_t>(unit - L'A' + L'a') : unit;
    });
    return makeName(lower);
}

const std::wstring& textOf(const Name& name) noexcept {
    static const std::wstring empty;
    return name ? *name : empty;
}

bool sameName(const Name& left, const Name& right) noexcept {
    return left == right || textOf(left) == textOf(right);
}

HRESULT copyName(const std::wstring& text, WCHAR* buffer, UINT32 size) noexcept {
    if (buffer == nullptr || size == 0) {
        return E_NOT_SUFFICIENT_BUFFER;
    }
    if (text.size() >= size) {
        *buffer = L'\0';
        return E_NOT_SUFFICIENT_BUFFER;
    }
    std::copy_n(text.c_str(), text.size() + 1, buffer);
    return S_OK;
}

bool isUtf16(std::wstring_view text) noexcept {
    return std::none_of(text.begin(), text.end(), [](wchar_t unit) { return static_cast<char32_t>(unit) > 0xFFFF; });
}

} // namespace platform
