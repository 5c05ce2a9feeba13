#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <FontEngine/FontEngine.h>
#include <render/RichTextDocument.h>

#include "CaretWalk.h"

enum class Move { Left, Right, WordLeft, WordRight, Up, Down, LineStart, LineEnd };

/// The core of a text editor: one paragraph of one style, a caret and a selection. The paragraph is laid out anew after
/// each edit, everything else is read off the layout. Points and rectangles are the layout's: y points up, text lies at
/// y <= 0.
class Editor {
public:
    /// The engine is borrowed. `style` says how text looks; its own text is what there is to begin with.
    Editor(fonts::IFontEngine& engine, const render::SRichTextToken& style, fonts::SParagraphLayoutOptions options);

    /// Takes the place of the selected text; the caret then stands behind it.
    void insert(std::wstring_view text);
    /// Deletes the selected text, else the cluster before the caret or the one behind it.
    void deleteBackward();
    void deleteForward();

    /// Moves the caret. What it passes is selected; unless `selects`, nothing is selected any more.
    void move(Move where, bool selects = false);
    void click(MbCartPoint point, bool selects = false);
    /// Presses at one point, releases at another.
    void drag(MbCartPoint from, MbCartPoint to);

    const fonts::CParagraphLayout& layout() const { return m_layout; }
    const std::wstring& text() const { return m_layout.text(); }
    /// Where typed text goes.
    std::uint32_t position() const { return m_caret.position; }
    render::TextRange selection() const;
    /// Where to draw the caret, and which way the text reads that it is attached to.
    fonts::SCaret caret() const { return walk().caret(m_caret); }
    std::vector<MbRect> selectionRects() const { return m_layout.rectsOf(selection()); }

private:
    CaretWalk walk() const { return {m_layout, m_options.direction}; }
    void replace(render::TextRange range, std::wstring_view text);
    render::TextRange clusterBefore() const;
    render::TextRange clusterBehind() const;
    CaretPlace target(Move where, double x) const;
    CaretPlace endOfSelection(bool isRight) const;
    void place(CaretPlace caret, bool selects);

    fonts::IFontEngine& m_engine;
    fonts::SParagraphLayoutOptions m_options;
    render::CRichTextParagraph m_paragraph;
    fonts::CParagraphLayout m_layout;
    CaretPlace m_caret;
    /// Where the selection began.
    std::uint32_t m_anchor = 0;
    /// The x that up and down keep as long as they follow each other.
    std::optional<double> m_keptX;
};
