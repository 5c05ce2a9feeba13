// Where text is inserted, what a point hits, what a selection covers: all read off the clusters.

#include <algorithm>
#include <limits>

#include "LayoutData.h"

namespace fonts {

namespace {

SCaret caretAt(const SLine& line, std::uint32_t lineIndex, double x, bool isRightToLeft) {
    return {lineIndex, x, line.bottom, line.top, isRightToLeft};
}

// Before the first cluster of a line that has none.
SCaret caretInEmptyLine(const SParagraphLayoutData& data, std::uint32_t line) {
    return caretAt(data.lines[line], line, data.lines[line].left, data.direction == EReadingDirection::RightToLeft);
}

// A point left of text that reads from right to left lies behind it.
double edgeOf(const SCluster& cluster, bool isTrailing) {
    return cluster.isRightToLeft == isTrailing ? cluster.rect.xmin : cluster.rect.xmax;
}

double distanceTo(const SCluster& cluster, double x) {
    return std::max({cluster.rect.xmin - x, x - cluster.rect.xmax, 0.0});
}

std::uint32_t lineAt(const std::vector<SLine>& lines, double y) {
    std::uint32_t line = 0;
    while (line + 1 < lines.size() && y < lines[line].bottom) {
        ++line;
    }
    return line;
}

std::size_t clusterAt(const std::vector<SCluster>& clusters, std::uint32_t position) {
    const auto behind = std::partition_point(clusters.begin(), clusters.end(), [position](const SCluster& cluster) {
        return cluster.range.startPosition <= position;
    });
    return static_cast<std::size_t>(behind - clusters.begin()) - 1;
}

} // namespace

SCaret CParagraphLayout::caret(std::uint32_t position, bool isTrailing) const {
    const SParagraphLayoutData& data = *m_data;
    if (data.lines.empty()) {
        return {};
    }
    const auto lastLine = static_cast<std::uint32_t>(data.lines.size() - 1);
    if (data.clusters.empty()) {
        return caretInEmptyLine(data, lastLine);
    }
    if (position >= data.text.length()) {
        if (data.lines.back().clusterCount == 0) {
            return caretInEmptyLine(data, lastLine);
        }
        isTrailing = true;
    }
    const SCluster& cluster = data.clusters[clusterAt(data.clusters, position)];
    return caretAt(data.lines[cluster.line], cluster.line, edgeOf(cluster, isTrailing), cluster.isRightToLeft);
}

SHit CParagraphLayout::hit(MbCartPoint point) const {
    const SParagraphLayoutData& data = *m_data;
    SHit hit;
    if (data.lines.empty()) {
        return hit;
    }
    const SLine& line = data.lines[lineAt(data.lines, point.y)];
    if (line.clusterCount == 0) {
        hit.position = line.range.startPosition;
        hit.insertion = hit.position;
        return hit;
    }
    const SCluster* nearest = nullptr;
    double nearestDistance = std::numeric_limits<double>::infinity();
    for (std::uint32_t i = 0; i < line.clusterCount; ++i) {
        const SCluster& cluster = data.clusters[line.firstCluster + i];
        const double distance = distanceTo(cluster, point.x);
        // Beside others at the same place, what has a width is hit.
        const bool isWider = nearest != nullptr && distance == nearestDistance &&
                             nearest->rect.xmax == nearest->rect.xmin && cluster.rect.xmax > cluster.rect.xmin;
        if (nearest == nullptr || distance < nearestDistance || isWider) {
            nearest = &cluster;
            nearestDistance = distance;
        }
    }
    const bool isRightHalf = point.x >= nearest->rect.xmin + (nearest->rect.xmax - nearest->rect.xmin) / 2.0;
    hit.position = nearest->range.startPosition;
    hit.isTrailing = !nearest->isNewline && isRightHalf != nearest->isRightToLeft;
    hit.isInside = nearestDistance == 0.0 && point.y <= nearest->rect.ymax && point.y >= nearest->rect.ymin;
    hit.insertion = hit.position + (hit.isTrailing ? nearest->range.length : 0);
    return hit;
}

std::vector<MbRect> CParagraphLayout::rectsOf(render::TextRange range) const {
    const SParagraphLayoutData& data = *m_data;
    std::vector<MbRect> result;
    const std::uint64_t end = static_cast<std::uint64_t>(range.startPosition) + range.length;
    std::size_t next = data.clusters.empty() || range.length == 0 || range.startPosition >= data.text.length()
                           ? data.clusters.size()
                           : clusterAt(data.clusters, range.startPosition);
    std::vector<MbRect> inLine;
    while (next < data.clusters.size() && data.clusters[next].range.startPosition < end) {
        const std::uint32_t line = data.clusters[next].line;
        inLine.clear();
        for (; next < data.clusters.size() && data.clusters[next].line == line &&
               data.clusters[next].range.startPosition < end;
             ++next) {
            inLine.push_back(data.clusters[next].rect);
        }
        std::stable_sort(inLine.begin(), inLine.end(),
                         [](const MbRect& a, const MbRect& b) { return a.xmin < b.xmin; });
        // Sums of advances that ought to meet differ by as much as they were rounded.
        const double slack = (data.lines[line].top - data.lines[line].bottom) * 1e-4;
        const std::size_t firstOfLine = result.size();
        for (const MbRect& rect : inLine) {
            if (result.size() > firstOfLine && rect.xmin <= result.back().xmax + slack) {
                result.back().xmax = std::max(result.back().xmax, rect.xmax);
            } else {
                result.push_back(rect);
            }
        }
    }
    return result;
}

} // namespace fonts
