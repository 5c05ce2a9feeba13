#include "TextNotes.h"

#include <algorithm>
#include <iostream>
#include <sstream>

#include <nlohmann/json.hpp>

#include <Common/Utf.h>

namespace tool {

namespace {

constexpr std::size_t mostNamed = 5;

std::string codePointName(char32_t character) {
    std::ostringstream name;
    name << "U+" << std::uppercase << std::hex;
    name.width(4);
    name.fill('0');
    name << static_cast<std::uint32_t>(character);
    return name.str();
}

std::string utf8FromCodePoint(char32_t character) {
    constexpr char32_t firstAstral = 0x10000;
    std::wstring units;
    if (character >= firstAstral) {
        const char32_t above = character - firstAstral;
        units += static_cast<wchar_t>(0xD800 + (above >> 10));
        units += static_cast<wchar_t>(0xDC00 + (above & 0x3FF));
    } else {
        units += static_cast<wchar_t>(character);
    }
    return common::utf8FromWide(units);
}

// A terminal would obey control characters, and a lone surrogate is none.
bool isPrintable(char32_t character) {
    const bool control = character < 0x20 || (character >= 0x7F && character < 0xA0);
    const bool surrogate = (character & 0xFFFFF800U) == 0xD800;
    return !control && !surrogate;
}

// U+E000 "<the character>" (2, first in the text at line 12)
std::string described(const MissingCharacter& missing) {
    std::string text = codePointName(missing.character);
    if (isPrintable(missing.character)) {
        text += " \"" + utf8FromCodePoint(missing.character) + '"';
    }
    return text + " (" + std::to_string(missing.count) + ", first in the text at line " + std::to_string(missing.line) +
           ')';
}

void reportMissing(const TextNotes& notes) {
    if (notes.missing().empty()) {
        return;
    }
    std::cout << "  " << notes.missingCount() << " characters are in no installed font and are shown as boxes: ";
    const std::size_t named = std::min(notes.missing().size(), mostNamed);
    for (std::size_t i = 0; i < named; ++i) {
        std::cout << (i > 0 ? ", " : "") << described(notes.missing()[i]);
    }
    if (notes.missing().size() > named) {
        std::cout << " and " << notes.missing().size() - named << " other ones";
    }
    std::cout << '\n';
}

bool isExpressed(mtext::DiagnosticCode code, const LaidOutText& text) {
    switch (code) {
    case mtext::DiagnosticCode::ParagraphIndent:
        return text.indentsExpressed;
    case mtext::DiagnosticCode::ParagraphSpacing:
        return text.spacingExpressed;
    case mtext::DiagnosticCode::InlineAlignment: // Shows where a line holds text of different heights.
        return std::none_of(text.paragraphs.begin(), text.paragraphs.end(),
                            [](const LaidOutParagraph& paragraph) { return paragraph.mixesHeights; });
    default:
        return false;
    }
}

} // namespace

void TextNotes::add(const std::vector<mtext::Diagnostic>& diagnostics,
                    const std::vector<fonts::SMissingCharacter>& missing, std::uint64_t line) {
    for (const mtext::Diagnostic& diagnostic : diagnostics) {
        auto known = std::find_if(m_ignored.begin(), m_ignored.end(),
                                  [&](const IgnoredCode& other) { return other.code == diagnostic.code; });
        if (known == m_ignored.end()) {
            known = m_ignored.insert(m_ignored.end(), {diagnostic.code, 0, diagnostic.text, line});
        }
        ++known->count;
    }
    for (const fonts::SMissingCharacter& one : missing) {
        auto known = std::find_if(m_missing.begin(), m_missing.end(),
                                  [&](const MissingCharacter& other) { return other.character == one.character; });
        if (known == m_missing.end()) {
            known = m_missing.insert(m_missing.end(), {one.character, 0, line});
        }
        known->count += one.count;
    }
}

std::size_t TextNotes::missingCount() const {
    std::size_t count = 0;
    for (const MissingCharacter& missing : m_missing) {
        count += missing.count;
    }
    return count;
}

std::vector<mtext::Diagnostic> unmetDiagnostics(const TextDocument& document, const LaidOutText& text) {
    if (showsNothing(text)) {
        return {};
    }
    std::vector<mtext::Diagnostic> diagnostics = document.diagnostics;
    std::erase_if(diagnostics,
                  [&text](const mtext::Diagnostic& diagnostic) { return isExpressed(diagnostic.code, text); });
    return diagnostics;
}

std::vector<fonts::SMissingCharacter> missingCharacters(const LaidOutText& text) {
    std::vector<fonts::SMissingCharacter> missing;
    for (const LaidOutParagraph& paragraph : text.paragraphs) {
        const auto characters = paragraph.layout.missing();
        missing.insert(missing.end(), characters.begin(), characters.end());
    }
    return missing;
}

bool showsNothing(const LaidOutText& text) {
    return text.ink.isEmpty() && std::all_of(text.paragraphs.begin(), text.paragraphs.end(),
                                             [](const LaidOutParagraph& p) { return p.layout.bars().empty(); });
}

void report(const TextNotes& notes) {
    reportMissing(notes);
    for (const IgnoredCode& ignored : notes.ignored()) {
        std::cout << "  " << ignored.count << " x " << mtext::diagnosticDescription(ignored.code)
                  << " (first: " << common::utf8FromWide(ignored.example) << " in the text at line " << ignored.line
                  << ")\n";
    }
}

void addNotes(nlohmann::ordered_json& json, const TextNotes& notes) {
    using Json = nlohmann::ordered_json;
    json["missingGlyphs"] = notes.missingCount();
    json["missingCharacters"] = Json::array();
    for (const MissingCharacter& missing : notes.missing()) {
        json["missingCharacters"].push_back({{"codePoint", codePointName(missing.character)},
                                             {"character", utf8FromCodePoint(missing.character)},
                                             {"count", missing.count},
                                             {"line", missing.line}});
    }
    json["ignoredCodes"] = Json::array();
    for (const IgnoredCode& ignored : notes.ignored()) {
        json["ignoredCodes"].push_back({{"code", mtext::diagnosticName(ignored.code)},
                                        {"description", mtext::diagnosticDescription(ignored.code)},
                                        {"count", ignored.count},
                                        {"example", common::utf8FromWide(ignored.example)},
                                        {"line", ignored.line}});
    }
}

} // namespace tool
