#include <Common/FractionalIndex.h>

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>
#include <vector>

namespace {

using common::CFractionalIndex;
using Digits = std::vector<std::uint8_t>;

TEST(FractionalIndex, EmptyIsLessThanMiddle) {
    EXPECT_TRUE(CFractionalIndex::empty() < CFractionalIndex::middle());
    EXPECT_FALSE(CFractionalIndex::middle() < CFractionalIndex::empty());
}

TEST(FractionalIndex, MiddleIsNotLessThanMiddle) {
    EXPECT_FALSE(CFractionalIndex::middle() < CFractionalIndex::middle());
    EXPECT_FALSE(CFractionalIndex::empty() < CFractionalIndex::empty());
}

TEST(FractionalIndex, ALongerSequenceWithACommonPrefixIsGreaterWhateverItsLaterDigits) {
    const CFractionalIndex longer(Digits{0x80, 0x00});
    EXPECT_TRUE(CFractionalIndex::middle() < longer);
    EXPECT_FALSE(longer < CFractionalIndex::middle());
}

TEST(FractionalIndex, OrdersByTheFirstDifferingDigitAsUnsigned) {
    const CFractionalIndex between(Digits{0x80, 0x01});
    const CFractionalIndex after(Digits{0x81});
    const CFractionalIndex small(Digits{0x7F, 0xFF, 0xFF});
    EXPECT_TRUE(CFractionalIndex::middle() < between);
    EXPECT_TRUE(between < after);
    EXPECT_TRUE(small < CFractionalIndex::middle());
    EXPECT_FALSE(after < between);
}

TEST(FractionalIndex, TheSharedValuesHaveTheirDigits) {
    EXPECT_EQ(CFractionalIndex::empty().digitCount(), 0U);
    EXPECT_TRUE(CFractionalIndex::empty().digits().empty());
    EXPECT_EQ(CFractionalIndex::middle().digitCount(), 1U);
    EXPECT_EQ(CFractionalIndex::middle().digits(), Digits{0x80});
}

TEST(FractionalIndex, TheDefaultIsTheMiddle) {
    const CFractionalIndex index;
    EXPECT_EQ(index.digitCount(), 1U);
    EXPECT_EQ(index.digits(), Digits{0x80});
}

TEST(FractionalIndex, CopiesAreDeep) {
    CFractionalIndex original(Digits{1, 2});
    const CFractionalIndex copy(original);
    CFractionalIndex assigned;
    assigned = original;
    original = CFractionalIndex(Digits{9});
    EXPECT_EQ(copy.digits(), (Digits{1, 2}));
    EXPECT_EQ(copy.digitCount(), 2U);
    EXPECT_EQ(assigned.digits(), (Digits{1, 2}));
    EXPECT_EQ(assigned.digitCount(), 2U);
}

TEST(FractionalIndex, MovingLeavesTheSourceWithNoDigits) {
    CFractionalIndex source(Digits{1, 2, 3});
    CFractionalIndex target(std::move(source));
    EXPECT_EQ(target.digits(), (Digits{1, 2, 3}));
    EXPECT_EQ(target.digitCount(), 3U);
    EXPECT_TRUE(source.digits().empty()); // NOLINT(bugprone-use-after-move): what is left is what this is about

    CFractionalIndex assigned(Digits{7});
    assigned = std::move(target);
    EXPECT_EQ(assigned.digits(), (Digits{1, 2, 3}));
    EXPECT_EQ(assigned.digitCount(), 3U);
    EXPECT_TRUE(target.digits().empty()); // NOLINT(bugprone-use-after-move)
}

TEST(FractionalIndex, AssigningToItselfKeepsTheDigits) {
    CFractionalIndex index(Digits{1, 2});
    CFractionalIndex& same = index;
    index = std::move(same);
    EXPECT_EQ(index.digits(), (Digits{1, 2}));
}

TEST(FractionalIndex, IsPolymorphic) {
    EXPECT_TRUE(std::has_virtual_destructor_v<CFractionalIndex>);
}

} // namespace
