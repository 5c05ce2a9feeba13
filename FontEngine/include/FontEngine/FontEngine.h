#pragma once

// Everything that the library offers, in the order in which a host meets it: an
// engine finds fonts, a text metrics service measures text with it, and a factory
// over the service makes the layoutings that place paragraphs in a box. Documents
// are filled in with <render/RichTextDocument.h>.

#include <FontEngine/FontStyles.h>
#include <FontEngine/FontUtils.h>
#include <FontEngine/GlyphRunDesc.h>
#include <FontEngine/IFont.h>
#include <FontEngine/IFontEngine.h>
#include <FontEngine/IRichTextDocumentLayouting.h>
#include <FontEngine/ITextMetrics.h>
#include <FontEngine/IOutlineSink.h>
#include <FontEngine/LayoutScale.h>
#include <FontEngine/ParagraphLayout.h>
#include <FontEngine/ParagraphLayoutOptions.h>
#include <FontEngine/RichTextDocumentLayoutingFactory.h>
#include <FontEngine/RichTextDocumentProcessor.h>
#include <FontEngine/TextUtils.h>
