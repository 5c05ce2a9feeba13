// One line in one font: what a drawing has most of.

#include <array>
#include <string>

#include "ParityDocument.h"

namespace parity {

namespace {

constexpr std::array latinTexts{"Room 101",           "Ground Floor Plan", "Quick brown fox jumps over the lazy dog",
                                "1:100  A-A",         "h = 2.75 m",        "Section (B-B)",
                                "AVATAR To. Wa",      "x²+y² ≤ 1",         "no. 5/7 – detail",
                                "Straße Äpfel Ölfaß", "Łódź, żółw"};
constexpr std::array cyrillicTexts{"Чертёж", "План первого этажа", "ГОСТ 21.101-97", "Розріз А-А", "Ђорђе Њива"};
constexpr std::array greekTexts{"Κάτοψη ισογείου", "Ωμέγα αβγδε", "Τομή Α-Α", "ΰ ΐ ή", "π·r²"};

struct Face {
    const char* family;
    Style style;
    const char* name;
};

constexpr std::array latinFaces{Face{"Liberation Sans", {}, "sans"},
                                Face{"Liberation Sans", {true, false, false}, "sans bold"},
                                Face{"Liberation Sans", {false, true, false}, "sans italic"},
                                Face{"Liberation Sans Narrow", {}, "sans narrow"},
                                Face{"Liberation Serif", {}, "serif"},
                                Face{"Liberation Serif", {true, true, false}, "serif bold italic"},
                                Face{"Liberation Mono", {}, "mono"},
                                Face{"Noto Sans", {}, "noto sans"},
                                Face{"Noto Serif", {true, false, false}, "noto serif bold"},
                                Face{"Noto Sans", {false, true, false}, "noto sans italic"}};

template <std::size_t FaceCount, std::size_t TextCount>
void addEach(fonts::IFontEngine& engine, Documents& documents, const std::string& group,
             const std::array<Face, FaceCount>& faces, const std::array<const char*, TextCount>& texts) {
    for (const Face& face : faces) {
        const float size = designSize(engine, face.family);
        for (const char* text : texts) {
            documents.push_back(makeDocument(group, std::string(face.name) + ": " + text,
                                             {makeLine({makeToken(text, face.family, size, face.style)})}));
        }
    }
}

constexpr std::array otherFaces{
    Face{"Liberation Sans", {}, "sans"}, Face{"Liberation Serif", {true, false, false}, "serif bold"},
    Face{"Noto Sans", {}, "noto sans"}, Face{"Noto Serif", {false, true, false}, "noto serif italic"}};

constexpr std::array oldFaces{Face{"DejaVu Sans", {}, "dejavu sans"},
                              Face{"DejaVu Serif", {true, false, false}, "dejavu serif bold"}};
constexpr std::array oldTexts{"Room 101", "office", "Чертёж"};

} // namespace

void addLabels(fonts::IFontEngine& engine, Documents& documents) {
    addEach(engine, documents, "label latin", latinFaces, latinTexts);
    addEach(engine, documents, "label cyrillic", otherFaces, cyrillicTexts);
    addEach(engine, documents, "label greek", otherFaces, greekTexts);
    addEach(engine, documents, "old OS/2 table", oldFaces, oldTexts);
    for (const float size : {0.1f, 2.5f, 3.5f, 10.0f}) {
        for (const char* text : latinTexts) {
            documents.push_back(makeDocument("small label", std::to_string(size) + ": " + text,
                                             {makeLine({makeToken(text, "Liberation Sans", size)})}));
        }
    }
}

} // namespace parity
