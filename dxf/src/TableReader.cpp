#include "RecordReader.h"
#include "Widened.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace dxf {
namespace {

constexpr int firstExtendedData = 1000;
constexpr int applicationName = 1001;

class StyleReader final : public IRecordReader {
public:
    void add(const Pair& pair) override {
        if (pair.code >= firstExtendedData) {
            addExtendedData(pair);
            return;
        }
        switch (pair.code) {
        case 2:
            m_style.name = widened(pair.trimmedValue());
            break;
        case 3:
            m_style.fontFile = widened(pair.trimmedValue());
            break;
        case 4:
            m_style.bigFontFile = widened(pair.trimmedValue());
            break;
        case 5:
            m_style.handle = pair.handle();
            break;
        case 40:
            m_style.fixedHeight = std::max(0.0, pair.real());
            break;
        case 41:
            m_style.widthFactor = pair.real() > 0.0 ? pair.real() : 1.0;
            break;
        case 42:
            m_style.lastHeight = std::max(0.0, pair.real());
            break;
        case 50:
            m_style.oblique = pair.real();
            break;
        case 70:
            m_style.shapeFile = (pair.integer() & 1) != 0;
            m_style.vertical = (pair.integer() & 4) != 0;
            break;
        case 71:
            m_style.backward = (pair.integer() & 2) != 0;
            m_style.upsideDown = (pair.integer() & 4) != 0;
            break;
        default:
            break;
        }
    }

    void finish(Drawing& drawing) override { drawing.styles.push_back(std::move(m_style)); }

private:
    /// A TrueType font's family and, in one number, its faces and character set.
    void addExtendedData(const Pair& pair) {
        constexpr std::int64_t boldBit = 0x2000000;
        constexpr std::int64_t italicBit = 0x1000000;
        constexpr unsigned charsetShift = 8;
        if (pair.code == applicationName) {
            m_ofFont = pair.trimmedValue() == "ACAD";
        } else if (m_ofFont && pair.code == 1000) {
            m_style.family = widened(pair.trimmedValue());
        } else if (m_ofFont && pair.code == 1071) {
            m_style.bold = (pair.integer() & boldBit) != 0;
            m_style.italic = (pair.integer() & italicBit) != 0;
            m_style.charset = static_cast<unsigned>(pair.integer() >> charsetShift & 0xFF);
        }
    }

    TextStyle m_style;
    bool m_ofFont = false;
};

class LayerReader final : public IRecordReader {
public:
    void add(const Pair& pair) override {
        switch (pair.code) {
        case 2:
            m_layer.name = widened(pair.trimmedValue());
            break;
        case 62: {
            const std::int64_t color = std::clamp<std::int64_t>(pair.integer(), -255, 255);
            m_layer.off = color < 0;
            m_layer.color = color == 0 ? m_layer.color : static_cast<int>(std::abs(color));
            break;
        }
        case 70:
            m_layer.frozen = (pair.integer() & 1) != 0;
            m_layer.locked = (pair.integer() & 4) != 0;
            break;
        case 420:
            m_layer.trueColor = static_cast<std::uint32_t>(pair.integer()) & 0xFFFFFF;
            break;
        default:
            break;
        }
    }

    void finish(Drawing& drawing) override { drawing.layers.push_back(std::move(m_layer)); }

private:
    Layer m_layer;
};

class DimStyleReader final : public IRecordReader {
public:
    void add(const Pair& pair) override {
        switch (pair.code) {
        case 2:
            m_style.name = widened(pair.trimmedValue());
            break;
        case 40:
            m_scale = pair.real() > 0.0 ? pair.real() : 1.0;
            break;
        case 140:
            m_style.textHeight = std::max(0.0, pair.real());
            break;
        case 340:
            m_style.textStyle = pair.handle();
            break;
        default:
            break;
        }
    }

    void finish(Drawing& drawing) override {
        m_style.textHeight *= m_scale;
        drawing.dimStyles.push_back(std::move(m_style));
    }

private:
    DimStyle m_style;
    double m_scale = 1.0;
};

class HeaderReader final : public IRecordReader {
public:
    void add(const Pair& pair) override {
        constexpr int variable = 9;
        if (pair.code == variable) {
            m_variable = pair.trimmedValue();
        } else if (m_variable == "$EXTMIN") {
            takeCoordinate(pair, 10, m_header.extentsMin);
        } else if (m_variable == "$EXTMAX") {
            takeCoordinate(pair, 10, m_header.extentsMax);
        } else {
            addValue(pair);
        }
    }

    void finish(Drawing& drawing) override {
        dropIfUnset(m_header.extentsMin);
        dropIfUnset(m_header.extentsMax);
        m_header.dimTextSize *= m_dimScale;
        drawing.header = std::move(m_header);
    }

private:
    void addValue(const Pair& pair) {
        if (m_variable == "$ACADVER") {
            m_header.version = widened(pair.trimmedValue());
            m_header.hasVersion = true;
        } else if (m_variable == "$DWGCODEPAGE") {
            m_header.codePageName = widened(pair.trimmedValue());
        } else if (m_variable == "$TEXTSTYLE") {
            m_header.textStyle = widened(pair.trimmedValue());
        } else if (m_variable == "$DIMTXSTY") {
            m_header.dimTextStyle = widened(pair.trimmedValue());
        } else if (m_variable == "$TEXTSIZE") {
            m_header.textSize = pair.real();
        } else if (m_variable == "$DIMTXT") {
            m_header.dimTextSize = pair.real();
        } else if (m_variable == "$DIMSCALE") {
            m_dimScale = pair.real() > 0.0 ? pair.real() : 1.0;
        } else if (m_variable == "$INSUNITS") {
            m_header.insUnits = static_cast<int>(std::clamp<std::int64_t>(pair.integer(), 0, 255));
        } else if (m_variable == "$MEASUREMENT") {
            m_header.metric = pair.integer() == 1;
        } else if (m_variable == "$MIRRTEXT") {
            m_header.mirrorText = pair.integer() == 1;
        } else if (m_variable == "$HANDSEED") {
            m_header.handleSeed = pair.handle();
        }
    }

    /// A drawing without entities has extents from +1e20 to -1e20.
    static void dropIfUnset(std::optional<Point>& corner) {
        constexpr double farthest = 1e19;
        if (corner && (std::abs(corner->x) > farthest || std::abs(corner->y) > farthest)) {
            corner.reset();
        }
    }

    Header m_header;
    std::string m_variable;
    double m_dimScale = 1.0;
};

} // namespace

std::unique_ptr<IRecordReader> makeHeaderReader() {
    return std::make_unique<HeaderReader>();
}

std::unique_ptr<IRecordReader> makeTableRecordReader(std::string_view type) {
    if (type == "STYLE") {
        return std::make_unique<StyleReader>();
    }
    if (type == "LAYER") {
        return std::make_unique<LayerReader>();
    }
    if (type == "DIMSTYLE") {
        return std::make_unique<DimStyleReader>();
    }
    return nullptr;
}

} // namespace dxf
