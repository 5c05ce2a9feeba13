#include "fonts/FamilyBuilder.h"

#include "fonts/CaseFolding.h"
#include "fonts/FontMatching.h"
#include "fonts/NameTable.h"

#include <algorithm>
#include <compare>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <optional>
#include <tuple>
#include <utility>

namespace platform {

namespace {

/// From this weight on a family has a bold face of its own.
constexpr int boldEnough = DWRITE_FONT_WEIGHT_SEMI_BOLD;

struct FontDraft {
    FaceSource* source;
    FaceTraits traits;
    DWRITE_FONT_SIMULATIONS simulations;
};

/// Whether a face bears its family's own name, as GDI knows it.
bool bearsFamilyName(const FaceSource& source) {
    const std::wstring* const win32 = preferredName(source.names().win32Family);
    return win32 != nullptr && foldCase(*win32) == foldCase(*preferredName(source.wws().family));
}

/// A font's place in its family: from the most regular one outwards, so that the first font of a family is the one that
/// a caller with no wishes wants. Where traits are the same, the font's own names and tables decide, and never how its
/// file is named; fonts of one place are one font.
struct Place {
    using Traits = std::tuple<int, int, int, int, int>;
    using Names = std::tuple<bool, unsigned, bool, std::wstring>;
    using Edition = std::tuple<std::int64_t, std::int64_t, std::uint64_t, int>;

    Traits traits;
    Names names;
    Edition edition;

    explicit Place(const FaceSource& source) {
        const int stretch = source.wws().traits.stretch;
        const int weight = source.wws().traits.weight;
        traits = {std::abs(stretch - DWRITE_FONT_STRETCH_NORMAL), stretch, std::abs(weight - DWRITE_FONT_WEIGHT_NORMAL),
                  weight, static_cast<int>(source.wws().traits.style)};
        const Plainness plainness = plainnessOf(source.wws().face);
        const std::wstring* const face = preferredName(source.wws().face);
        names = {!plainness.isPlain, plainness.otherWords, !bearsFamilyName(source), face != nullptr ? *face : L""};
        // The later and the richer edition first; of a variable font its instances in their order.
        const FaceEdition& stated = source.edition();
        constexpr int instanceShift = 16;
        edition = {-std::int64_t{stated.revision}, -std::int64_t{stated.glyphCount}, stated.fingerprint,
                   source.index() >> instanceShift};
    }
    auto operator<=>(const Place&) const = default;
};

/// The faces of a family in order, each once.
std::vector<FaceSource*> inOrder(const std::vector<FaceSource*>& sources) {
    std::vector<std::pair<Place, FaceSource*>> placed;
    placed.reserve(sources.size());
    for (FaceSource* const source : sources) {
        placed.emplace_back(Place(*source), source);
    }
    std::stable_sort(placed.begin(), placed.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<FaceSource*> ordered;
    for (std::size_t i = 0; i < placed.size(); ++i) {
        if (i == 0 || placed[i].first != placed[i - 1].first) {
            ordered.push_back(placed[i].second);
        }
    }
    return ordered;
}

/// The index of the upright face whose name says nothing but that it is the regular one; none if there is no such face.
std::optional<std::size_t> findPlain(const std::vector<FontDraft>& fonts) {
    const auto found = std::find_if(fonts.begin(), fonts.end(), [](const FontDraft& font) {
        return font.simulations == DWRITE_FONT_SIMULATIONS_NONE && font.traits.style == DWRITE_FONT_STYLE_NORMAL &&
               plainnessOf(font.source->wws().face).isPlain;
    });
    return found != fonts.end() ? std::optional(static_cast<std::size_t>(found - fonts.begin())) : std::nullopt;
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
    for (FaceSource* const source : inOrder(draft.sources)) {
        fonts.push_back({source, source->wws().traits, DWRITE_FONT_SIMULATIONS_NONE});
    }
    addBoldSimulations(fonts);
    addObliqueSimulations(fonts);

    auto family = std::make_unique<CFontFamily>(collection, fonts.front().source->wws().family);
    std::vector<std::unique_ptr<CFont>> members;
    for (const FontDraft& font : fonts) {
        members.push_back(
            std::make_unique<CFont>(*family, *font.source, font.traits, font.simulations, faceNames(font)));
    }
    family->setFonts(std::move(members), findPlain(fonts));
    return family;
}

} // namespace platform
