#include <FontEngine/RichTextDocumentProcessor.h>

#include <gtest/gtest.h>

#include <oslayer/Errors.h>
#include <render/RichTextDocument.h>

// Only where an element of a std::wstring holds more than a UTF-16 unit can text
// be wrong in this way.

namespace {

std::wstring notUtf16() {
    return std::wstring(1, static_cast<wchar_t>(0x1F600));
}

template <typename Operation>
std::string refusalOf(const Operation& operation) {
    try {
        operation();
    } catch (const oslayer::EOsLayerError& error) {
        return error.what();
    }
    return "no error";
}

} // namespace

TEST(NotUtf16, SplittingIsRefused) {
    const auto engine = fonts::createFontEngine(L"DejaVu Sans");
    const auto token = render::makeToken(notUtf16(), L"DejaVu Sans", 2.5f, {});
    EXPECT_EQ(refusalOf([&] { engine->splitTokenByFallbackFonts(token); }), "E_INVALIDARG");
}

TEST(NotUtf16, LayoutIsRefused) {
    const auto engine = fonts::createFontEngine(L"DejaVu Sans");
    const auto document = render::makeSingleParagraphDocument(L"a" + notUtf16(), L"DejaVu Sans", 2.5f, {});
    EXPECT_EQ(refusalOf([&] { fonts::CRichTextDocumentProcessor::process(document, engine.get()); }), "E_INVALIDARG");
}
