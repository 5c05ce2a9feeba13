#pragma once

#include <cstdint>
#include <string_view>

#include <unicode/ubrk.h>

namespace platform {

/// The calling thread's iterator of a kind, set to `text`, which must live as long as it is asked. Making one is
/// expensive, so a thread makes each kind once.
UBreakIterator* breakIterator(UBreakIteratorType kind, std::u16string_view text);

} // namespace platform
