// Drawings: read, placed, written back unchanged and with every text replaced.

#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

#include <dxf/CodePage.h>
#include <dxf/Drawing.h>
#include <dxf/Placement.h>
#include <dxf/Rewrite.h>

#include "Input.h"

namespace {

class Nothing final : public dxf::ITextReplacement {
public:
    bool replaces(const dxf::TextEntity&) override { return false; }
    void replace(const dxf::TextEntity&, dxf::EntityWriter&) override { fuzz::require(false); }
};

/// Writes every text as a line and as a paragraph.
class Everything final : public dxf::ITextReplacement {
public:
    bool replaces(const dxf::TextEntity&) override { return true; }
    void replace(const dxf::TextEntity& text, dxf::EntityWriter& writer) override {
        dxf::LinePiece line;
        line.content = text.content;
        line.style = text.style;
        writer.text(line);
        dxf::MTextPiece paragraph;
        paragraph.content = dxf::escapeMText(text.content);
        paragraph.direction = text.direction.value_or(dxf::Point{1.0, 0.0, 0.0});
        if (writer.hasMText()) {
            writer.mtext(paragraph);
        }
    }
};

std::string rewritten(const std::string& bytes, const dxf::Drawing& drawing, dxf::ITextReplacement& replacement) {
    std::istringstream input(bytes);
    std::ostringstream output;
    dxf::rewriteDrawing(input, output, drawing, replacement);
    return output.str();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes = fuzz::Input(data, size).rest();
    try {
        std::istringstream input(bytes);
        const dxf::Drawing drawing = dxf::readDrawing(input);
        constexpr std::size_t mostTexts = 10000;
        std::size_t count = 0;
        const auto take = [&count](const dxf::PlacedText& placed) {
            fuzz::require(placed.text != nullptr);
            return ++count < mostTexts;
        };
        dxf::placeTexts(drawing, take, {.placements = dxf::Limits::none, .placedLength = dxf::Limits::none});
        Nothing nothing;
        fuzz::require(rewritten(bytes, drawing, nothing) == bytes);
        Everything everything;
        std::istringstream again(rewritten(bytes, drawing, everything));
        dxf::readDrawing(again);
    } catch (const dxf::Error&) {
        // An answer like any other.
    }
    return 0;
}
