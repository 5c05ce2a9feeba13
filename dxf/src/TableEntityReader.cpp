#include "EntityGroups.h"
#include "RecordReader.h"
#include "Widened.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>
#include <numeric>
#include <vector>

namespace dxf {
namespace {

struct Cell {
    std::wstring chunks; ///< Groups 2 and 1, in older drawings.
    std::wstring value;  ///< Groups 303 and 302 of the cell's value, in newer ones.
    std::wstring style;
    double height = 0.0;
    Attachment alignment = Attachment::MiddleCenter;
    int columns = 1; ///< Columns that a merged cell covers.
    int rows = 1;
};

int countFrom(std::int64_t value) {
    constexpr std::int64_t most = 32767;
    return static_cast<int>(std::clamp<std::int64_t>(value, 1, most));
}

/// Distances from the table's corner to the starts of rows or columns, and to the last one's end.
std::vector<double> edgesOf(const std::vector<double>& sizes) {
    std::vector<double> edges{0.0};
    edges.reserve(sizes.size() + 1);
    std::partial_sum(sizes.begin(), sizes.end(), std::back_inserter(edges));
    return edges;
}

/// Distance from the table's corner to the start of a row or column.
double extentBefore(const std::vector<double>& edges, std::size_t index) {
    return edges[std::min(index, edges.size() - 1)];
}

struct Grid {
    std::vector<double> columns; ///< As edgesOf() gives them.
    std::vector<double> rows;
};

class TableEntityReader final : public IRecordReader {
public:
    explicit TableEntityReader(const EntityPlace& place) : m_groups(place) { m_insert.ofTextEntity = true; }

    void add(const Pair& pair) override {
        if (m_groups.take(pair) || !m_groups.application().empty()) {
            return;
        }
        if (m_groups.subclass() == "AcDbBlockReference") {
            addReferenceGroup(pair);
        } else if (m_groups.subclass() == "AcDbTable") {
            addTableGroup(pair);
        }
    }

    void finish(Drawing& drawing) override {
        m_insert.rotation = rotationInPlane();
        m_groups.store(m_insert);
        const Grid grid{edgesOf(m_columnWidths), edgesOf(m_rowHeights)};
        for (std::size_t i = 0; i < m_cells.size(); ++i) {
            addText(drawing, grid, i);
        }
        if (!m_insert.blockName.empty()) {
            drawing.inserts.push_back(std::move(m_insert));
        }
    }

private:
    void addReferenceGroup(const Pair& pair) {
        if (pair.code == 2) {
            m_insert.blockName = widened(pair.trimmedValue());
        } else if (!takeCoordinate(pair, 10, m_insert.insertion)) {
            takeCoordinate(pair, 210, m_insert.extrusion);
        }
    }

    void addTableGroup(const Pair& pair) {
        if (pair.code == 171) { // The cell's kind comes first in each cell.
            m_cells.emplace_back();
            m_inValue = false;
        } else if (m_cells.empty()) {
            addGridGroup(pair);
        } else if (m_inValue) {
            addValueGroup(pair);
        } else {
            addCellGroup(pair, m_cells.back());
        }
    }

    void addGridGroup(const Pair& pair) {
        switch (pair.code) {
        case 92:
            m_columnCount = countFrom(pair.integer());
            break;
        case 141:
            m_rowHeights.push_back(pair.real());
            break;
        case 142:
            m_columnWidths.push_back(pair.real());
            break;
        default:
            takeCoordinate(pair, 11, m_direction);
            break;
        }
    }

    void addCellGroup(const Pair& pair, Cell& cell) {
        switch (pair.code) {
        case 1:
        case 2:
            m_groups.append(cell.chunks, pair);
            break;
        case 7:
            cell.style = widened(pair.trimmedValue());
            break;
        case 140:
            cell.height = pair.real();
            break;
        case 170:
            cell.alignment = attachmentFrom(pair.integer());
            break;
        case 175:
            cell.columns = countFrom(pair.integer());
            break;
        case 176:
            cell.rows = countFrom(pair.integer());
            break;
        case 301:
            m_inValue = pair.trimmedValue() == "CELL_VALUE";
            break;
        default:
            break;
        }
    }

    void addValueGroup(const Pair& pair) {
        if (pair.code == 302 || pair.code == 303) {
            m_groups.append(m_cells.back().value, pair);
        } else if (pair.code == 304 && pair.trimmedValue() == "ACVALUE_END") {
            m_inValue = false;
        }
    }

    [[nodiscard]] Point directionInWorld() const {
        const Transform plane = Transform::fromExtrusion(m_insert.extrusion);
        return normalized(m_direction.value_or(plane.xAxis), plane.xAxis);
    }

    [[nodiscard]] double rotationInPlane() const;

    void addText(Drawing& drawing, const Grid& grid, std::size_t index);

    EntityGroups m_groups;
    Insert m_insert;
    std::optional<Point> m_direction;
    int m_columnCount = 1;
    std::vector<double> m_rowHeights;
    std::vector<double> m_columnWidths;
    std::vector<Cell> m_cells;
    bool m_inValue = false;
};

double TableEntityReader::rotationInPlane() const {
    const Transform plane = Transform::fromExtrusion(m_insert.extrusion);
    const Point direction = directionInWorld();
    return std::atan2(dot(direction, plane.yAxis), dot(direction, plane.xAxis)) * 180.0 / std::numbers::pi;
}

void TableEntityReader::addText(Drawing& drawing, const Grid& grid, std::size_t index) {
    Cell& cell = m_cells[index];
    std::wstring& content = cell.value.empty() ? cell.chunks : cell.value;
    if (content.empty()) {
        return;
    }
    const auto columnCount = static_cast<std::size_t>(m_columnCount);
    const std::size_t row = index / columnCount;
    const std::size_t column = index % columnCount;
    const double left = extentBefore(grid.columns, column);
    const double right = extentBefore(grid.columns, column + static_cast<std::size_t>(cell.columns));
    const double top = extentBefore(grid.rows, row);
    const double bottom = extentBefore(grid.rows, row + static_cast<std::size_t>(cell.rows));

    TextEntity text;
    text.kind = TextKind::TableCell;
    text.content = std::move(content);
    text.style = std::move(cell.style);
    text.height = cell.height;
    text.attachment = cell.alignment;
    text.width = right - left;
    text.definedHeight = bottom - top;
    text.extrusion = m_insert.extrusion;
    text.direction = directionInWorld();
    text.row = static_cast<int>(row);
    text.column = static_cast<int>(column);
    text.graphicsBlock = m_insert.blockName;

    // Attachments count from 1 along rows of three; 0, 1 and 2 halves of the cell's size.
    const int place = static_cast<int>(cell.alignment) - 1;
    const double across = left + (right - left) * (place % 3) / 2.0;
    const double down = top + (bottom - top) * (place / 3) / 2.0;
    const Transform plane = Transform::fromExtrusion(m_insert.extrusion);
    const Point downward = cross(*text.direction, plane.zAxis);
    text.insertion = plane.apply(m_insert.insertion) + *text.direction * across + downward * down;
    m_groups.store(text);
    drawing.texts.push_back(text);
}

} // namespace

std::unique_ptr<IRecordReader> makeTableEntityReader(const EntityPlace& place) {
    return std::make_unique<TableEntityReader>(place);
}

} // namespace dxf
