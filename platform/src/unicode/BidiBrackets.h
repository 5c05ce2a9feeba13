#pragma once

#include <string>
#include <string_view>

namespace platform {

/// The text for the bidi algorithm where more brackets stand open than it pairs: those that are not paired are other
/// neutral characters in it. Empty where all brackets may stay, which is nearly always.
///
/// Unicode pairs brackets as long as 63 of them are open at most. ICU knows no such limit and takes quadratic time in
/// the number of open brackets.
std::u16string withoutUnpairedBrackets(std::u16string_view text);

} // namespace platform
