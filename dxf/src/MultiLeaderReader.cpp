#include "EntityGroups.h"
#include "RecordReader.h"
#include "Widened.h"

#include <algorithm>
#include <numbers>

namespace dxf {
namespace {

/// A leader's text stands in nested brackets, each with opening and closing groups of its own; the group that opens
/// the innermost bracket is also the one that holds the text in the outermost.
class MultiLeaderReader final : public IRecordReader {
public:
    explicit MultiLeaderReader(const EntityPlace& place) : m_groups(place) { m_text.kind = TextKind::MultiLeader; }

    void add(const Pair& pair) override {
        if (m_groups.take(pair) || !m_groups.application().empty()) {
            return;
        }
        if (!takeBracket(pair) && m_level == Level::Context) {
            addContextGroup(pair);
        }
    }

    void finish(Drawing& drawing) override {
        if (m_text.content.empty()) {
            return; // The leader ends in a block or in nothing.
        }
        m_groups.store(m_text);
        drawing.texts.push_back(m_text);
    }

private:
    enum class Level { Entity, Context, Leader, Line };

    bool takeBracket(const Pair& pair) {
        const std::string_view value = pair.trimmedValue();
        if (pair.code == 300 && m_level == Level::Entity && value == "CONTEXT_DATA{") {
            m_level = Level::Context;
        } else if (pair.code == 302 && m_level == Level::Context && value == "LEADER{") {
            m_level = Level::Leader;
        } else if (pair.code == 304 && m_level == Level::Leader) {
            m_level = Level::Line;
        } else if (pair.code == 305 && m_level == Level::Line) {
            m_level = Level::Leader;
        } else if (pair.code == 303 && m_level == Level::Leader) {
            m_level = Level::Context;
        } else if (pair.code == 301 && m_level == Level::Context) {
            m_level = Level::Entity;
        } else {
            return false;
        }
        return true;
    }

    void addContextGroup(const Pair& pair) {
        switch (pair.code) {
        case 304:
            m_groups.append(m_text.content, pair);
            break;
        case 340:
            m_text.styleHandle = m_text.styleHandle == 0 ? pair.handle() : m_text.styleHandle;
            break;
        case 41:
            m_text.height = pair.real();
            break;
        case 42: // In radians, where every other entity has degrees. The direction in group 13 says the same.
            m_text.rotation = pair.real() * 180.0 / std::numbers::pi;
            break;
        case 43:
            m_text.width = std::max(0.0, pair.real());
            break;
        case 44:
            m_text.definedHeight = std::max(0.0, pair.real());
            break;
        case 45:
            m_text.lineSpacingFactor = lineSpacingFactorFrom(pair.real());
            break;
        case 170:
            m_text.lineSpacingStyle = lineSpacingStyleFrom(pair.integer());
            break;
        case 171: { // Left, center or right; the location is always at the top.
            const std::int64_t side = pair.integer();
            m_text.attachment = side >= 1 && side <= 3 ? static_cast<Attachment>(side) : Attachment::TopLeft;
            break;
        }
        case 172:
            m_text.drawingDirection = drawingDirectionFrom(pair.integer());
            break;
        default:
            if (!takeCoordinate(pair, 12, m_text.insertion) && !takeCoordinate(pair, 13, m_text.direction)) {
                takeCoordinate(pair, 11, m_text.extrusion);
            }
            break;
        }
    }

    EntityGroups m_groups;
    TextEntity m_text;
    Level m_level = Level::Entity;
};

} // namespace

std::unique_ptr<IRecordReader> makeMultiLeaderReader(const EntityPlace& place) {
    return std::make_unique<MultiLeaderReader>(place);
}

} // namespace dxf
