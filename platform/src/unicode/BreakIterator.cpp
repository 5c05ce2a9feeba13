#include "unicode/BreakIterator.h"

#include <cstddef>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

namespace platform {

namespace {

struct CloseIterator {
    void operator()(UBreakIterator* iterator) const noexcept { ubrk_close(iterator); }
};

using Iterator = std::unique_ptr<UBreakIterator, CloseIterator>;

void check(UErrorCode error) {
    if (U_FAILURE(error)) {
        throw std::runtime_error(u_errorName(error));
    }
}

Iterator open(const BreakRules& rules) {
    // Before its data, ICU writes a header, which starts with its own length.
    std::uint16_t header = 0;
    std::memcpy(&header, rules.bytes, sizeof(header));
    UErrorCode error = U_ZERO_ERROR;
    Iterator iterator(
        ubrk_openBinaryRules(rules.bytes + header, static_cast<std::int32_t>(rules.size - header), nullptr, 0, &error));
    check(error);
    return iterator;
}

} // namespace

UBreakIterator* breakIterator(const BreakRules& rules, std::u16string_view text) {
    thread_local std::vector<std::pair<const BreakRules*, Iterator>> iterators;
    auto found = iterators.begin();
    while (found != iterators.end() && found->first != &rules) {
        ++found;
    }
    if (found == iterators.end()) {
        found = iterators.emplace(found, &rules, open(rules));
    }
    UErrorCode error = U_ZERO_ERROR;
    ubrk_setText(found->second.get(), text.data(), static_cast<std::int32_t>(text.size()), &error);
    check(error);
    return found->second.get();
}

} // namespace platform
