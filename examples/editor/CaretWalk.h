#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <FontEngine/FontEngine.h>

/// A place for a caret. One position can have two: the end of a wrapped line and the beginning of the next; where text
/// of two directions meets, behind the one and before the other. Hence the cluster that the caret is attached to.
struct CaretPlace {
    /// Where typed text goes.
    std::uint32_t position = 0;
    /// Attached to the cluster before the position, else to the one behind it.
    bool isBehindCluster = false;

    friend bool operator==(const CaretPlace&, const CaretPlace&) = default;
};

/// Ways from one place for a caret to another, all read off a layout, which is borrowed.
///
/// Left and right are those of the screen, whatever direction the text reads in. The caret goes over whole clusters: a
/// letter with its marks, a surrogate pair, a ligature.
class CaretWalk {
public:
    CaretWalk(const fonts::CParagraphLayout& layout, fonts::EReadingDirection direction);

    /// Over one cluster, at a line's end into the next line; where there is none, nowhere.
    CaretPlace step(CaretPlace from, bool toRight) const;
    /// To the next place on the way where a word begins, or to an end of the text.
    ///
    /// A word begins where a cluster that is not blank follows one that is, or one after which a line may break: behind
    /// a hyphen too, at each Chinese character, at each Thai word. A comma belongs to the word before it.
    CaretPlace stepByWord(CaretPlace from, bool toRight) const;
    /// To the place nearest to `x`, so many lines below; stays where there is no such line.
    CaretPlace stepByLine(CaretPlace from, int lines, double x) const;
    /// Before a line's text, and behind it with its blanks.
    CaretPlace lineStart(std::uint32_t line) const;
    CaretPlace lineEnd(std::uint32_t line) const;

    /// Behind the text that ends at the position: behind a newline that is the beginning of the next line.
    CaretPlace behind(std::uint32_t position) const;
    /// Where the caret is drawn.
    fonts::SCaret caret(CaretPlace place) const;
    /// The cluster that holds a position of the text.
    const fonts::SCluster& clusterAt(std::uint32_t position) const;

private:
    /// The clusters of a line, its newline left out, as they stand from left to right.
    using Row = std::vector<const fonts::SCluster*>;

    Row rowOf(std::uint32_t line) const;
    std::size_t gapOf(CaretPlace place, const Row& row) const;
    CaretPlace endOfRow(std::uint32_t line, bool isRightEnd) const;
    CaretPlace stepOver(CaretPlace from, bool toRight) const;
    bool isWordStart(std::uint32_t position) const;

    const fonts::CParagraphLayout& m_layout;
    bool m_isLeftToRight;
};
