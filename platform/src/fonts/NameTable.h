#pragma once

#include "fonts/HarfBuzz.h"
#include "fonts/LocalizedStrings.h"

namespace platform {

/// The strings of one name ID in every language the font has it in, English of the
/// United States first, then in HarfBuzz's order. Empty strings are left out.
LocalizedNames readNames(hb_face_t* face, hb_ot_name_id_t id);

/// The string in English, or the first one; null if there is none.
const std::wstring* preferredName(const LocalizedNames& names);

} // namespace platform
