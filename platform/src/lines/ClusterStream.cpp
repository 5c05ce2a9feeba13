#include "lines/ClusterStream.h"

#include <algorithm>
#include <utility>

#include "shaping/ClusterBuilder.h"

namespace platform {

namespace {

/// Shapes seldom depend on each other over more than a word. Where they seem to, breaking stays linear all the same.
constexpr UINT32 maxChange = 256;

} // namespace

float ClusterStream::glyphAdvance(UINT32 index) const noexcept {
    const UINT32 headLeft = m_head.clusterCount() - m_headTaken;
    const bool isInHead = index < headLeft;
    const ShapedText& text = isInHead ? m_head : m_original;
    const UINT32 cluster = isInHead ? m_headTaken + index : m_taken + index - headLeft;
    const UINT32 glyph = text.clusters[cluster].glyphStart;
    return glyph < text.glyphEnd(cluster) ? text.advances[glyph] : 0.0F;
}

const TextItem& ClusterStream::itemOf(UINT32 index) const noexcept {
    const UINT32 headLeft = m_head.clusterCount() - m_headTaken;
    if (index < headLeft) {
        return m_head.items[m_head.itemOf(m_headTaken + index)];
    }
    return m_original.items[m_original.itemOf(m_taken + index - headLeft)];
}

UINT32 ClusterStream::changeBegin(UINT32 end) noexcept {
    UINT32 begin = end - 1;
    while (begin > 0 && end - begin < maxChange && at(begin).has(Cluster::UnsafeBefore)) {
        --begin;
    }
    return begin;
}

float ClusterStream::reshapedWidth(UINT32 end, UINT32& begin) {
    begin = changeBegin(end);
    ShapedText tail;
    appendPart(m_text, m_styles, itemOf(begin), at(begin).textStart, at(end).textStart, tail);
    UINT32 count = tail.clusterCount();
    while (count > 0 && tail.clusters[count - 1].has(Cluster::Hanging)) {
        --count;
    }
    float width = 0.0F;
    for (UINT32 i = 0; i < count; ++i) {
        width += tail.clusters[i].width;
    }
    return width;
}

void ClusterStream::appendTo(ShapedText& target, UINT32 begin, UINT32 end) const {
    const UINT32 headLeft = m_head.clusterCount() - m_headTaken;
    const UINT32 headBegin = std::min(begin, headLeft);
    const UINT32 headEnd = std::min(end, headLeft);
    target.append(m_head, m_headTaken + headBegin, m_headTaken + headEnd);
    target.append(m_original, m_taken + (std::max(begin, headLeft) - headLeft),
                  m_taken + (std::max(end, headLeft) - headLeft));
}

ClusterStream::Taken ClusterStream::take(UINT32 end) {
    if (!changesShapes(end) && !m_isCopying) {
        const UINT32 begin = m_taken;
        m_taken += end;
        return {begin, m_taken};
    }
    if (!m_isCopying) {
        m_copy.reserveLike(m_original);
        m_copy.append(m_original, 0, m_taken);
        m_isCopying = true;
    }
    const UINT32 begin = m_copy.clusterCount();
    if (!changesShapes(end)) {
        appendTo(m_copy, 0, end);
        const UINT32 fromHead = std::min(end, m_head.clusterCount() - m_headTaken);
        m_headTaken += fromHead;
        m_taken += end - fromHead;
        return {begin, m_copy.clusterCount()};
    }
    // Both sides of the break, from the last safe place before it to the first one behind, are shaped anew.
    const UINT32 changed = changeBegin(end);
    UINT32 safe = end + 1;
    while (safe < size() && safe - end < maxChange && at(safe).has(Cluster::UnsafeBefore)) {
        ++safe;
    }
    const TextItem& before = itemOf(changed);
    const TextItem& after = itemOf(end);
    const UINT32 breakPosition = at(end).textStart;
    const UINT32 afterEnd = safe < size() ? at(safe).textStart : static_cast<UINT32>(m_text.size());
    appendTo(m_copy, 0, changed);
    appendPart(m_text, m_styles, before, at(changed).textStart, breakPosition, m_copy);
    ShapedText head;
    appendPart(m_text, m_styles, after, breakPosition, afterEnd, head);
    const UINT32 headLeft = m_head.clusterCount() - m_headTaken;
    if (safe < headLeft) {
        head.append(m_head, m_headTaken + safe, m_head.clusterCount());
    } else {
        m_taken += safe - headLeft;
    }
    m_head = std::move(head);
    m_headTaken = 0;
    return {begin, m_copy.clusterCount()};
}

} // namespace platform
