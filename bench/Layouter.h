#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <FontEngine/FontEngine.h>

#include "Corpora.h"

namespace bench {

/// What is asked of a paragraph.
enum class Question {
    Box,   ///< its layout box
    Ink,   ///< the bounds of its outlines
    Glyphs ///< every glyph with its place
};

inline constexpr std::array questions = {Question::Box, Question::Ink, Question::Glyphs};

constexpr std::string_view nameOf(Question question) {
    return question == Question::Box ? "box" : question == Question::Ink ? "ink" : "glyphs";
}

/// Sums over a corpus: they keep the work from being optimised away, and two ways of layout can be compared by them.
struct Sums {
    double width = 0.0;
    double height = 0.0;
    double positions = 0.0;
    long long glyphs = 0;
};

/// A corpus as hosts hold it, and the width its lines are wrapped at (0: not wrapped).
struct Texts {
    std::string name;
    std::vector<std::wstring> paragraphs;
    double wrapWidth;
};

/// All three corpora.
std::vector<Texts> allTexts();

inline constexpr const wchar_t* family = L"DejaVu Sans";
inline constexpr double emSize = 10.0;

/// Lays paragraphs out through the library's public interface, each as a new document, as a host would.
class Layouter {
public:
    Layouter();

    void ask(Question question, const std::wstring& paragraph, double wrapWidth, Sums& sums) const;

private:
    std::unique_ptr<fonts::IFontEngine> m_engine;
    std::unique_ptr<fonts::ITextMetrics> m_metrics;
    float m_capSize;
};

} // namespace bench
