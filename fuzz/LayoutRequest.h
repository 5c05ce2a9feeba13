#pragma once

#include <functional>
#include <string>
#include <vector>

#include <dwrite_2.h>

#include <oslayer/com_ptr.h>

#include "Input.h"

namespace fuzz {

/// A text, and everything that a caller can ask for it, as an input says.
class LayoutRequest {
public:
    explicit LayoutRequest(Input& input);

    [[nodiscard]] const std::wstring& text() const { return m_text; }
    [[nodiscard]] float width() const { return m_width; }
    [[nodiscard]] float otherWidth() const { return m_otherWidth; }

    /// A new layout of that width; null where the platform refuses the text or the width.
    [[nodiscard]] oslayer::com_ptr<IDWriteTextLayout> create(float width) const;

private:
    using Setting = std::function<void(IDWriteTextLayout&)>;

    void takeText(Input& input);
    void takeParagraph(Input& input);
    void takeRange(Input& input);
    void takeSpacing(Input& input);
    DWRITE_TEXT_RANGE range(Input& input) const;

    std::wstring m_text;
    float m_width;
    float m_otherWidth;
    std::vector<Setting> m_settings;
};

} // namespace fuzz
