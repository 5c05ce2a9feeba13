#include "BlockContents.h"
#include <dxf/CodePage.h>
#include <dxf/Placement.h>

#include <Common/Utf.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace dxf {
namespace {

constexpr int byBlock = 0;
constexpr int byLayer = 256;
constexpr int defaultColor = 7;

double degreesOf(const Point& direction) {
    return std::atan2(direction.y, direction.x) * 180.0 / std::numbers::pi;
}

/// Blocks that are no blocks but the sheets themselves: their contents are the drawing's own.
bool isLayoutBlock(const std::wstring& foldedName) {
    const std::wstring_view name = foldedName;
    return name.starts_with(L"*model_space") || name.starts_with(L"*paper_space") || name == L"$model_space" ||
           name == L"$paper_space";
}

Transform paragraphFrame(const TextEntity& text) {
    const Transform plane = Transform::fromExtrusion(text.extrusion);
    const Point fallback = (plane * Transform::rotation(text.rotation)).xAxis;
    Transform frame;
    frame.zAxis = plane.zAxis;
    // A direction out of the text's plane counts as its shadow there.
    const Point direction = text.direction.value_or(fallback);
    const Point inPlane = direction - plane.zAxis * dot(direction, plane.zAxis);
    frame.xAxis = normalized(inPlane, fallback);
    frame.yAxis = cross(frame.zAxis, frame.xAxis);
    frame.origin = text.insertion;
    return frame;
}

bool isBetweenPoints(const TextEntity& text) {
    return text.alignmentPoint &&
           (text.horizontal == HorizontalJustification::Aligned || text.horizontal == HorizontalJustification::Fit);
}

Transform lineFrame(const TextEntity& text) {
    const bool between = isBetweenPoints(text);
    const bool atFirst = between || (text.horizontal == HorizontalJustification::Left &&
                                     text.vertical == VerticalJustification::Baseline);
    const Point anchor = atFirst ? text.insertion : text.alignmentPoint.value_or(text.insertion);
    const double degrees = between ? degreesOf(*text.alignmentPoint - text.insertion) : text.rotation;
    const Point flip{text.backward ? -1.0 : 1.0, text.upsideDown ? -1.0 : 1.0, 1.0};
    return Transform::fromExtrusion(text.extrusion) * Transform::translation(anchor) * Transform::rotation(degrees) *
           Transform::scaling(flip);
}

/// What a reference hands down to the entities of its block.
struct Context {
    Transform transform;
    std::wstring layer; ///< For entities on layer "0"; empty outside references.
    int color = defaultColor;
    std::optional<std::uint32_t> trueColor;
    bool visible = true;
    bool paperSpace = false;
    std::size_t depth = 0;
};

/// Layer, colour and visibility of an entity in its context.
struct Appearance {
    std::wstring layer;
    int color = defaultColor;
    std::optional<std::uint32_t> trueColor;
    bool off = false;    ///< Its layer is switched off: it is not shown, what it refers to may be.
    bool hidden = false; ///< It and all it refers to are not shown.
};

template <typename Entity>
Appearance appearanceOf(const Drawing& drawing, const Context& context, const Entity& entity) {
    Appearance result;
    result.layer = entity.layer == L"0" && !context.layer.empty() ? context.layer : entity.layer;
    const Layer* layer = drawing.findLayer(result.layer);
    if (entity.color == byBlock && !entity.trueColor) {
        result.color = context.color;
        result.trueColor = context.trueColor;
    } else if (entity.color == byLayer && !entity.trueColor) {
        result.color = layer != nullptr ? layer->color : defaultColor;
        result.trueColor = layer != nullptr ? layer->trueColor : std::nullopt;
    } else {
        result.color = entity.color == byLayer || entity.color == byBlock ? defaultColor : entity.color;
        result.trueColor = entity.trueColor;
    }
    result.off = layer != nullptr && layer->off;
    result.hidden = !context.visible || entity.invisible || (layer != nullptr && layer->frozen);
    return result;
}

/// Adds and multiplies up to the largest number.
std::size_t sum(std::size_t a, std::size_t b) {
    return a > Limits::none - b ? Limits::none : a + b;
}

std::size_t product(std::size_t a, std::size_t b) {
    return a != 0 && b > Limits::none / a ? Limits::none : a * b;
}

/// A name for a message.
std::string quoted(const std::wstring& name) {
    return '"' + common::utf8FromWide(name) + '"';
}

[[noreturn]] void failAtLimit(ErrorKind kind, const std::string& asked, std::size_t limit, const std::string& unit,
                              const Insert& insert) {
    throw Error(kind, 0,
                asked + " than the limit of " + std::to_string(limit) + ' ' + unit +
                    " allows: it was passed at a reference to block " + quoted(insert.blockName) + ".");
}

class Placer {
public:
    explicit Placer(const Drawing& drawing, const Limits& limits)
        : m_drawing(drawing), m_limits(limits), m_standing(drawing.inserts.size()),
          m_contents(1), m_numbers{{std::wstring(), 0}} {
        for (const TextEntity& text : drawing.texts) {
            addText(text);
        }
        for (const Insert& insert : drawing.inserts) {
            const std::size_t shown = numberOf(foldName(insert.blockName));
            m_contents[numberOf(foldedBlock(insert.block))].inserts.push_back({&insert, shown});
        }
        markContentsWithTexts();
        dropTextsThatBlocksShow();
    }

    /// Without placing anything, and in no more steps than the limit of placements.
    void check() {
        if (m_limits.placements != Limits::none || m_limits.placedLength != Limits::none) {
            costOf(0, 0);
        }
    }

    std::size_t place(const PlacedTextVisitor& visit) {
        m_visit = &visit;
        placeContents(0, Context{});
        return m_count;
    }

private:
    struct Reference {
        const Insert* insert;
        std::size_t contents; ///< Of the block it shows.
    };
    /// What a block holds, or (the first) the drawing itself.
    struct Contents {
        std::vector<std::size_t> texts; ///< Ordinals.
        std::size_t length = 0;         ///< Of the texts, together.
        std::vector<Reference> inserts;
        bool showsTexts = false; ///< Itself, or through references.
        bool open = false;       ///< A reference to it is being followed.
    };
    /// A text that a block may show in its place.
    struct Substituted {
        std::size_t contents;
        std::size_t ordinal;
        std::size_t length;
        std::size_t graphics; ///< The block.
    };
    struct Cost {
        std::size_t placements = 0;
        std::size_t length = 0;
    };

    /// Empty for everything that stands in the drawing itself.
    static std::wstring foldedBlock(const std::wstring& name) {
        std::wstring folded = foldName(name);
        return isLayoutBlock(folded) ? std::wstring() : folded;
    }

    std::size_t numberOf(const std::wstring& foldedName) {
        const auto [entry, isNew] = m_numbers.try_emplace(foldedName, m_contents.size());
        if (isNew) {
            m_contents.emplace_back();
        }
        return entry->second;
    }

    void addText(const TextEntity& text) {
        const std::size_t number = numberOf(foldedBlock(text.block));
        if (number != 0 && !isShownInBlocks(text)) {
            return;
        }
        m_standing += number != 0 ? 1 : 0;
        m_contents[number].texts.push_back(text.ordinal);
        m_contents[number].length += text.content.size();
        if (!text.graphicsBlock.empty()) {
            m_substituted.push_back(
                {number, text.ordinal, text.content.size(), numberOf(foldName(text.graphicsBlock))});
        }
    }

    /// From the blocks that hold texts outwards to those that refer to them, so that a heap of nested references to
    /// nothing is never followed.
    void markContentsWithTexts() {
        std::vector<std::vector<std::size_t>> users(m_contents.size());
        std::vector<std::size_t> pending;
        for (std::size_t i = 0; i < m_contents.size(); ++i) {
            if (!m_contents[i].texts.empty()) {
                pending.push_back(i);
            }
            for (const Reference& reference : m_contents[i].inserts) {
                users[reference.contents].push_back(i);
            }
        }
        while (!pending.empty()) {
            const std::size_t number = pending.back();
            pending.pop_back();
            if (!std::exchange(m_contents[number].showsTexts, true)) {
                pending.insert(pending.end(), users[number].begin(), users[number].end());
            }
        }
        m_contents.front().showsTexts = false; // The drawing is no block, whatever a reference to its sheets says.
    }

    /// Dimensions and tables stand in their blocks too.
    void dropTextsThatBlocksShow() {
        std::unordered_set<std::size_t> dropped;
        for (const Substituted& text : m_substituted) {
            if (m_contents[text.graphics].showsTexts) {
                dropped.insert(text.ordinal);
                m_contents[text.contents].length -= text.length;
            }
        }
        for (Contents& contents : m_contents) {
            std::erase_if(contents.texts, [&](std::size_t ordinal) { return dropped.contains(ordinal); });
        }
    }

    /// References to nothing and those in a circle are not followed. Throws Error for those nested too deep.
    [[nodiscard]] bool follows(const Reference& reference, std::size_t depth) const {
        const Contents& contents = m_contents[reference.contents];
        if (!contents.showsTexts || contents.open) {
            return false;
        }
        const std::size_t limit = std::min(m_limits.depth, Limits::deepest);
        if (depth >= limit) {
            failAtLimit(ErrorKind::DepthLimit, "The drawing nests blocks deeper", limit, "levels", *reference.insert);
        }
        return true;
    }

    /// What placing a block costs, beside the block itself.
    Cost costOf(std::size_t number, std::size_t depth) {
        Contents& contents = m_contents[number];
        Cost cost;
        if (number != 0) {
            cost = {contents.texts.size(), contents.length};
        }
        contents.open = number != 0;
        for (const Reference& reference : contents.inserts) {
            if (!follows(reference, depth)) {
                continue;
            }
            const Insert& insert = *reference.insert;
            const Cost inner = costOf(reference.contents, depth + 1);
            const std::size_t times =
                product(static_cast<std::size_t>(insert.rows), static_cast<std::size_t>(insert.columns));
            cost.placements = sum(cost.placements, product(times, sum(inner.placements, 1)));
            cost.length = sum(cost.length, product(times, inner.length));
            if (cost.placements > sum(m_limits.placements, m_standing)) {
                failAtLimit(ErrorKind::PlacementLimit, "The drawing places blocks and their texts more often",
                            m_limits.placements, "placements", insert);
            }
            if (cost.length > m_limits.placedLength) {
                failAtLimit(ErrorKind::PlacedLengthLimit, "The texts of placed blocks have more characters",
                            m_limits.placedLength, "characters", insert);
            }
        }
        contents.open = false;
        return cost;
    }

    void placeContents(std::size_t number, const Context& context) {
        for (const std::size_t ordinal : m_contents[number].texts) {
            if (m_stopped) {
                return;
            }
            placeText(m_drawing.texts[ordinal], context);
        }
        for (const Reference& reference : m_contents[number].inserts) {
            if (!m_stopped && follows(reference, context.depth)) {
                m_contents[reference.contents].open = true;
                placeInsert(reference, context);
                m_contents[reference.contents].open = false;
            }
        }
    }

    void placeText(const TextEntity& text, const Context& context) {
        Appearance appearance = appearanceOf(m_drawing, context, text);
        PlacedText placed;
        placed.text = &text;
        placed.frame = context.transform * frameOf(text);
        placed.layer = std::move(appearance.layer);
        placed.color = appearance.color;
        placed.trueColor = appearance.trueColor;
        placed.visible = !appearance.off && !appearance.hidden;
        placed.paperSpace = context.depth == 0 ? text.paperSpace : context.paperSpace;
        placed.depth = context.depth;
        ++m_count;
        m_stopped = !(*m_visit)(placed);
    }

    void placeInsert(const Reference& reference, const Context& outer) {
        const Insert& insert = *reference.insert;
        const Block* block = m_drawing.findBlock(insert.blockName);
        const Point base = block != nullptr ? block->base : Point{};
        Appearance appearance = appearanceOf(m_drawing, outer, insert);
        Context inner;
        inner.layer = std::move(appearance.layer);
        inner.color = appearance.color;
        inner.trueColor = appearance.trueColor;
        inner.visible = !appearance.hidden;
        inner.paperSpace = outer.depth == 0 ? insert.paperSpace : outer.paperSpace;
        inner.depth = outer.depth + 1;
        const Transform turned = outer.transform * Transform::fromExtrusion(insert.extrusion) *
                                 Transform::translation(insert.insertion) * Transform::rotation(insert.rotation);
        const Transform content = Transform::scaling(insert.scale) * Transform::translation(base * -1.0);
        for (int row = 0; row < insert.rows && !m_stopped; ++row) {
            for (int column = 0; column < insert.columns && !m_stopped; ++column) {
                const Point step{column * insert.columnSpacing, row * insert.rowSpacing, 0.0};
                inner.transform = turned * Transform::translation(step) * content;
                placeContents(reference.contents, inner);
            }
        }
    }

    const Drawing& m_drawing;
    Limits m_limits;
    std::size_t m_standing; ///< Texts of blocks, and references, as they stand in the file.
    const PlacedTextVisitor* m_visit = nullptr;
    std::vector<Contents> m_contents;
    std::unordered_map<std::wstring, std::size_t> m_numbers; ///< Of contents, by the block's folded name.
    std::vector<Substituted> m_substituted;
    std::size_t m_count = 0;
    bool m_stopped = false;
};

} // namespace

Transform frameOf(const TextEntity& text) {
    return text.isParagraphText() ? paragraphFrame(text) : lineFrame(text);
}

double fitLength(const TextEntity& text) {
    return !text.isParagraphText() && isBetweenPoints(text) ? length(*text.alignmentPoint - text.insertion) : 0.0;
}

void checkPlacements(const Drawing& drawing, const Limits& limits) {
    Placer(drawing, limits).check();
}

std::size_t placeTexts(const Drawing& drawing, const PlacedTextVisitor& visit, const Limits& limits) {
    Placer placer(drawing, limits);
    placer.check();
    return placer.place(visit);
}

} // namespace dxf
