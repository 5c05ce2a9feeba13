#pragma once

#include <memory>

#include <Common/FontEngineExport.h>
#include <FontEngine/IRichTextDocumentLayouting.h>
#include <FontEngine/ITextMetrics.h>
#include <render/RichTextDocument.h>

namespace fonts {

// Creates layoutings over one text metrics service. Each call gives a new object
// that the caller owns; the pointer is never empty.
//
// A factory is a plain value and never deleted through this interface, which is
// why it has no virtual destructor.
class FONTENGINE_API IRichTextDocumentLayoutingFactory {
public:
    IRichTextDocumentLayoutingFactory() = default;
    IRichTextDocumentLayoutingFactory(const IRichTextDocumentLayoutingFactory&) = default;
    IRichTextDocumentLayoutingFactory(IRichTextDocumentLayoutingFactory&&) = default;
    IRichTextDocumentLayoutingFactory& operator=(const IRichTextDocumentLayoutingFactory&) = default;
    IRichTextDocumentLayoutingFactory& operator=(IRichTextDocumentLayoutingFactory&&) = default;

    // A layouting of plain paragraphs over a copy of the document.
    virtual std::unique_ptr<IRichTextDocumentLayouting> create(const render::CRichTextDocument& document) const = 0;

    // A layouting by the rules of DXF MText. It borrows the document, which must
    // outlive it; changes made to it are seen by the next layout().
    virtual std::unique_ptr<IRichTextDocumentLayouting>
    createForDxfMTexts(const render::CRichTextDocument& document) const = 0;

    // A layouting by the rules of DXF MText that takes the text apart into glyph
    // clusters, over a copy of the document. Clusters of right-to-left runs are
    // placed to the right of where the text is drawn (see getRects).
    virtual std::unique_ptr<IRichTextDocumentLayouting>
    createForDxfMTextsByClusters(const render::CRichTextDocument& document) const = 0;

protected:
    ~IRichTextDocumentLayoutingFactory() = default;
};

// The library's factory. Any thread may call a factory that no other thread is
// assigning to.
class FONTENGINE_API CRichTextDocumentLayoutingFactory final : public IRichTextDocumentLayoutingFactory {
public:
    // Borrows the service, which must outlive the factory, its copies and all
    // layoutings that they create.
    explicit CRichTextDocumentLayoutingFactory(const ITextMetrics* textMetrics);

    std::unique_ptr<IRichTextDocumentLayouting> create(const render::CRichTextDocument& document) const override;
    std::unique_ptr<IRichTextDocumentLayouting>
    createForDxfMTexts(const render::CRichTextDocument& document) const override;
    std::unique_ptr<IRichTextDocumentLayouting>
    createForDxfMTextsByClusters(const render::CRichTextDocument& document) const override;

private:
    const ITextMetrics* m_textMetrics;
};

} // namespace fonts
