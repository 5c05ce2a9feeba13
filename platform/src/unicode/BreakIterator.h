#pragma once

#include <cstdint>
#include <string_view>

#include <unicode/ubrk.h>

#include "unicode/BreakRules.h"

namespace platform {

/// The calling thread's iterator of `rules`, set to `text`, which must live as long as it is asked. A thread makes one
/// for each rules.
UBreakIterator* breakIterator(const BreakRules& rules, std::u16string_view text);

} // namespace platform
