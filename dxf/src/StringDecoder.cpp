#include "StringDecoder.h"
#include "TextLength.h"
#include "Widened.h"
#include <dxf/CodePage.h>

#include <algorithm>

namespace dxf {
namespace {

constexpr int firstVersionInUtf8 = 1021;
constexpr unsigned defaultPage = 1252;
constexpr unsigned utf8Page = 65001;

/// Calls `take` for every name outside the texts: strings whose `\U+XXXX` nobody else resolves.
template <typename Take>
void forEachName(Drawing& drawing, Take take) {
    take(drawing.header.version);
    take(drawing.header.codePageName);
    take(drawing.header.textStyle);
    take(drawing.header.dimTextStyle);
    for (TextStyle& style : drawing.styles) {
        take(style.name);
        take(style.fontFile);
        take(style.bigFontFile);
        take(style.family);
    }
    for (Layer& layer : drawing.layers) {
        take(layer.name);
    }
    for (DimStyle& style : drawing.dimStyles) {
        take(style.name);
    }
    for (Block& block : drawing.blocks) {
        take(block.name);
    }
    for (Insert& insert : drawing.inserts) {
        take(insert.blockName);
        take(insert.block);
        take(insert.layer);
        take(insert.layout);
    }
}

/// The same for the names of one text.
template <typename Text, typename Take>
void forEachName(Text& text, Take take) {
    take(text.layer);
    take(text.style);
    take(text.layout);
    take(text.block);
    take(text.tag);
    take(text.prompt);
    take(text.graphicsBlock);
    take(text.dimStyle);
}

/// What the bytes of a drawing look like.
struct Evidence {
    std::size_t utf8Strings = 0;
    std::size_t otherStrings = 0;
    std::size_t characters = 0; ///< Outside ASCII, in the strings that are UTF-8.

    void add(const std::wstring& wide) {
        if (std::ranges::all_of(wide, [](wchar_t c) { return c < wchar_t{0x80}; })) {
            return;
        }
        const std::size_t found = utf8Evidence(bytesOf(wide));
        utf8Strings += found > 0 ? 1 : 0;
        otherStrings += found > 0 ? 0 : 1;
        characters += found;
    }
};

Evidence evidenceOf(Drawing& drawing) {
    Evidence evidence;
    const auto add = [&](const std::wstring& name) { evidence.add(name); };
    forEachName(drawing, add);
    for (const TextEntity& text : drawing.texts) {
        forEachName(text, add);
        evidence.add(text.content);
    }
    return evidence;
}

void decideEncoding(Drawing& drawing) {
    const std::optional<unsigned> declared = codePageFromName(bytesOf(drawing.header.codePageName));
    if (declared == utf8Page || drawing.header.versionNumber() >= firstVersionInUtf8) {
        drawing.utf8 = true;
        drawing.codePage = declared && *declared != utf8Page ? *declared : defaultPage;
        return;
    }
    drawing.codePage = declared.value_or(defaultPage);
    const Evidence evidence = evidenceOf(drawing);
    if (declared) {
        // Old drawings by programs that write UTF-8 whatever they declare. One character can be chance ("T" and the
        // number sign are valid UTF-8 in the Cyrillic page); this many without one exception cannot.
        constexpr std::size_t enough = 8;
        drawing.utf8 = evidence.otherStrings == 0 && evidence.characters >= enough;
    } else {
        drawing.utf8 = evidence.utf8Strings > evidence.otherStrings;
    }
}

DecodedText decode(const Drawing& drawing, const std::wstring& wide) {
    const std::string bytes = bytesOf(wide);
    if (!drawing.utf8) {
        return decodeLossy(bytes, drawing.codePage);
    }
    DecodedText text = decodeLossy(bytes, utf8Page);
    if (text.replaced == 0) {
        return text;
    }
    // A spoilt or cut character among good ones is still UTF-8; bytes that hardly ever are come from the code page.
    const auto good = static_cast<std::size_t>(
        std::ranges::count_if(text.text, [](wchar_t c) { return c >= wchar_t{0x80} && c != wchar_t{0xFFFD}; }));
    return good > text.replaced ? text : decodeLossy(bytes, drawing.codePage);
}

} // namespace

void decodeStrings(Drawing& drawing, std::size_t textLength) {
    decideEncoding(drawing);
    const auto decodeName = [&](std::wstring& name) { name = resolveUnicodeEscapes(decode(drawing, name).text); };
    forEachName(drawing, decodeName);
    drawing.texts.change([&](TextEntity& text) {
        forEachName(text, decodeName);
        DecodedText decoded = decode(drawing, text.content);
        text.content = std::move(decoded.text);
        text.replacedBytes = decoded.replaced;
        drawing.replacedBytes += decoded.replaced;
        if (text.content.size() > textLength) {
            failAtTextLength(text.line, text.block, textLength);
        }
    });
}

} // namespace dxf
