#include "shaping/WordShaper.h"

#include <algorithm>

#include <unicode/uchar.h>
#include <unicode/utf16.h>

namespace platform {

namespace {

/// Whether `unit` joins with letters beside it, or lets others join across it.
bool joins(char16_t unit) {
    return unit >= 0x80 &&
           (U16_IS_SURROGATE(unit) || u_getIntPropertyValue(unit, UCHAR_JOINING_TYPE) != U_JT_NON_JOINING);
}

/// Whether what stands outside the run may let its letters take other shapes. Only joining does that.
bool joinsNeighbours(const ShapeRequest& request) {
    const std::size_t end = request.start + request.length;
    return (request.start > 0 && joins(request.text[request.start]) && joins(request.text[request.start - 1])) ||
           (end < request.text.size() && joins(request.text[end - 1]) && joins(request.text[end]));
}

/// Whether what stands at `position` begins a word, even after a space. Marks and their like take the space as their
/// base instead.
bool beginsWord(std::u16string_view text, std::size_t position, std::size_t end) {
    constexpr char16_t softHyphen = 0xAD;
    constexpr char16_t firstMark = 0x300;
    if (text[position] < firstMark) {
        return text[position] != softHyphen;
    }
    UChar32 character = 0;
    U16_GET(text.data(), 0, position, end, character);
    constexpr std::uint32_t solid = U_GC_L_MASK | U_GC_N_MASK | U_GC_P_MASK | U_GC_S_MASK;
    return (U_GET_GC_MASK(character) & solid) != 0 && u_hasBinaryProperty(character, UCHAR_GRAPHEME_EXTEND) == 0 &&
           u_hasBinaryProperty(character, UCHAR_EMOJI_MODIFIER) == 0;
}

/// Puts a run together from words and the spaces between them.
class RunOfWords {
public:
    RunOfWords(const ShapeRequest& request, WordStore::Words& words, ShapedRun& run)
        : m_text(request.text.substr(0, request.start + request.length)), m_start(request.start), m_end(m_text.size()),
          m_words(words), m_run(run) {}

    /// False if a word cannot be shaped apart.
    bool assemble() {
        m_run.clear();
        std::size_t position = endOfSpaces(m_start);
        addSpaces(m_start, position, m_words.plan().space().advance);
        while (position < m_end) {
            const std::size_t wordEnd = endOfWord(position);
            const std::size_t next = endOfSpaces(wordEnd);
            if (!addWord(position, wordEnd, next)) {
                return false;
            }
            position = next;
        }
        return true;
    }

private:
    /// Where the spaces from `position` end that stand between words.
    std::size_t endOfSpaces(std::size_t position) const {
        const std::size_t end = std::min(m_text.find_first_not_of(u' ', position), m_end);
        return end == m_end || beginsWord(m_text, end, m_end) ? end : position;
    }

    std::size_t endOfWord(std::size_t position) const {
        while (position < m_end) {
            const std::size_t space = std::min(m_text.find(u' ', position), m_end);
            if (space == m_end || endOfSpaces(space) != space) {
                return space;
            }
            position = m_text.find_first_not_of(u' ', space);
        }
        return m_end;
    }

    /// The last of the spaces is `lastAdvance` wide.
    void addSpaces(std::size_t begin, std::size_t end, std::int32_t lastAdvance) {
        for (std::size_t position = begin; position < end; ++position) {
            ShapedGlyph& glyph = m_run.emplace_back(m_words.plan().space());
            glyph.cluster = static_cast<std::uint32_t>(position);
        }
        if (begin != end) {
            m_run.back().advance = lastAdvance;
        }
    }

    /// The word at [begin, end) with the spaces up to `next`. The space before it is there already.
    bool addWord(std::size_t begin, std::size_t end, std::size_t next) {
        if (end - begin > WordPlan::maxWord) {
            return false;
        }
        const ShapedWord& word = m_words.find(m_text.substr(begin, end - begin), {begin != m_start, end != next});
        if (!word.isSeparable) {
            return false;
        }
        if (begin != m_start) {
            m_run.back().advance = word.spaceAdvance;
        }
        for (const ShapedGlyph& glyph : word.glyphs) {
            m_run.emplace_back(glyph).cluster += static_cast<std::uint32_t>(begin);
        }
        const std::size_t firstSpace = m_run.size();
        addSpaces(end, next, m_words.plan().space().advance);
        if (end != next) {
            m_run[firstSpace].isUnsafeToBreak = word.spaceAfterIsUnsafe;
        }
        return true;
    }

    /// Ends with the run: what is searched for here must not be looked for in the rest of the paragraph, over and over.
    const std::u16string_view m_text;
    const std::size_t m_start;
    const std::size_t m_end;
    WordStore::Words& m_words;
    ShapedRun& m_run;
};

} // namespace

void shapeByWords(const ShapeRequest& request, WordStore& store, ShapedRun& run) {
    if (request.features.empty() && !joinsNeighbours(request)) {
        WordStore::Words& words = store.wordsOf(request);
        if (words.plan().isSeparable() && RunOfWords(request, words, run).assemble()) {
            return;
        }
    }
    shape(request, run);
}

} // namespace platform
