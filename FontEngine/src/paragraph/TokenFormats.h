#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <FontEngine/ParagraphLayoutOptions.h>
#include <render/RichTextDocument.h>

namespace fonts {

// Where each token's text stands, and how it is to be set beside what the token says. Paragraph and options are
// borrowed.
class CTokenFormats {
public:
    CTokenFormats(const render::CRichTextParagraph& paragraph, const SParagraphLayoutOptions& options);

    // The token that holds the position; the last one from the end of the text on.
    std::uint32_t tokenAt(std::uint32_t position) const;
    render::TextRange range(std::uint32_t token) const;
    const SRunFormat& format(std::uint32_t token) const;
    std::uint32_t count() const { return static_cast<std::uint32_t>(m_ends.size()); }

    // What all tokens are stretched by alike: then the whole result is, after it was laid out in a box that is narrower
    // by the factor. 1 where they differ: then each cluster is widened by itself.
    double commonFactor() const { return m_commonFactor; }
    // What of a token's width factor is not common.
    double ownFactor(std::uint32_t token) const;
    bool hasOwnFactors() const { return m_hasOwnFactors; }

private:
    std::vector<std::uint32_t> m_ends;
    const std::vector<SRunFormat>& m_formats;
    double m_commonFactor = 1.0;
    bool m_hasOwnFactors = false;
};

std::wstring textOf(const render::CRichTextParagraph& paragraph);

} // namespace fonts
