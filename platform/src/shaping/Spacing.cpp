#include "shaping/Spacing.h"

#include <algorithm>
#include <iterator>
#include <numeric>

namespace platform {

namespace {

using Stretch = RangeProperties::Stretches::const_iterator;

bool hasSpacing(const RunStyle& style) noexcept {
    return !sameSpacing(style.spacing, CharacterSpacing());
}

/// Whether some style has spacing in the stretches from `first` on that start before `textEnd`.
bool hasSpacing(const RangeProperties& styles, Stretch first, UINT32 textEnd) noexcept {
    for (; first != styles.stretches().end() && first->first < textEnd; ++first) {
        if (hasSpacing(first->second)) {
            return true;
        }
    }
    return false;
}

/// The glyph of [begin, end) that gets the cluster's room: the last that is not a mark, which has no advance.
UINT32 roomBearer(const ShapedText& shaped, UINT32 begin, UINT32 end) noexcept {
    for (UINT32 glyph = end; glyph > begin; --glyph) {
        if (shaped.advances[glyph - 1] != 0.0F) {
            return glyph - 1;
        }
    }
    return end - 1;
}

/// How a cluster `natural` wide is spaced.
struct Spaced {
    float width = 0.0F;
    /// By how much its glyphs move in reading order.
    float shift = 0.0F;
};

Spaced space(float natural, const CharacterSpacing& spacing) noexcept {
    const float drawnIn = natural + std::min(spacing.leading, 0.0F) + std::min(spacing.trailing, 0.0F);
    const float held = std::max(drawnIn, spacing.minimumAdvance);
    const float missing = held - drawnIn;
    const float width = held + std::max(spacing.leading, 0.0F) + std::max(spacing.trailing, 0.0F);
    // A minimum takes back from the side that was drawn in, and otherwise adds to both.
    if ((spacing.leading < 0.0F) == (spacing.trailing < 0.0F)) {
        return {width, spacing.leading + missing / 2.0F};
    }
    return {width, spacing.leading < 0.0F ? spacing.leading + missing : spacing.leading};
}

void widen(const CharacterSpacing& spacing, bool isRightToLeft, UINT32 index, ShapedText& shaped) {
    Cluster& cluster = shaped.clusters[index];
    const UINT32 begin = cluster.glyphStart;
    const UINT32 end = shaped.glyphEnd(index);
    if (begin == end) {
        return;
    }
    const float natural = std::accumulate(shaped.advances.begin() + begin, shaped.advances.begin() + end, 0.0F);
    const Spaced spaced = space(natural, spacing);
    const float added = spaced.width - natural;
    const UINT32 bearer = roomBearer(shaped, begin, end);
    shaped.advances[bearer] = spaced.width - (natural - shaped.advances[bearer]);
    for (UINT32 glyph = begin; glyph < end; ++glyph) {
        // Glyphs that go to the left are drawn at the far end of their own advances, others at the near end.
        const bool isBehind = isRightToLeft ? glyph >= bearer : glyph > bearer;
        shaped.offsets[glyph].advanceOffset += isBehind ? spaced.shift - added : spaced.shift;
    }
    // A hyphen that does not show has a glyph at hand, but no width.
    if (!cluster.has(Cluster::SoftHyphen)) {
        cluster.width = spaced.width;
    }
}

} // namespace

void addSpacing(const RangeProperties& styles, std::size_t firstItem, ShapedText& shaped) {
    if (firstItem >= shaped.items.size()) {
        return;
    }
    Stretch stretch = styles.find(shaped.items[firstItem].start);
    if (!hasSpacing(styles, stretch, shaped.clusters.back().textStart)) {
        return;
    }
    for (std::size_t i = firstItem; i < shaped.items.size(); ++i) {
        const TextItem& item = shaped.items[i];
        for (UINT32 cluster = item.clusterBegin; item.kind == ItemKind::Text && cluster < item.clusterEnd; ++cluster) {
            for (Stretch next = std::next(stretch);
                 next != styles.stretches().end() && next->first <= shaped.clusters[cluster].textStart; ++next) {
                stretch = next;
            }
            if (hasSpacing(stretch->second)) {
                widen(stretch->second.spacing, item.isRightToLeft(), cluster, shaped);
            }
        }
    }
}

} // namespace platform
