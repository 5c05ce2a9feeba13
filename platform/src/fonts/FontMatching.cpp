#include "fonts/FontMatching.h"

#include <algorithm>

namespace platform {

namespace {

std::uint32_t stretchDistance(int wanted, int has) {
    constexpr int farSide = 10;
    const bool narrowFirst = wanted <= DWRITE_FONT_STRETCH_NORMAL;
    const int toTheNearSide = narrowFirst ? wanted - has : has - wanted;
    return static_cast<std::uint32_t>(toTheNearSide >= 0 ? toTheNearSide : farSide - toTheNearSide);
}

std::uint32_t styleDistance(DWRITE_FONT_STYLE wanted, DWRITE_FONT_STYLE has) {
    // Rows: wanted; columns: has; both normal, oblique, italic.
    constexpr std::uint32_t distances[3][3] = {{0, 1, 2}, {2, 0, 1}, {2, 1, 0}};
    return distances[wanted][has];
}

std::uint32_t weightDistance(int wanted, int has) {
    constexpr int secondChoice = 1000;
    constexpr int thirdChoice = 2000;
    const int heavier = has - wanted;
    int distance = 0;
    if (wanted < 400) {
        distance = heavier <= 0 ? -heavier : secondChoice + heavier;
    } else if (wanted > 500) {
        distance = heavier >= 0 ? heavier : secondChoice - heavier;
    } else if (has >= wanted && has <= 500) {
        distance = heavier;
    } else {
        distance = heavier < 0 ? secondChoice - heavier : thirdChoice + heavier;
    }
    return static_cast<std::uint32_t>(distance);
}

} // namespace

FaceTraits normalizedRequest(DWRITE_FONT_WEIGHT weight, DWRITE_FONT_STRETCH stretch, DWRITE_FONT_STYLE style) {
    const int width = static_cast<int>(stretch);
    const int slope = static_cast<int>(style);
    FaceTraits request;
    request.weight = static_cast<DWRITE_FONT_WEIGHT>(std::clamp(static_cast<int>(weight), 1, 999));
    request.stretch = width < 1 ? DWRITE_FONT_STRETCH_NORMAL : static_cast<DWRITE_FONT_STRETCH>(std::min(width, 9));
    request.style = slope < 0 || slope > DWRITE_FONT_STYLE_ITALIC ? DWRITE_FONT_STYLE_NORMAL : style;
    return request;
}

std::uint32_t matchDistance(const FaceTraits& request, const FaceTraits& font) {
    return stretchDistance(request.stretch, font.stretch) << 16 | styleDistance(request.style, font.style) << 12 |
           weightDistance(request.weight, font.weight);
}

} // namespace platform
