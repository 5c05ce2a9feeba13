#include "FieldFinder.h"

#include <algorithm>

namespace mtext {

namespace {

constexpr std::wstring_view OPENING = L"%<\\";
constexpr std::wstring_view CLOSING = L">%";

} // namespace

void FieldFinder::pair() {
    std::vector<std::size_t> open;
    for (std::size_t i = 0; i < m_content.size();) {
        const std::wstring_view rest = m_content.substr(i);
        if (rest.starts_with(OPENING)) {
            open.push_back(i);
            i += OPENING.size();
        } else if (rest.starts_with(CLOSING) && !open.empty()) {
            i += CLOSING.size();
            m_fields.emplace_back(open.back(), i);
            open.pop_back();
        } else {
            ++i;
        }
    }
    std::sort(m_fields.begin(), m_fields.end());
    m_paired = true;
}

std::optional<std::size_t> FieldFinder::end(std::size_t start) {
    if (!m_content.substr(start).starts_with(OPENING)) {
        return std::nullopt;
    }
    if (!m_paired) {
        pair();
    }
    const auto field = std::lower_bound(m_fields.begin(), m_fields.end(), std::pair(start, std::size_t{0}));
    if (field == m_fields.end() || field->first != start) {
        return std::nullopt;
    }
    return field->second;
}

} // namespace mtext
