// Other scripts, and what a shaper does with letters: ligatures, marks, pairs.

#include <string>
#include <vector>

#include "ParityDocument.h"

namespace parity {

namespace {

struct Sample {
    const char* family;
    std::vector<const char*> texts;
};

void add(fonts::IFontEngine& engine, Documents& documents, const char* group, const std::vector<Sample>& samples) {
    for (const Sample& sample : samples) {
        const float size = designSize(engine, sample.family);
        for (const char* text : sample.texts) {
            documents.push_back(makeDocument(group, std::string(sample.family) + ": " + text,
                                             {makeLine({makeToken(text, sample.family, size)})}));
        }
    }
}

// Letters that stand side by side.
const std::vector<Sample> simpleScripts{{"Noto Sans Armenian", {"Հատակագիծ", "Կտրվածք Ա-Ա"}},
                                        {"Noto Sans Georgian", {"გეგმა", "სართული 1"}},
                                        {"Noto Sans Ethiopic", {"ፕላን", "ወለል ፩"}},
                                        {"Noto Sans Cherokee", {"ᏣᎳᎩ", "ᎦᏬᏂᎯᏍᏗ"}},
                                        {"Noto Sans Runic", {"ᚠᚢᚦᚨᚱᚲ", "ᚷᚹᚺ"}},
                                        {"Noto Sans Ogham", {"ᚁᚂᚃᚄ", "ᚆᚇ"}},
                                        {"Noto Sans Tifinagh", {"ⵜⵉⴼⵉⵏⴰⵖ", "ⴰⴱⴳ"}},
                                        {"Noto Sans Vai", {"ꕙꔤ", "ꕉꕜ"}},
                                        {"Noto Sans Lisu", {"ꓡꓲ", "ꓢꓴ"}},
                                        {"Noto Sans Coptic", {"ⲁⲃⲅ", "ⲙⲛⲝ"}},
                                        {"Noto Sans CJK JP", {"図面番号", "平面図 1/100", "カタカナ", "ひらがな"}},
                                        {"Noto Sans CJK KR", {"평면도", "단면도 가-가"}},
                                        {"Noto Sans CJK SC", {"平面图", "剖面图"}},
                                        {"Noto Sans CJK TC", {"平面圖", "剖面圖"}},
                                        {"Noto Serif CJK JP", {"設計図"}}};

// Letters of the scripts below that stand side by side all the same.
const std::vector<Sample> plainWords{{"Noto Sans Devanagari", {"नगर तल", "घर"}},
                                     {"Noto Sans Bengali", {"নগর"}},
                                     {"Noto Sans Gujarati", {"નગર"}},
                                     {"Noto Sans Tamil", {"மர நகர"}},
                                     {"Noto Sans Thai", {"งาน ถนน", "แปลน"}},
                                     {"Noto Sans Lao", {"ລາວ"}},
                                     {"Noto Sans Khmer", {"ក ខ គ"}},
                                     {"Noto Sans Myanmar", {"က ခ ဂ"}},
                                     {"Noto Sans Sinhala", {"නගර"}},
                                     {"Noto Serif Tibetan", {"ཀ་ཁ་ག"}}};

// Letters that move, join or change shape.
const std::vector<Sample> complexScripts{{"Noto Sans Devanagari", {"क्षत्रिय", "हिन्दी"}},
                                         {"Noto Sans Bengali", {"বাংলা", "ক্ষ"}},
                                         {"Noto Sans Gujarati", {"ગુજરાતી", "ક્ષ"}},
                                         {"Noto Sans Gurmukhi", {"ਪੰਜਾਬੀ", "ਸ੍ਰੀ"}},
                                         {"Noto Sans Tamil", {"தமிழ்", "கொ"}},
                                         {"Noto Sans Telugu", {"తెలుగు", "క్ష"}},
                                         {"Noto Sans Kannada", {"ಕನ್ನಡ", "ಕ್ಷ"}},
                                         {"Noto Sans Malayalam", {"മലയാളം", "ക്ഷ"}},
                                         {"Noto Sans Sinhala", {"සිංහල", "ක්ෂ"}},
                                         {"Noto Sans Thai", {"แปลน", "น้ำ", "ที่"}},
                                         {"Noto Sans Lao", {"ລາວ", "ນ້ຳ"}},
                                         {"Noto Sans Khmer", {"ខ្មែរ", "ប្លង់"}},
                                         {"Noto Sans Myanmar", {"မြန်မာ", "က္က"}},
                                         {"Noto Serif Tibetan", {"བོད་ཡིག", "རྒྱ"}}};

const std::vector<Sample> rightToLeft{{"Noto Sans Hebrew", {"שלום", "תוכנית קומה"}},
                                      {"Noto Sans Arabic", {"مخطط", "سلام لا", "كَتَبَ"}},
                                      {"Noto Sans Syriac", {"ܣܘܪܝܝܐ"}},
                                      {"Noto Sans Thaana", {"ދިވެހި"}},
                                      {"Noto Sans NKo", {"ߒߞߏ"}}};

const std::vector<Sample> bothDirections{{"Liberation Sans", {"Plan תוכנית 12", "שלום 123 abc", "(אבג) x"}},
                                         {"Noto Sans Arabic", {"مخطط 12", "12 مخطط 34"}},
                                         {"Noto Sans Hebrew", {"א\u200Fב", "\u202Eאב\u202C"}}};

const std::vector<Sample> ligatures{{"Liberation Sans", {"fi fl", "office", "affluent"}},
                                    {"Liberation Serif", {"fi fl", "office", "affluent"}},
                                    {"Noto Sans", {"fi fl", "office", "waffle fjord"}},
                                    {"Noto Serif", {"fi fl", "office", "affluent"}}};

const std::vector<Sample> marks{
    {"Noto Sans", {"e\u0301", "a\u0323\u0308", "x\u0303\u0304y", "\u0301", "n\u0303 o\u0308"}},
    {"Noto Serif", {"e\u0301", "a\u0323\u0308", "x\u0303\u0304y"}},
    {"Liberation Sans", {"e\u0301", "x\u0303y"}}};

const std::vector<Sample> surrogatePairs{{"Noto Sans Math", {"𝔸x𝔺", "𝒜𝒞"}}, {"Noto Sans Gothic", {"𐌲𐌿𐍄"}},
                                         {"Noto Sans Linear B", {"𐀀𐀁"}},          {"Noto Sans Deseret", {"𐐀𐐁"}},
                                         {"Noto Sans Old Italic", {"𐌀𐌁"}},        {"Noto Sans CJK JP", {"𠮷野"}}};

const std::vector<Sample> fallback{{"Liberation Sans", {"Raum 図面 2", "Detail क", "Ð ∀x∈A", "გ 1", "a 한 b"}},
                                   {"Liberation Mono", {"Plan 平面"}},
                                   {"Noto Sans Hebrew", {"Plan א"}}};

const std::vector<Sample> noFontAtAll{{"Liberation Sans", {"a\U000F0000z", "\uE123"}}};

void addUnknownFamily(Documents& documents) {
    documents.push_back(
        makeDocument("unknown family", "Latin", {makeLine({makeToken("Text", "No Such Family", 100.0f)})}));
}

} // namespace

void addScripts(fonts::IFontEngine& engine, Documents& documents) {
    add(engine, documents, "simple script", simpleScripts);
    add(engine, documents, "complex script, plain words", plainWords);
    add(engine, documents, "complex script", complexScripts);
    add(engine, documents, "right to left", rightToLeft);
    add(engine, documents, "both directions", bothDirections);
    add(engine, documents, "ligatures", ligatures);
    add(engine, documents, "marks", marks);
    add(engine, documents, "surrogate pairs", surrogatePairs);
    add(engine, documents, "font fallback", fallback);
    add(engine, documents, "no font at all", noFontAtAll);
    addUnknownFamily(documents);
}

} // namespace parity
