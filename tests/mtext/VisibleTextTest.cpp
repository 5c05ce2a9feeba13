#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>

#include "MTextTesting.h"

namespace mtext::testing {
namespace {

// Contents are put together from pieces of which it is known what they show:
// what is read must be the pieces' text, whatever stands beside what.
struct Piece {
    std::wstring_view content;
    std::wstring_view text;
};

constexpr std::array PIECES{
    Piece{L"wall", L"wall"},
    Piece{L" ", L" "},
    Piece{L"; ", L"; "},
    Piece{L"\u0416\u4E9C", L"\u0416\u4E9C"},
    Piece{L"\\P", L"\n"},
    Piece{L"\\N", L"\n"},
    Piece{L"\\X", L"\n"},
    Piece{L"\r\n", L"\n"},
    Piece{L"\\~", L"\u00A0"},
    Piece{L"\\\\", L"\\"},
    Piece{L"\\{", L"{"},
    Piece{L"\\}", L"}"},
    Piece{L"{", L""},
    Piece{L"}", L""},
    Piece{L"%%c", L"\u00D8"},
    Piece{L"%%%", L"%"},
    Piece{L"%%u", L""},
    Piece{L"%%065", L"A"},
    Piece{L"^I", L"\t"},
    Piece{L"^ ", L"^"},
    Piece{L"\\U+00fc", L"\u00FC"},
    Piece{L"\\M+18CE4", L"\uFFFD"},
    Piece{L"\\S1/2;", L"1/2"},
    Piece{L"\\S+1^ -2;", L"+1/-2"},
    Piece{L"\\fArial|b1|i0|c134|p34|;", L""},
    Piece{L"\\Fsimplex.shx,gbcbig.shx;", L""},
    Piece{L"\\H1.5x;", L""},
    Piece{L"\\H0;", L""},
    Piece{L"\\C1;", L""},
    Piece{L"\\c255;", L""},
    Piece{L"\\A1;", L""},
    Piece{L"\\Q15;", L""},
    Piece{L"\\W0.8;", L""},
    Piece{L"\\T2;", L""},
    Piece{L"\\L", L""},
    Piece{L"\\l", L""},
    Piece{L"\\O", L""},
    Piece{L"\\k", L""},
    Piece{L"\\pxi-3,l4,t4;", L""},
    Piece{L"\\pqc;", L""},
    Piece{L"%<\\AcVar {Date} \\f \"x;\">%", L"%<\\AcVar {Date} \\f \"x;\">%"},
    Piece{L"\\Zebra", L"\\Zebra"},
};

std::wstring withoutNoBreakSpacesBetweenDigits(std::wstring text) {
    for (std::size_t i = 1; i + 1 < text.size();) {
        const auto digit = [](wchar_t unit) { return unit >= L'0' && unit <= L'9'; };
        if (text[i] == 0xA0 && digit(text[i - 1]) && digit(text[i + 1])) {
            text.erase(i, 1);
        } else {
            ++i;
        }
    }
    return text;
}

TEST(VisibleText, IsNeverLostWhateverCodesStandBesideIt) {
    std::mt19937 random(20240229);
    for (int round = 0; round < 3000; ++round) {
        std::wstring content;
        std::wstring expected;
        for (auto count = random() % 30; count > 0; --count) {
            const Piece& piece = PIECES[random() % PIECES.size()];
            content += piece.content;
            expected += piece.text;
        }
        const Result result = parse(content, sampleDefaults());
        // Fractions keep apart from each other; nothing else may be added.
        ASSERT_EQ(withoutNoBreakSpacesBetweenDigits(plainText(result.document)),
                  withoutNoBreakSpacesBetweenDigits(expected))
            << "round " << round << ", " << content.size() << " units";
        ASSERT_EQ(result.formats.size(), result.document.paragraphs.size());
    }
}

// Noise of the characters that codes are made of, where only letters that no
// code can take are counted: they must all come out, in their order.
TEST(VisibleText, LettersComeThroughAnyNoise) {
    constexpr std::wstring_view NOISE = L"\\\\\\{}%^;|,/#<>+fFHCcAQTWpSPLlOoKkUM~0123456789.x* \r\n";
    constexpr std::wstring_view LETTERS = L"\u0416\u0428\u042B\u4E9C";
    std::mt19937 random(1961);
    std::size_t kept = 0;
    for (int round = 0; round < 3000; ++round) {
        std::wstring content;
        std::wstring letters;
        for (int i = 0; i < 60; ++i) {
            if (random() % 4 == 0) {
                letters += LETTERS[random() % LETTERS.size()];
                content += letters.back();
            } else {
                content += NOISE[random() % NOISE.size()];
            }
        }
        const Result result = parse(content, sampleDefaults());
        std::wstring shown;
        for (const wchar_t unit : plainText(result.document)) {
            if (LETTERS.find(unit) != std::wstring_view::npos) {
                shown += unit;
            }
        }
        // A font's name may hold letters; it is the only argument that may.
        if (content.find(L"\\f") == std::wstring::npos && content.find(L"\\F") == std::wstring::npos) {
            ASSERT_EQ(shown, letters);
            ++kept;
        }
    }
    EXPECT_GT(kept, 500U);
}

} // namespace
} // namespace mtext::testing
