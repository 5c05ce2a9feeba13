#pragma once

// Text for measurements: made up, but with the lengths, the repeats and the mixture of scripts that drawings have. The
// same seed gives the same text on every machine.

#include <cstddef>
#include <random>
#include <string>
#include <vector>

namespace bench {

/// One element per paragraph, UTF-8.
using Corpus = std::vector<std::string>;

/// 20,000 short annotations, about 13 characters each; two in five repeat an earlier one.
Corpus labels();
/// 2,000 paragraphs of general notes, 40 to 80 words each, to be wrapped.
Corpus notes();
/// 1,000 paragraphs in ten scripts, about half of them in several, to be wrapped.
Corpus world();

/// Draws from a sequence that the standard fixes.
class Dice {
public:
    explicit Dice(unsigned seed) : m_engine(seed) {}

    std::size_t below(std::size_t count) { return static_cast<std::size_t>(m_engine() % count); }
    int between(int low, int high) { return low + static_cast<int>(below(static_cast<std::size_t>(high - low + 1))); }
    bool chance(int percent) { return between(1, 100) <= percent; }
    template <typename List>
    const auto& pick(const List& list) {
        return list[below(std::size(list))];
    }
    /// A number with at least `digits` digits.
    std::string number(int low, int high, int digits = 1) {
        std::string text = std::to_string(between(low, high));
        return text.size() < static_cast<std::size_t>(digits)
                   ? std::string(static_cast<std::size_t>(digits) - text.size(), '0') + text
                   : text;
    }

private:
    std::mt19937_64 m_engine;
};

} // namespace bench
