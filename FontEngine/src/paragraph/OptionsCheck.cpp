#include "OptionsCheck.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <stdexcept>
#include <string>

namespace fonts {

namespace {

constexpr double steepest = 85.0;

void require(bool holds, const std::string& what, const char* allowed) {
    if (!holds) {
        throw std::invalid_argument("CParagraphLayout: " + what + " is out of its range: give " + allowed);
    }
}

void checkRunFormat(const SRunFormat& format, std::size_t token) {
    const std::string where = "runFormats[" + std::to_string(token) + "].";
    require(std::isfinite(format.widthFactor) && format.widthFactor > 0.0, where + "widthFactor", "more than 0");
    require(std::abs(format.obliqueAngle) <= steepest, where + "obliqueAngle", "-85 to 85 degrees");
    require(std::isfinite(format.tracking), where + "tracking", "a number");
    require(std::isfinite(format.baselineShift), where + "baselineShift", "a number");
    for (const SFontFeature& feature : format.features) {
        const bool isTag =
            feature.tag.size() == 4 && std::all_of(feature.tag.begin(), feature.tag.end(),
                                                   [](char letter) { return letter >= ' ' && letter <= '~'; });
        require(isTag, where + "features: tag \"" + feature.tag + "\"", "four ASCII characters");
    }
}

void checkInlineBoxes(const std::vector<SInlineBox>& boxes, std::uint64_t textLength) {
    std::uint64_t end = 0;
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        const SInlineBox& box = boxes[i];
        const std::string where = "inlineBoxes[" + std::to_string(i) + "].";
        const std::uint64_t start = box.range.startPosition;
        require(box.range.length > 0 && start >= end && start + box.range.length <= textLength, where + "range",
                "text of the paragraph, behind the box before");
        end = start + box.range.length;
        require(std::isfinite(box.width) && box.width >= 0.0, where + "width", "0 or more");
        require(std::isfinite(box.ascent), where + "ascent", "a number");
        require(std::isfinite(box.descent), where + "descent", "a number");
    }
}

} // namespace

void checkOptions(const SParagraphLayoutOptions& options, const render::CRichTextParagraph& paragraph) {
    require(std::isfinite(options.maxWidth), "maxWidth", "a width, or 0 for none");
    require(std::isfinite(options.maxHeight), "maxHeight", "a height, or 0 for none");
    require(std::isfinite(options.tabStopWidth) && options.tabStopWidth > 0.0, "tabStopWidth", "more than 0");
    require(std::isfinite(options.lineSpacing.pitch) && options.lineSpacing.pitch >= 0.0, "lineSpacing.pitch",
            "0 or more");
    require(std::isfinite(options.baselineGrid) && options.baselineGrid >= 0.0, "baselineGrid", "0 or more");
    require(options.runFormats.empty() || options.runFormats.size() == paragraph.tokens.size(), "runFormats",
            "one for each token, or none");
    for (std::size_t i = 0; i < options.runFormats.size(); ++i) {
        checkRunFormat(options.runFormats[i], i);
    }
    std::uint64_t textLength = 0;
    for (const render::SRichTextToken& token : paragraph.tokens) {
        textLength += token.text.length();
    }
    checkInlineBoxes(options.inlineBoxes, textLength);
}

} // namespace fonts
