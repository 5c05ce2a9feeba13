#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <dxf/Drawing.h>

#include "DrawnGlyphs.h"
#include "Session.h"

namespace tool {

// A single-line text that draws one cluster, and how a reader will set it.
struct ClusterText {
    std::wstring content; // MTEXT content: font, escapes
    bool joined = false;  // holds joiners, which keep the shape that a letter has inside its word
    // The cluster's glyphs, measured from the text's insertion point (top left).
    std::vector<DrawnGlyph> glyphs;
};

// Finds for clusters the texts that draw them. Each is laid out as a reader of
// the written drawing will do it, once for each different content and size.
class ClusterTexts {
public:
    // Both are borrowed.
    ClusterTexts(Session& session, const dxf::Drawing& drawing);

    // The text that draws exactly `glyphs`, `token` at `height`; nothing where a
    // cluster does not look alone as it does in its word. Valid until the next call.
    const ClusterText* find(const render::SRichTextToken& token, double height, const std::vector<DrawnGlyph>& glyphs);

    // How many different texts were laid out.
    [[nodiscard]] std::size_t size() const { return m_texts.size(); }

private:
    const ClusterText& measured(const std::wstring& content, double height, bool joined);

    Session& m_session;
    const dxf::Drawing& m_drawing;
    FontMap m_fontMap; // a reader's: without a user's table, which has been applied already
    std::map<std::pair<std::wstring, double>, ClusterText> m_texts;
};

} // namespace tool
