#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

#include <dxf/Placement.h>
#include <mtext/Diagnostics.h>

#include "DrawingLayout.h"
#include "FontMap.h"

namespace tool {

// Writes everything that is measured as it is measured, one object per drawing: a
// drawing can have more texts than memory would hold. Lengths are
// drawing units; rectangles are [xmin, ymin, xmax, ymax] in the text's frame
// (origin at its box's top-left corner, y up) or null where there is no ink;
// "clusters" and "underlines" are there in mode clusters;
// "toDrawing" is the affine map [a, b, c, d, e, f] from there to the drawing:
// x' = a x + c y + e, y' = b x + d y + f. A drawing that cannot be used has
// "error" in place of all this.
//
// Whether the stream took it all is for its owner to see, after finish().
class JsonReport {
public:
    // The stream is borrowed.
    explicit JsonReport(std::ostream& output);

    // For each drawing: beginDrawing, its texts, endDrawing.
    void beginDrawing(const std::string& path, const dxf::Drawing& drawing);
    void add(const dxf::PlacedText& placed, const LaidOutText& text, const std::vector<mtext::Diagnostic>& diagnostics);
    void endDrawing(const DrawingSummary& summary);
    // Or this alone.
    void addUnusable(const std::string& path, const std::string& error);
    // Once, behind the last drawing.
    void finish(const std::vector<FontMap::Replacement>& replacements);

private:
    void newLine(std::size_t depth);
    void value(std::size_t depth, const std::string& json);
    template <typename Value>
    void member(std::size_t depth, const char* name, const Value& json);
    void openDrawing(const std::string& path);
    void closeDrawing();

    std::ostream& m_output;
    bool m_firstDrawing = true;
    bool m_firstText = true;
};

} // namespace tool
