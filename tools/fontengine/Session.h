#pragma once

#include <memory>

#include <FontEngine/FontEngine.h>

#include "FontMap.h"

namespace tool {

// The library as one run of the program uses it: one engine, one service, one
// factory, one table of replaced fonts.
class Session {
public:
    Session();

    fonts::IFontEngine& engine() { return *m_engine; }
    const fonts::ITextMetrics& metrics() const { return *m_metrics; }
    const fonts::IRichTextDocumentLayoutingFactory& layoutings() const { return m_layoutings; }
    FontMap& fontMap() { return m_fontMap; }

private:
    std::unique_ptr<fonts::IFontEngine> m_engine;
    std::unique_ptr<fonts::ITextMetrics> m_metrics;
    fonts::CRichTextDocumentLayoutingFactory m_layoutings;
    FontMap m_fontMap;
};

} // namespace tool
