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

    /// Fetches what stands before the position, at most `count` units of it, if the source gives it out: it may help to
    /// decide, but nobody asked about it.
    void fetchBefore(std::size_t count);

    /// What stands before the position, as far as it was fetched, and the text from there on.
    std::u16string_view units() const { return m_units; }
    /// Where the position lies in the units.
    std::size_t start() const { return m_start; }
    /// How many units there are from the position on.
    std::size_t length() const { return m_units.size() - m_start; }
    /// Whether they are all there are.
    bool complete() const { return m_complete; }

private:
    IDWriteTextAnalysisSource& m_source;
    UINT32 m_position;
    UINT32 m_length;
    std::u16string m_units;
    std::size_t m_start = 0;
    bool m_complete = false;
};

} // namespace platform
