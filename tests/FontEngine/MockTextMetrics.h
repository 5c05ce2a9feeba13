#pragma once

#include <gmock/gmock.h>

#include <FontEngine/ITextMetrics.h>

// A metrics service that answers what a test tells it to.
class MockTextMetrics : public fonts::ITextMetrics {
public:
    MOCK_METHOD(MbRect, getTextRect,
                (const std::wstring& text, const std::wstring& fontFamily, float fontCapSize,
                 render::SRichTextFontStyle fontStyle),
                (const, override));
    MOCK_METHOD(MbRect, getDocumentRect, (const render::CRichTextDocument& document), (const, override));
    MOCK_METHOD(std::vector<MbRect>, getParagraphRects,
                (const render::CRichTextDocument& document, double maxWidth, double maxHeight), (const, override));
    MOCK_METHOD(MbRect, getTextGeometryRect,
                (const std::wstring& text, const std::wstring& fontFamily, float fontCapSize,
                 std::optional<double> tabStopWidth, render::SRichTextFontStyle fontStyle),
                (const, override));
    MOCK_METHOD(MbRect, getDocumentGeometryRect,
                (const render::CRichTextDocument& document, double maxWidth, double maxHeight), (const, override));
    MOCK_METHOD(std::vector<MbRect>, getParagraphGeometryRects,
                (const render::CRichTextDocument& document, double maxWidth, double maxHeight), (const, override));
    MOCK_METHOD(double, getTextBaseline,
                (const std::wstring& text, const std::wstring& fontFamily, float fontCapSize,
                 std::optional<double> tabStopWidth, render::SRichTextFontStyle fontStyle),
                (const, override));
    MOCK_METHOD(fonts::SFontMetrics, getFontMetrics,
                (const std::wstring& fontFamily, double fontCapSize, bool italic, bool bold), (const, override));
    MOCK_METHOD(std::vector<fonts::SGlyphRunDesc>, getGlyphRuns,
                (const render::CRichTextParagraph& paragraph, double maxWidth, double maxHeight,
                 std::optional<double> tabStopWidth, std::vector<boost::intrusive_ptr<MbRegion>>& decorationRegions),
                (const, override));
};
