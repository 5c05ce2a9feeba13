#pragma once

#include <cstdint>

namespace fonts {

// How heavy, how slanted and how underlined a font is asked for. The text model
// knows only these; a platform's finer weights and slopes are mapped to them
// with the functions of FontUtils.h.

enum class Weight : std::int32_t { Normal = 0, Bold = 1 };

enum class Style : std::int32_t { Normal = 0, Italic = 1 };

// X11 makes `None` a macro; a host that includes it gets it back.
#pragma push_macro("None")
#undef None
enum class Underline : std::int32_t { None = 0, Underlined = 1 };
#pragma pop_macro("None")

} // namespace fonts
