#include <FontEngine/IFontEngine.h>

#include <malloc.h>

#include <gtest/gtest.h>

#include <render/RichTextDocument.h>

// Splitting deliberately keeps references to fonts, families and names. That may
// cost counts, but no memory.
TEST(ForgottenReferences, SplittingAHundredThousandTimesDoesNotGrowTheHeap) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "a sanitizer's allocator does not count what is in use; its leak check judges instead";
#endif
    const auto engine = fonts::createFontEngine(L"DejaVu Sans");
    const auto token = render::makeToken(L"Wall \x58C1", L"Liberation Sans", 2.5f, {});
    std::size_t runs = 0;
    const auto splitTimes = [&](int times) {
        for (int i = 0; i < times; ++i)
            runs += engine->splitTokenByFallbackFonts(token).size();
    };
    // Caches fill first.
    splitTimes(1000);
    const std::size_t before = mallinfo2().uordblks;
    splitTimes(100000);
    const std::size_t after = mallinfo2().uordblks;
    EXPECT_GE(runs, 2u * 101000u);
    // One pointer kept for each call would already be 800,000 bytes.
    EXPECT_LT(after, before + 64 * 1024);
}
