#include "Layouter.h"

#include <Common/Utf.h>

namespace bench {

namespace {

Texts wide(std::string name, const Corpus& corpus, double wrapWidth) {
    Texts texts{std::move(name), {}, wrapWidth};
    texts.paragraphs.reserve(corpus.size());
    for (const std::string& paragraph : corpus) {
        texts.paragraphs.push_back(common::wideFromUtf8(paragraph));
    }
    return texts;
}

void addBoxes(const std::vector<MbRect>& boxes, Sums& sums) {
    for (const MbRect& box : boxes) {
        if (box.xmin <= box.xmax) {
            sums.width += box.xmax - box.xmin;
            sums.height += box.ymax - box.ymin;
        }
    }
}

} // namespace

std::vector<Texts> allTexts() {
    constexpr double column = 300.0;
    std::vector<Texts> texts;
    texts.push_back(wide("labels", labels(), 0.0));
    texts.push_back(wide("notes", notes(), column));
    texts.push_back(wide("world", world(), column));
    return texts;
}

Layouter::Layouter()
    : m_engine(fonts::createFontEngine(family)), m_metrics(fonts::createTextMetricsService(m_engine.get())) {
    fonts::IFont* const font = m_engine->getFont(family, fonts::Weight::Normal, fonts::Style::Normal);
    m_capSize = static_cast<float>(emSize / font->capitalLetterSizeToFontSize(1.0));
}

void Layouter::ask(Question question, const std::wstring& paragraph, double wrapWidth, Sums& sums) const {
    const render::CRichTextDocument document =
        render::makeSingleParagraphDocument(paragraph, family, m_capSize, render::SRichTextFontStyle());
    switch (question) {
    case Question::Box:
        addBoxes(m_metrics->getParagraphRects(document, wrapWidth, 0.0), sums);
        break;
    case Question::Ink:
        addBoxes(m_metrics->getParagraphGeometryRects(document, wrapWidth, 0.0), sums);
        break;
    case Question::Glyphs: {
        std::vector<boost::intrusive_ptr<MbRegion>> regions;
        for (const fonts::SGlyphRunDesc& run :
             m_metrics->getGlyphRuns(document.paragraphs.at(0), wrapWidth, 0.0, std::nullopt, regions)) {
            for (const MbCartPoint& origin : run.glyphOrigins) {
                sums.positions += origin.x;
            }
            sums.glyphs += static_cast<long long>(run.glyphOrigins.size());
        }
        break;
    }
    }
}

} // namespace bench
