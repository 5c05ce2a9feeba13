#include "EntityGroups.h"
#include "MTextGroups.h"
#include "RecordReader.h"
#include "Widened.h"

#include <algorithm>
#include <numbers>

namespace dxf {
namespace {

/// Bits of an attribute's group 70.
constexpr std::int64_t attributeInvisible = 1;
constexpr std::int64_t attributeConstant = 2;
/// Bits of a text's group 71.
constexpr std::int64_t textBackward = 2;
constexpr std::int64_t textUpsideDown = 4;

class MTextReader final : public IRecordReader {
public:
    explicit MTextReader(const EntityPlace& place) : m_groups(place) { m_text.kind = TextKind::MText; }

    void add(const Pair& pair) override {
        if (m_groups.take(pair)) {
            return;
        }
        if (m_groups.application() == "ACAD") {
            m_columns.add(pair, m_text);
        } else if (m_groups.application().empty()) {
            if (m_groups.embedded()) {
                takeEmbeddedColumns(pair, m_text);
            } else {
                takeMTextGroup(pair, m_groups, m_text);
            }
        }
    }

    void finish(Drawing& drawing) override {
        m_groups.store(m_text);
        drawing.texts.push_back(m_text);
    }

private:
    EntityGroups m_groups;
    TextEntity m_text;
    ColumnData m_columns;
};

HorizontalJustification horizontalFrom(std::int64_t value) {
    return value >= 0 && value <= 5 ? static_cast<HorizontalJustification>(value) : HorizontalJustification::Left;
}

VerticalJustification verticalFrom(std::int64_t value) {
    return value >= 0 && value <= 3 ? static_cast<VerticalJustification>(value) : VerticalJustification::Baseline;
}

/// TEXT, and the attributes that are TEXTs with a name.
class LineTextReader final : public IRecordReader {
public:
    LineTextReader(TextKind kind, const EntityPlace& place) : m_groups(place) { m_text.kind = kind; }

    void add(const Pair& pair) override {
        if (m_groups.take(pair) || !m_groups.application().empty()) {
            return;
        }
        if (m_groups.embedded()) {
            addEmbedded(pair);
            return;
        }
        // The record of an attribute's private data repeats codes of the text with other meanings.
        if (m_groups.subclass() == "AcDbXrecord") {
            return;
        }
        if (isAttribute() && addAttributeGroup(pair)) {
            return;
        }
        addTextGroup(pair);
    }

    void finish(Drawing& drawing) override {
        if (m_text.multiLine) {
            // The one-line form stands beside the paragraph; the paragraph is what is shown.
            takeParagraph();
        }
        m_groups.store(m_text);
        drawing.texts.push_back(m_text);
    }

private:
    [[nodiscard]] bool isAttribute() const noexcept { return m_text.kind != TextKind::Text; }

    void addEmbedded(const Pair& pair) {
        m_text.multiLine = isAttribute();
        takeMTextGroup(pair, m_groups, m_paragraph);
    }

    bool addAttributeGroup(const Pair& pair) {
        const bool ofText = m_groups.in("AcDbText");
        switch (pair.code) {
        case 2:
            m_text.tag = widened(pair.trimmedValue());
            return true;
        case 3:
            m_text.prompt = widened(pair.value);
            return true;
        case 70:
            m_text.invisible = (pair.integer() & attributeInvisible) != 0;
            m_text.constant = (pair.integer() & attributeConstant) != 0;
            return true;
        case 74:
            m_text.vertical = verticalFrom(pair.integer());
            return true;
        case 73: // Length of the field, which nobody uses.
            return true;
        case 71:
        case 72:
            return !ofText;
        default:
            return false;
        }
    }

    void addTextGroup(const Pair& pair) {
        switch (pair.code) {
        case 1:
            m_text.content = widened(pair.value);
            break;
        case 7:
            m_text.style = widened(pair.trimmedValue());
            break;
        case 40:
            m_text.height = pair.real();
            break;
        case 41:
            m_text.widthFactor = pair.real();
            break;
        case 50:
            m_text.rotation = pair.real();
            break;
        case 51:
            m_text.oblique = pair.real();
            break;
        case 71:
            m_text.backward = (pair.integer() & textBackward) != 0;
            m_text.upsideDown = (pair.integer() & textUpsideDown) != 0;
            break;
        case 72:
            m_text.horizontal = horizontalFrom(pair.integer());
            break;
        case 73:
            m_text.vertical = verticalFrom(pair.integer());
            break;
        default:
            if (!takeCoordinate(pair, 10, m_text.insertion) && !takeCoordinate(pair, 11, m_text.alignmentPoint)) {
                takeCoordinate(pair, 210, m_text.extrusion);
            }
            break;
        }
    }

    void takeParagraph() {
        m_paragraph.kind = m_text.kind;
        m_paragraph.multiLine = true;
        m_paragraph.constant = m_text.constant;
        m_paragraph.invisible = m_text.invisible;
        m_paragraph.tag = std::move(m_text.tag);
        m_paragraph.prompt = std::move(m_text.prompt);
        if (m_paragraph.style.empty()) {
            m_paragraph.style = std::move(m_text.style);
        }
        m_paragraph.height = m_paragraph.height > 0.0 ? m_paragraph.height : m_text.height;
        if (m_paragraph.content.empty()) {
            m_paragraph.content = std::move(m_text.content);
        }
        m_text = std::move(m_paragraph);
    }

    EntityGroups m_groups;
    TextEntity m_text;
    TextEntity m_paragraph;
};

class DimensionReader final : public IRecordReader {
public:
    explicit DimensionReader(const EntityPlace& place) : m_groups(place) {
        m_text.kind = TextKind::Dimension;
        m_text.attachment = Attachment::MiddleCenter;
        m_insert.ofTextEntity = true;
    }

    void add(const Pair& pair) override {
        if (m_groups.take(pair) || !m_groups.application().empty()) {
            return;
        }
        // Behind the common part every kind of dimension has its own meaning of the same codes.
        if (!m_groups.in("AcDbDimension")) {
            return;
        }
        switch (pair.code) {
        case 1:
            m_text.content = widened(pair.value);
            break;
        case 2:
            m_text.graphicsBlock = widened(pair.trimmedValue());
            break;
        case 3:
            m_text.dimStyle = widened(pair.trimmedValue());
            break;
        case 41:
            m_text.lineSpacingFactor = lineSpacingFactorFrom(pair.real());
            break;
        case 42:
            m_text.measurement = pair.real();
            break;
        case 53:
            m_text.rotation = pair.real();
            break;
        case 71:
            m_text.attachment = pair.integer() == 0 ? m_text.attachment : attachmentFrom(pair.integer());
            break;
        case 72:
            m_text.lineSpacingStyle = lineSpacingStyleFrom(pair.integer());
            break;
        default:
            if (!takeCoordinate(pair, 11, m_textMiddle) && !takeCoordinate(pair, 12, m_insert.insertion)) {
                takeCoordinate(pair, 210, m_text.extrusion);
            }
            break;
        }
    }

    void finish(Drawing& drawing) override {
        m_text.insertion = Transform::fromExtrusion(m_text.extrusion).apply(m_textMiddle);
        m_insert.blockName = m_text.graphicsBlock;
        m_insert.extrusion = m_text.extrusion;
        m_groups.store(m_text);
        m_groups.store(m_insert);
        drawing.texts.push_back(m_text);
        if (!m_insert.blockName.empty()) {
            drawing.inserts.push_back(std::move(m_insert));
        }
    }

private:
    EntityGroups m_groups;
    TextEntity m_text;
    Insert m_insert;
    Point m_textMiddle;
};

class InsertReader final : public IRecordReader {
public:
    explicit InsertReader(const EntityPlace& place) : m_groups(place) {}

    void add(const Pair& pair) override {
        if (m_groups.take(pair) || !m_groups.application().empty() || m_groups.embedded()) {
            return;
        }
        switch (pair.code) {
        case 2:
            m_insert.blockName = widened(pair.trimmedValue());
            break;
        case 41:
            m_insert.scale.x = scaleFrom(pair.real());
            break;
        case 42:
            m_insert.scale.y = scaleFrom(pair.real());
            break;
        case 43:
            m_insert.scale.z = scaleFrom(pair.real());
            break;
        case 44:
            m_insert.columnSpacing = pair.real();
            break;
        case 45:
            m_insert.rowSpacing = pair.real();
            break;
        case 50:
            m_insert.rotation = pair.real();
            break;
        case 70:
            m_insert.columns = countFrom(pair.integer());
            break;
        case 71:
            m_insert.rows = countFrom(pair.integer());
            break;
        default:
            if (!takeCoordinate(pair, 10, m_insert.insertion)) {
                takeCoordinate(pair, 210, m_insert.extrusion);
            }
            break;
        }
    }

    void finish(Drawing& drawing) override {
        m_groups.store(m_insert);
        if (!m_insert.blockName.empty()) {
            drawing.inserts.push_back(std::move(m_insert));
        }
    }

private:
    /// A factor of 0 would make the block vanish, which no program means by it.
    static double scaleFrom(double value) { return value == 0.0 ? 1.0 : value; }
    static int countFrom(std::int64_t value) {
        constexpr std::int64_t most = 32767;
        return static_cast<int>(std::clamp<std::int64_t>(value, 1, most));
    }

    EntityGroups m_groups;
    Insert m_insert;
};

} // namespace

std::unique_ptr<IRecordReader> makeEntityReader(std::string_view type, const EntityPlace& place) {
    if (type == "MTEXT") {
        return std::make_unique<MTextReader>(place);
    }
    if (type == "TEXT") {
        return std::make_unique<LineTextReader>(TextKind::Text, place);
    }
    if (type == "ATTRIB") {
        return std::make_unique<LineTextReader>(TextKind::Attrib, place);
    }
    if (type == "ATTDEF") {
        return std::make_unique<LineTextReader>(TextKind::AttDef, place);
    }
    if (type == "INSERT") {
        return std::make_unique<InsertReader>(place);
    }
    if (type == "DIMENSION") {
        return std::make_unique<DimensionReader>(place);
    }
    if (type == "MULTILEADER" || type == "MLEADER") {
        return makeMultiLeaderReader(place);
    }
    if (type == "ACAD_TABLE") {
        return makeTableEntityReader(place);
    }
    return nullptr;
}

} // namespace dxf
