#pragma once

#include <string_view>

#include "format/RangeProperties.h"
#include "shaping/ShapedText.h"

namespace platform {

/// The clusters of a shaped text as lines take them off its front.
///
/// A break can change the shapes on both of its sides. The first time that happens, the lines move over to a copy of
/// the text, which from then on gets the clusters of each line as it ends; the changed start of what follows is kept
/// until a line takes it.
class ClusterStream {
public:
    /// `copy` must be empty.
    ClusterStream(std::u16string_view text, const RangeProperties& styles, ShapedText& original,
                  ShapedText& copy) noexcept
        : m_text(text), m_styles(styles), m_original(original), m_copy(copy) {}

    /// How many clusters are left. They are counted from the next line's start.
    [[nodiscard]] UINT32 size() const noexcept {
        return m_head.clusterCount() - m_headTaken + m_original.clusterCount() - m_taken;
    }
    [[nodiscard]] Cluster& at(UINT32 index) noexcept {
        const UINT32 headLeft = m_head.clusterCount() - m_headTaken;
        return index < headLeft ? m_head.clusters[m_headTaken + index]
                                : m_original.clusters[m_taken + index - headLeft];
    }
    /// The advance of the cluster's only glyph; 0 if it has none.
    [[nodiscard]] float glyphAdvance(UINT32 index) const noexcept;

    /// Whether the clusters before `end` have other shapes at the end of a line.
    [[nodiscard]] bool changesShapes(UINT32 end) noexcept { return end < size() && at(end).has(Cluster::UnsafeBefore); }

    /// The width of the clusters before `end`, from `begin` on, as they are at the end of a line, without whitespace
    /// there; `begin` is set to the first of them that changes.
    float reshapedWidth(UINT32 end, UINT32& begin);

    /// Ends a line before `end`: its clusters are [first, second) of taken().
    struct Taken {
        UINT32 begin = 0;
        UINT32 end = 0;
    };
    Taken take(UINT32 end);

    /// The text whose clusters the lines so far are counted in.
    [[nodiscard]] ShapedText& taken() noexcept { return m_isCopying ? m_copy : m_original; }

private:
    void appendTo(ShapedText& target, UINT32 begin, UINT32 end) const;
    /// The item of a cluster, as it was shaped at first.
    [[nodiscard]] const TextItem& itemOf(UINT32 index) const noexcept;
    [[nodiscard]] UINT32 changeBegin(UINT32 end) noexcept;

    std::u16string_view m_text;
    const RangeProperties& m_styles;
    ShapedText& m_original;
    ShapedText& m_copy;
    bool m_isCopying = false;
    /// What comes before the original's clusters.
    ShapedText m_head;
    UINT32 m_headTaken = 0;
    UINT32 m_taken = 0;
};

} // namespace platform
