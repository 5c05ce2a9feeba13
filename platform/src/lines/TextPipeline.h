#pragma once

#include <memory>
#include <vector>

#include "com/Reference.h"
#include "format/Stage.h"
#include "lines/LaidOutText.h"

namespace platform {

/// Makes a LaidOutText from what callers set, in stages: shaping on fonts, breaking on the box's width and wrapping,
/// placing on the alignments. A stage is done when somebody asks for the result, and again when something has changed
/// that it depends on.
class TextPipeline {
public:
    TextPipeline(const WCHAR* text, UINT32 length, const FormatSettings& format, const Box& box)
        : m_input{TextBuffer(text, length), format, RangeProperties(format.font), box} {}
    TextPipeline(const TextPipeline&) = delete;
    TextPipeline& operator=(const TextPipeline&) = delete;

    /// What the stages start from. After a change, the first stage that depends on it is named to redo().
    [[nodiscard]] LayoutInput& input() noexcept { return m_input; }
    [[nodiscard]] const LayoutInput& input() const noexcept { return m_input; }

    /// Says that `stage` and those after it have to be done again.
    void redo(Stage stage) noexcept {
        if (stage < m_next) {
            m_next = stage;
        }
    }

    /// Does what is left to do. DWRITE_E_NOFONT if no font is installed.
    HRESULT finish();

    /// The result, valid after finish() until the next change.
    [[nodiscard]] const LaidOutText& laidOut() const noexcept { return m_results->laidOut; }

    /// Adds the opportunities to break to the result, if breaking its lines has not needed them already.
    void findOpportunities() { opportunities(); }

private:
    HRESULT shape();
    const BreakOpportunities& opportunities();
    [[nodiscard]] LineBreakSettings lineBreakSettings() const;
    void breakIntoLines();
    void place();

    LayoutInput m_input;
    Stage m_next = Stage::Shaping;

    struct Results {
        explicit Results(const LayoutInput& input) noexcept : laidOut(input) {}

        LaidOutText laidOut;
        /// Faces of a host's own files that its fallback named.
        std::vector<Reference<IDWriteFontFace>> hostFaces;
        /// Of a line without text: the empty text's, or that after a newline at the end.
        CFontFace* emptyFace = nullptr;
        float emptySize = 0.0F;
    };
    /// Made at the first question: many layouts may wait for theirs.
    std::unique_ptr<Results> m_results;
};

} // namespace platform
