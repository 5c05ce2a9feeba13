#include <oslayer/statusName.h>

#include <algorithm>
#include <iterator>

namespace oslayer {

namespace {

struct StatusName {
    std::uint32_t code;
    const wchar_t* name;
};

/// Ascending by code.
constexpr StatusName statusNames[] = {
#include <oslayer/StatusNames.inc>
};

static_assert(std::is_sorted(std::begin(statusNames), std::end(statusNames),
                             [](const StatusName& left, const StatusName& right) { return left.code < right.code; }));

} // namespace

const wchar_t* statusName(std::uint32_t code) noexcept {
    const auto* found =
        std::lower_bound(std::begin(statusNames), std::end(statusNames), code,
                         [](const StatusName& entry, std::uint32_t wanted) { return entry.code < wanted; });
    return found != std::end(statusNames) && found->code == code ? found->name : L"Unknown";
}

} // namespace oslayer
