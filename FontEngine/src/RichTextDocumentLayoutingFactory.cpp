#include <FontEngine/RichTextDocumentLayoutingFactory.h>

#include "RichTextClusterDxfLayouting.h"
#include "RichTextDocumentLayouting.h"
#include "RichTextDxfLayouting.h"

namespace fonts {

CRichTextDocumentLayoutingFactory::CRichTextDocumentLayoutingFactory(const ITextMetrics* textMetrics)
    : m_textMetrics(textMetrics) {}

std::unique_ptr<IRichTextDocumentLayouting>
CRichTextDocumentLayoutingFactory::create(const render::CRichTextDocument& document) const {
    return std::make_unique<CRichTextDocumentLayouting>(document, m_textMetrics);
}

std::unique_ptr<IRichTextDocumentLayouting>
CRichTextDocumentLayoutingFactory::createForDxfMTexts(const render::CRichTextDocument& document) const {
    return std::make_unique<CRichTextDxfLayouting>(document, m_textMetrics);
}

std::unique_ptr<IRichTextDocumentLayouting>
CRichTextDocumentLayoutingFactory::createForDxfMTextsByClusters(const render::CRichTextDocument& document) const {
    return std::make_unique<CRichTextClusterDxfLayouting>(document, m_textMetrics);
}

} // namespace fonts
