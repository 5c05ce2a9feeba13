#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <mtext/Diagnostics.h>
#include <nlohmann/json_fwd.hpp>

#include "TextDocument.h"
#include "TextLayout.h"

namespace tool {

// One kind of code that the library could not express, with the text where it was
// met first.
struct IgnoredCode {
    mtext::DiagnosticCode code = mtext::DiagnosticCode::UnknownCode;
    std::size_t count = 0;
    std::wstring example;
    std::uint64_t line = 0;
};

// A character that no installed font has, with the text where it was met first.
struct MissingCharacter {
    char32_t character = 0;
    std::size_t count = 0;
    std::uint64_t line = 0;
};

// What a person should know of the texts of a drawing that were laid out: the same
// for every command.
class TextNotes {
public:
    // Takes what one text could not show, and the line of the drawing where it begins.
    void add(const std::vector<mtext::Diagnostic>& diagnostics, const std::vector<fonts::SMissingCharacter>& missing,
             std::uint64_t line);

    [[nodiscard]] const std::vector<IgnoredCode>& ignored() const { return m_ignored; }
    [[nodiscard]] const std::vector<MissingCharacter>& missing() const { return m_missing; }
    [[nodiscard]] std::size_t missingCount() const;

private:
    std::vector<IgnoredCode> m_ignored;      // one per kind of code
    std::vector<MissingCharacter> m_missing; // one per character
};

// What the content of a text asks for and its layout does not have: the reader of
// contents cannot know what lines and paragraphs become. None for a text that shows
// nothing.
std::vector<mtext::Diagnostic> unmetDiagnostics(const TextDocument& document, const LaidOutText& text);

// The characters of a text that no installed font has, paragraph by paragraph.
std::vector<fonts::SMissingCharacter> missingCharacters(const LaidOutText& text);

// Whether a text leaves nothing on paper.
bool showsNothing(const LaidOutText& text);

// Says the notes on standard output, indented below the drawing's name.
void report(const TextNotes& notes);

// Adds the notes to a drawing's or a command's JSON: "missingGlyphs" (how many),
// "missingCharacters" and "ignoredCodes".
void addNotes(nlohmann::ordered_json& json, const TextNotes& notes);

} // namespace tool
