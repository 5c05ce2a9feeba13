#include <Common/UUID.h>

#include <Common/Guards.h>

#include <rpc.h>

#include <bit>
#include <type_traits>

namespace common {

UUID UUID::create() {
    static_assert(sizeof(UUID) == sizeof(::UUID) && alignof(UUID) == alignof(::UUID));
    static_assert(std::is_trivially_copyable_v<UUID> && std::is_trivially_copyable_v<::UUID>);

    auto identifier = std::bit_cast<::UUID>(UUID());
    const auto status = ::UuidCreate(&identifier);
    COMMON_CHECK(status == RPC_S_OK);
    return std::bit_cast<UUID>(identifier);
}

} // namespace common
