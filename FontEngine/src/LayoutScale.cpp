#include <FontEngine/LayoutScale.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace fonts {

namespace {

float times(float length, double factor) {
    return static_cast<float>(static_cast<double>(length) * factor);
}

} // namespace

double layoutScale(double capSize) noexcept {
    // 2^6 = 64. The reach keeps the enlarged sizes, and the factor itself, well inside single precision.
    constexpr int layoutExponent = 6;
    constexpr int reach = 96;
    if (capSize == 0.0 || !std::isfinite(capSize))
        return 1.0;
    return std::ldexp(1.0, layoutExponent - std::clamp(std::ilogb(capSize), -reach, reach));
}

render::CRichTextDocument scaledDocument(const render::CRichTextDocument& document, double factor) {
    std::vector<render::CRichTextParagraph> paragraphs;
    paragraphs.reserve(document.paragraphs.size());
    const auto count = static_cast<std::int32_t>(document.paragraphs.size());
    for (std::int32_t i = 0; i < count; ++i) {
        render::CRichTextParagraph& paragraph = paragraphs.emplace_back(document.paragraphs.at(i));
        for (render::SRichTextToken& token : paragraph.tokens)
            token.fontCapSize = times(token.fontCapSize, factor);
    }
    render::CRichTextDocument scaled = render::makeDocument(std::move(paragraphs));
    scaled.name = document.name;
    scaled.id = document.id;
    scaled.tabStopWidth = times(document.tabStopWidth, factor);
    return scaled;
}

} // namespace fonts
