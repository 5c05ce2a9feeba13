#include "EntityOriginReader.h"
#include <dxf/PairReader.h>
#include <dxf/Rewrite.h>

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

namespace dxf {
namespace {

/// One more digit than the seed needs now, and eight at least, are reserved for what it will be.
constexpr std::size_t fewestSeedDigits = 8;

/// The header's seed, unless the drawing has used it already.
std::uint64_t firstFreeHandle(const Drawing& drawing) {
    constexpr std::uint64_t last = std::numeric_limits<std::uint64_t>::max();
    const std::uint64_t behindUsed = drawing.maxHandle == last ? last : drawing.maxHandle + 1;
    return std::max(drawing.header.handleSeed, behindUsed);
}

class Rewriter {
public:
    Rewriter(std::istream& input, std::ostream& output, const Drawing& drawing, ITextReplacement& replacement,
             const Progress& progress)
        : m_pairs(input), m_output(output), m_drawing(drawing), m_replacement(replacement), m_progress(progress),
          m_handles(firstFreeHandle(drawing)) {}

    RewriteResult rewrite() {
        chooseTexts();
        copyPairs();
        checkAllReplaced();
        copyRest();
        patchSeed();
        m_output.flush();
        checkOutput();
        m_result.handleSeed = m_handles.next();
        return m_result;
    }

private:
    void chooseTexts() {
        for (const TextEntity& text : m_drawing.texts) {
            if (canReplace(text) && m_replacement.replaces(text)) {
                m_texts.push_back(text.ordinal);
                m_seedNeeded = m_seedNeeded || text.handle != 0;
            }
        }
        takeNextText();
        if (m_seedNeeded && m_output.tellp() == std::ostream::pos_type(-1)) {
            throw Error(ErrorKind::BadRequest, 0, "A changed drawing needs a file to be written to, not a pipe.");
        }
    }

    void takeNextText() {
        m_nextText.reset();
        if (m_next < m_texts.size()) {
            m_nextText = m_drawing.texts[m_texts[m_next]];
            ++m_next;
        }
    }

    void copyPairs() {
        try {
            while (const std::optional<Pair> pair = nextPair()) {
                reportProgress();
                take(*pair);
                if (pair->is(0, "EOF")) {
                    return;
                }
            }
        } catch (const Error& error) {
            // Damage that the first reading met as well is copied with the rest.
            const bool known = std::ranges::any_of(
                m_drawing.problems, [&](const Problem& p) { return p.kind == error.kind() && p.line == error.line(); });
            if (error.kind() != ErrorKind::BadGroupCode || !known) {
                throw;
            }
        }
        // The file ends inside this entity: it stays as it is.
        write(m_entity);
        m_entity.clear();
        m_text.reset();
    }

    /// What stands before the first pair is known once that was looked for, and is copied even if there is none.
    std::optional<Pair> nextPair() {
        const std::optional<Pair> pair = m_pairs.next();
        if (!m_prefixWritten) {
            write(m_pairs.prefix());
            m_prefixWritten = true;
        }
        return pair;
    }

    void take(const Pair& pair) {
        if (pair.code == 0 && m_text) {
            finishText();
        }
        if (pair.code == 0 && m_nextText && pair.offset >= m_nextText->offset) {
            startText(pair);
        }
        if (m_text) {
            m_entity += pair.bytes;
            m_origin.add(pair);
        } else if (!takeSeed(pair)) {
            write(pair.bytes);
        }
    }

    void startText(const Pair& pair) {
        const std::string_view type = m_nextText->kind == TextKind::MText ? "MTEXT" : "TEXT";
        if (pair.offset != m_nextText->offset || !pair.is(0, type)) {
            failChanged(pair.line);
        }
        m_text = std::move(m_nextText);
        m_origin = EntityOriginReader(pair);
        takeNextText();
    }

    void finishText() {
        const EntityOrigin origin = m_origin.origin();
        if (origin.handle != m_text->handle) {
            failChanged(m_text->line);
        }
        EntityWriter writer(m_drawing, origin, m_handles);
        m_replacement.replace(*m_text, writer);
        if (writer.count() > 0) {
            write(writer.pairs());
            ++m_result.replaced;
            m_result.written += writer.count();
        } else {
            write(m_entity);
        }
        m_entity.clear();
        m_text.reset();
    }

    /// The header's seed is left room for, or added where the header ends without one.
    bool takeSeed(const Pair& pair) {
        if (!m_seedNeeded) {
            return false;
        }
        if (pair.code == 2 && m_atSectionName) {
            m_inHeader = pair.is(2, "HEADER");
        }
        m_atSectionName = pair.is(0, "SECTION");
        if (!m_inHeader) {
            return false;
        }
        if (pair.is(0, "ENDSEC")) {
            m_inHeader = false;
            if (!m_seedWritten) {
                std::string variable;
                PairWriter(variable, PairStyle::of(pair.bytes)).bytes(9, "$HANDSEED");
                write(variable);
                writeSeed(PairStyle::of(pair.bytes));
            }
            return false;
        }
        const bool seed = m_atSeed && pair.code == 5;
        m_atSeed = pair.is(9, "$HANDSEED");
        if (seed) {
            writeSeed(PairStyle::of(pair.bytes));
        }
        return seed;
    }

    void writeSeed(const PairStyle& style) {
        m_seedDigits = std::max(fewestSeedDigits, handleText(m_handles.next()).size() + 1);
        std::string seed;
        PairWriter(seed, style).handle(5, m_handles.next(), m_seedDigits);
        m_seedPosition = m_output.tellp();
        m_seedPosition += static_cast<std::streamoff>(seed.size() - style.ending.size() - m_seedDigits);
        write(seed);
        m_seedWritten = true;
    }

    void patchSeed() {
        if (!m_seedWritten) {
            return;
        }
        const std::string seed = handleText(m_handles.next(), m_seedDigits);
        if (seed.size() > m_seedDigits) {
            throw Error(ErrorKind::BadRequest, 0, "The drawing has no handles left for new entities.");
        }
        m_output.seekp(m_seedPosition);
        write(seed);
        m_output.seekp(0, std::ios::end);
    }

    void checkAllReplaced() {
        // A drawing cut off inside a text that was to be replaced still names it.
        if (m_nextText || m_pairs.offset() != m_drawing.byteCount) {
            failChanged(m_pairs.line());
        }
    }

    void copyRest() {
        for (std::string_view block = m_pairs.readRaw(); !block.empty(); block = m_pairs.readRaw()) {
            write(block);
        }
    }

    void reportProgress() {
        constexpr std::uint64_t interval = std::uint64_t{1} << 20;
        if (m_progress && m_pairs.offset() - m_reported >= interval) {
            m_reported = m_pairs.offset();
            if (!m_progress(m_reported)) {
                throw Error(ErrorKind::Unwritable, 0, "Writing the drawing was stopped.");
            }
        }
    }

    void write(std::string_view bytes) {
        m_output.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        checkOutput();
    }

    void checkOutput() {
        if (!m_output) {
            throw Error(ErrorKind::Unwritable, 0,
                        "The drawing could not be written. Check the free space and the rights of its folder.");
        }
    }

    [[noreturn]] static void failChanged(std::uint64_t line) {
        throw Error(ErrorKind::Changed, line,
                    "The drawing changed at line " + std::to_string(line) + " since it was read. Try again.");
    }

    PairReader m_pairs;
    std::ostream& m_output;
    const Drawing& m_drawing;
    ITextReplacement& m_replacement;
    const Progress& m_progress;
    HandleSource m_handles;
    RewriteResult m_result;
    std::vector<std::size_t> m_texts; ///< Ordinals of those to be replaced, in file order.
    std::size_t m_next = 0;
    std::optional<TextEntity> m_nextText; ///< The first of them that has not passed by.
    std::optional<TextEntity> m_text;     ///< The one whose pairs are passing by.
    std::string m_entity;                 ///< Its bytes so far.
    EntityOriginReader m_origin;
    std::uint64_t m_reported = 0;
    bool m_prefixWritten = false;
    bool m_seedNeeded = false;
    bool m_seedWritten = false;
    bool m_atSectionName = false;
    bool m_inHeader = false;
    bool m_atSeed = false;
    std::size_t m_seedDigits = 0;
    std::ostream::pos_type m_seedPosition;
};

} // namespace

bool canReplace(const TextEntity& text) {
    return text.kind == TextKind::MText || text.kind == TextKind::Text;
}

RewriteResult rewriteDrawing(std::istream& input, std::ostream& output, const Drawing& drawing,
                             ITextReplacement& replacement, const Progress& progress) {
    return Rewriter(input, output, drawing, replacement, progress).rewrite();
}

} // namespace dxf
