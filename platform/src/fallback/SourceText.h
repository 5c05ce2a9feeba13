#pragma once

#include <string>
#include <string_view>

#include <dwrite.h>

namespace platform {

/// A stretch of an analysis source's text as UTF-16, fetched piece by piece.
///
/// The source is only read: it may live on its caller's stack with a count that starts at 0, so it is never counted.
class SourceText {
public:
    /// The text from `position` on, `length` elements at most.
    SourceText(IDWriteTextAnalysisSource& source, UINT32 position, UINT32 length)
        : m_source(source), m_position(position), m_length(length) {}

    /// Fetches until `count` units are there or the text ends. E_INVALIDARG where an element is no UTF-16 unit, or what
    /// the source returns.
    HRESULT fetch(std::size_t count);

    std::u16string_view units() const { return m_units; }
    /// Whether the units are all there are.
    bool complete() const { return m_complete; }

private:
    IDWriteTextAnalysisSource& m_source;
    UINT32 m_position;
    UINT32 m_length;
    std::u16string m_units;
    bool m_complete = false;
};

} // namespace platform
