#include <FontEngine/RichTextDocumentLayoutingFactory.h>

#include <type_traits>

#include "MockTextMetrics.h"
#include "TestDocuments.h"

using namespace testdocuments;
using fonts::CRichTextDocumentLayoutingFactory;
using fonts::IRichTextDocumentLayouting;
using testing::_;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::NiceMock;
using testing::Return;

namespace {

constexpr auto Left = eRichTextParagraphAlignment::Left;
constexpr MbRect box(0.0, 0.0, 100.0, 50.0);

class LayoutingFactory : public testing::Test {
protected:
    LayoutingFactory() {
        ON_CALL(textMetrics, getParagraphRects(_, _, _))
            .WillByDefault(Return(std::vector<MbRect>{{0.0, -10.0, 20.0, 0.0}}));
        ON_CALL(textMetrics, getParagraphGeometryRects(_, _, _))
            .WillByDefault(Return(std::vector<MbRect>{{2.0, -9.0, 15.0, -2.0}}));
    }

    NiceMock<MockTextMetrics> textMetrics;
    const render::CRichTextDocument document = makeAligned({Left});
};

} // namespace

static_assert(!std::has_virtual_destructor_v<fonts::IRichTextDocumentLayoutingFactory>);
static_assert(std::has_virtual_destructor_v<IRichTextDocumentLayouting>);

TEST_F(LayoutingFactory, TwoCallsReturnTwoObjectsThatDoNotAffectEachOther) {
    const CRichTextDocumentLayoutingFactory factory(&textMetrics);
    const std::unique_ptr<IRichTextDocumentLayouting> first = factory.create(document);
    const std::unique_ptr<IRichTextDocumentLayouting> second = factory.create(document);
    ASSERT_NE(first, nullptr);
    ASSERT_NE(first, second);
    first->setLayoutRect(box);
    first->layout();
    second->layout();
    EXPECT_THAT(first->getRects(), ElementsAre(MbRect(0.0, 40.0, 100.0, 50.0)));
    EXPECT_THAT(second->getRects(), ElementsAre(MbRect(0.0, -10.0, 20.0, 0.0)));
}

TEST_F(LayoutingFactory, EachOperationMakesItsOwnKind) {
    const CRichTextDocumentLayoutingFactory factory(&textMetrics);
    const auto plain = factory.create(document);
    const auto dxf = factory.createForDxfMTexts(document);
    const auto clusters = factory.createForDxfMTextsByClusters(document);
    for (IRichTextDocumentLayouting* layouting : {plain.get(), dxf.get(), clusters.get()}) {
        layouting->setLayoutRect(box);
        layouting->layout();
    }
    // As laid out; at its ink; no glyph runs, so no clusters.
    EXPECT_THAT(plain->getRects(), ElementsAre(MbRect(0.0, 40.0, 100.0, 50.0)));
    EXPECT_THAT(dxf->getRects(), ElementsAre(MbRect(2.0, 38.0, 102.0, 48.0)));
    EXPECT_THAT(clusters->getRects(), IsEmpty());
    EXPECT_THAT(clusters->getParagraphs(), IsEmpty());
}

TEST_F(LayoutingFactory, ACopiedFactoryUsesTheServiceOfTheFactoryItWasCopiedFrom) {
    NiceMock<MockTextMetrics> otherMetrics;
    EXPECT_CALL(otherMetrics, getParagraphRects(_, _, _)).Times(0);
    EXPECT_CALL(textMetrics, getParagraphRects(_, _, _)).Times(3);

    const CRichTextDocumentLayoutingFactory factory(&textMetrics);
    CRichTextDocumentLayoutingFactory assigned(&otherMetrics);
    assigned = factory;
    CRichTextDocumentLayoutingFactory copied(factory);
    const CRichTextDocumentLayoutingFactory moved(std::move(copied));
    for (const CRichTextDocumentLayoutingFactory* each : {&factory, &std::as_const(assigned), &moved})
        each->create(document)->layout();
}

TEST_F(LayoutingFactory, TheDxfLayoutingBorrowsTheDocumentAndTheOthersCopyIt) {
    const CRichTextDocumentLayoutingFactory factory(&textMetrics);
    render::CRichTextDocument changing = makeAligned({Left});
    const auto plain = factory.create(changing);
    const auto dxf = factory.createForDxfMTexts(changing);
    changing = render::CRichTextDocument();
    EXPECT_EQ(plain->getParagraphs().size(), 1u);
    EXPECT_THAT(dxf->getParagraphs(), IsEmpty());
}
