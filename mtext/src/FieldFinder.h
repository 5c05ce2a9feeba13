#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace mtext {

/// Finds where fields, `%<\...>%`, end. They may hold fields themselves.
class FieldFinder {
public:
    explicit FieldFinder(std::wstring_view content) : m_content(content) {}

    /// The place behind the field that begins at `start`. Nothing if there
    /// begins none or its end is missing. The first question reads the whole
    /// content, later ones search what that found.
    std::optional<std::size_t> end(std::size_t start);

private:
    void pair();

    std::wstring_view m_content;
    bool m_paired = false;
    std::vector<std::pair<std::size_t, std::size_t>> m_fields; ///< Start and end, by start.
};

} // namespace mtext
