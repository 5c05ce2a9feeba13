#pragma once

#include "Drawing.h"
#include "EntityWriter.h"
#include <Common/FontEngineExport.h>

#include <cstddef>
#include <cstdint>
#include <istream>
#include <ostream>

namespace dxf {

/// What a rewriting replaces, and by what.
class FONTENGINE_DXF_API ITextReplacement {
public:
    virtual ~ITextReplacement() = default;
    /// Whether the text is to be replaced. Asked for every text that canReplace() allows, before anything is written.
    virtual bool replaces(const TextEntity& text) = 0;
    /// Writes what takes the text's place. Called in file order. Where nothing is written the text stays as it is.
    virtual void replace(const TextEntity& text, EntityWriter& writer) = 0;
};

/// True for texts that are entities of their own (MTEXT, TEXT): an attribute belongs to its reference, a cell to its
/// table, a dimension's text to its measure.
FONTENGINE_DXF_API bool canReplace(const TextEntity& text);

struct RewriteResult {
    std::size_t replaced = 0;     ///< Texts replaced.
    std::size_t written = 0;      ///< Entities written in their place.
    std::uint64_t handleSeed = 0; ///< Lowest handle still free; what `$HANDSEED` says if handles were given out.
};

/// Writes a changed drawing: a second pass over its bytes copies every pair exactly as it came, replaced texts
/// excepted, whatever stands behind the end mark or behind the first damaged line included. Where nothing is replaced
/// the copy equals the original byte for byte; otherwise the value of `$HANDSEED` changes too (and the variable is
/// added to a header without it). Memory: the longest entity replaced and what replaces it.
///
/// `input` is the drawing that `drawing` was read from, again at its first byte, both streams in binary mode. `output`
/// must be able to seek: how many handles were needed is known at the end. Throws Error: Changed when the input is not
/// what was read, Unreadable, Unwritable, BadRequest; what was written then is worthless.
FONTENGINE_DXF_API RewriteResult rewriteDrawing(std::istream& input, std::ostream& output, const Drawing& drawing,
                                                ITextReplacement& replacement, const Progress& progress = {});

} // namespace dxf
