#include "TextHeights.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>

namespace tool {

namespace {

bool areSameHeight(double a, double b) {
    constexpr double sameHeight = 1e-3; // the reader of contents takes no smaller difference for one
    return std::abs(a - b) <= sameHeight * std::max(a, b);
}

} // namespace

bool differInHeight(const render::CRichTextParagraph& paragraph) {
    return std::any_of(paragraph.tokens.begin(), paragraph.tokens.end(),
                       [&paragraph](const render::SRichTextToken& token) {
                           return token.fontCapSize != paragraph.tokens.front().fontCapSize;
                       });
}

double firstCapSize(const render::CRichTextParagraph& paragraph, const fonts::CParagraphLayout& layout) {
    double tallest = 0.0;
    const std::size_t end = layout.lines().empty() ? 0 : layout.lines().front().range.length;
    std::size_t position = 0;
    for (const render::SRichTextToken& token : paragraph.tokens) {
        if (position >= end) {
            break;
        }
        if (!token.text.empty()) {
            tallest = std::max(tallest, static_cast<double>(token.fontCapSize));
        }
        position += token.text.size();
    }
    return tallest;
}

bool mixesHeights(const render::CRichTextParagraph& paragraph, const fonts::CParagraphLayout& layout) {
    std::optional<std::uint32_t> line; // of the last run with ink
    double height = 0.0;               // of the first such run there
    for (const fonts::SRun& run : layout.runs()) {
        if (run.ink.isEmpty()) {
            continue;
        }
        const auto capSize = static_cast<double>(paragraph.tokens.at(run.token).fontCapSize);
        if (line == run.line && !areSameHeight(height, capSize)) {
            return true;
        }
        if (line != run.line) {
            line = run.line;
            height = capSize;
        }
    }
    return false;
}

} // namespace tool
