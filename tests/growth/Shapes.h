#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace growth {

/// What varies along a text besides its characters, at every second unit.
enum class Ranges { None, Sizes, Underlines, Locales, Features, Objects, Spacings };

/// A kind of text that can be made as long as one likes.
struct Shape {
    std::string name;
    /// The text is this, over and over...
    std::u16string repeated;
    /// ...and this as often behind it.
    std::u16string repeatedAfter;
    Ranges ranges = Ranges::None;
    bool readsRightToLeft = false;

    /// The text, about `units` long: nothing of `repeated` is cut.
    [[nodiscard]] std::wstring text(std::size_t units) const;
};

/// Texts for one layout.
const std::vector<Shape>& shapes();

/// Contents of MTEXT entities.
const std::vector<Shape>& contents();

} // namespace growth
