// What may happen within a line: other fonts and sizes, underlines, tabs, whitespace.

#include <array>
#include <string>
#include <utility>

#include "ParityDocument.h"

namespace parity {

namespace {

void addMixed(fonts::IFontEngine& engine, Documents& documents) {
    constexpr std::array families{"Liberation Sans", "Liberation Serif", "Liberation Mono", "Noto Sans", "Noto Serif"};
    for (const char* first : families) {
        for (const char* second : families) {
            const float size = designSize(engine, first);
            documents.push_back(makeDocument("mixed line", std::string(first) + " and " + second,
                                             {makeLine({makeToken("Level ", first, size),
                                                        makeToken("+3.50", second, size * 1.5f, {true, false, false}),
                                                        makeToken(" above", first, size, {false, true, false})})}));
        }
    }
    for (const float factor : {0.25f, 0.5f, 2.0f, 5.0f}) {
        const float size = designSize(engine, "Liberation Sans");
        documents.push_back(
            makeDocument("mixed line", "wrapped, times " + std::to_string(factor),
                         {makeWrapped({makeToken("Small words before ", "Liberation Sans", size),
                                       makeToken("and others after", "Liberation Sans", size * factor)})},
                         16000.0));
    }
}

void addUnderlined(fonts::IFontEngine& engine, Documents& documents) {
    constexpr Style underlined{false, false, true};
    for (const char* family : {"Liberation Sans", "Liberation Serif", "Noto Sans", "Noto Serif"}) {
        const float size = designSize(engine, family);
        documents.push_back(
            makeDocument("underline", family, {makeLine({makeToken("Title", family, size, underlined)})}));
        documents.push_back(
            makeDocument("underline", std::string(family) + " with plain text around",
                         {makeLine({makeToken("see ", family, size), makeToken("note", family, size, underlined),
                                    makeToken(" 7", family, size)})}));
        documents.push_back(makeDocument("underlined runs", std::string(family) + " sizes",
                                         {makeLine({makeToken("big", family, size * 2.0f, underlined),
                                                    makeToken("small", family, size, underlined)})}));
        documents.push_back(makeDocument(
            "underlined lines", family,
            {makeWrapped({makeToken("Underlined over several lines of a paragraph", family, size, underlined)})},
            16000.0));
    }
}

void addTabs(fonts::IFontEngine& engine, Documents& documents) {
    const float size = designSize(engine, "Liberation Sans");
    for (const char* text : {"a\tb", "\ta", "a\t\tb", "1\t2\t3", "long before the tab\tafter"}) {
        for (const float width : {4000.0f, 10000.0f}) {
            Document document = makeDocument("tabs", std::string(text) + " at " + std::to_string(width),
                                             {makeLine({makeToken(text, "Liberation Sans", size)})});
            document.document.tabStopWidth = width;
            documents.push_back(std::move(document));
        }
    }
}

void addWhitespace(fonts::IFontEngine& engine, Documents& documents) {
    const float size = designSize(engine, "Liberation Sans");
    const auto add = [&](const char* group, const std::string& name, const char* text) {
        documents.push_back(makeDocument(group, name, {makeLine({makeToken(text, "Liberation Sans", size)})}));
    };
    add("empty text", "empty", "");
    documents.push_back(makeDocument("empty text", "between two lines",
                                     {makeLine({makeToken("above", "Liberation Sans", size)}),
                                      makeLine({makeToken("", "Noto Serif", size)}),
                                      makeLine({makeToken("below", "Liberation Sans", size)})}));
    documents.push_back(
        makeDocument("empty text", "token among others",
                     {makeLine({makeToken("ab", "Liberation Sans", size), makeToken("", "Liberation Sans", size * 3.0f),
                                makeToken("cd", "Liberation Sans", size)})}));
    add("spaces", "one", " ");
    add("spaces", "three", "   ");
    add("spaces", "leading", "  a");
    add("spaces", "trailing", "a  ");
    add("spaces", "inner", "a   b");
    add("spaces", "no-break", "a\u00A0b");
    add("spaces", "em and thin", "a\u2003b\u2009c");
    add("line ends", "LF", "a\nb");
    add("line ends", "CR LF", "a\r\nb");
    add("line ends", "two LF", "a\n\nb");
    add("line ends", "at the end", "ab\n");
    add("line ends", "line separator", "a\u2028b");
    add("line ends", "paragraph separator", "a\u2029b");
}

} // namespace

void addLines(fonts::IFontEngine& engine, Documents& documents) {
    addMixed(engine, documents);
    addUnderlined(engine, documents);
    addTabs(engine, documents);
    addWhitespace(engine, documents);
}

} // namespace parity
