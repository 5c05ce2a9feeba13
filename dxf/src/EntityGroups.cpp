#include "EntityGroups.h"
#include "TextLength.h"
#include "Widened.h"
#include <dxf/CodePage.h>

#include <algorithm>

namespace dxf {
namespace {

constexpr int firstExtendedData = 1000;
constexpr int applicationName = 1001;

} // namespace

bool takeCoordinate(const Pair& pair, int code, Point& point) {
    if (pair.code == code) {
        point.x = pair.real();
    } else if (pair.code == code + 10) {
        point.y = pair.real();
    } else if (pair.code == code + 20) {
        point.z = pair.real();
    } else {
        return false;
    }
    return true;
}

bool takeCoordinate(const Pair& pair, int code, std::optional<Point>& point) {
    Point taken = point.value_or(Point{});
    if (!takeCoordinate(pair, code, taken)) {
        return false;
    }
    point = taken;
    return true;
}

Attachment attachmentFrom(std::int64_t value) {
    return value >= 1 && value <= 9 ? static_cast<Attachment>(value) : Attachment::TopLeft;
}

LineSpacingStyle lineSpacingStyleFrom(std::int64_t value) {
    return value == 2 ? LineSpacingStyle::Exact : LineSpacingStyle::AtLeast;
}

DrawingDirection drawingDirectionFrom(std::int64_t value) {
    switch (value) {
    case 3:
        return DrawingDirection::TopToBottom;
    case 5:
        return DrawingDirection::ByStyle;
    default:
        return DrawingDirection::LeftToRight;
    }
}

double lineSpacingFactorFrom(double value) {
    constexpr double least = 0.25;
    constexpr double most = 4.0;
    return value > 0.0 ? std::clamp(value, least, most) : 1.0;
}

EntityGroups::EntityGroups(const EntityPlace& place) : m_place(place), m_paperSpace(place.paperSpace) {}

bool EntityGroups::takeStructure(const Pair& pair) {
    if (pair.code >= firstExtendedData) {
        if (pair.code == applicationName) {
            m_application = pair.trimmedValue();
            return true;
        }
        return false;
    }
    switch (pair.code) {
    case 100:
        m_subclass = pair.trimmedValue();
        return true;
    case 101:
        m_embedded = true;
        return true;
    case 102:
        // Reactors and dictionaries: handles that look like owners.
        m_bracketed = pair.trimmedValue().starts_with('{');
        return true;
    default:
        return m_bracketed;
    }
}

bool EntityGroups::takeCommon(const Pair& pair) {
    // Subclasses use these codes for other things; but some programs write what is common behind the marker.
    const bool common = m_subclass.empty() || m_subclass == "AcDbEntity";
    const bool tolerant = common || (m_subclass != "AcDbMLeader" && m_subclass != "AcDbTable");
    switch (pair.code) {
    case 5:
        m_handle = m_handle == 0 ? pair.handle() : m_handle;
        return true;
    case 330:
        m_owner = common && m_owner == 0 ? pair.handle() : m_owner;
        return common;
    case 8:
        m_layer = widened(pair.trimmedValue());
        return true;
    case 62:
        m_color = tolerant ? static_cast<int>(std::clamp<std::int64_t>(pair.integer(), 0, 256)) : m_color;
        return tolerant;
    case 420:
        if (common) {
            m_trueColor = static_cast<std::uint32_t>(pair.integer()) & 0xFFFFFF;
        }
        return common;
    case 60:
        m_invisible = tolerant ? pair.integer() == 1 : m_invisible;
        return tolerant;
    case 67:
        m_paperSpace = tolerant ? pair.integer() == 1 : m_paperSpace;
        return tolerant;
    case 410:
        m_layout = widened(pair.trimmedValue());
        return true;
    default:
        return false;
    }
}

bool EntityGroups::take(const Pair& pair) {
    if (takeStructure(pair)) {
        return true;
    }
    return m_application.empty() && !m_embedded && takeCommon(pair);
}

void EntityGroups::append(std::wstring& content, const Pair& pair) const {
    constexpr unsigned utf8Page = 65001;
    if (pair.value.size() > mostBytesOf(m_place.textLength) - content.size()) {
        // Names of blocks are still bytes.
        failAtTextLength(m_place.line, decodeLossy(bytesOf(m_place.block), utf8Page).text, m_place.textLength);
    }
    content += widened(pair.value);
}

void EntityGroups::store(TextEntity& text) const {
    text.offset = m_place.offset;
    text.line = m_place.line;
    text.block = m_place.block;
    text.handle = m_handle;
    text.owner = m_owner;
    text.layer = m_layer;
    text.color = m_color;
    text.trueColor = m_trueColor;
    text.invisible = text.invisible || m_invisible;
    text.paperSpace = m_paperSpace;
    text.layout = m_layout;
}

void EntityGroups::store(Insert& insert) const {
    insert.block = m_place.block;
    insert.handle = m_handle;
    insert.layer = m_layer;
    insert.color = m_color;
    insert.trueColor = m_trueColor;
    insert.invisible = m_invisible;
    insert.paperSpace = m_paperSpace;
    insert.layout = m_layout;
}

} // namespace dxf
