#include "Probe.h"

#include <gtest/gtest.h>

#include <cmath>

TEST(OptimisedOptions, ProductsAreRoundedBeforeTheyAreAdded) {
#if defined(__x86_64__)
    if (!__builtin_cpu_supports("fma")) {
        GTEST_SKIP() << "this processor has no fused operation";
    }
#endif
    // (1 + 2^-27)^2 is 1 + 2^-26 + 2^-54, whose last term is lost when the product is rounded.
    const double factor = 1.0 + std::ldexp(1.0, -27);
    EXPECT_EQ(probe::productMinus(factor, factor, 1.0 + std::ldexp(1.0, -26)), 0.0);
}

TEST(OptimisedOptions, HardenTheCode) {
#if !defined(BUILD_IS_HARDENED)
    GTEST_SKIP() << "sanitizers, other object formats and FONTENGINE_HARDENING=OFF go without";
#endif
    EXPECT_EQ(probe::stackProtection, 3); // strong
    EXPECT_EQ(probe::fortification, 2);
#if defined(__x86_64__)
    EXPECT_EQ(probe::controlFlowProtection, 3); // branches and returns
#endif
}
