#include "Editor.h"

#include <algorithm>
#include <utility>

Editor::Editor(fonts::IFontEngine& engine, const render::SRichTextToken& style, fonts::SParagraphLayoutOptions options)
    : m_engine(engine), m_options(std::move(options)) {
    m_paragraph.tokens = {style};
    m_layout = fonts::CParagraphLayout::make(m_paragraph, m_engine, m_options);
}

void Editor::insert(std::wstring_view text) {
    replace(selection(), text);
}

void Editor::deleteBackward() {
    replace(selection().length > 0 ? selection() : clusterBefore(), {});
}

void Editor::deleteForward() {
    replace(selection().length > 0 ? selection() : clusterBehind(), {});
}

void Editor::replace(render::TextRange range, std::wstring_view text) {
    m_paragraph.tokens.front().text.replace(range.startPosition, range.length, text);
    m_layout = fonts::CParagraphLayout::make(m_paragraph, m_engine, m_options);
    m_keptX.reset();
    place(walk().behind(range.startPosition + static_cast<std::uint32_t>(text.length())), false);
}

// Typing can join letters into a cluster around the caret; then only the part on its side goes.
render::TextRange Editor::clusterBefore() const {
    if (position() == 0) {
        return {};
    }
    const std::uint32_t start = walk().clusterAt(position() - 1).range.startPosition;
    return {start, position() - start};
}

render::TextRange Editor::clusterBehind() const {
    if (position() == text().length()) {
        return {position(), 0};
    }
    const render::TextRange range = walk().clusterAt(position()).range;
    return {position(), range.startPosition + range.length - position()};
}

void Editor::move(Move where, bool selects) {
    const double x = m_keptX.value_or(caret().x);
    const bool isVertical = where == Move::Up || where == Move::Down;
    m_keptX = isVertical ? std::optional(x) : std::nullopt;
    const bool isStep = where == Move::Left || where == Move::Right;
    const bool leavesSelection = isStep && !selects && selection().length > 0;
    place(leavesSelection ? endOfSelection(where == Move::Right) : target(where, x), selects);
}

void Editor::click(MbCartPoint point, bool selects) {
    m_keptX.reset();
    const fonts::SHit hit = m_layout.hit(point);
    place({hit.insertion, hit.isTrailing}, selects);
}

void Editor::drag(MbCartPoint from, MbCartPoint to) {
    click(from);
    click(to, true);
}

render::TextRange Editor::selection() const {
    const auto [begin, end] = std::minmax(m_anchor, m_caret.position);
    return {begin, end - begin};
}

CaretPlace Editor::target(Move where, double x) const {
    switch (where) {
    case Move::Left:
        return walk().step(m_caret, false);
    case Move::Right:
        return walk().step(m_caret, true);
    case Move::WordLeft:
        return walk().stepByWord(m_caret, false);
    case Move::WordRight:
        return walk().stepByWord(m_caret, true);
    case Move::Up:
        return walk().stepByLine(m_caret, -1, x);
    case Move::Down:
        return walk().stepByLine(m_caret, 1, x);
    case Move::LineStart:
        return walk().lineStart(caret().line);
    case Move::LineEnd:
        return walk().lineEnd(caret().line);
    }
    return m_caret;
}

// Where the paragraph reads to the right, the selection's end is on the right.
CaretPlace Editor::endOfSelection(bool isRight) const {
    const auto [begin, length] = selection();
    const bool isEnd = isRight == (m_options.direction == fonts::EReadingDirection::LeftToRight);
    return isEnd ? walk().behind(begin + length) : CaretPlace{begin, false};
}

void Editor::place(CaretPlace caret, bool selects) {
    m_caret = caret;
    if (!selects) {
        m_anchor = caret.position;
    }
}
