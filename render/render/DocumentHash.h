#pragma once

#include <Common/Export.h>
#include <render/RichTextDocument.h>

#include <cstdint>

namespace render {

/// A 64-bit value over what a document's natural extent depends on: its tab stop width and, token by token in reading
/// order, text, size, family and style. Alignments, wrapping, colours, names and identifiers take no part: documents
/// that differ only in them hash alike. The same on every platform and in every run.
[[nodiscard]] FONTENGINE_API std::uint64_t hashDocument(const CRichTextDocument& document);

} // namespace render
