// What texts take of the memory while they are laid out.

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include <dwrite.h>
#include <gtest/gtest.h>

#include <FontEngine/FontEngine.h>
#include <oslayer/com_ptr.h>
#include <render/RichTextDocument.h>

#include "CountedMemory.h"

namespace {

constexpr std::size_t longText = 100'000;
constexpr double mostPerCharacter = 150.0;

std::wstring repeated(const std::wstring& part, std::size_t length) {
    std::wstring text;
    text.reserve(length + part.size());
    while (text.size() < length) {
        text += part;
    }
    return text;
}

/// The most that `work` took at a time beside what was there before. What is kept of fonts and words is there already.
template <class Work>
std::size_t peakOf(Work work) {
    const std::size_t before = growth::heapBytes();
    growth::restartPeak();
    work();
    return growth::peakHeapBytes() - before;
}

IDWriteFactory& factory() {
    static const oslayer::com_ptr<IDWriteFactory> shared = [] {
        oslayer::com_ptr<IUnknown> created;
        DWriteCreateFactory(DWRITE_FACTORY_TYPE_SHARED, __uuidof(IDWriteFactory), &created);
        oslayer::com_ptr<IDWriteFactory> queried;
        queried.queryFrom(created);
        return queried;
    }();
    return *shared;
}

/// Lays a text out and asks for all metrics, whose arrays are the caller's.
void askLayout(const std::wstring& text, float width, std::vector<DWRITE_LINE_METRICS>& lines,
               std::vector<DWRITE_CLUSTER_METRICS>& clusters) {
    oslayer::com_ptr<IDWriteTextFormat> format;
    ASSERT_EQ(factory().CreateTextFormat(L"DejaVu Sans", nullptr, DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_STYLE_NORMAL,
                                         DWRITE_FONT_STRETCH_NORMAL, 12.0F, L"en-us", &format),
              S_OK);
    oslayer::com_ptr<IDWriteTextLayout> layout;
    ASSERT_EQ(factory().CreateTextLayout(text.c_str(), static_cast<UINT32>(text.size()), format, width, 0.0F, &layout),
              S_OK);
    DWRITE_TEXT_METRICS metrics{};
    ASSERT_EQ(layout->GetMetrics(&metrics), S_OK);
    UINT32 count = 0;
    ASSERT_EQ(layout->GetLineMetrics(lines.data(), static_cast<UINT32>(lines.size()), &count), S_OK);
    ASSERT_EQ(layout->GetClusterMetrics(clusters.data(), static_cast<UINT32>(clusters.size()), &count), S_OK);
}

struct LongText {
    const char* name;
    std::wstring part;
};

class MemoryOfLayout : public testing::TestWithParam<LongText> {};

TEST_P(MemoryOfLayout, IsAtMost150BytesACharacter) {
    const std::wstring text = repeated(GetParam().part, longText);
    const std::wstring shortText = repeated(GetParam().part, longText / 100);
    std::vector<DWRITE_LINE_METRICS> lines(text.size());
    std::vector<DWRITE_CLUSTER_METRICS> clusters(text.size());
    for (const float width : {0.0F, 300.0F}) {
        askLayout(shortText, width, lines, clusters);
        const std::size_t peak = peakOf([&] { askLayout(text, width, lines, clusters); });
        const double perCharacter = static_cast<double>(peak) / static_cast<double>(text.size());
        RecordProperty(width > 0.0F ? "lines" : "unlimited", std::to_string(perCharacter));
        EXPECT_LE(perCharacter, mostPerCharacter) << "in a box " << width << " wide";
    }
}

INSTANTIATE_TEST_SUITE_P(Texts, MemoryOfLayout,
                         testing::Values(LongText{"Words", L"Fire rated wall, see detail. "},
                                         LongText{"OneWord", L"AVTofi"}, LongText{"Japanese", L"寸法は現場で確認し"},
                                         LongText{"Arabic", L"مخطط الطابق "}, LongText{"Thai", L"แปลนพื้นชั้นล่าง"}),
                         [](const auto& info) { return info.param.name; });

class MemoryOfDocuments : public testing::Test {
protected:
    static render::SRichTextToken token(std::wstring text) {
        return render::makeToken(std::move(text), L"DejaVu Sans", 10.0F, {});
    }

    std::unique_ptr<fonts::IFontEngine> m_engine = fonts::createFontEngine(L"DejaVu Sans");
    std::unique_ptr<fonts::ITextMetrics> m_metrics = fonts::createTextMetricsService(m_engine.get());
};

/// What the glyph runs themselves hold.
std::size_t bytesOf(const std::vector<fonts::SGlyphRunDesc>& runs) {
    std::size_t bytes = 0;
    for (const fonts::SGlyphRunDesc& run : runs) {
        bytes += sizeof(run) + (run.text.capacity() + run.token.text.capacity()) * sizeof(wchar_t) +
                 run.glyphOrigins.capacity() * sizeof(run.glyphOrigins[0]) +
                 run.clusterMap.capacity() * sizeof(run.clusterMap[0]);
    }
    return bytes;
}

TEST_F(MemoryOfDocuments, GlyphRunsOfALongParagraphTakeAtMost150BytesACharacterBesideThemselves) {
    const auto ask = [this](const std::wstring& text) {
        render::CRichTextParagraph paragraph;
        paragraph.tokens.push_back(token(text));
        std::vector<boost::intrusive_ptr<MbRegion>> regions;
        return m_metrics->getGlyphRuns(paragraph, 400.0, 0.0, std::nullopt, regions);
    };
    const std::wstring text = repeated(L"Fire rated wall, see detail. ", longText);
    ask(text.substr(0, longText / 100));
    std::size_t result = 0;
    const std::size_t peak = peakOf([&] { result = bytesOf(ask(text)); });
    const double perCharacter = static_cast<double>(peak - result) / static_cast<double>(text.size());
    RecordProperty("bytes", std::to_string(perCharacter));
    EXPECT_LE(perCharacter, mostPerCharacter);
}

TEST_F(MemoryOfDocuments, AMeasuredParagraphIsGivenBackBeforeTheNextIsShaped) {
    constexpr std::size_t count = 500;
    const auto ask = [this](std::size_t length) {
        std::vector<render::CRichTextParagraph> paragraphs(count);
        for (render::CRichTextParagraph& paragraph : paragraphs) {
            paragraph.tokens.push_back(token(repeated(L"note ", length)));
        }
        const render::CRichTextDocument document = render::makeDocument(std::move(paragraphs));
        m_metrics->getParagraphRects(document, 0.0, 0.0);
        return peakOf([&] { m_metrics->getParagraphRects(document, 100.0, 0.0); }) / count;
    };
    const std::size_t little = ask(20);
    const std::size_t much = ask(120);
    RecordProperty("little", std::to_string(little));
    RecordProperty("much", std::to_string(much));
    // A waiting paragraph holds its text: 6 bytes a character in its layout and 4 in its runs. Shaped, it would hold
    // more than 30 besides.
    EXPECT_LE(much - little, 100 * 20);
}

} // namespace
