#include "../../FontEngine/src/TextAnalysis.h"

#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

using fonts::CLocalTextAnalysis;
using fonts::CTextAnalysis;

namespace {

constexpr std::wstring_view text = L"abcdef";
constexpr const WCHAR* localeName = L"en-us";

struct TextStretch {
    const WCHAR* string;
    UINT32 length;

    friend bool operator==(const TextStretch&, const TextStretch&) = default;
};

TextStretch textAt(CTextAnalysis& source, UINT32 position) {
    TextStretch stretch{L"unset", 77};
    EXPECT_EQ(source.GetTextAtPosition(position, &stretch.string, &stretch.length), S_OK);
    return stretch;
}

TextStretch textBefore(CTextAnalysis& source, UINT32 position) {
    TextStretch stretch{L"unset", 77};
    EXPECT_EQ(source.GetTextBeforePosition(position, &stretch.string, &stretch.length), S_OK);
    return stretch;
}

// Says when it is destroyed.
class WatchedSource : public CTextAnalysis {
public:
    explicit WatchedSource(bool& destroyed)
        : CTextAnalysis(text.data(), 6, localeName, nullptr, 0, 0), m_destroyed(destroyed) {}
    ~WatchedSource() override { m_destroyed = true; }

private:
    bool& m_destroyed;
};

class SourceOfRuns : public CTextAnalysis {
public:
    explicit SourceOfRuns(std::vector<fonts::SAnalysisRun> runs)
        : CTextAnalysis(text.data(), 6, localeName, nullptr, 1, 0) {
        m_runs = std::move(runs);
    }

    // Bidi level and length at a position.
    std::pair<int, UINT32> levelAt(UINT32 position) {
        UINT32 length = 77;
        auto orientation = DWRITE_VERTICAL_GLYPH_ORIENTATION_STACKED;
        UINT8 level = 77;
        EXPECT_EQ(GetVerticalGlyphOrientation(position, &length, &orientation, &level), S_OK);
        EXPECT_EQ(orientation, DWRITE_VERTICAL_GLYPH_ORIENTATION_DEFAULT);
        return {level, length};
    }
};

class CountingSubstitution final : public IDWriteNumberSubstitution {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++count; }
    ULONG STDMETHODCALLTYPE Release() override { return --count; }

    ULONG count = 1;
};

} // namespace

TEST(TextAnalysis, TextAtTheStartIsTheWholeAndAtTheEndNothing) {
    CTextAnalysis source(text.data(), 6, localeName, nullptr, 0, 0);
    EXPECT_EQ(textAt(source, 0), (TextStretch{text.data(), 6}));
    EXPECT_EQ(textAt(source, 2), (TextStretch{text.data() + 2, 4}));
    EXPECT_EQ(textAt(source, 5), (TextStretch{text.data() + 5, 1}));
    EXPECT_EQ(textAt(source, 6), (TextStretch{nullptr, 0}));
    EXPECT_EQ(textAt(source, 0xFFFFFFFFu), (TextStretch{nullptr, 0}));
}

TEST(TextAnalysis, TextBeforeTheStartIsNothingAndBeforeTheEndTheWhole) {
    CTextAnalysis source(text.data(), 6, localeName, nullptr, 0, 0);
    EXPECT_EQ(textBefore(source, 0), (TextStretch{nullptr, 0}));
    EXPECT_EQ(textBefore(source, 2), (TextStretch{text.data(), 2}));
    EXPECT_EQ(textBefore(source, 6), (TextStretch{text.data(), 6}));
    EXPECT_EQ(textBefore(source, 7), (TextStretch{nullptr, 0}));
}

TEST(TextAnalysis, AnswersItsTwoInterfacesWithAReference) {
    CLocalTextAnalysis source(text.data(), 6, localeName, nullptr, 0, 0);
    void* object = nullptr;
    EXPECT_EQ(source.QueryInterface(__uuidof(IDWriteTextAnalysisSource1), &object), S_OK);
    EXPECT_EQ(object, static_cast<IDWriteTextAnalysisSource1*>(&source));
    object = nullptr;
    EXPECT_EQ(source.QueryInterface(__uuidof(IDWriteTextAnalysisSource), &object), S_OK);
    EXPECT_EQ(object, static_cast<IDWriteTextAnalysisSource*>(&source));
    EXPECT_EQ(source.AddRef(), 3u);
}

TEST(TextAnalysis, DoesNotAnswerForIUnknown) {
    CLocalTextAnalysis source(text.data(), 6, localeName, nullptr, 0, 0);
    for (const IID& iid : {__uuidof(IUnknown), __uuidof(IDWriteFactory)}) {
        void* object = &source;
        EXPECT_EQ(source.QueryInterface(iid, &object), E_NOINTERFACE);
        EXPECT_EQ(object, nullptr);
    }
    EXPECT_EQ(source.AddRef(), 1u);
}

TEST(TextAnalysis, CountStartsAtZeroAndTheLastReleaseDeletes) {
    bool destroyed = false;
    CTextAnalysis* source = new WatchedSource(destroyed);
    EXPECT_EQ(source->AddRef(), 1u);
    EXPECT_EQ(source->AddRef(), 2u);
    EXPECT_EQ(source->Release(), 1u);
    EXPECT_FALSE(destroyed);
    EXPECT_EQ(source->Release(), 0u);
    EXPECT_TRUE(destroyed);
}

TEST(TextAnalysis, LocalSourceOutlivesEveryRelease) {
    CLocalTextAnalysis source(text.data(), 6, localeName, nullptr, 0, 0);
    IDWriteTextAnalysisSource1& seenByPlatform = source;
    EXPECT_EQ(seenByPlatform.AddRef(), 1u);
    EXPECT_EQ(seenByPlatform.Release(), 0u);
    EXPECT_EQ(seenByPlatform.AddRef(), 1u);
    EXPECT_EQ(seenByPlatform.Release(), 0u);
    EXPECT_EQ(textAt(source, 0), (TextStretch{text.data(), 6}));
}

TEST(TextAnalysis, ReadingDirectionIsTheLowestBit) {
    for (const std::uint32_t direction : {0u, 1u, 2u, 3u, 0xFFFFFFFEu}) {
        CTextAnalysis source(text.data(), 6, localeName, nullptr, direction, 1);
        EXPECT_EQ(source.GetParagraphReadingDirection(),
                  direction % 2 == 0 ? DWRITE_READING_DIRECTION_LEFT_TO_RIGHT : DWRITE_READING_DIRECTION_RIGHT_TO_LEFT);
    }
}

TEST(TextAnalysis, OneLocaleCoversTheRestOfTheText) {
    CTextAnalysis source(text.data(), 6, localeName, nullptr, 0, 0);
    const WCHAR* name = nullptr;
    UINT32 length = 0;
    EXPECT_EQ(source.GetLocaleName(2, &length, &name), S_OK);
    EXPECT_EQ(name, localeName);
    EXPECT_EQ(length, 4u);
}

TEST(TextAnalysis, WithTheEnginesArgumentsNoNumberSubstitutionIsHandedOut) {
    CTextAnalysis source(text.data(), 6, localeName, nullptr, 0, 0);
    CountingSubstitution unset;
    IDWriteNumberSubstitution* substitution = &unset;
    UINT32 length = 0;
    EXPECT_EQ(source.GetNumberSubstitution(1, &length, &substitution), S_OK);
    EXPECT_EQ(substitution, nullptr);
    EXPECT_EQ(length, 5u);
    EXPECT_EQ(source.GetParagraphReadingDirection(), DWRITE_READING_DIRECTION_LEFT_TO_RIGHT);
}

TEST(TextAnalysis, NumberSubstitutionIsHandedOutWithAReference) {
    CountingSubstitution given;
    CTextAnalysis source(text.data(), 6, localeName, &given, 0, 0);
    EXPECT_EQ(given.count, 1u);
    IDWriteNumberSubstitution* substitution = nullptr;
    UINT32 length = 0;
    EXPECT_EQ(source.GetNumberSubstitution(1, &length, &substitution), S_OK);
    EXPECT_EQ(substitution, &given);
    EXPECT_EQ(given.count, 2u);
}

TEST(TextAnalysis, WithoutRunsTheRestOfTheTextHasTheParagraphsDirection) {
    SourceOfRuns source({});
    EXPECT_EQ(source.levelAt(0), std::pair(1, 6u));
    EXPECT_EQ(source.levelAt(4), std::pair(1, 2u));
    EXPECT_EQ(source.levelAt(9), std::pair(1, 0u));
}

TEST(TextAnalysis, OrientationHoldsAsLongAsTheRunsKeepTheirLevel) {
    // "ab" and "c" at level 0, "d" at level 1, "ef" at level 0 again; the
    // records do not stand in text order.
    SourceOfRuns source({{0, 2, 0, 2}, {3, 1, 1, 3}, {2, 1, 0, 1}, {4, 2, 0, 0}});
    EXPECT_EQ(source.levelAt(0), std::pair(0, 3u));
    EXPECT_EQ(source.levelAt(1), std::pair(0, 2u));
    EXPECT_EQ(source.levelAt(2), std::pair(0, 1u));
    EXPECT_EQ(source.levelAt(3), std::pair(1, 1u));
    EXPECT_EQ(source.levelAt(5), std::pair(0, 1u));
    EXPECT_EQ(source.levelAt(0), std::pair(0, 3u));
    // Beyond all runs.
    EXPECT_EQ(source.levelAt(6), std::pair(1, 0u));
    EXPECT_EQ(source.levelAt(4), std::pair(0, 2u));
}

TEST(TextAnalysis, IndexPastTheRunsEndsTheSpan) {
    SourceOfRuns source({{0, 2, 1, 7}, {2, 4, 1, 0}});
    EXPECT_EQ(source.levelAt(0), std::pair(1, 2u));
}
