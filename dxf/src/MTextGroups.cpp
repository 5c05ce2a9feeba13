#include "MTextGroups.h"
#include "EntityGroups.h"
#include "Widened.h"

#include <algorithm>

namespace dxf {
namespace {

ColumnKind columnKindFrom(std::int64_t value) {
    switch (value) {
    case 1:
        return ColumnKind::Static;
    case 2:
        return ColumnKind::Dynamic;
    default:
        return ColumnKind::None;
    }
}

int countFrom(std::int64_t value) {
    constexpr std::int64_t most = 32767;
    return static_cast<int>(std::clamp<std::int64_t>(value, 0, most));
}

} // namespace

bool takeMTextGroup(const Pair& pair, const EntityGroups& groups, TextEntity& text) {
    switch (pair.code) {
    case 1:
    case 3:
        // Chunks end anywhere, even inside a character of several bytes.
        groups.append(text.content, pair);
        return true;
    case 7:
        text.style = widened(pair.trimmedValue());
        return true;
    case 40:
        text.height = pair.real();
        return true;
    case 41:
        text.width = std::max(0.0, pair.real());
        return true;
    case 42:
        text.measuredWidth = pair.real();
        return true;
    case 43:
        text.measuredHeight = pair.real();
        return true;
    case 44:
        text.lineSpacingFactor = lineSpacingFactorFrom(pair.real());
        return true;
    case 46:
        text.definedHeight = std::max(0.0, pair.real());
        return true;
    case 50:
        text.rotation = pair.real();
        text.direction.reset();
        return true;
    case 71:
        text.attachment = attachmentFrom(pair.integer());
        return true;
    case 72:
        text.drawingDirection = drawingDirectionFrom(pair.integer());
        return true;
    case 73:
        text.lineSpacingStyle = lineSpacingStyleFrom(pair.integer());
        return true;
    default:
        return takeCoordinate(pair, 10, text.insertion) || takeCoordinate(pair, 11, text.direction) ||
               takeCoordinate(pair, 210, text.extrusion);
    }
}

void takeEmbeddedColumns(const Pair& pair, TextEntity& text) {
    Columns& columns = text.columns;
    switch (pair.code) {
    case 71:
        columns.kind = columnKindFrom(pair.integer());
        break;
    case 72:
        columns.count = countFrom(pair.integer());
        break;
    case 44:
        columns.width = pair.real();
        break;
    case 45:
        columns.gutter = pair.real();
        break;
    case 73:
        columns.autoHeight = pair.integer() != 0;
        break;
    case 74:
        columns.reversed = pair.integer() != 0;
        break;
    case 41:
        columns.definedHeight = pair.real();
        break;
    case 46:
        columns.heights.push_back(pair.real());
        break;
    default:
        break;
    }
}

void ColumnData::addNumber(double number, TextEntity& text) {
    Columns& columns = text.columns;
    const auto whole = static_cast<std::int64_t>(std::clamp(number, -1e9, 1e9));
    if (m_key == 0) {
        m_key = static_cast<int>(whole);
        return;
    }
    switch (m_key) {
    case 75:
        columns.kind = columnKindFrom(whole);
        break;
    case 76:
        columns.count = countFrom(whole);
        break;
    case 78:
        columns.reversed = whole != 0;
        break;
    case 79:
        columns.autoHeight = whole != 0;
        break;
    case 48:
        columns.width = number;
        break;
    case 49:
        columns.gutter = number;
        break;
    case 46:
        columns.definedHeight = number;
        break;
    case 50:
        if (m_heightsLeft == 0) {
            m_heightsLeft = countFrom(whole);
        } else {
            columns.heights.push_back(number);
            --m_heightsLeft;
        }
        break;
    default:
        break;
    }
    m_key = m_heightsLeft > 0 ? m_key : 0;
}

void ColumnData::add(const Pair& pair, TextEntity& text) {
    constexpr std::string_view ended = "_END";
    const std::string_view value = pair.trimmedValue();
    switch (pair.code) {
    case 1000:
        if (value.ends_with(ended)) {
            m_section = Section::None;
        } else if (value == "ACAD_MTEXT_COLUMN_INFO_BEGIN") {
            m_section = Section::Columns;
        } else if (value == "ACAD_MTEXT_COLUMNS_BEGIN") {
            m_section = Section::Linked;
        } else if (value == "ACAD_MTEXT_DEFINED_HEIGHT_BEGIN") {
            m_section = Section::DefinedHeight;
        }
        m_key = 0;
        m_heightsLeft = 0;
        break;
    case 1005:
        if (m_section == Section::Linked && pair.handle() != 0) {
            text.columns.linkedColumns.push_back(pair.handle());
        }
        break;
    case 1040:
    case 1070:
        if (m_section == Section::Columns || m_section == Section::DefinedHeight) {
            addNumber(pair.real(), text);
        }
        break;
    default:
        break;
    }
}

} // namespace dxf
