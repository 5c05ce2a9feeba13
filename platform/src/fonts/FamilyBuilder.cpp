#include "fonts/FamilyBuilder.h"

#include "fonts/CaseFolding.h"
#include "fonts/FontMatching.h"
#include "fonts/NameTable.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <tuple>

namespace platform {

namespace {

/// From this weight on a family has a bold face of its own.
constexpr int boldEnough = DWRITE_FONT_WEIGHT_SEMI_BOLD;

struct FontDraft {
    FaceSource* source;
    FaceTraits traits;
    DWRITE_FONT_SIMULATIONS simulations;
};

/// Fonts from the most regular one outwards, so that the first font of a family is the
/// one that a caller with no wishes wants.
auto orderInFamily(const FontDraft& font) {
    const int stretch = font.traits.stretch;
    const int weight = font.traits.weight;
    return std::tuple(std::abs(stretch - DWRITE_FONT_STRETCH_NORMAL), stretch,
                      std::abs(weight - DWRITE_FONT_WEIGHT_NORMAL), weight, static_cast<int>(font.traits.style),
                      std::string_view(font.source->path()), font.source->index());
}

bool contains(const std::vector<FontDraft>& fonts, const FaceTraits& traits) {
    return std::any_of(fonts.begin(), fonts.end(), [&](const FontDraft& font) {
        return font.traits.weight == traits.weight && font.traits.stretch == traits.stretch &&
               font.traits.style == traits.style;
    });
}

/// Where no face of the family is bold: a bold font from each width's and style's face
/// closest to normal weight.
void addBoldSimulations(std::vector<FontDraft>& fonts) {
    const std::size_t realCount = fonts.size();
    const auto isBold = [](const FontDraft& font) { return font.traits.weight >= boldEnough; };
    if (std::any_of(fonts.begin(), fonts.end(), isBold)) {
        return;
    }
    for (std::size_t i = 0; i < realCount; ++i) {
        FaceTraits traits = fonts[i].traits;
        traits.weight = DWRITE_FONT_WEIGHT_BOLD;
        if (contains(fonts, traits)) {
            continue;
        }
        const FaceTraits wish{DWRITE_FONT_WEIGHT_NORMAL, traits.stretch, traits.style};
        const auto base = std::min_element(fonts.begin(), fonts.begin() + static_cast<std::ptrdiff_t>(realCount),
                                           [&](const FontDraft& a, const FontDraft& b) {
                                               return matchDistance(wish, a.traits) < matchDistance(wish, b.traits);
                                           });
        fonts.push_back({base->source, traits, DWRITE_FONT_SIMULATIONS_BOLD});
    }
}

/// Wherever a weight and stretch has an upright font and no oblique one (an italic is
/// another thing): an oblique font from the upright one.
void addObliqueSimulations(std::vector<FontDraft>& fonts) {
    const std::size_t uprightCount = fonts.size();
    for (std::size_t i = 0; i < uprightCount; ++i) {
        FontDraft font = fonts[i];
        if (font.traits.style != DWRITE_FONT_STYLE_NORMAL) {
            continue;
        }
        font.traits.style = DWRITE_FONT_STYLE_OBLIQUE;
        font.simulations = font.simulations | DWRITE_FONT_SIMULATIONS_OBLIQUE;
        if (!contains(fonts, font.traits)) {
            fonts.push_back(font);
        }
    }
}

LocalizedNames faceNames(const FontDraft& font) {
    const LocalizedNames& stored = font.source->wws().face;
    if (font.simulations == DWRITE_FONT_SIMULATIONS_NONE) {
        return stored;
    }
    const std::wstring* const base = preferredName(stored);
    return {{L"en-us", simulatedFaceName(base != nullptr ? *base : L"Regular", font.simulations)}};
}

} // namespace

std::vector<FamilyDraft> groupFamilies(const std::vector<std::unique_ptr<FaceSource>>& sources) {
    std::map<std::wstring, std::vector<FaceSource*>> groups;
    for (const std::unique_ptr<FaceSource>& source : sources) {
        groups[foldCase(*preferredName(source->wws().family))].push_back(source.get());
    }
    std::vector<FamilyDraft> families;
    for (auto& [name, members] : groups) {
        families.push_back({name, std::move(members)});
    }
    return families;
}

std::unique_ptr<CFontFamily> buildFamily(CFontCollection& collection, FamilyDraft draft) {
    std::vector<FontDraft> fonts;
    for (FaceSource* source : draft.sources) {
        fonts.push_back({source, source->wws().traits, DWRITE_FONT_SIMULATIONS_NONE});
    }
    std::sort(fonts.begin(), fonts.end(),
              [](const FontDraft& a, const FontDraft& b) { return orderInFamily(a) < orderInFamily(b); });
    addBoldSimulations(fonts);
    addObliqueSimulations(fonts);

    auto family = std::make_unique<CFontFamily>(collection, fonts.front().source->wws().family);
    std::vector<std::unique_ptr<CFont>> members;
    for (const FontDraft& font : fonts) {
        members.push_back(
            std::make_unique<CFont>(*family, *font.source, font.traits, font.simulations, faceNames(font)));
    }
    family->setFonts(std::move(members));
    return family;
}

} // namespace platform
