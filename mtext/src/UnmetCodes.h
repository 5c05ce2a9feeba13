#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include <mtext/Diagnostics.h>
#include <mtext/MText.h>

namespace mtext {

/// Properties of characters that the document has no room for.
enum class CharacterProperty : std::uint8_t {
    Overline,
    Strikethrough,
    InlineAlignment,
    ObliqueAngle,
    Tracking,
    WidthFactor,
    BigFont,
    Count,
};

/// Properties of paragraphs that the document has no room for.
enum class ParagraphProperty : std::uint8_t {
    FirstLineIndent,
    LeftIndent,
    RightIndent,
    SpaceBefore,
    SpaceAfter,
    LineSpacing,
    TabStops,
    Distribution,
    Count,
};

/// For each property the number of the code that set it; 0: none holds.
template <class Property>
class HoldingCodes {
public:
    std::uint32_t& operator[](Property property) { return m_codes[static_cast<std::size_t>(property)]; }
    std::uint32_t operator[](Property property) const { return m_codes[static_cast<std::size_t>(property)]; }

private:
    std::array<std::uint32_t, static_cast<std::size_t>(Property::Count)> m_codes{};
};

using CharacterCodes = HoldingCodes<CharacterProperty>;
using ParagraphCodes = HoldingCodes<ParagraphProperty>;

/// Codes that ask for what the document has no room for. Programs write many
/// that change nothing: repeated ones, ones that nothing follows, alignment in
/// lines of one height. A code is unmet once text stands under it that would
/// look otherwise.
class UnmetCodes {
public:
    /// Remembers a code at its place in the content and gives its number.
    std::uint32_t add(DiagnosticCode code, std::size_t position, std::size_t length);

    /// `text` stands in the current paragraph, under these codes.
    void note(std::wstring_view text, float capSize, const CharacterCodes& codes);

    /// Ends the current paragraph, for which these codes hold.
    void endParagraph(const ParagraphCodes& codes);

    /// Ends the content: `formats` are those of its paragraphs, and all tabs stand
    /// `tabStopWidth` apart.
    void endContent(const std::vector<ParagraphFormat>& formats, float tabStopWidth);

    /// Calls `visit(code, position, length)` for each unmet code, in their order.
    template <class Visitor>
    void forEach(Visitor visit) const {
        for (const Code& code : m_codes) {
            if (code.unmet) {
                visit(code.code, code.position, code.length);
            }
        }
    }

private:
    struct Code {
        DiagnosticCode code;
        std::size_t position;
        std::size_t length;
        bool unmet;
    };
    /// Text under an alignment code in the current paragraph.
    struct AlignedText {
        std::uint32_t code;
        float smallest;
    };
    struct TabbedParagraph {
        std::size_t number;
        std::uint32_t code;
    };

    void markUnmet(std::uint32_t number);
    void noteHeight(float capSize, std::uint32_t alignment);

    std::vector<Code> m_codes;
    std::vector<AlignedText> m_aligned;
    std::vector<TabbedParagraph> m_tabbed;
    std::size_t m_paragraph = 0;
    float m_tallest = 0.0F; ///< Of the current paragraph's visible characters; 0: none yet.
    bool m_hasTab = false;
};

} // namespace mtext
