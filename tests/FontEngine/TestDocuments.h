#pragma once

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <Common/Violations.h>
#include <geometry/MbRect.h>
#include <render/RichTextDocument.h>

// Documents and expectations that the tests of this folder share.
namespace testdocuments {

using render::eRichTextParagraphAlignment;
using render::eRichTextParagraphVerticalAlignment;

inline render::CRichTextParagraph
makeParagraph(std::wstring text, eRichTextParagraphAlignment alignment = eRichTextParagraphAlignment::Left,
              eRichTextParagraphVerticalAlignment verticalAlignment = eRichTextParagraphVerticalAlignment::Top,
              std::wstring fontFamily = L"Liberation Sans", float fontCapSize = 10.0f) {
    render::CRichTextParagraph paragraph;
    paragraph.alignment = alignment;
    paragraph.verticalAlignment = verticalAlignment;
    paragraph.tokens.push_back(render::makeToken(std::move(text), std::move(fontFamily), fontCapSize, {}));
    return paragraph;
}

// One paragraph "x" for each alignment.
inline render::CRichTextDocument makeAligned(const std::vector<eRichTextParagraphAlignment>& alignments) {
    std::vector<render::CRichTextParagraph> paragraphs;
    for (const eRichTextParagraphAlignment alignment : alignments)
        paragraphs.push_back(makeParagraph(L"x", alignment));
    return render::makeDocument(std::move(paragraphs));
}

// Where a violation says it happened, without the line.
template <class Violation, class Action>
std::string violationPlace(Action&& action) {
    try {
        action();
    } catch (const Violation& violation) {
        const std::string message(violation.message.begin(), violation.message.end());
        return message.substr(0, message.find('('));
    }
    return "no such violation";
}

} // namespace testdocuments
