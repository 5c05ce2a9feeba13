#include "support/LayoutTestSupport.h"

#include <algorithm>
#include <cmath>
#include <random>

// What holds for every text, whatever its script, direction and box: a host that edits text relies on it.

namespace platform_test {
namespace {

struct Sample {
    const char* name;
    std::u16string text;
};

const std::vector<Sample>& samples() {
    static const std::vector<Sample> all = {
        {"empty", u""},
        {"Latin", u"All dimensions shall be checked on site, office affixes too."},
        {"lines", u"one\ntwo\r\n\nfour\u2028five\n"},
        {"marks", u"e\u0301a\u0300\u0316x\u0302 o\u0308"},
        {"Greek", u"Όλες οι διαστάσεις ελέγχονται επί τόπου."},
        {"Cyrillic", u"Все размеры проверить на месте."},
        {"Hebrew", u"יש לבדוק את כל המידות באתר."},
        {"Arabic", u"تُفحص جميع الأبعاد في الموقع."},
        {"Urdu", u"تمام پیمائشیں موقع پر جانچ لیں۔"},
        {"Thaana", u"ދިވެހިބަސް ލިޔުން"},
        {"mixed", u"Note 12: יש לבדוק 3.50 x 2.10 m (אתר A-1) before الموقع 14."},
        {"nested", u"a \u202Bb \u202Aאבג 12\u202C d\u202C e \u2067fאg\u2069 h"},
        {"Armenian", u"Բոլոր չափերը ստուգել տեղում։"},
        {"Georgian", u"ყველა ზომა შემოწმდეს ადგილზე."},
        {"Devanagari", u"सभी माप स्थल पर जाँचें। क्षत्रिय"},
        {"Bengali", u"সব মাপ কার্যস্থলে যাচাই করুন।"},
        {"Gurmukhi", u"ਸਾਰੇ ਮਾਪ ਮੌਕੇ ਤੇ ਜਾਂਚੋ।"},
        {"Gujarati", u"બધાં માપ સ્થળ પર તપાસો."},
        {"Oriya", u"ସମସ୍ତ ମାପ ସ୍ଥଳରେ ଯାଞ୍ଚ କରନ୍ତୁ।"},
        {"Tamil", u"எல்லா அளவுகளையும் தளத்தில் சரிபார்க்கவும்."},
        {"Telugu", u"అన్ని కొలతలను స్థలంలో తనిఖీ చేయండి."},
        {"Kannada", u"ಎಲ್ಲಾ ಅಳತೆಗಳನ್ನು ಸ್ಥಳದಲ್ಲಿ ಪರಿಶೀಲಿಸಿ."},
        {"Malayalam", u"എല്ലാ അളവുകളും സ്ഥലത്ത് പരിശോധിക്കുക."},
        {"Sinhala", u"සියලු මිනුම් ස්ථානයේදී පරීක්ෂා කරන්න."},
        {"Thai", u"ตรวจสอบขนาดทั้งหมดที่หน้างาน"},
        {"Lao", u"ກວດສອບຂະໜາດທັງໝົດຢູ່ສະຖານທີ່"},
        {"Khmer", u"ពិនិត្យវិមាត្រទាំងអស់នៅការដ្ឋាន។"},
        {"Myanmar", u"တိုင်းတာချက်အားလုံးကို စစ်ဆေးပါ။"},
        {"Tibetan", u"བོད་ཀྱི་སྐད་ཡིག"},
        {"Ethiopic", u"ሁሉም ልኬቶች በቦታው ይረጋገጡ።"},
        {"Japanese", u"寸法は現場で確認し、骨組みを写真に残すこと。"},
        {"Korean", u"모든 치수는 현장에서 확인할 것. \u1112\u1161\u11AB"},
        {"Chinese", u"所有尺寸须在现场核对，骨架应拍照。"},
        {"turned Chinese", u"\u202E所有尺寸须在现场核对，骨架应拍照e\u0301漢。"},
        {"astral", u"𐌲𐌿𐍄 𞤀𞤣𞤤 𝑎𝑏"},
        {"emoji", u"a\U0001F468\u200D\U0001F469\u200D\U0001F467b \u2764\uFE0F 1\uFE0F\u20E3"},
        {"unassigned", u"a\u0378\u0379b"},
        {"invisible", u"soft\u00ADhyphen zero\u200Bwidth \u2060join\u200Dnon\u200Cjoin \uFEFFend"},
        {"tabs", u"a\tbb\tאב\tc"},
        {"tabs and spaces", u"אב \t גד 12\t \tx (ה)  \t"},
        {"spaces", u"  two  leading and trailing   "},
        {"long word", u"Donaudampfschifffahrtsgesellschaftskapitän"},
        {"long Hebrew word", u"אבגדהוזחטיכלמנסעפצקרשת אבגד   הוז"}};
    return all;
}

/// Texts that mix scripts, marks, controls and newlines at random; the same ones every time.
std::vector<Sample> randomSamples(int count) {
    static const std::vector<std::u16string> pieces = {u"office ", u"a",
                                                       u"e\u0301", u"\u0301",
                                                       u" ",       u"  ",
                                                       u"\n",      u"\r\n",
                                                       u"\t",      u"12.5",
                                                       u"(",       u")",
                                                       u"אבג",     u"\u05B0",
                                                       u"سلام",    u"لا",
                                                       u"क्षि",     u"ிக",
                                                       u"ตำ",      u"漢字",
                                                       u"한",      u"\u1112\u1161",
                                                       u"𐌲",       u"\U0001F468\u200D\U0001F469",
                                                       u"\u200D",  u"\u200F",
                                                       u"\u202B",  u"\u202C",
                                                       u"\u00AD",  u"\u2028",
                                                       u"\u0378",  u"fi",
                                                       u"-",       u"、"};
    std::mt19937 random(20240607);
    const auto below = [&random](std::size_t limit) { return static_cast<std::size_t>(random() % limit); };
    std::vector<Sample> texts;
    for (int i = 0; i < count; ++i) {
        std::u16string text;
        for (std::size_t left = 1 + below(25); left > 0; --left) {
            text += pieces[below(pieces.size())];
        }
        texts.push_back({"random", text});
    }
    return texts;
}

/// A box, and how text is set in it.
struct Setting {
    float width;
    DWRITE_TEXT_ALIGNMENT alignment = DWRITE_TEXT_ALIGNMENT_LEADING;
    DWRITE_READING_DIRECTION reading = DWRITE_READING_DIRECTION_LEFT_TO_RIGHT;
    /// Of every second position.
    float spacing = 0.0F;
};

std::string described(const Sample& sample, const Setting& setting) {
    std::string text = std::string(sample.name) + " width " + std::to_string(setting.width) + " alignment " +
                       std::to_string(static_cast<int>(setting.alignment)) + " reading " +
                       std::to_string(static_cast<int>(setting.reading)) + " spacing " +
                       std::to_string(setting.spacing) + ":";
    for (const char16_t unit : sample.text) {
        char hex[8];
        std::snprintf(hex, sizeof hex, " %04x", static_cast<unsigned>(unit));
        text += hex;
    }
    return text;
}

/// More room on one side than on the other, and drawn in on one side if it is negative.
void spaceEverySecond(IDWriteTextLayout& layout, const std::u16string& text, float spacing) {
    for (UINT32 i = 0; spacing != 0.0F && i < text.size(); i += 2) {
        EXPECT_EQ(S_OK, laterOf(layout)->SetCharacterSpacing(spacing, 1.0F, 3.0F, {i, 1}));
    }
}

/// Calls check(layout, text) for every sample in every direction, in a narrow box, a wide one and without limit, some
/// of them spaced.
template <typename Check>
void forEveryLayout(Check check) {
    std::vector<Sample> texts = samples();
    const std::vector<Sample> more = randomSamples(150);
    texts.insert(texts.end(), more.begin(), more.end());
    std::vector<Setting> settings;
    for (const auto reading : {DWRITE_READING_DIRECTION_LEFT_TO_RIGHT, DWRITE_READING_DIRECTION_RIGHT_TO_LEFT}) {
        settings.push_back({0.0F, DWRITE_TEXT_ALIGNMENT_LEADING, reading});
        settings.push_back({70.0F, DWRITE_TEXT_ALIGNMENT_LEADING, reading});
        settings.push_back({120.0F, DWRITE_TEXT_ALIGNMENT_JUSTIFIED, reading});
        settings.push_back({200.0F, DWRITE_TEXT_ALIGNMENT_CENTER, reading});
        settings.push_back({400.0F, DWRITE_TEXT_ALIGNMENT_TRAILING, reading});
        settings.push_back({120.0F, DWRITE_TEXT_ALIGNMENT_JUSTIFIED, reading, 5.0F});
        settings.push_back({0.0F, DWRITE_TEXT_ALIGNMENT_LEADING, reading, -2.0F});
    }
    for (const Sample& sample : texts) {
        for (const Setting& setting : settings) {
            const auto layout = makeLayout(sample.text, setting.width, 0.0F, {.reading = setting.reading});
            EXPECT_EQ(S_OK, layout->SetTextAlignment(setting.alignment));
            spaceEverySecond(*layout, sample.text, setting.spacing);
            SCOPED_TRACE(described(sample, setting));
            check(*layout, sample.text);
            if (testing::Test::HasFailure()) {
                return;
            }
        }
    }
}

struct Caret {
    float x = 0.0F;
    float y = 0.0F;
    DWRITE_HIT_TEST_METRICS box{};
};

Caret caretAt(IDWriteTextLayout& layout, UINT32 position, bool isTrailing) {
    Caret caret;
    EXPECT_EQ(S_OK, layout.HitTestTextPosition(position, isTrailing ? TRUE : FALSE, &caret.x, &caret.y, &caret.box));
    return caret;
}

TEST(EditingInvariants, ClustersAndLinesCoverTheTextOnce) {
    forEveryLayout([](IDWriteTextLayout& layout, const std::u16string& text) {
        std::size_t covered = 0;
        for (const DWRITE_CLUSTER_METRICS& cluster : clustersOf(layout)) {
            EXPECT_GE(cluster.length, 1U);
            EXPECT_GE(cluster.width, 0.0F);
            covered += cluster.length;
        }
        EXPECT_EQ(text.size(), covered);
        std::size_t lines = 0;
        float height = 0.0F;
        for (const DWRITE_LINE_METRICS& line : linesOf(layout)) {
            EXPECT_LE(line.newlineLength, line.trailingWhitespaceLength);
            EXPECT_LE(line.trailingWhitespaceLength, line.length);
            EXPECT_LE(line.baseline, line.height);
            lines += line.length;
            height += line.height;
        }
        EXPECT_EQ(text.size(), lines);
        EXPECT_NEAR(metricsOf(layout).height, height, 1e-2F);
    });
}

TEST(EditingInvariants, LinesEndWhereClustersEnd) {
    forEveryLayout([](IDWriteTextLayout& layout, const std::u16string&) {
        const auto clusters = clustersOf(layout);
        std::size_t next = 0;
        for (const unsigned length : lineLengths(layout)) {
            unsigned covered = 0;
            while (covered < length && next < clusters.size()) {
                covered += clusters[next++].length;
            }
            EXPECT_EQ(length, covered);
        }
    });
}

TEST(EditingInvariants, EveryPositionOfAClusterHasTheClustersBox) {
    forEveryLayout([](IDWriteTextLayout& layout, const std::u16string&) {
        UINT32 position = 0;
        for (const DWRITE_CLUSTER_METRICS& cluster : clustersOf(layout)) {
            const Caret first = caretAt(layout, position, false);
            EXPECT_EQ(position, first.box.textPosition);
            EXPECT_EQ(cluster.length, first.box.length);
            EXPECT_NEAR(cluster.width, first.box.width, 1e-3F);
            const bool isRightToLeft = (first.box.bidiLevel & 1U) != 0;
            const float left = first.box.left;
            const float right = left + first.box.width;
            EXPECT_NEAR(isRightToLeft ? right : left, first.x, 1e-3F);
            EXPECT_NEAR(isRightToLeft ? left : right, caretAt(layout, position, true).x, 1e-3F);
            for (UINT32 inside = position; inside < position + cluster.length; ++inside) {
                const Caret caret = caretAt(layout, inside, false);
                EXPECT_EQ(position, caret.box.textPosition);
                EXPECT_EQ(first.x, caret.x);
                EXPECT_EQ(first.y, caret.y);
            }
            position += cluster.length;
        }
    });
}

TEST(EditingInvariants, EveryCaretIsHitBackFromBothSides) {
    forEveryLayout([](IDWriteTextLayout& layout, const std::u16string&) {
        UINT32 position = 0;
        for (const DWRITE_CLUSTER_METRICS& cluster : clustersOf(layout)) {
            // Nothing can be pointed at where a cluster has no width.
            if (cluster.width > 0.1F) {
                for (const bool isTrailing : {false, true}) {
                    const Caret caret = caretAt(layout, position, isTrailing);
                    const float middle = caret.box.left + caret.box.width / 2;
                    const float x = caret.x + (caret.x < middle ? 1.0F : -1.0F) * cluster.width / 8;
                    BOOL isBehind = FALSE;
                    BOOL isInside = FALSE;
                    DWRITE_HIT_TEST_METRICS hit{};
                    EXPECT_EQ(S_OK, layout.HitTestPoint(x, caret.y + caret.box.height / 2, &isBehind, &isInside, &hit));
                    EXPECT_EQ(position, hit.textPosition);
                    EXPECT_EQ(isTrailing, isBehind != FALSE) << position;
                    EXPECT_TRUE(isInside);
                    EXPECT_EQ(caret.box.left, hit.left);
                    EXPECT_EQ(caret.box.top, hit.top);
                }
            }
            position += cluster.length;
        }
    });
}

TEST(EditingInvariants, ARangesBoxesCoverItOnce) {
    forEveryLayout([](IDWriteTextLayout& layout, const std::u16string& text) {
        const auto length = static_cast<UINT32>(text.size());
        if (length == 0) {
            return;
        }
        UINT32 count = 0;
        EXPECT_EQ(E_NOT_SUFFICIENT_BUFFER, layout.HitTestTextRange(0, length, 0, 0, nullptr, 0, &count));
        std::vector<DWRITE_HIT_TEST_METRICS> boxes(count);
        EXPECT_EQ(S_OK, layout.HitTestTextRange(0, length, 0, 0, boxes.data(), count, &count));
        std::vector<int> times(text.size(), 0);
        double boxed = 0.0;
        for (const DWRITE_HIT_TEST_METRICS& box : boxes) {
            ASSERT_LE(box.textPosition + box.length, length);
            for (UINT32 i = 0; i < box.length; ++i) {
                ++times[box.textPosition + i];
            }
            boxed += static_cast<double>(box.width);
        }
        EXPECT_TRUE(std::all_of(times.begin(), times.end(), [](int n) { return n == 1; }));
        double width = 0.0;
        for (const DWRITE_CLUSTER_METRICS& cluster : clustersOf(layout)) {
            width += static_cast<double>(cluster.width);
        }
        EXPECT_NEAR(width, boxed, 1e-2);
    });
}

TEST(EditingInvariants, TheInkReachesExactlyAsFarAsTheOverhangSays) {
    forEveryLayout([](IDWriteTextLayout& layout, const std::u16string&) {
        const D2D1_RECT_F ink = drawnInk(layout);
        if (ink.left > ink.right) {
            return;
        }
        DWRITE_OVERHANG_METRICS overhang{};
        EXPECT_EQ(S_OK, layout.GetOverhangMetrics(&overhang));
        EXPECT_NEAR(-ink.left, overhang.left, 2e-2F);
        EXPECT_NEAR(-ink.top, overhang.top, 2e-2F);
        EXPECT_NEAR(ink.right - layout.GetMaxWidth(), overhang.right, 2e-2F);
        EXPECT_NEAR(ink.bottom - layout.GetMaxHeight(), overhang.bottom, 2e-2F);
    });
}

/// Whether some line is wider than the box when no word may be broken.
bool overflows(const std::u16string& text, float width) {
    FormatOptions options;
    options.wrapping = DWRITE_WORD_WRAPPING_WHOLE_WORD;
    return metricsOf(*makeLayout(text, width, 0.0F, options)).width > width;
}

TEST(EditingInvariants, BelowTheMinimumWidthAWordWouldBeBroken) {
    std::vector<Sample> texts = samples();
    const std::vector<Sample> more = randomSamples(150);
    texts.insert(texts.end(), more.begin(), more.end());
    int checked = 0;
    for (const Sample& sample : texts) {
        SCOPED_TRACE(described(sample, {0.0F}));
        const auto layout = makeLayout(sample.text);
        FLOAT width = -1.0F;
        EXPECT_EQ(S_OK, layout->DetermineMinWidth(&width));
        ASSERT_GE(width, 0.0F);
        if (width < 0.5F) {
            continue;
        }
        ++checked;
        EXPECT_FALSE(overflows(sample.text, width + 0.02F));
        EXPECT_TRUE(overflows(sample.text, width - 0.02F));
        // With room for every word, breaking words when needed breaks none.
        FormatOptions whole;
        whole.wrapping = DWRITE_WORD_WRAPPING_WHOLE_WORD;
        EXPECT_EQ(lineLengths(*makeLayout(sample.text, width + 0.02F, 0.0F, whole)),
                  lineLengths(*makeLayout(sample.text, width + 0.02F)));
    }
    EXPECT_GT(checked, 100);
}

TEST(EditingInvariants, TheMinimumWidthDependsOnTheTextAlone) {
    for (const Sample& sample : samples()) {
        FLOAT expected = -1.0F;
        EXPECT_EQ(S_OK, makeLayout(sample.text)->DetermineMinWidth(&expected));
        for (const auto reading : {DWRITE_READING_DIRECTION_LEFT_TO_RIGHT, DWRITE_READING_DIRECTION_RIGHT_TO_LEFT}) {
            for (const auto alignment : {DWRITE_TEXT_ALIGNMENT_TRAILING, DWRITE_TEXT_ALIGNMENT_JUSTIFIED}) {
                SCOPED_TRACE(described(sample, {70.0F, alignment, reading}));
                const auto layout = makeLayout(sample.text, 70.0F, 0.0F, {.reading = reading});
                EXPECT_EQ(S_OK, layout->SetTextAlignment(alignment));
                FLOAT width = -1.0F;
                EXPECT_EQ(S_OK, layout->DetermineMinWidth(&width));
                EXPECT_FLOAT_EQ(expected, width);
            }
        }
    }
}

/// The clusters of every line: their widths, the last ones' that hang left out, must sum to the line's width.
TEST(EditingInvariants, JustifiedLinesFillTheBoxOrAreAsWideAsTheirText) {
    int filled = 0;
    for (const Sample& sample : samples()) {
        for (const auto reading : {DWRITE_READING_DIRECTION_LEFT_TO_RIGHT, DWRITE_READING_DIRECTION_RIGHT_TO_LEFT}) {
            SCOPED_TRACE(described(sample, {150.0F, DWRITE_TEXT_ALIGNMENT_JUSTIFIED, reading}));
            const auto layout = makeLayout(sample.text, 150.0F, 0.0F, {.reading = reading});
            const auto ragged = clustersOf(*layout);
            EXPECT_EQ(S_OK, layout->SetTextAlignment(DWRITE_TEXT_ALIGNMENT_JUSTIFIED));
            const auto clusters = clustersOf(*layout);
            ASSERT_EQ(ragged.size(), clusters.size());
            const auto lines = linesOf(*layout);
            std::size_t next = 0;
            unsigned position = 0;
            unsigned lineEnd = 0;
            for (std::size_t i = 0; i < lines.size(); ++i) {
                lineEnd += lines[i].length;
                const unsigned textEnd = lineEnd - lines[i].trailingWhitespaceLength;
                float width = 0.0F;
                float natural = 0.0F;
                for (; next < clusters.size() && position < lineEnd; ++next) {
                    if (position < textEnd) {
                        width += clusters[next].width;
                        natural += ragged[next].width;
                    } else {
                        EXPECT_EQ(ragged[next].width, clusters[next].width);
                    }
                    position += clusters[next].length;
                }
                const bool isLast = i + 1 == lines.size() || lines[i].newlineLength > 0;
                if (isLast || std::abs(width - 150.0F) > 1e-2F) {
                    EXPECT_FLOAT_EQ(natural, width);
                } else {
                    ++filled;
                }
            }
        }
    }
    EXPECT_LT(60, filled);
}

} // namespace
} // namespace platform_test
