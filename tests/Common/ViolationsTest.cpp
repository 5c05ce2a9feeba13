#include <Common/Guards.h>
#include <Common/Violations.h>

#include <gtest/gtest.h>

#include <exception>
#include <limits>
#include <stdexcept>
#include <string>
#include <type_traits>

namespace {

using common::EAssertionViolation;
using common::ECheckViolation;
using common::EPreconditionViolation;

std::string messageOf(const EAssertionViolation& violation) {
    return std::string(violation.message.data(), violation.message.size());
}

/// As long as a path can be beside "Assertion violation: ", "(", one digit and ")".
constexpr std::size_t longestPath = 1024 - 24;

TEST(Violations, AllThreeBuildTheSameMessage) {
    const std::string expected = "Assertion violation: Common/Common/OrderedContainer(42)";
    EXPECT_EQ(messageOf(EAssertionViolation("Common/Common/OrderedContainer", 42)), expected);
    EXPECT_EQ(messageOf(ECheckViolation("Common/Common/OrderedContainer", 42)), expected);
    EXPECT_EQ(messageOf(EPreconditionViolation("Common/Common/OrderedContainer", 42)), expected);
}

TEST(Violations, LineZeroEndsWithTheDigitZeroBetweenParentheses) {
    EXPECT_EQ(messageOf(ECheckViolation("a", 0)), "Assertion violation: a(0)");
}

TEST(Violations, ANegativeLineHasASign) {
    EXPECT_EQ(messageOf(ECheckViolation("a", -7)), "Assertion violation: a(-7)");
    EXPECT_EQ(messageOf(ECheckViolation("a", std::numeric_limits<std::int32_t>::min())),
              "Assertion violation: a(-2147483648)");
}

TEST(Violations, AMessageMayFillTheBuffer) {
    const ECheckViolation violation(std::string(longestPath, 'p'), 0);
    EXPECT_EQ(violation.message.size(), 1024U);
    EXPECT_TRUE(messageOf(violation).ends_with("p(0)"));
}

TEST(Violations, APathThatWouldPushTheMessagePast1024RaisesALengthErrorInstead) {
    for (const std::size_t length : {longestPath + 1, std::size_t{1024}, std::size_t{5000}}) {
        try {
            throw ECheckViolation(std::string(length, 'p'), 0);
        } catch (const std::length_error& error) {
            EXPECT_STREQ(error.what(), "count > max_size() - size()");
            continue;
        }
        FAIL() << "a path of " << length;
    }
}

TEST(Violations, AHandlerForStandardExceptionsDoesNotCatchACheckViolation) {
    bool caughtAsStandard = false;
    bool caughtAsViolation = false;
    try {
        try {
            throw ECheckViolation("a", 1);
        } catch (const std::exception&) {
            caughtAsStandard = true;
        }
    } catch (const EAssertionViolation&) {
        caughtAsViolation = true;
    }
    EXPECT_FALSE(caughtAsStandard);
    EXPECT_TRUE(caughtAsViolation);
}

TEST(Violations, CheckAndPreconditionAreKindsOfAssertionAndNotOfEachOther) {
    EXPECT_TRUE((std::is_base_of_v<EAssertionViolation, ECheckViolation>));
    EXPECT_TRUE((std::is_base_of_v<EAssertionViolation, EPreconditionViolation>));
    EXPECT_FALSE((std::is_base_of_v<ECheckViolation, EPreconditionViolation>));
    EXPECT_TRUE(std::has_virtual_destructor_v<EAssertionViolation>);
    // Held inline: the message is part of the object.
    EXPECT_GE(sizeof(EAssertionViolation), 1024U);
}

TEST(Violations, ACopyKeepsTheMessage) {
    const ECheckViolation original("here", 3);
    const ECheckViolation copy(original);
    EXPECT_EQ(messageOf(copy), messageOf(original));
}

TEST(Guards, PassWhileTheConditionHolds) {
    EXPECT_NO_THROW(COMMON_CHECK(true));
    EXPECT_NO_THROW(COMMON_PRECONDITION(true));
}

TEST(Guards, AFailedCheckNamesThisFileAndLine) {
    const int line = __LINE__ + 2;
    try {
        COMMON_CHECK(1 > 2);
        FAIL();
    } catch (const ECheckViolation& violation) {
        EXPECT_EQ(messageOf(violation),
                  "Assertion violation: tests/Common/ViolationsTest(" + std::to_string(line) + ")");
    }
}

TEST(Guards, AFailedPreconditionNamesThisFileAndLine) {
    const int line = __LINE__ + 2;
    try {
        COMMON_PRECONDITION(std::is_same_v<int, long>);
        FAIL();
    } catch (const EPreconditionViolation& violation) {
        EXPECT_EQ(messageOf(violation),
                  "Assertion violation: tests/Common/ViolationsTest(" + std::to_string(line) + ")");
    }
}

} // namespace
