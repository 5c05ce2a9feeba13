#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <mtext/MText.h>

namespace mtext::testing {

/// A style whose every value differs from a default-constructed one.
inline Defaults sampleDefaults() {
    Defaults defaults;
    defaults.fontFamily = L"Style Font";
    defaults.capSize = 2.5F;
    defaults.color = 0xFF112233;
    defaults.foreground = 0xFF445566;
    return defaults;
}

inline std::vector<render::CRichTextParagraph> paragraphs(const Result& result) {
    std::vector<render::CRichTextParagraph> list;
    for (int i = 0; i < static_cast<int>(result.document.paragraphs.size()); ++i) {
        list.push_back(result.document.paragraphs.at(i));
    }
    return list;
}

/// All tokens of all paragraphs.
inline std::vector<render::SRichTextToken> tokens(const Result& result) {
    std::vector<render::SRichTextToken> list;
    for (const render::CRichTextParagraph& paragraph : paragraphs(result)) {
        list.insert(list.end(), paragraph.tokens.begin(), paragraph.tokens.end());
    }
    return list;
}

inline std::vector<DiagnosticCode> codes(const Result& result) {
    std::vector<DiagnosticCode> list;
    for (const Diagnostic& diagnostic : result.diagnostics) {
        list.push_back(diagnostic.code);
    }
    return list;
}

inline std::wstring visible(std::wstring_view content, const Defaults& defaults = sampleDefaults()) {
    return plainText(parse(content, defaults).document);
}

/// A content, what a reader sees of it, and what is reported, in order.
struct ReadingCase {
    std::wstring_view content;
    std::wstring_view text;
    std::vector<DiagnosticCode> diagnostics;
};

} // namespace mtext::testing
