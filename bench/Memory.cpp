// Lays all corpora out once in every way and prints how much memory the process then holds, in MB.

#include <iostream>
#include <string>

#include "Layouter.h"
#include "ResidentMemory.h"

int main() {
    const bench::Layouter layouter;
    bench::Sums sums;
    for (const bench::Texts& texts : bench::allTexts()) {
        for (const bench::Question question : bench::questions) {
            for (const std::wstring& paragraph : texts.paragraphs) {
                layouter.ask(question, paragraph, texts.wrapWidth, sums);
            }
        }
    }
    std::cout << bench::residentMegabytes() << '\n';
    return sums.glyphs > 0 ? 0 : 1;
}
