#include <mtext/MText.h>

#include <array>

namespace mtext {

namespace {

constexpr std::uint32_t FULL_ALPHA = 0xFF000000U;
constexpr std::array<std::uint32_t, 10> NAMED{0,        0xFF0000, 0xFFFF00, 0x00FF00, 0x00FFFF,
                                              0x0000FF, 0xFF00FF, 0,        0x808080, 0xC0C0C0};

std::uint32_t argb(std::uint32_t red, std::uint32_t green, std::uint32_t blue) {
    return FULL_ALPHA | red << 16 | green << 8 | blue;
}

// Channels are reckoned in 1/32 of a unit, in which levels, halves and quarters
// are all whole, so that cutting the fraction is exact.
constexpr std::uint32_t UNIT = 32;
constexpr std::array<std::uint32_t, 5> LEVELS{255 * UNIT, 663 * UNIT / 4, 255 * UNIT / 2, 153 * UNIT / 2,
                                              153 * UNIT / 4};

std::uint32_t wheelColor(std::uint32_t place) {
    const std::uint32_t hue = place / 10;
    const std::uint32_t high = LEVELS[place % 10 / 2];
    const std::uint32_t low = place % 2 == 0 ? 0 : high / 2;
    const std::uint32_t quarter = hue % 4;
    const std::uint32_t rising = (low + (high - low) * quarter / 4) / UNIT;
    const std::uint32_t falling = (high - (high - low) * quarter / 4) / UNIT;
    const std::uint32_t top = high / UNIT;
    const std::uint32_t bottom = low / UNIT;
    switch (hue / 4) {
    case 0:
        return argb(top, rising, bottom);
    case 1:
        return argb(falling, top, bottom);
    case 2:
        return argb(bottom, top, rising);
    case 3:
        return argb(bottom, falling, top);
    case 4:
        return argb(rising, bottom, top);
    default:
        return argb(top, bottom, falling);
    }
}

} // namespace

std::uint32_t argbFromColorIndex(std::int32_t index, std::uint32_t foreground, std::uint32_t inherited) {
    if (index <= 0 || index > 255) {
        return inherited;
    }
    const auto number = static_cast<std::uint32_t>(index);
    if (number == 7) {
        return foreground;
    }
    if (number < NAMED.size()) {
        return FULL_ALPHA | NAMED[number];
    }
    if (number < 250) {
        return wheelColor(number - 10);
    }
    const std::uint32_t grey = 51 + (number - 250) * 204 / 5;
    return argb(grey, grey, grey);
}

} // namespace mtext
