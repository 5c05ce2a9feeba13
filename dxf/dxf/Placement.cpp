#include <dxf/CodePage.h>
#include <dxf/Placement.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace dxf {
namespace {

constexpr std::size_t deepestNesting = 32;
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

class Placer {
public:
    Placer(const Drawing& drawing, const PlacedTextVisitor& visit) : m_drawing(drawing), m_visit(visit) {
        for (const TextEntity& text : drawing.texts) {
            m_contents[foldedBlock(text.block)].texts.push_back(&text);
        }
        for (const Insert& insert : drawing.inserts) {
            m_contents[foldedBlock(insert.block)].inserts.push_back({&insert, foldName(insert.blockName)});
        }
        markBlocksWithTexts();
    }

    std::size_t place() {
        placeContents(L"", Context{});
        return m_count;
    }

private:
    struct Reference {
        const Insert* insert;
        std::wstring block; ///< Folded name of the block it shows.
    };
    struct Contents {
        std::vector<const TextEntity*> texts;
        std::vector<Reference> inserts;
    };

    /// Empty for everything that stands in the drawing itself.
    static std::wstring foldedBlock(const std::wstring& name) {
        std::wstring folded = foldName(name);
        return isLayoutBlock(folded) ? std::wstring() : folded;
    }

    /// From the blocks that hold texts outwards to those that refer to them, so that a heap of nested references to
    /// nothing is never followed.
    void markBlocksWithTexts() {
        std::unordered_multimap<std::wstring, std::wstring> users;
        std::vector<std::wstring> pending;
        for (const auto& [name, contents] : m_contents) {
            if (!contents.texts.empty()) {
                pending.push_back(name);
            }
            for (const Reference& reference : contents.inserts) {
                users.emplace(reference.block, name);
            }
        }
        while (!pending.empty()) {
            const std::wstring name = std::move(pending.back());
            pending.pop_back();
            if (m_withTexts.insert(name).second) {
                const auto [first, last] = users.equal_range(name);
                std::for_each(first, last, [&](const auto& user) { pending.push_back(user.second); });
            }
        }
    }

    [[nodiscard]] bool showsTexts(const std::wstring& foldedName) const {
        return !foldedName.empty() && m_withTexts.contains(foldedName);
    }

    [[nodiscard]] bool isShown(const TextEntity& text, const Context& context) const {
        if (text.kind == TextKind::AttDef) {
            return context.depth == 0 || text.constant;
        }
        return text.graphicsBlock.empty() || !showsTexts(foldName(text.graphicsBlock));
    }

    void placeContents(const std::wstring& block, const Context& context) {
        const auto found = m_contents.find(block);
        if (found == m_contents.end()) {
            return;
        }
        for (const TextEntity* text : found->second.texts) {
            if (m_stopped) {
                return;
            }
            if (isShown(*text, context)) {
                placeText(*text, context);
            }
        }
        for (const Reference& reference : found->second.inserts) {
            if (showsTexts(reference.block) && context.depth < deepestNesting && !m_open.contains(reference.block)) {
                m_open.insert(reference.block);
                placeInsert(reference, context);
                m_open.erase(reference.block);
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
        m_stopped = !m_visit(placed);
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
                placeContents(reference.block, inner);
            }
        }
    }

    const Drawing& m_drawing;
    const PlacedTextVisitor& m_visit;
    std::unordered_map<std::wstring, Contents> m_contents;
    std::unordered_set<std::wstring> m_withTexts;
    std::unordered_set<std::wstring> m_open; ///< Blocks whose references are being followed.
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

std::size_t placeTexts(const Drawing& drawing, const PlacedTextVisitor& visit) {
    return Placer(drawing, visit).place();
}

} // namespace dxf
