#include <Common/UUID.h>
#include <Common/Violations.h>

#include <gtest/gtest.h>

#include <rpc.h>

#include <cstring>
#include <string_view>

namespace {

constexpr RPC_STATUS localOnly = 1824; // RPC_S_UUID_LOCAL_ONLY
constexpr RPC_STATUS noAddress = 1739; // RPC_S_UUID_NO_ADDRESS

RPC_STATUS answer = RPC_S_OK;
bool startedFromNil = false;

} // namespace

// Stands in for the platform's generator: fills the identifier and reports what the test wants.
extern "C" RPC_STATUS UuidCreate(UUID* uuid) {
    const UUID nil{};
    startedFromNil = std::memcmp(uuid, &nil, sizeof(nil)) == 0;
    std::memset(uuid, 0xAB, sizeof(*uuid));
    return answer;
}

namespace {

TEST(UUIDCreation, StartsFromNilAndReturnsWhatTheGeneratorMade) {
    answer = RPC_S_OK;
    const common::UUID created = common::UUID::create();
    EXPECT_TRUE(startedFromNil);
    EXPECT_EQ(created.data1, 0xABABABABU);
    EXPECT_EQ(created.data4[7], 0xABU);
}

TEST(UUIDCreation, AFailureOrTheLocalOnlyWarningRaisesACheckViolation) {
    for (const RPC_STATUS status : {noAddress, localOnly, static_cast<RPC_STATUS>(-1), static_cast<RPC_STATUS>(1)}) {
        answer = status;
        try {
            (void)common::UUID::create();
            ADD_FAILURE() << "status " << status;
        } catch (const common::ECheckViolation& violation) {
            const std::string_view message(violation.message.data(), violation.message.size());
            EXPECT_TRUE(message.starts_with("Assertion violation: Common/Common/UUID(")) << message;
        }
    }
}

} // namespace
