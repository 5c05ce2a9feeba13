#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "UnmetCodes.h"
#include <mtext/Diagnostics.h>
#include <mtext/MText.h>

namespace mtext {

/// Everything a `\p` code can set.
struct ParagraphState {
    render::eRichTextParagraphAlignment alignment = render::eRichTextParagraphAlignment::Default;
    ParagraphFormat format;
    ParagraphCodes codes; ///< Of what cannot be laid out.
};

/// A place in a code's argument that means nothing.
struct ParagraphFinding {
    std::size_t offset = 0;
    std::size_t length = 0;
    DiagnosticCode code = DiagnosticCode::UnknownParagraphCode;
};

/// Applies what stands between `\p` and the semicolon, `position` units into the
/// content, to `state`. Numbers count the cap heights of `defaults`, a `*` returns
/// to its alignment. Adds to `unmet` what cannot be laid out, and appends to
/// `findings` what means nothing, in reading order.
void applyParagraphCode(std::wstring_view argument, std::size_t position, const Defaults& defaults,
                        ParagraphState& state, UnmetCodes& unmet, std::vector<ParagraphFinding>& findings);

/// Whether `argument` can be that of a `\p` code at all: letters, numbers and
/// commas. Text that only happens to stand behind `\p` is told from it by this.
bool looksLikeParagraphCode(std::wstring_view argument);

/// The distance of tab stops that lie at 1, 2, 3... times one distance; nothing
/// for others and for no stops.
std::optional<float> evenTabStopWidth(const std::vector<TabStop>& tabStops);

} // namespace mtext
