#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "format/FormatSettings.h"
#include "format/RangeProperties.h"
#include "lines/LineBreaker.h"
#include "lines/LinePlacement.h"
#include "shaping/BreakOpportunities.h"
#include "shaping/ShapedText.h"
#include "unicode/TextBuffer.h"

namespace platform {

/// The stages that a layout's text goes through, each done when somebody asks for its result and kept until something
/// that it depends on changes: shaping on fonts, breaking on the box's width and wrapping, placing on the alignments.
class TextPipeline {
public:
    TextPipeline(const WCHAR* text, UINT32 length, const FormatSettings& format, const Box& box)
        : m_text(text, length), m_format(format), m_properties(format.font), m_box(box) {}

    /// What the stages start from. After a change, the first stage that depends on it is named to redo().
    [[nodiscard]] const TextBuffer& text() const noexcept { return m_text; }
    [[nodiscard]] ParagraphSettings& settings() noexcept { return m_format.paragraph; }
    [[nodiscard]] const ParagraphSettings& settings() const noexcept { return m_format.paragraph; }
    /// The paragraph settings with the font that the text had at first.
    [[nodiscard]] const FormatSettings& format() const noexcept { return m_format; }
    [[nodiscard]] RangeProperties& properties() noexcept { return m_properties; }
    [[nodiscard]] const RangeProperties& properties() const noexcept { return m_properties; }
    [[nodiscard]] Box& box() noexcept { return m_box; }
    [[nodiscard]] const Box& box() const noexcept { return m_box; }

    enum class Stage { Shaping, Breaking, Placing, Done };

    /// Says that `stage` and those after it have to be done again.
    void redo(Stage stage) noexcept {
        if (stage < m_next) {
            m_next = stage;
        }
    }

    /// Does what is left to do. DWRITE_E_NOFONT if no font is installed.
    HRESULT finish();

    // Results, valid after finish() until the next change.

    /// The text as lines break it.
    [[nodiscard]] const ShapedText& shaped() const noexcept {
        return m_results->reshaped.clusters.empty() ? m_results->shaped : m_results->reshaped;
    }
    /// The text without regard to lines. The widths of tabs and soft hyphens are as lines left them.
    [[nodiscard]] const ShapedText& unbroken() const noexcept { return m_results->shaped; }
    [[nodiscard]] const std::vector<Line>& lines() const noexcept { return m_results->lines; }
    [[nodiscard]] const Placement& placement() const noexcept { return m_results->placement; }
    /// Found at the first call.
    const BreakOpportunities& opportunities();

private:
    HRESULT shape();
    [[nodiscard]] LineBreakSettings lineBreakSettings() const;
    void breakIntoLines();
    void place();

    TextBuffer m_text;
    FormatSettings m_format;
    RangeProperties m_properties;
    Box m_box;
    Stage m_next = Stage::Shaping;

    struct Results {
        ShapedText shaped;
        /// Faces of a host's own files that its fallback named.
        std::vector<Reference<IDWriteFontFace>> hostFaces;
        /// Of a line without text: the empty text's, or that after a newline at the end.
        CFontFace* emptyFace = nullptr;
        float emptySize = 0.0F;
        std::optional<BreakOpportunities> opportunities;
        ShapedText reshaped;
        std::vector<Line> lines;
        Placement placement;
    };
    /// Made at the first question: many layouts may wait for theirs.
    std::unique_ptr<Results> m_results;
};

} // namespace platform
