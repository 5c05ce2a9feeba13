// Paragraphs in boxes: wrapping, alignment, several paragraphs.

#include <array>
#include <string>

#include "ParityDocument.h"

namespace parity {

namespace {

using render::eRichTextParagraphAlignment;
using render::eRichTextParagraphVerticalAlignment;

constexpr std::array notes{
    "All dimensions shall be checked on site before work starts. Do not scale from this drawing.",
    "Все размеры указаны в миллиметрах, отметки - в метрах. Чертёж читать вместе со спецификацией.",
    "Όλες οι διαστάσεις να ελεγχθούν στο χώρο πριν από την αρχή των εργασιών.",
    "Well-known, state-of-the-art; see http://example.org/a/b?c=d (sheet 3/4) for the pre-cast slab's details."};
constexpr std::array noteFamilies{"Liberation Sans", "Liberation Serif", "Noto Sans"};
constexpr std::array widthsInEms{6.0, 10.0, 15.0, 25.0};

void addWrapped(fonts::IFontEngine& engine, Documents& documents) {
    for (const char* family : noteFamilies) {
        const float size = designSize(engine, family);
        for (std::size_t i = 0; i < notes.size(); ++i) {
            for (const double width : widthsInEms) {
                documents.push_back(
                    makeDocument("note", std::string(family) + " " + std::to_string(i) + " in " + std::to_string(width),
                                 {makeWrapped({makeToken(notes[i], family, size)})}, width * 2048.0));
            }
        }
    }
}

constexpr std::array alignments{eRichTextParagraphAlignment::Default, eRichTextParagraphAlignment::Left,
                                eRichTextParagraphAlignment::Right, eRichTextParagraphAlignment::Center};
constexpr std::array verticalAlignments{
    eRichTextParagraphVerticalAlignment::Default, eRichTextParagraphVerticalAlignment::Top,
    eRichTextParagraphVerticalAlignment::Middle, eRichTextParagraphVerticalAlignment::Bottom};

void addAligned(fonts::IFontEngine& engine, Documents& documents) {
    const float size = designSize(engine, "Liberation Sans");
    for (const auto alignment : alignments) {
        for (const auto vertical : verticalAlignments) {
            for (const bool noWrap : {false, true}) {
                for (const double height : {0.0, 20000.0}) {
                    render::CRichTextParagraph first = makeWrapped({makeToken(notes[0], "Liberation Sans", size)});
                    first.alignment = alignment;
                    first.verticalAlignment = vertical;
                    first.noWrap = noWrap;
                    render::CRichTextParagraph second = makeWrapped({makeToken("Short line", "Noto Serif", size)});
                    second.alignment = alignment;
                    second.verticalAlignment = vertical;
                    second.noWrap = noWrap;
                    documents.push_back(makeDocument("alignment",
                                                     std::to_string(static_cast<int>(alignment)) + " " +
                                                         std::to_string(static_cast<int>(vertical)) +
                                                         (noWrap ? " no wrap " : " wrap ") + std::to_string(height),
                                                     {first, second}, 24000.0, height));
                }
            }
        }
    }
}

void addJustified(fonts::IFontEngine& engine, Documents& documents) {
    const float size = designSize(engine, "Liberation Serif");
    for (const double width : widthsInEms) {
        render::CRichTextParagraph paragraph = makeWrapped({makeToken(notes[0], "Liberation Serif", size)});
        paragraph.alignment = eRichTextParagraphAlignment::Justify;
        documents.push_back(makeDocument("justified", std::to_string(width), {paragraph}, width * 2048.0));
    }
    render::CRichTextParagraph line = makeWrapped({makeToken("One line", "Liberation Serif", size)});
    line.alignment = eRichTextParagraphAlignment::Justify;
    documents.push_back(makeDocument("justified last line", "one line", {line}, 30000.0));
}

void addLongWords(fonts::IFontEngine& engine, Documents& documents) {
    const float size = designSize(engine, "Liberation Sans");
    for (const double width : {1.0, 500.0, 2048.0, 5000.0}) {
        for (const char* text : {"Donaudampfschiff", "a Donaudampfschiff b"}) {
            documents.push_back(makeDocument("word wider than its box", std::string(text) + std::to_string(width),
                                             {makeWrapped({makeToken(text, "Liberation Sans", size)})}, width));
        }
    }
    documents.push_back(makeDocument("no width to wrap at", "wrapping paragraph",
                                     {makeWrapped({makeToken("Two words", "Liberation Sans", size)})}));
}

void addParagraphs(fonts::IFontEngine& engine, Documents& documents) {
    const float size = designSize(engine, "Noto Sans");
    for (int count = 2; count <= 6; ++count) {
        std::vector<render::CRichTextParagraph> paragraphs;
        for (int i = 0; i < count; ++i) {
            const auto text = "Paragraph " + std::to_string(i + 1) + " of " + std::to_string(count);
            paragraphs.push_back(makeWrapped({makeToken(text, i % 2 == 0 ? "Noto Sans" : "Liberation Mono",
                                                        size * (1.0f + 0.25f * static_cast<float>(i)))}));
        }
        documents.push_back(makeDocument("paragraphs", std::to_string(count), paragraphs, 30000.0, 90000.0));
    }
}

} // namespace

void addNotes(fonts::IFontEngine& engine, Documents& documents) {
    addWrapped(engine, documents);
    addAligned(engine, documents);
    addJustified(engine, documents);
    addLongWords(engine, documents);
    addParagraphs(engine, documents);
}

} // namespace parity
