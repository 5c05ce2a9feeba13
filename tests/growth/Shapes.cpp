#include "Shapes.h"

namespace growth {

std::wstring Shape::text(std::size_t units) const {
    const std::size_t count = units / (repeated.size() + repeatedAfter.size());
    std::wstring text;
    for (const std::u16string* part : {&repeated, &repeatedAfter}) {
        for (std::size_t i = 0; i < count && !part->empty(); ++i) {
            text.append(part->begin(), part->end());
        }
    }
    return text;
}

const std::vector<Shape>& shapes() {
    using namespace std::string_literals;
    static const std::vector<Shape> all{
        {"Latin words", u"Fire rated wall, see detail. ", {}},
        {"Latin without spaces", u"AVTofi", {}},
        {"Greek words", u"Κάτοψη ισογείου ", {}},
        {"Cyrillic words", u"План первого этажа ", {}},
        {"Armenian words", u"հատակագիծ ", {}},
        {"Georgian words", u"გეგმა ", {}},
        {"Ethiopic words", u"የወለል ንድፍ ", {}},
        {"Hebrew words", u"תוכנית קומה ", {}},
        {"Arabic words", u"مخطط الطابق ", {}},
        {"Arabic without spaces", u"مخططالطابق", {}},
        {"Devanagari words", u"तल योजना ", {}},
        {"Devanagari without spaces", u"क्षितल", {}},
        {"Tamil without spaces", u"தரைத்தளம்", {}},
        {"Thai", u"แปลนพื้นชั้นล่าง", {}},
        {"Lao", u"ແຜນຜັງຊັ້ນ", {}},
        {"Khmer", u"ប្លង់ជាន់", {}},
        {"Myanmar", u"မြေညီထပ်", {}},
        {"Tibetan", u"བོད་ཡིག་", {}},
        {"Chinese", u"尺寸须在现场核对", {}},
        {"Japanese", u"寸法は現場で確認し", {}},
        {"Korean without spaces", u"평면도", {}},
        {"Korean jamo", u"\u1112\u1161\u11AB", {}},
        {"scripts in turn", u"aж漢ह", {}},
        {"spaces", u" ", {}},
        {"no-break spaces", u"a\u00A0", {}},
        {"tabs", u"\t", {}},
        {"tabs between letters", u"a\t", {}},
        {"newlines", u"a\n", {}},
        {"newlines of two units", u"\r\n", {}},
        {"controls", u"a\u0001", {}},
        {"open brackets", u"(א[", {}},
        {"nested brackets", u"א(", u"ב)"},
        {"brackets of two kinds", u"א(", u"ב]"},
        {"directions in turn", u"aא", {}},
        {"directions in turn, with spaces", u"a א 1 ", {}},
        {"nested embeddings", u"\u202Ba", u"\u202C"},
        {"Latin read from right to left", u"see detail ", {}, Ranges::None, true},
        {"marks on letters", u"a\u0301", {}},
        {"marks on one letter", u"\u0301", {}},
        {"joiners", u"a\u200D", {}},
        {"joiners alone", u"\u200D", {}},
        {"joined emoji", u"\U0001F468\u200D\U0001F469\u200D", {}},
        {"selectors alone", u"\uFE0F", {}},
        {"leading jamo", u"\u1112", {}},
        {"prepended signs", u"\u0600", {}},
        {"joined consonants", u"\u0915\u094D\u200D", {}},
        {"flags", u"\U0001F1E9", {}},
        {"selectors", u"✔\uFE0F", {}},
        {"halves of pairs", u"\xD800"s, {}},
        {"soft hyphens", u"in\u00ADter", {}},
        {"soft hyphens alone", u"\u00AD", {}},
        {"soft hyphens before letters", u"\u00AD", u"a"},
        {"a long word before short syllables", u"a", u"\u00ADb"},
        {"zero-width spaces", u"a\u200B", {}},
        {"quotation marks", u"12\" (\"a\") ", {}},
        {"quotation marks alone", u"\"", {}},
        {"digits", u"12.5", {}},
        {"characters that no font has", u"\uE000\u0378", {}},
        {"symbols of drawings", u"⌀20⌴", {}},
        {"sizes in turn", u"ab", {}, Ranges::Sizes},
        {"sizes in turn, without spaces", u"寸法", {}, Ranges::Sizes},
        {"underlines in turn", u"ab", {}, Ranges::Underlines},
        {"locales in turn", u"ab", {}, Ranges::Locales},
        {"features in turn", u"ab", {}, Ranges::Features},
        {"spacings in turn", u"AVo fi ", {}, Ranges::Spacings},
        {"inline objects", u"ab", {}, Ranges::Objects},
    };
    return all;
}

const std::vector<Shape>& contents() {
    static const std::vector<Shape> all{
        {"plain content", u"Fire rated wall, see detail. ", {}},
        {"paragraphs", u"note\\P", {}},
        {"empty paragraphs", u"\\P", {}},
        {"groups of colours", u"{\\C1;a}b", {}},
        {"groups of heights", u"{\\H2x;a}b", {}},
        {"groups of fonts", u"{\\fDejaVu Serif|b1;a}b", {}},
        {"nested groups", u"{\\C1;a{\\C2;b", u"}c}d"},
        {"groups that stay open", u"{a", {}},
        {"groups that were never opened", u"a}", {}},
        {"underlines", u"\\La \\lb ", {}},
        {"stacks", u"\\S1/2;", {}},
        {"open stacks", u"\\S1/2", {}},
        {"fields that stay open", u"%<\\a ", {}},
        {"nested fields", u"%<\\a", u">%"},
        {"codes without an end", u"\\fa\\pb", {}},
        {"paragraph codes", u"\\pi1,t2,4;a\\P", {}},
        {"switches of underlines", u"%%ua", {}},
        {"written characters", u"\\U+5BF8", {}},
        {"tokens of Japanese", u"{\\C1;寸}法", {}},
        {"characters that no font has", u"\\U+E000", {}},
    };
    return all;
}

} // namespace growth
