#pragma once

#include <memory>
#include <string>

#include "TextLayout.h"

namespace tool {

struct PictureOptions {
    // Draws paragraph boxes (blue), ink boxes (red) and baselines (green) too.
    bool boxes = false;
    // Length of the picture's longer side, in pixels or SVG units.
    double longerSide = 2400.0;
};

// How far the texts of a drawing reach: known before the first is drawn, so that
// texts need not be kept to be fitted to a picture.
class PictureExtent {
public:
    void include(const LaidOutText& text);
    // Of their boxes and their ink, in the drawing; the unit square where no text
    // takes up room.
    [[nodiscard]] MbRect rect() const;

private:
    MbRect m_rect;
};

enum class PictureFormat { Png, Svg };

// Draws texts laid out with their glyphs, fitted to the picture; texts laid out
// by clusters with the clusters' rectangles (violet), the corners where their
// texts are inserted (dots) and the bars of underlines (orange).
class Picture {
public:
    // Throws InputError when the file cannot be written.
    Picture(PictureFormat format, const std::string& path, const PictureExtent& extent, const PictureOptions& options);
    ~Picture();
    Picture(Picture&&) noexcept;

    void draw(const LaidOutText& text);
    // Writes what was drawn; nothing is drawn afterwards. Throws InputError when the
    // file cannot be written.
    void finish();

private:
    struct Canvas;
    std::unique_ptr<Canvas> m_canvas;
};

} // namespace tool
