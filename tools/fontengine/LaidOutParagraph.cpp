#include "LaidOutParagraph.h"

namespace tool {

MbRect LaidOutParagraph::toText(const MbRect& rect) const {
    if (rect.isEmpty()) {
        return {};
    }
    const MbCartPoint low = toText(MbCartPoint{rect.xmin, rect.ymin});
    const MbCartPoint high = toText(MbCartPoint{rect.xmax, rect.ymax});
    return {low.x, low.y, high.x, high.y};
}

std::vector<double> LaidOutParagraph::baselines() const {
    std::vector<double> baselines = baselinesOf(layout);
    for (double& baseline : baselines) {
        baseline = origin.y + factor * baseline;
    }
    return baselines;
}

std::vector<double> baselinesOf(const fonts::CParagraphLayout& layout) {
    std::vector<double> baselines;
    for (const fonts::SLine& line : layout.lines()) {
        if (line.range.length > 0) {
            baselines.push_back(line.baseline);
        }
    }
    return baselines;
}

} // namespace tool
