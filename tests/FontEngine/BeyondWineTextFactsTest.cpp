// The facts of texts that Wine does not shape as their fonts ask for it: pairs in Noto fonts, letters with a diacritic,
// which it adds to the cluster before, and scripts whose letters move or stack; and of a font of CFF outlines, which it
// fits to the grid at any size. So these do not run under Wine. The tests are those of all other facts.

#include "TextFacts.h"

INSTANTIATE_TEST_SUITE_P(BeyondWine, TextFacts, testing::ValuesIn(readTextFacts("beyond_wine_text_facts.tsv")),
                         TextFacts::nameOf);
