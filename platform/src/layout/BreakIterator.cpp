#include "layout/BreakIterator.h"

#include <array>
#include <cstddef>
#include <memory>
#include <stdexcept>

namespace platform {

namespace {

struct CloseIterator {
    void operator()(UBreakIterator* iterator) const noexcept { ubrk_close(iterator); }
};

void check(UErrorCode error) {
    if (U_FAILURE(error)) {
        throw std::runtime_error(u_errorName(error));
    }
}

} // namespace

UBreakIterator* breakIterator(UBreakIteratorType kind, std::u16string_view text) {
    thread_local std::array<std::unique_ptr<UBreakIterator, CloseIterator>, UBRK_SENTENCE + 1> iterators;
    auto& iterator = iterators[static_cast<std::size_t>(kind)];
    UErrorCode error = U_ZERO_ERROR;
    if (!iterator) {
        // The root locale: where a line may break must not depend on the user's environment.
        iterator.reset(ubrk_open(kind, "", nullptr, 0, &error));
        check(error);
    }
    ubrk_setText(iterator.get(), text.data(), static_cast<std::int32_t>(text.size()), &error);
    check(error);
    return iterator.get();
}

} // namespace platform
