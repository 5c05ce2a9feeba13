#pragma once

/// @file
/// Everything that the library offers. The model, in the order in which a host meets it:
///
///     document          render::CRichTextDocument: paragraphs of tokens. A token is text in one
///                       family, size and style. Filled in by the host, pure data.
///     engine            IFontEngine: finds fonts among those installed, and puts others in the
///                       place of characters that a family lacks. One per thread, or take turns.
///     metrics service   ITextMetrics: how much room text takes, where its baselines and glyphs
///                       stand. Made over an engine.
///     layoutings        IRichTextDocumentLayouting: place a document's paragraphs in a box, as plain
///                       text, by the rules of DXF MTEXT, or cluster by cluster. Made over a service.
///     paragraph layout  CParagraphLayout: one paragraph as a result that is made once and asked many
///                       times: lines, runs of glyphs, clusters, carets, outlines. Made over an engine.
///
/// Which to take: to know how large a label or a note is, the metrics service. To set a document in
/// a box, a layouting. To draw text, edit it, or ask more than one question of it, a paragraph layout.
///
///     y                         sizes are heights of capital letters, in the document's units,
///     ^                         and so are all lengths that come back
///     |
///     0----------------------> x             the layout box's top-left corner is the origin
///     |    ___      .                      - top of the line (ascent)
///     |   |   |     |                      - top of the capitals
///     |   |---|  ___|                        capital size: from here down to the baseline
///     |   |   | |___|  ____                - baseline: a negative y
///     |                                    - bottom of the line (descent)
///
/// Two boxes: the layout box is what the lines take, the ink box bounds the outlines and bars.
///
/// Text is UTF-16, one unit per element of a std::wstring; positions and lengths count units.
/// <FontEngine/FontUtils.h> and <FontEngine/RichTextDocumentProcessor.h> speak of the platform's
/// own text layouts; those who want them include them.

#include <FontEngine/FontStyles.h>
#include <FontEngine/GlyphRunDesc.h>
#include <FontEngine/IFont.h>
#include <FontEngine/IFontEngine.h>
#include <FontEngine/IOutlineSink.h>
#include <FontEngine/IRichTextDocumentLayouting.h>
#include <FontEngine/ITextMetrics.h>
#include <FontEngine/LayoutScale.h>
#include <FontEngine/ParagraphLayout.h>
#include <FontEngine/ParagraphLayoutOptions.h>
#include <FontEngine/RichTextDocumentLayoutingFactory.h>
#include <FontEngine/TextUtils.h>
#include <FontEngine/Version.h>
