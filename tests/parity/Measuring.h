#pragma once

#include <FontEngine/FontEngine.h>

#include "JsonWriter.h"
#include "ParityDocument.h"

namespace parity {

// Writes every number that the library gives for the document. A call that fails is
// written as the name of its error.
void measure(JsonWriter& json, const fonts::ITextMetrics& metrics, const Document& document);

// Writes the system's families with their fonts, names and design metrics, and what
// the engine finds for each Win32 name.
void measureFonts(JsonWriter& json, fonts::IFontEngine& engine);

} // namespace parity
