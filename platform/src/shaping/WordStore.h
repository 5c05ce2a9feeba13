#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>

#include "shaping/WordPlan.h"

namespace platform {

/// Words as shaped before, so that each is shaped once for all layouts of a thread. A drawing says the same words over
/// and over, in few fonts.
class WordStore {
public:
    /// The words of one font, script, language and direction, kerned or not.
    class Words {
    public:
        Words(const ShapeRequest& request, std::size_t& bytes) : m_plan(request), m_bytes(bytes) {}

        [[nodiscard]] const WordPlan& plan() const noexcept { return m_plan; }
        /// The word, shaped now if it never was. Valid until the store forgets.
        const ShapedWord& find(std::u16string_view word, WordEdges edges);

    private:
        struct Key {
            std::u16string text;
            WordEdges edges;
        };
        struct KeyView {
            std::u16string_view text;
            WordEdges edges;
        };
        struct Hash {
            using is_transparent = void;
            std::size_t operator()(const Key& key) const noexcept { return (*this)(KeyView{key.text, key.edges}); }
            std::size_t operator()(const KeyView& key) const noexcept {
                return std::hash<std::u16string_view>()(key.text) + (key.edges.spaceBefore ? 1 : 0) +
                       (key.edges.spaceAfter ? 2 : 0);
            }
        };
        struct Equal {
            using is_transparent = void;
            template <typename Left, typename Right>
            bool operator()(const Left& left, const Right& right) const noexcept {
                return left.edges == right.edges && left.text == right.text;
            }
        };

        WordPlan m_plan;
        std::unordered_map<Key, ShapedWord, Hash, Equal> m_words;
        std::size_t& m_bytes;
    };

    /// A store that forgets everything when it holds about `capacity` bytes.
    explicit WordStore(std::size_t capacity = defaultCapacity) : m_capacity(capacity) {}

    /// The words that look as `request` says; of its text nothing is used. Valid until the next call.
    Words& wordsOf(const ShapeRequest& request);

    [[nodiscard]] std::size_t bytes() const noexcept { return m_bytes; }

    /// The calling thread's own, so that no thread waits for another.
    static WordStore& threads();

private:
    /// Some 20,000 words.
    static constexpr std::size_t defaultCapacity = std::size_t{4} << 20;

    /// The face by its number, which no later face gets, and direction and kerning as one number.
    using Key = std::tuple<std::uint32_t, hb_script_t, hb_language_t, unsigned>;
    static Key keyOf(const ShapeRequest& request);

    std::size_t m_capacity;
    std::size_t m_bytes = 0;
    std::map<Key, Words> m_words;
    /// Texts ask for the same words over and over.
    Key m_lastKey{};
    Words* m_last = nullptr;
};

} // namespace platform
