#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "ContentCursor.h"
#include "DocumentBuilder.h"
#include "SpecialCharacters.h"
#include "UnmetCodes.h"
#include <mtext/MText.h>

namespace mtext {

/// What the readers of both kinds of content have in common: the place, the
/// style that holds there, and how characters get into the document.
class TextReader {
public:
    virtual ~TextReader() = default;
    TextReader(const TextReader&) = delete;
    TextReader& operator=(const TextReader&) = delete;

protected:
    /// What the end of a group restores.
    struct State {
        TextStyle style;
        unsigned codePage = 0;
        bool shapeFont = false;
        CharacterCodes codes;
        std::uint32_t paragraph = 0;
    };

    TextReader(std::wstring_view content, const Defaults& defaults);

    /// A line break among the characters, however it was written.
    virtual void onLineBreak() = 0;

    /// Reports the content from `start` to the current place.
    void report(DiagnosticCode code, std::size_t start);
    void report(DiagnosticCode code, std::size_t start, std::size_t length);

    /// Adds text whose code began at `start`, control characters among it.
    void appendText(std::wstring_view text, std::size_t start);

    /// Adds the character, or does what the switch says, that several units at
    /// the current place stand for. False, and nothing done, if none does.
    bool readSpecial();

    /// Adds the units up to the next of `stops` or the next control character;
    /// there is at least one.
    void readPlainText(std::wstring_view stops);

    void setOverline(bool on, std::size_t start);
    void setStrikethrough(bool on, std::size_t start);

    /// The code from `start` to the current place sets a property that the document
    /// has no room for; not `unmet`: to what text has anyway.
    void hold(CharacterProperty property, bool unmet, DiagnosticCode code, std::size_t start);

    /// Adds text to the current paragraph as it is.
    void append(std::wstring_view text);

    /// Ends the last paragraph and gives everything that was read.
    Result finish();

    CharacterContext characterContext() const { return {m_defaults.decodeBytes, m_state.codePage, m_state.shapeFont}; }

    const Defaults& m_defaults;
    std::wstring_view m_content;
    ContentCursor m_cursor;
    DocumentBuilder m_builder;
    State m_state;
    UnmetCodes m_unmet;
    std::vector<Diagnostic> m_diagnostics;
};

} // namespace mtext
