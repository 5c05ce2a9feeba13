#include "answers/HitTesting.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <limits>

#include "lines/LinePieces.h"
#include "unicode/BidiLevels.h"

namespace platform {

namespace {

/// A cluster's place on its line, from left to right.
struct ClusterBox {
    UINT32 cluster = 0;
    float left = 0.0F;
    float width = 0.0F;
    std::uint8_t level = 0;
    bool isText = true;
    bool isTrimmed = false;

    [[nodiscard]] bool isRightToLeft() const noexcept { return (level & 1) != 0; }
};

/// The clusters of a line as they stand, from left to right.
std::vector<ClusterBox> boxesOf(const TextPipeline& pipeline, std::size_t line) {
    std::vector<LinePiece> pieces;
    findPieces(pipeline, line, pieces);
    std::stable_sort(pieces.begin(), pieces.end(),
                     [](const LinePiece& a, const LinePiece& b) { return a.left < b.left; });
    std::vector<ClusterBox> boxes;
    for (const LinePiece& piece : pieces) {
        const std::size_t first = boxes.size();
        for (UINT32 i = piece.clusterBegin; i < piece.clusterEnd; ++i) {
            const bool isText = pipeline.shaped().items[piece.item].kind != ItemKind::Object;
            boxes.push_back({i, 0.0F, placedWidth(pipeline, line, i), piece.level, isText, piece.isTrimmed});
        }
        if (piece.isRightToLeft()) {
            std::reverse(boxes.begin() + static_cast<std::ptrdiff_t>(first), boxes.end());
        }
        float x = piece.left;
        for (std::size_t i = first; i < boxes.size(); ++i) {
            boxes[i].left = x;
            x += boxes[i].width;
        }
    }
    return boxes;
}

UINT32 textStartOf(const TextPipeline& pipeline, std::size_t line) {
    const ShapedText& shaped = pipeline.shaped();
    return shaped.clusters.empty() ? 0 : shaped.clusters[pipeline.lines()[line].clusterBegin].textStart;
}

/// The line at height `y`; the first above all lines, the last below.
std::size_t lineAtHeight(const TextPipeline& pipeline, float y) {
    const auto& placed = pipeline.placement().lines;
    const auto after = std::upper_bound(placed.begin(), placed.end(), y,
                                        [](float wanted, const PlacedLine& line) { return wanted < line.top; });
    return after == placed.begin() ? 0 : static_cast<std::size_t>(std::distance(placed.begin(), after)) - 1;
}

/// The line that holds `position`, which is at most the text's length.
std::size_t lineAtPosition(const TextPipeline& pipeline, UINT32 position) {
    std::size_t first = 0;
    std::size_t last = pipeline.lines().size();
    while (last - first > 1) {
        const std::size_t middle = first + (last - first) / 2;
        (textStartOf(pipeline, middle) <= position ? first : last) = middle;
    }
    return first;
}

DWRITE_HIT_TEST_METRICS lineBox(const TextPipeline& pipeline, std::size_t line) {
    DWRITE_HIT_TEST_METRICS metrics{};
    metrics.textPosition = textStartOf(pipeline, line);
    metrics.left = pipeline.placement().lines[line].left;
    metrics.top = pipeline.placement().lines[line].top;
    metrics.height = pipeline.lines()[line].height;
    metrics.bidiLevel = paragraphLevel(pipeline.settings().rightToLeft());
    metrics.isText = TRUE;
    return metrics;
}

DWRITE_HIT_TEST_METRICS describe(const TextPipeline& pipeline, std::size_t line, const ClusterBox& box) {
    DWRITE_HIT_TEST_METRICS metrics = lineBox(pipeline, line);
    metrics.textPosition = pipeline.shaped().clusters[box.cluster].textStart;
    metrics.length = pipeline.shaped().textLength(box.cluster);
    metrics.left = box.left;
    metrics.width = box.width;
    metrics.bidiLevel = box.level;
    metrics.isText = box.isText ? TRUE : FALSE;
    metrics.isTrimmed = box.isTrimmed ? TRUE : FALSE;
    return metrics;
}

/// The box nearest to `x`; boxes without width only where there are no others.
const ClusterBox& nearest(const std::vector<ClusterBox>& boxes, float x) {
    const ClusterBox* best = nullptr;
    float bestDistance = std::numeric_limits<float>::infinity();
    for (const ClusterBox& box : boxes) {
        if (box.width <= 0.0F) {
            continue;
        }
        const float distance = std::max({box.left - x, x - (box.left + box.width), 0.0F});
        if (distance < bestDistance || (distance == 0.0F && x >= box.left)) {
            best = &box;
            bestDistance = distance;
        }
    }
    return best != nullptr ? *best : boxes.front();
}

/// A caret at the end of the text.
Caret caretAtEnd(const TextPipeline& pipeline) {
    const std::size_t last = pipeline.lines().size() - 1;
    const Line& line = pipeline.lines()[last];
    Caret caret;
    if (line.clusterBegin < line.clusterEnd) {
        caret = hitTestPosition(pipeline, pipeline.text().size() - 1, true);
    } else {
        caret.metrics = lineBox(pipeline, last);
        caret.x = caret.metrics.left;
        caret.y = caret.metrics.top;
    }
    caret.metrics.left = caret.x;
    caret.metrics.width = 0.0F;
    caret.metrics.textPosition = pipeline.text().size();
    caret.metrics.length = 0;
    return caret;
}

/// Whether the box `next` to the right of `box` covers the text next to it, in the same direction.
bool continues(const DWRITE_HIT_TEST_METRICS& box, const DWRITE_HIT_TEST_METRICS& next) {
    if (box.bidiLevel != next.bidiLevel || box.isText != next.isText || box.isTrimmed != next.isTrimmed) {
        return false;
    }
    return (box.bidiLevel & 1) != 0 ? next.textPosition + next.length == box.textPosition
                                    : box.textPosition + box.length == next.textPosition;
}

void appendRange(const TextPipeline& pipeline, std::size_t line, UINT32 begin, UINT32 end,
                 std::vector<DWRITE_HIT_TEST_METRICS>& found) {
    bool canContinue = false;
    for (const ClusterBox& box : boxesOf(pipeline, line)) {
        const DWRITE_HIT_TEST_METRICS metrics = describe(pipeline, line, box);
        if (metrics.textPosition >= end || metrics.textPosition + metrics.length <= begin) {
            canContinue = false;
            continue;
        }
        if (canContinue && continues(found.back(), metrics)) {
            DWRITE_HIT_TEST_METRICS& grown = found.back();
            grown.textPosition = std::min(grown.textPosition, metrics.textPosition);
            grown.length += metrics.length;
            grown.width = metrics.left + metrics.width - grown.left;
        } else {
            found.push_back(metrics);
        }
        canContinue = true;
    }
}

} // namespace

PointHit hitTestPoint(const TextPipeline& pipeline, float x, float y) {
    const std::size_t line = lineAtHeight(pipeline, y);
    const std::vector<ClusterBox> boxes = boxesOf(pipeline, line);
    PointHit hit;
    if (boxes.empty()) {
        hit.metrics = lineBox(pipeline, line);
        return hit;
    }
    const ClusterBox& box = nearest(boxes, x);
    hit.metrics = describe(pipeline, line, box);
    const bool isInRightHalf = x >= box.left + box.width / 2.0F;
    hit.isTrailing = box.width > 0.0F && isInRightHalf != box.isRightToLeft();
    hit.isInside =
        x >= box.left && x < box.left + box.width && y >= hit.metrics.top && y < hit.metrics.top + hit.metrics.height;
    return hit;
}

Caret hitTestPosition(const TextPipeline& pipeline, UINT32 position, bool isTrailing) {
    if (position >= pipeline.text().size()) {
        return caretAtEnd(pipeline);
    }
    const std::size_t line = lineAtPosition(pipeline, position);
    const UINT32 cluster = pipeline.shaped().clusterAt(position);
    const std::vector<ClusterBox> boxes = boxesOf(pipeline, line);
    const auto box =
        std::find_if(boxes.begin(), boxes.end(), [cluster](const ClusterBox& one) { return one.cluster == cluster; });
    Caret caret;
    caret.metrics = describe(pipeline, line, *box);
    caret.x = isTrailing != box->isRightToLeft() ? box->left + box->width : box->left;
    caret.y = caret.metrics.top;
    return caret;
}

std::vector<DWRITE_HIT_TEST_METRICS> hitTestRange(const TextPipeline& pipeline, UINT32 position, UINT32 length,
                                                  float originX, float originY) {
    const UINT32 size = pipeline.text().size();
    const UINT32 begin = std::min(position, size);
    const UINT32 end = begin + std::min(length, size - begin);
    std::vector<DWRITE_HIT_TEST_METRICS> found;
    if (begin == end) {
        // An empty stretch is where a caret would stand.
        const Caret caret = hitTestPosition(pipeline, begin, false);
        found.push_back(caret.metrics);
        found.back().left = caret.x;
        found.back().width = 0.0F;
        found.back().length = 0;
    } else {
        const std::size_t last = lineAtPosition(pipeline, end - 1);
        for (std::size_t line = lineAtPosition(pipeline, begin); line <= last; ++line) {
            appendRange(pipeline, line, begin, end, found);
        }
    }
    for (DWRITE_HIT_TEST_METRICS& box : found) {
        box.left += originX;
        box.top += originY;
    }
    return found;
}

} // namespace platform
