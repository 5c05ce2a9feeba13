#include "fallback/FallbackOrder.h"

#include <map>
#include <set>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "fallback/FallbackCluster.h"
#include "fallback/FallbackOrderCache.h"
#include "fallback/FallbackTestSupport.h"
#include "fonts/Font.h"
#include "fonts/FontCollection.h"
#include "fonts/FontFace.h"
#include "fonts/FontSet.h"

namespace platform {
namespace {

FallbackOrder orderFor(const std::string& language) {
    return FallbackOrder(CFontCollection::system(), {.language = language});
}

TEST(FallbackOrder, startsWithTheConfiguredSans) {
    const FallbackOrder order = orderFor("");
    ASSERT_NE(order.first(), nullptr);
    EXPECT_EQ(familyName(order.first()), L"DejaVu Sans");
    EXPECT_EQ(familyName(order.fontFor(U'a')), L"DejaVu Sans");
}

TEST(FallbackOrder, givesAFontThatHasTheCharacterOrNone) {
    const FallbackOrder order = orderFor("en");
    int found = 0;
    for (char32_t c = 0x20; c < 0x20000; c += 61) {
        if (CFont* const font = order.fontFor(c)) {
            EXPECT_TRUE(font->face().hasCharacter(c)) << static_cast<unsigned>(c);
            ++found;
        }
    }
    EXPECT_GT(found, 1000);
    EXPECT_EQ(order.fontFor(0x378), nullptr);    // unassigned
    EXPECT_EQ(order.fontFor(0x10FFFF), nullptr); // a noncharacter
    EXPECT_EQ(order.fontFor(0x110000), nullptr); // no code point
}

TEST(FallbackOrder, isTheSameEveryTime) {
    const FallbackOrder first = orderFor("en");
    const FallbackOrder second = orderFor("en");
    for (char32_t c = 0x20; c < 0x10000; c += 97) {
        EXPECT_EQ(first.fontFor(c), second.fontFor(c)) << static_cast<unsigned>(c);
        EXPECT_EQ(first.fontFor(c), first.fontFor(c)) << static_cast<unsigned>(c);
    }
}

TEST(FallbackOrder, findsOneFontForASequenceWhereThereIsOne) {
    const FallbackOrder order = orderFor("");
    // DejaVu Sans has the letter but not U+0364; Noto Sans has both.
    EXPECT_EQ(familyName(order.fontFor(U'u')), L"DejaVu Sans");
    EXPECT_EQ(familyName(order.fontForAll(U"u\u0364")), L"Noto Sans");
    EXPECT_EQ(familyName(order.fontForAll(U"u\u0364")), L"Noto Sans");
    EXPECT_EQ(order.fontForAll(U"u\u0378"), nullptr);
    EXPECT_EQ(order.fontForAll(U"\u0378u"), nullptr);
}

TEST(FallbackOrder, findsTheFontThatHasMostOfASet) {
    const FallbackOrder order = orderFor("");
    // Yeh barree is not in DejaVu Sans, meem is; both are in Noto Sans Arabic.
    EXPECT_EQ(familyName(order.fontForMost(U"\u0645")), L"DejaVu Sans");
    EXPECT_EQ(familyName(order.fontForMost(U"\u0645\u06d2")), L"Noto Sans Arabic");
    EXPECT_EQ(familyName(order.fontForMost(U"\u0645\u06d2")), L"Noto Sans Arabic");
    EXPECT_EQ(familyName(order.fontForMost(U"\u0645\u06d2\u0378")), L"Noto Sans Arabic");
    EXPECT_EQ(order.fontForMost(U"\u0378"), nullptr);
    EXPECT_EQ(order.fontForMost(U""), nullptr);
    // More sets than are kept.
    for (char32_t c = 0x4E00; c < 0x4E00 + 300; ++c) {
        EXPECT_NE(order.fontForMost({U'\u3042', c}), nullptr);
    }
    EXPECT_EQ(familyName(order.fontForMost(U"\u0645\u06d2")), L"Noto Sans Arabic");
}

TEST(FallbackOrder, findsTheFontThatHasMostAmongThoseMadeForTheLanguage) {
    // Of these Noto Sans CJK JP has two, but who writes Chinese wants the cut for Chinese even if it had fewer.
    const FallbackOrder order = orderFor("zh-cn");
    EXPECT_EQ(familyName(order.fontForMost(U"\u76f4\u9aa8")), L"Noto Sans CJK SC");
}

TEST(FallbackOrder, knowsTheScriptsThatOneFontDraws) {
    const FallbackOrder order = orderFor("");
    EXPECT_TRUE(order.drawsInOneFont(USCRIPT_DEVANAGARI));
    EXPECT_TRUE(order.drawsInOneFont(USCRIPT_THAI));
    // DejaVu Sans has most letters of these, but not all.
    EXPECT_FALSE(order.drawsInOneFont(USCRIPT_ARABIC));
    EXPECT_FALSE(order.drawsInOneFont(USCRIPT_LATIN));
    EXPECT_FALSE(order.drawsInOneFont(USCRIPT_COMMON));
    EXPECT_FALSE(order.drawsInOneFont(USCRIPT_INHERITED));
    EXPECT_FALSE(order.drawsInOneFont(USCRIPT_INVALID_CODE));
    int known = 0;
    std::map<UScriptCode, std::set<CFont*>> fonts;
    for (char32_t c = 0; c < 0x30000; ++c) {
        // Characters of large scripts are asked for here and there.
        if ((c < 0x3000 || c % 61 == 0) && order.drawsInOneFont(scriptOf(c))) {
            fonts[scriptOf(c)].insert(order.fontFor(c));
            ++known;
        }
    }
    EXPECT_GT(known, 3000);
    for (auto& [script, of] : fonts) {
        of.erase(nullptr);
        EXPECT_LE(of.size(), 1U) << uscript_getName(script);
    }
}

TEST(FallbackOrder, remembersMoreSequencesThanItKeeps) {
    const FallbackOrder order = orderFor("");
    for (char32_t base = 0x4E00; base < 0x4E00 + 4200; ++base) {
        const char32_t sequence[] = {base, 0x0301};
        order.fontForAll({sequence, 2});
    }
    EXPECT_EQ(familyName(order.fontForAll(U"u\u0364")), L"Noto Sans");
}

TEST(FallbackOrder, isEmptyWithoutFonts) {
    const CFontCollection none{FontSet{}};
    const FallbackOrder order(none, {});
    EXPECT_EQ(order.first(), nullptr);
    EXPECT_EQ(order.fontFor(U'a'), nullptr);
    EXPECT_EQ(order.fontForAll(U"a\u0301"), nullptr);
}

TEST(FallbackOrder, servesManyThreads) {
    const FallbackOrder shared = orderFor("ja");
    const FallbackOrder alone = orderFor("ja");
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&] {
            for (char32_t c = 0x3040; c < 0x3400; c += 7) {
                EXPECT_EQ(shared.fontFor(c), alone.fontFor(c));
                const char32_t sequence[] = {c, 0x0364};
                EXPECT_EQ(shared.fontForAll({sequence, 2}), alone.fontForAll({sequence, 2}));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST(FallbackOrders, areMadeOnceForAllNamesOfALanguage) {
    FallbackOrderCache orders(CFontCollection::system());
    const auto get = [&orders](const wchar_t* locale, DWRITE_FONT_WEIGHT weight = DWRITE_FONT_WEIGHT_NORMAL) {
        return orders.get(locale, weight, DWRITE_FONT_STYLE_NORMAL, DWRITE_FONT_STRETCH_NORMAL);
    };
    EXPECT_EQ(get(L"zh-hant"), get(L"zh-hant"));
    EXPECT_EQ(get(L"zh-hant"), get(L"zh-tw"));
    EXPECT_NE(get(L"zh-hant"), get(L"zh-hans"));
    EXPECT_NE(get(L"zh-hant"), get(L"zh-hant", DWRITE_FONT_WEIGHT_BOLD));
}

TEST(FallbackOrders, keepABoundedNumber) {
    FallbackOrderCache orders(CFontCollection::system());
    const auto get = [&orders](int weight) {
        return orders.get(L"", static_cast<DWRITE_FONT_WEIGHT>(weight), DWRITE_FONT_STYLE_NORMAL,
                          DWRITE_FONT_STRETCH_NORMAL);
    };
    std::weak_ptr<const FallbackOrder> first = get(1);
    EXPECT_FALSE(first.expired());
    for (int weight = 2; weight <= 33; ++weight) {
        get(weight);
    }
    EXPECT_TRUE(first.expired());
    EXPECT_EQ(familyName(get(1)->first()), L"DejaVu Sans");
}

} // namespace
} // namespace platform
