#pragma once

#include <memory>
#include <string>
#include <vector>

#include <Common/FontEngineExport.h>
#include <FontEngine/FontStyles.h>
#include <FontEngine/IFont.h>
#include <render/RichTextDocument.h>

namespace fonts {

// Finds fonts among those installed, and remembers what it found.
//
// Family names are Win32 family names (the ones a drawing's styles carry) and
// are compared exactly, letter case included. Text is UTF-16, one unit per
// element of a std::wstring.
//
// Threads: nothing is locked. One engine, and with it all of its fonts, is used
// by one thread at a time; callers that share an engine take turns.
//
// A platform call that fails is thrown as oslayer::EOsLayerError; the engine
// stays usable and has remembered nothing of the failed request.
class FONTENGINE_API IFontEngine {
public:
    virtual ~IFontEngine() = default;

    // The font of the family in the weight and style asked for: that very face,
    // else an oblique one in place of an italic, else the first face that bears
    // the name. An unknown family is answered with the fallback font. Never
    // null; owned by the engine and valid as long as it.
    //
    // The first request for a family, weight and style looks through the whole
    // system collection; later ones are answered from memory.
    virtual IFont* getFont(const std::wstring& fontFamily, Weight weight, Style style) = 0;

    // The first font of the fallback family given to createFontEngine, or of the
    // system's first family where that one is not installed. Never null; owned
    // by the engine and valid as long as it.
    virtual IFont* getFallbackFont() = 0;

    // Cuts the token's text into the longest runs that one installed font can
    // draw, in text order. Each run keeps size, colour and style and names the
    // family of its font. Characters that no font covers come as one token per
    // UTF-16 unit, in the family asked for. Empty for an empty text.
    //
    // On a platform without font fallback the token comes back whole.
    //
    // Throws oslayer::EOsLayerError for a capital size of 0 or less and for text
    // with an element above 0xFFFF (E_INVALIDARG).
    virtual std::vector<render::SRichTextToken>
    splitTokenByFallbackFonts(const render::SRichTextToken& originToken) = 0;
};

// Creates an engine over the fonts installed on the system. `fallbackFontName` is
// the family that getFont answers unknown ones with; whether it is installed shows
// at the first request that needs it.
//
// It hardly ever draws text. Laying text out splits it first, and splitting names
// an installed family for every character that any font has: text in an unknown
// family is set in what the system puts in its place, while getFont, and
// ITextMetrics::getFontMetrics after it, answer with the fallback font. Two kinds
// of text do depend on it: characters that no font has, and runs in a family that
// none of its faces bears as a Win32 family name. (Noto Sans Old Persian calls
// itself "Noto Sans OldPersian" there.) Those are sized by the capitals of the
// fallback font, whatever font draws them.
//
// Throws oslayer::EOsLayerError when the system's fonts cannot be listed.
FONTENGINE_API std::unique_ptr<IFontEngine> createFontEngine(const std::wstring& fallbackFontName);

} // namespace fonts
