#include "Completion.h"
#include <dxf/CodePage.h>

#include <unordered_set>

namespace dxf {
namespace {

template <typename Record>
std::unordered_map<std::wstring, std::size_t> indexByName(const std::vector<Record>& records) {
    std::unordered_map<std::wstring, std::size_t> index;
    for (std::size_t i = 0; i < records.size(); ++i) {
        index.try_emplace(foldName(records[i].name), i); // Of two records with one name the first holds.
    }
    return index;
}

void completeHeader(Header& header) {
    constexpr double metricSize = 2.5;
    constexpr double imperialSize = 0.2;
    if (!header.hasVersion) {
        header.version = L"AC1009";
    }
    if (header.textStyle.empty()) {
        header.textStyle = L"STANDARD";
    }
    if (header.textSize <= 0.0) {
        header.textSize = header.metric ? metricSize : imperialSize;
    }
    if (header.dimTextSize <= 0.0) {
        header.dimTextSize = header.textSize;
    }
}

void buildIndexes(Drawing& drawing) {
    drawing.styleIndex = indexByName(drawing.styles);
    drawing.layerIndex = indexByName(drawing.layers);
    drawing.blockIndex = indexByName(drawing.blocks);
    // The names of shape files are empty, and no text asks for them.
    drawing.styleIndex.erase(L"");
    drawing.missingStyle.fontFile = L"txt";
}

/// What texts ask for by handle or by the name of something else.
class Resolver {
public:
    explicit Resolver(const Drawing& drawing) : m_drawing(drawing), m_dimStyles(indexByName(drawing.dimStyles)) {
        for (const TextStyle& style : drawing.styles) {
            m_stylesByHandle.try_emplace(style.handle, &style);
        }
    }

    void complete(TextEntity& text) const {
        if (text.kind == TextKind::Dimension) {
            takeDimStyle(text);
        }
        if (text.style.empty()) {
            text.style = styleName(text.styleHandle, L"STANDARD");
        }
        if (text.layer.empty()) {
            text.layer = L"0";
        }
        if (text.widthFactor <= 0.0) {
            text.widthFactor = 1.0;
        }
        if (text.height <= 0.0) {
            const double fixed = m_drawing.styleOf(text).fixedHeight;
            text.height = fixed > 0.0 ? fixed : m_drawing.header.textSize;
        }
    }

private:
    [[nodiscard]] std::wstring styleName(std::uint64_t handle, const std::wstring& fallback) const {
        const auto found = handle != 0 ? m_stylesByHandle.find(handle) : m_stylesByHandle.end();
        return found != m_stylesByHandle.end() ? found->second->name : fallback;
    }

    void takeDimStyle(TextEntity& text) const {
        const Header& header = m_drawing.header;
        const auto found = m_dimStyles.find(foldName(text.dimStyle));
        const DimStyle* style = found != m_dimStyles.end() ? &m_drawing.dimStyles[found->second] : nullptr;
        const std::wstring fallback = header.dimTextStyle.empty() ? L"STANDARD" : header.dimTextStyle;
        text.style = styleName(style != nullptr ? style->textStyle : 0, fallback);
        if (const double fixed = m_drawing.styleOf(text).fixedHeight; fixed > 0.0) {
            text.height = fixed;
        } else {
            text.height = style != nullptr && style->textHeight > 0.0 ? style->textHeight : header.dimTextSize;
        }
    }

    const Drawing& m_drawing;
    std::unordered_map<std::wstring, std::size_t> m_dimStyles;
    std::unordered_map<std::uint64_t, const TextStyle*> m_stylesByHandle;
};

} // namespace

void completeDrawing(Drawing& drawing) {
    completeHeader(drawing.header);
    buildIndexes(drawing);
    const Resolver resolver(drawing);
    drawing.texts.change([&](TextEntity& text) { resolver.complete(text); });
}

} // namespace dxf
