#include <FontEngine/ParagraphLayout.h>

#include <utility>

#include "FaceDescription.h"
#include "LayoutData.h"
#include "OptionsCheck.h"
#include "ParagraphBuilder.h"

namespace fonts {

CParagraphLayout CParagraphLayout::make(const render::CRichTextParagraph& paragraph, IFontEngine& engine,
                                        const SParagraphLayoutOptions& options) {
    checkOptions(options, paragraph);
    return CParagraphLayout(buildParagraph(paragraph, engine, options));
}

CParagraphLayout::CParagraphLayout() : m_data(std::make_shared<SParagraphLayoutData>()) {}

CParagraphLayout::CParagraphLayout(std::shared_ptr<const SParagraphLayoutData> data) noexcept
    : m_data(std::move(data)) {}

const std::wstring& CParagraphLayout::text() const noexcept {
    return m_data->text;
}

const MbRect& CParagraphLayout::box() const noexcept {
    return m_data->box;
}

const MbRect& CParagraphLayout::ink() const noexcept {
    return m_data->ink;
}

double CParagraphLayout::naturalWidth() const noexcept {
    return m_data->naturalWidth;
}

std::span<const SLine> CParagraphLayout::lines() const noexcept {
    return m_data->lines;
}

std::span<const SRun> CParagraphLayout::runs() const noexcept {
    return m_data->runs;
}

std::span<const SGlyph> CParagraphLayout::glyphs() const noexcept {
    return m_data->glyphs;
}

std::span<const SGlyph> CParagraphLayout::glyphs(const SRun& run) const {
    return std::span(m_data->glyphs).subspan(run.firstGlyph, run.glyphCount);
}

std::span<const SCluster> CParagraphLayout::clusters() const noexcept {
    return m_data->clusters;
}

std::span<const SBar> CParagraphLayout::bars() const noexcept {
    return m_data->bars;
}

std::span<const SInlineBoxPlace> CParagraphLayout::inlineBoxes() const noexcept {
    return m_data->inlineBoxes;
}

std::size_t CParagraphLayout::faceCount() const noexcept {
    return m_data->faces.size();
}

SFontFace CParagraphLayout::face(std::size_t index) const {
    return describeFace(m_data->faces.at(index));
}

std::span<const SMissingCharacter> CParagraphLayout::missing() const noexcept {
    return m_data->missing;
}

std::vector<SReplacedFamily> CParagraphLayout::replacedFamilies() const {
    std::vector<SFontFace> faces;
    for (const oslayer::com_ptr<IDWriteFontFace>& pFace : m_data->faces) {
        faces.push_back(describeFace(pFace));
    }
    std::vector<SReplacedFamily> replaced;
    for (const SRun& run : m_data->runs) {
        const std::wstring& asked = m_data->families[run.token];
        const SFontFace& used = faces[run.face];
        if (asked == used.family || asked == used.win32Family) {
            continue;
        }
        const bool continues =
            !replaced.empty() && replaced.back().token == run.token && replaced.back().face == run.face &&
            replaced.back().range.startPosition + replaced.back().range.length == run.range.startPosition;
        if (continues) {
            replaced.back().range.length += run.range.length;
        } else {
            replaced.push_back({run.token, run.range, run.face});
        }
    }
    return replaced;
}

} // namespace fonts
