#pragma once

// Everything that the library offers, in the order in which a host meets it: an
// engine finds fonts, a text metrics service measures text with it, and a factory
// over the service makes the layoutings that place paragraphs in a box. Documents
// are filled in with <render/RichTextDocument.h>.
//
// What works on the platform's own objects is included by those who have them, and
// brings the platform's names with it: <FontEngine/FontUtils.h> and
// <FontEngine/RichTextDocumentProcessor.h>.

#include <FontEngine/FontStyles.h>
#include <FontEngine/GlyphRunDesc.h>
#include <FontEngine/IFont.h>
#include <FontEngine/IFontEngine.h>
#include <FontEngine/IRichTextDocumentLayouting.h>
#include <FontEngine/ITextMetrics.h>
#include <FontEngine/LayoutScale.h>
#include <FontEngine/RichTextDocumentLayoutingFactory.h>
#include <FontEngine/TextUtils.h>
#include <FontEngine/Version.h>
