#include "CaretWalk.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

/// What reads from right to left ends at its left edge.
CaretPlace edgeOf(const fonts::SCluster& cluster, bool isRightEdge) {
    const bool isBehind = isRightEdge != cluster.isRightToLeft;
    return {cluster.range.startPosition + (isBehind ? cluster.range.length : 0), isBehind};
}

/// A position in the cluster that the caret is attached to.
std::uint32_t attachedTo(CaretPlace place) {
    return place.position - (place.isBehindCluster ? 1 : 0);
}

} // namespace

CaretWalk::CaretWalk(const fonts::CParagraphLayout& layout, fonts::EReadingDirection direction)
    : m_layout(layout), m_isLeftToRight(direction == fonts::EReadingDirection::LeftToRight) {}

CaretPlace CaretWalk::step(CaretPlace from, bool toRight) const {
    const auto isSameBehindWrapping = [this](CaretPlace a, CaretPlace b) {
        return a.position == b.position && caret(a).line != caret(b).line;
    };
    const CaretPlace to = stepOver(from, toRight);
    const CaretPlace beyond = stepOver(to, toRight);
    // The end of a wrapped line and the beginning of the next, where they are one position, are no step apart.
    if (isSameBehindWrapping(from, to)) {
        return beyond;
    }
    const bool isForward = toRight == m_isLeftToRight;
    return isForward && isSameBehindWrapping(to, beyond) ? beyond : to;
}

CaretPlace CaretWalk::stepByWord(CaretPlace from, bool toRight) const {
    CaretPlace to = step(from, toRight);
    while (to != from && !isWordStart(to.position)) {
        from = to;
        to = step(from, toRight);
    }
    return to;
}

CaretPlace CaretWalk::stepByLine(CaretPlace from, int lines, double x) const {
    const auto line = static_cast<std::int64_t>(caret(from).line) + lines;
    if (line < 0 || line >= static_cast<std::int64_t>(m_layout.lines().size())) {
        return from;
    }
    // Lines may overlap; the bottom of each is its own.
    const fonts::SHit hit = m_layout.hit({x, m_layout.lines()[static_cast<std::size_t>(line)].bottom});
    return {hit.insertion, hit.isTrailing};
}

CaretPlace CaretWalk::lineStart(std::uint32_t line) const {
    return {m_layout.lines()[line].range.startPosition, false};
}

CaretPlace CaretWalk::lineEnd(std::uint32_t line) const {
    const fonts::SLine& found = m_layout.lines()[line];
    const std::uint32_t length = found.range.length - found.newline;
    return {found.range.startPosition + length, length > 0};
}

CaretPlace CaretWalk::behind(std::uint32_t position) const {
    return {position, position > 0 && !clusterAt(position - 1).isNewline};
}

fonts::SCaret CaretWalk::caret(CaretPlace place) const {
    return m_layout.caret(attachedTo(place), place.isBehindCluster);
}

const fonts::SCluster& CaretWalk::clusterAt(std::uint32_t position) const {
    const auto clusters = m_layout.clusters();
    const auto next = std::partition_point(clusters.begin(), clusters.end(), [=](const fonts::SCluster& cluster) {
        return cluster.range.startPosition <= position;
    });
    return *std::prev(next);
}

CaretWalk::Row CaretWalk::rowOf(std::uint32_t line) const {
    const fonts::SLine& found = m_layout.lines()[line];
    Row row;
    for (const fonts::SCluster& cluster : m_layout.clusters().subspan(found.firstCluster, found.clusterCount)) {
        if (!cluster.isNewline) {
            row.push_back(&cluster);
        }
    }
    // What has no width stands before what begins at the same place.
    std::stable_sort(row.begin(), row.end(), [](const fonts::SCluster* a, const fonts::SCluster* b) {
        return std::pair(a->rect.xmin, a->rect.xmax) < std::pair(b->rect.xmin, b->rect.xmax);
    });
    return row;
}

// How many clusters of the row stand left of the caret.
std::size_t CaretWalk::gapOf(CaretPlace place, const Row& row) const {
    const std::uint32_t attached = attachedTo(place);
    for (std::size_t i = 0; i < row.size(); ++i) {
        const render::TextRange range = row[i]->range;
        if (attached >= range.startPosition && attached - range.startPosition < range.length) {
            return i + (place.isBehindCluster != row[i]->isRightToLeft ? 1 : 0);
        }
    }
    // Before the newline.
    return m_isLeftToRight ? row.size() : 0;
}

CaretPlace CaretWalk::endOfRow(std::uint32_t line, bool isRightEnd) const {
    const Row row = rowOf(line);
    if (row.empty()) {
        return lineStart(line);
    }
    return edgeOf(isRightEnd ? *row.back() : *row.front(), isRightEnd);
}

CaretPlace CaretWalk::stepOver(CaretPlace from, bool toRight) const {
    const std::uint32_t line = caret(from).line;
    const Row row = rowOf(line);
    const std::size_t gap = gapOf(from, row);
    if (gap != (toRight ? row.size() : 0)) {
        return edgeOf(*row[toRight ? gap : gap - 1], toRight);
    }
    if (toRight == m_isLeftToRight) {
        return line + 1 < m_layout.lines().size() ? endOfRow(line + 1, !toRight) : from;
    }
    return line > 0 ? endOfRow(line - 1, !toRight) : from;
}

bool CaretWalk::isWordStart(std::uint32_t position) const {
    if (position == 0 || position == m_layout.text().length()) {
        return true;
    }
    const fonts::SCluster& before = clusterAt(position - 1);
    return !clusterAt(position).isBlank && (before.isBlank || before.canBreakAfter);
}
