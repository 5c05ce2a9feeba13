#include <Common/UUID.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <set>

namespace {

using common::UUID;

UUID fromBytes(const unsigned char (&bytes)[16]) {
    UUID uuid;
    std::memcpy(&uuid, bytes, sizeof(bytes));
    return uuid;
}

TEST(UUID, TheDefaultIsNil) {
    const unsigned char zeros[16] = {};
    const UUID uuid;
    EXPECT_EQ(std::memcmp(&uuid, zeros, sizeof(zeros)), 0);
}

TEST(UUID, HasTheLayoutOfThePlatformsStructure) {
    EXPECT_EQ(sizeof(UUID), 16U);
    EXPECT_EQ(alignof(UUID), 4U);
    EXPECT_EQ(offsetof(UUID, data2), 4U);
    EXPECT_EQ(offsetof(UUID, data3), 6U);
    EXPECT_EQ(offsetof(UUID, data4), 8U);
}

TEST(UUID, OrdersByTheFirstByteWhateverTheLaterBytes) {
    const UUID less = fromBytes({0x01, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF});
    const UUID greater = fromBytes({0x02, 0x00});
    EXPECT_TRUE(less < greater);
    EXPECT_FALSE(greater < less);
}

TEST(UUID, ComparesBytesAsUnsigned) {
    EXPECT_TRUE(fromBytes({0x7F}) < fromBytes({0x80}));
    EXPECT_FALSE(fromBytes({0x80}) < fromBytes({0x7F}));
}

TEST(UUID, OrdersByTheLastByteWhenTheOthersAreEqual) {
    const UUID less = fromBytes({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16});
    const UUID greater = fromBytes({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 17});
    EXPECT_TRUE(less < greater);
    EXPECT_FALSE(less == greater);
}

TEST(UUID, NilIsLessThanEveryOther) {
    EXPECT_TRUE(UUID() < fromBytes({0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1}));
    EXPECT_TRUE(UUID() < fromBytes({1}));
    EXPECT_TRUE(UUID() < UUID::create());
}

TEST(UUID, EqualOnesAreNotLess) {
    const UUID uuid = fromBytes({1, 2, 3});
    const UUID same = uuid;
    EXPECT_TRUE(uuid == same);
    EXPECT_FALSE(uuid < same);
}

TEST(UUID, CreatedOnesDiffer) {
    std::set<UUID> created;
    for (int i = 0; i < 1000; ++i) {
        created.insert(UUID::create());
    }
    EXPECT_EQ(created.size(), 1000U);
}

} // namespace
