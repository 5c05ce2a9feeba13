// The facts of fonts whose capitals' height no table states, which platforms take for what they like: ours measures
// outlines. The tests are those of all other facts.

#include "TextFacts.h"

INSTANTIATE_TEST_SUITE_P(OurPlatform, TextFacts, testing::ValuesIn(readTextFacts("our_platform_text_facts.tsv")),
                         TextFacts::nameOf);
