#pragma once

#include <Common/FontEngineExport.h>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Bytes of drawings to text and back. Text is UTF-16 in std::wstring, one unit per element, on every platform.
/// All functions may be called by any number of threads at once.
namespace dxf {

/// The Windows or DOS code page number that a `$DWGCODEPAGE` value names: "ANSI_1251", "ansi_932", "dos437",
/// "MAC-ROMAN" (10000), "ISO8859-5" (28595), "utf-8" (65001), ... Nothing for a missing, undefined or unknown name.
FONTENGINE_DXF_API std::optional<unsigned> codePageFromName(std::string_view name);

/// True when decodeBytes and encodeText know the code page.
FONTENGINE_DXF_API bool isKnownCodePage(unsigned codePage);

/// The characters of `bytes` in a code page. Nothing when the page is unknown or the bytes are not all defined in it.
/// Fits mtext::ByteDecoder.
FONTENGINE_DXF_API std::optional<std::wstring> decodeBytes(std::string_view bytes, unsigned codePage);

/// Text decoded with every invalid byte sequence replaced.
struct DecodedText {
    std::wstring text;
    std::size_t replaced = 0; ///< Number of U+FFFD that stand for bytes the code page does not define.
};

/// As decodeBytes, but never fails: what is not defined becomes U+FFFD and is counted. An unknown page counts as 1252.
FONTENGINE_DXF_API DecodedText decodeLossy(std::string_view bytes, unsigned codePage);

/// Text as bytes of a code page. What the page lacks (and a lone surrogate) is written as `\U+XXXX`, one per UTF-16
/// unit, which every reader of drawings' texts resolves. An unknown page gives ASCII and `\U+XXXX` alone.
FONTENGINE_DXF_API std::string encodeText(std::wstring_view text, unsigned codePage);

/// Well-formed UTF-8 with at least one character outside ASCII; the number of those characters, 0 otherwise.
FONTENGINE_DXF_API std::size_t utf8Evidence(std::string_view bytes);

/// Resolves `\U+XXXX` in a name of a table record. (Texts keep their codes: they are read by mtext.)
FONTENGINE_DXF_API std::wstring resolveUnicodeEscapes(std::wstring_view name);

/// The form in which names of styles, layers and blocks are compared: case folded.
FONTENGINE_DXF_API std::wstring foldName(std::wstring_view name);

} // namespace dxf
