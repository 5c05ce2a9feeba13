#pragma once

#include "Error.h"
#include "Limits.h"
#include "Tables.h"
#include "TextEntity.h"
#include "TextList.h"
#include <Common/FontEngineExport.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <istream>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace dxf {

/// What stopped the reading early, or was wrong without stopping it.
struct Problem {
    ErrorKind kind = ErrorKind::Truncated;
    std::uint64_t line = 0;
    std::string message; ///< UTF-8, for the person who has to act on it.
};

/// Everything about texts in one drawing. A plain value: const access from any number of threads.
struct FONTENGINE_DXF_API Drawing {
    Header header;
    std::vector<TextStyle> styles;
    std::vector<Layer> layers;
    std::vector<DimStyle> dimStyles;
    TextList texts;              ///< In the order of the file.
    std::vector<Block> blocks;   ///< In the order of the file.
    std::vector<Insert> inserts; ///< In the order of the file, without those whose block shows no text.

    unsigned codePage = 1252;      ///< Of the bytes: the declared one, or 1252 where none is declared.
    bool utf8 = false;             ///< Texts are UTF-8; bytes that are not are read in `codePage`.
    std::size_t replacedBytes = 0; ///< Sum over the texts.
    std::uint64_t maxHandle = 0;   ///< Highest handle of any object in the file.
    std::uint64_t byteCount = 0;
    std::uint64_t lineCount = 0;
    std::vector<Problem> problems; ///< Empty for a sound file.

    /// True when the file ends early or is damaged: what stood before was read.
    [[nodiscard]] bool truncated() const noexcept;
    /// The style of that name, in any case; null when the table has none.
    [[nodiscard]] const TextStyle* findStyle(const std::wstring& name) const;
    /// The text's style; where the table lacks it, a style with font "txt" and factor 1, valid as long as the drawing.
    [[nodiscard]] const TextStyle& styleOf(const TextEntity& text) const;
    /// The layer of that name, in any case; null when the table has none.
    [[nodiscard]] const Layer* findLayer(const std::wstring& name) const;
    /// The block of that name, in any case; null when there is none.
    [[nodiscard]] const Block* findBlock(const std::wstring& name) const;

    TextStyle missingStyle;                                   ///< What styleOf gives for a style that the table lacks.
    std::unordered_map<std::wstring, std::size_t> styleIndex; ///< By folded name.
    std::unordered_map<std::wstring, std::size_t> layerIndex; ///< By folded name.
    std::unordered_map<std::wstring, std::size_t> blockIndex; ///< By folded name.
};

/// Called now and then with the number of bytes read; false stops the reading, as if the file ended there.
using Progress = std::function<bool(std::uint64_t bytesRead)>;

/// Reads a drawing in one pass; memory grows with its texts and block references, not with the file.
///
/// The stream must be open in binary mode and stand at the drawing's first byte. Throws Error when there is nothing to
/// read: Empty, NotADrawing, Binary, Unreadable; and TextLengthLimit. (The other limits are placeTexts' to hold.) A
/// file that ends early or is damaged further on gives what stood before, and the damage as a problem. Stateless: any
/// number of threads may read different streams.
FONTENGINE_DXF_API Drawing readDrawing(std::istream& input, const Progress& progress = {}, const Limits& limits = {});

} // namespace dxf
