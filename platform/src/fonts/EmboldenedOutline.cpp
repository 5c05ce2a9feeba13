#include "fonts/GlyphOutline.h"

#include <ft2build.h>
#include FT_OUTLINE_H

#include <cmath>
#include <limits>
#include <vector>

namespace platform {

namespace {

// FreeType computes in integers: 64 of its units are one of the font's.
constexpr float freeTypeUnits = 64;

FT_Vector toFreeType(OutlinePoint point) {
    return {std::lround(point.x * freeTypeUnits), std::lround(point.y * freeTypeUnits)};
}

OutlinePoint fromFreeType(const FT_Vector* point) {
    return {static_cast<float>(point->x) / freeTypeUnits, static_cast<float>(point->y) / freeTypeUnits};
}

/// Collects an outline in the form FreeType works on.
class FreeTypeOutline final : public OutlineSink {
public:
    void moveTo(OutlinePoint to) override {
        m_contourStart = m_points.size();
        add(to, FT_CURVE_TAG_ON);
    }
    void lineTo(OutlinePoint to) override { add(to, FT_CURVE_TAG_ON); }
    void quadTo(OutlinePoint control, OutlinePoint to) override {
        add(control, FT_CURVE_TAG_CONIC);
        add(to, FT_CURVE_TAG_ON);
    }
    void cubicTo(OutlinePoint control1, OutlinePoint control2, OutlinePoint to) override {
        add(control1, FT_CURVE_TAG_CUBIC);
        add(control2, FT_CURVE_TAG_CUBIC);
        add(to, FT_CURVE_TAG_ON);
    }
    void close() override {
        // FreeType's contours return to their start by themselves.
        const FT_Vector& first = m_points[m_contourStart];
        if (m_points.size() > m_contourStart + 1 && m_points.back().x == first.x && m_points.back().y == first.y) {
            m_points.pop_back();
            m_tags.pop_back();
        }
        m_contourEnds.push_back(m_points.size() - 1);
    }

    /// More than FreeType's indices can name; such an outline stays as it is.
    bool tooLarge() const { return m_points.size() > std::numeric_limits<short>::max(); }
    bool empty() const { return m_contourEnds.empty(); }

    /// Widens the stems and plays the result.
    void play(float strength, OutlineSink& sink) {
        std::vector<short> ends(m_contourEnds.begin(), m_contourEnds.end());
        FT_Outline outline{};
        outline.n_contours = static_cast<short>(ends.size());
        outline.n_points = static_cast<short>(m_points.size());
        outline.points = m_points.data();
        outline.tags = m_tags.data();
        outline.contours = ends.data();
        FT_Outline_EmboldenXY(&outline, std::lround(strength * freeTypeUnits), 0);

        Player player{sink, false};
        static const FT_Outline_Funcs functions = {
            Player::moveTo, Player::lineTo, Player::quadTo, Player::cubicTo, 0, 0};
        FT_Outline_Decompose(&outline, &functions, &player);
        player.finishContour();
    }

private:
    /// FreeType does not say where a contour ends: the next one's start does.
    struct Player {
        OutlineSink& sink;
        bool open;

        void finishContour() {
            if (open) {
                sink.close();
            }
        }
        static int moveTo(const FT_Vector* to, void* self) {
            auto& player = *static_cast<Player*>(self);
            player.finishContour();
            player.open = true;
            player.sink.moveTo(fromFreeType(to));
            return 0;
        }
        static int lineTo(const FT_Vector* to, void* self) {
            static_cast<Player*>(self)->sink.lineTo(fromFreeType(to));
            return 0;
        }
        static int quadTo(const FT_Vector* control, const FT_Vector* to, void* self) {
            static_cast<Player*>(self)->sink.quadTo(fromFreeType(control), fromFreeType(to));
            return 0;
        }
        static int cubicTo(const FT_Vector* control1, const FT_Vector* control2, const FT_Vector* to, void* self) {
            static_cast<Player*>(self)->sink.cubicTo(fromFreeType(control1), fromFreeType(control2), fromFreeType(to));
            return 0;
        }
    };

    void add(OutlinePoint point, int tag) {
        m_points.push_back(toFreeType(point));
        m_tags.push_back(static_cast<char>(tag));
    }

    std::vector<FT_Vector> m_points;
    std::vector<char> m_tags;
    std::vector<std::size_t> m_contourEnds;
    std::size_t m_contourStart = 0;
};

} // namespace

void playEmboldenedOutline(hb_font_t* font, hb_codepoint_t glyph, float strength, OutlineSink& sink) {
    FreeTypeOutline outline;
    playOutline(font, glyph, outline);
    if (outline.tooLarge()) {
        playOutline(font, glyph, sink);
    } else if (!outline.empty()) {
        outline.play(strength, sink);
    }
}

} // namespace platform
