#pragma once

#include <Common/FontEngineExport.h>
#include <render/RichTextDocument.h>

namespace fonts {

// Baselines stand on a grid of 0.01 units (see ITextMetrics.h). A text that is small
// in its document is laid out enlarged, and what comes back is divided by the factor:
//
//     const double scale = fonts::layoutScale(capSize);
//     const auto enlarged = fonts::scaledDocument(document, scale);
//     MbRect ink = metrics->getDocumentGeometryRect(enlarged, width * scale, 0.0);   // each edge / scale
//
// Factors are powers of two: they change no digit of a length, so lines break where
// they did.

// The power of two that brings capitals `capSize` high to a height from 64 up to 128,
// so that the grid is less than 1/6400 of it. Sizes below 2^-96 or from 2^97 on get
// the factor of the nearest size that is neither; 1 for 0 and for what is no finite
// number. Never throws. Any thread.
FONTENGINE_API double layoutScale(double capSize) noexcept;

// The document with its capital sizes and its tab stop width multiplied by `factor`.
// Paragraphs keep their order and get new keys, as from render::makeDocument.
FONTENGINE_API render::CRichTextDocument scaledDocument(const render::CRichTextDocument& document, double factor);

} // namespace fonts
