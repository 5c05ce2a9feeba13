#pragma once

#include <memory>

#include <FontEngine/FontEngine.h>

#include "FaceNumbers.h"
#include "FontMap.h"
#include "ParagraphLayouts.h"

namespace tool {

// The library as one run of the program uses it: one engine, one service, one
// table of replaced fonts.
class Session {
public:
    Session();

    fonts::IFontEngine& engine() { return *m_engine; }
    const fonts::ITextMetrics& metrics() const { return *m_metrics; }
    ParagraphLayouts& layouts() { return m_layouts; }
    FaceNumbers& faces() { return m_faces; }
    FontMap& fontMap() { return m_fontMap; }

private:
    std::unique_ptr<fonts::IFontEngine> m_engine;
    std::unique_ptr<fonts::ITextMetrics> m_metrics;
    ParagraphLayouts m_layouts;
    FaceNumbers m_faces;
    FontMap m_fontMap;
};

} // namespace tool
