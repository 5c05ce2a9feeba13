#pragma once

#include <dxf/TextList.h>

#include <string>
#include <string_view>

namespace dxf {

/// Appends a text to `output`, without its ordinal: which fields differ from their defaults, and these.
void appendRecord(std::string& output, const TextEntity& text, SharedNames& names);

/// The text whose record begins here.
TextEntity readRecord(std::string_view record, const SharedNames& names);

} // namespace dxf
