// Drawings, exploded into texts and into outlines. The texts are read and laid out again, and every glyph has to stand
// where it stood, as `fontengine explode --check` asks.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

#include <Exploder.h>
#include <RoundTrip.h>
#include <Session.h>

#include "Input.h"

namespace {

bool isNear(const dxf::Point& point, double reach) {
    return std::abs(point.x) <= reach && std::abs(point.y) <= reach && std::abs(point.z) <= reach;
}

/// Whether numbers of a drawing can tell where the glyphs of a text stand, to a hundredth of its height and better.
bool hasRoomForItsGlyphs(const dxf::TextEntity& text) {
    constexpr double smallest = 1e-6;
    constexpr double largest = 1e6;
    const double reach = 1e6 * text.height;
    return text.height >= smallest && text.height <= largest && isNear(text.insertion, reach) && text.width <= reach;
}

/// A drawing that takes no longer than a person would wait for a thousand of them.
bool isSmall(const dxf::Drawing& drawing) {
    constexpr std::size_t mostUnits = 400;
    std::size_t units = 0;
    for (const dxf::TextEntity& text : drawing.texts) {
        units += text.content.size();
    }
    return units <= mostUnits;
}

std::string exploded(const std::string& bytes, const dxf::Drawing& drawing, tool::Exploder& exploder) {
    std::istringstream input(bytes);
    std::ostringstream output;
    dxf::rewriteDrawing(input, output, drawing, exploder);
    return output.str();
}

dxf::Drawing read(const std::string& bytes) {
    std::istringstream input(bytes);
    return dxf::readDrawing(input);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static tool::Session session;
    const std::string bytes = fuzz::Input(data, size).rest();
    try {
        const dxf::Drawing drawing = read(bytes);
        if (!isSmall(drawing)) {
            return 0;
        }
        tool::Exploder texts(session, drawing, tool::PieceKind::Clusters, true);
        const dxf::Drawing again = read(exploded(bytes, drawing, texts));
        const tool::RoundTrip trip = tool::checkRoundTrip(session, again, drawing, texts);
        fuzz::require(trip.holds() || !std::ranges::all_of(drawing.texts, hasRoomForItsGlyphs));

        tool::Exploder outlines(session, drawing, tool::PieceKind::Outlines, false);
        read(exploded(bytes, drawing, outlines));
        fuzz::require(outlines.counts().texts >= texts.counts().texts);
    } catch (const dxf::Error&) {
        // An answer like any other.
    }
    return 0;
}
