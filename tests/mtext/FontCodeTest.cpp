#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "MTextTesting.h"

namespace mtext::testing {
namespace {

struct FontCase {
    std::wstring_view code;
    FontRequest request;
};

class FontCode : public ::testing::TestWithParam<FontCase> {};

TEST_P(FontCode, AsksForTheFont) {
    Defaults defaults = sampleDefaults();
    std::vector<FontRequest> requests;
    defaults.resolveFont = [&](const FontRequest& request) {
        requests.push_back(request);
        return L"<" + request.name + L">";
    };
    const auto runs = tokens(parse(std::wstring(GetParam().code) + L"x", defaults));
    const FontRequest& expected = GetParam().request;
    ASSERT_EQ(requests.size(), 1U);
    EXPECT_EQ(requests[0].name, expected.name);
    EXPECT_EQ(requests[0].bigFont, expected.bigFont);
    EXPECT_EQ(requests[0].bold, expected.bold);
    EXPECT_EQ(requests[0].italic, expected.italic);
    EXPECT_EQ(requests[0].charset, expected.charset);
    EXPECT_EQ(requests[0].pitch, expected.pitch);
    EXPECT_EQ(requests[0].shapeFont, expected.shapeFont);
    ASSERT_EQ(runs.size(), 1U);
    EXPECT_EQ(runs[0].text, L"x");
    EXPECT_EQ(runs[0].fontFamily, L"<" + expected.name + L">");
    EXPECT_EQ(runs[0].fontStyle.bold, expected.bold);
    EXPECT_EQ(runs[0].fontStyle.italic, expected.italic);
}

FontRequest font(std::wstring name, bool bold = false, bool italic = false) {
    FontRequest request;
    request.name = std::move(name);
    request.bold = bold;
    request.italic = italic;
    return request;
}

FontRequest shapes(std::wstring name, std::wstring bigFont = L"") {
    FontRequest request = font(std::move(name));
    request.bigFont = std::move(bigFont);
    request.shapeFont = true;
    return request;
}

FontRequest traits(FontRequest request, unsigned charset, unsigned pitch) {
    request.charset = charset;
    request.pitch = pitch;
    return request;
}

INSTANTIATE_TEST_SUITE_P(
    Forms, FontCode,
    ::testing::Values(FontCase{L"\\fArial|b1|i0|c0|p34;", traits(font(L"Arial", true), 0, 34)},
                      FontCase{L"\\fTimes New Roman|b0|i1|c204|p18;",
                               traits(font(L"Times New Roman", false, true), 204, 18)},
                      // A bar at the end.
                      FontCase{L"\\fArial|b1|i0|c134|p34|;", traits(font(L"Arial", true), 134, 34)},
                      // A name alone.
                      FontCase{L"\\fArial;", font(L"Arial")}, FontCase{L"\\fArial|i1;", font(L"Arial", false, true)},
                      FontCase{L"\\f Arial |B1| I1 ;", font(L"Arial", true, true)},
                      FontCase{L"\\fArial||b1|x|b|q7|c-1|p99999999999;", font(L"Arial", true)},
                      // Fonts' files, with and without a second one for Asian characters.
                      FontCase{L"\\Fsimplex.shx;", shapes(L"simplex.shx")},
                      FontCase{L"\\FROMANS.SHX|c0;",
                               [] {
                                   FontRequest request = shapes(L"ROMANS.SHX");
                                   request.charset = 0;
                                   return request;
                               }()},
                      FontCase{L"\\Fsimplex.shx,gbcbig.shx;", shapes(L"simplex.shx", L"gbcbig.shx")},
                      FontCase{L"\\Fsimplex, gbcbig;", shapes(L"simplex", L"gbcbig")},
                      FontCase{L"\\Fromans;", shapes(L"romans")}, FontCase{L"\\Farial.TTF;", font(L"arial.TTF")},
                      FontCase{L"\\FArial|b0|i0;", font(L"Arial")},
                      // A name that the file's code page does not have.
                      FontCase{L"\\f\\U+5B8B\\U+4F53|b1;", font(L"\u5B8B\u4F53", true)}));

TEST(FontCode, WithoutAResolverTheNameIsTheFamily) {
    EXPECT_EQ(tokens(parse(L"\\Fisocp.shx;x", sampleDefaults()))[0].fontFamily, L"isocp.shx");
}

TEST(FontCode, AResolverWithoutAnAnswerLeavesTheName) {
    Defaults defaults = sampleDefaults();
    defaults.resolveFont = [](const FontRequest&) { return std::wstring(); };
    EXPECT_EQ(tokens(parse(L"\\fArial;x", defaults))[0].fontFamily, L"Arial");
}

TEST(FontCode, AFontIsLookedForOnceHoweverOftenItIsNamed) {
    Defaults defaults = sampleDefaults();
    int calls = 0;
    defaults.resolveFont = [&](const FontRequest& request) {
        ++calls;
        return request.name;
    };
    parse(L"{\\fArial|b1;a}{\\fArial|b1;b}{\\fArial|b0;c}", defaults);
    EXPECT_EQ(calls, 2);
}

TEST(FontCode, WithoutANameChangesTheFaceOfTheFamily) {
    const auto runs = tokens(parse(L"{\\fArial;a\\f|b1;b}\\f;c", sampleDefaults()));
    ASSERT_EQ(runs.size(), 3U);
    EXPECT_EQ(runs[1].fontFamily, L"Arial");
    EXPECT_TRUE(runs[1].fontStyle.bold);
    EXPECT_EQ(runs[2].fontFamily, L"Style Font");
}

TEST(FontCode, LeavesTheUnderline) {
    EXPECT_TRUE(tokens(parse(L"\\L\\fArial;x", sampleDefaults()))[0].fontStyle.underline);
}

TEST(FontCode, ASecondFontIsReportedWhenNobodyTookIt) {
    EXPECT_EQ(codes(parse(L"\\Fsimplex.shx,gbcbig.shx;x", sampleDefaults())), std::vector{DiagnosticCode::BigFont});
}

TEST(FontCode, WithoutASemicolonIsText) {
    for (const std::wstring_view content : {L"\\fArial text", L"\\f", L"\\FArial|b1"}) {
        const Result result = parse(content, sampleDefaults());
        EXPECT_EQ(plainText(result.document), content);
        EXPECT_EQ(codes(result), std::vector{DiagnosticCode::MalformedCode});
    }
    EXPECT_EQ(visible(L"{\\fArial text}\\Pmore; text"), L"\\fArial text\nmore; text");
}

} // namespace
} // namespace mtext::testing
