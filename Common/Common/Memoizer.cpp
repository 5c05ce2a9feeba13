#include <Common/Memoizer.h>

#include <Common/Guards.h>

namespace common::detail {

void requireStillAbsent(bool absent) {
    COMMON_CHECK(absent);
}

} // namespace common::detail
