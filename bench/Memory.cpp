// Lays all corpora out once in every way and prints how much memory the process then holds, in MB.

#include <fstream>
#include <iostream>
#include <limits>
#include <string>

#include "Layouter.h"

namespace {

double residentMegabytes() {
    std::ifstream status("/proc/self/status");
    for (std::string key; status >> key; status.ignore(std::numeric_limits<std::streamsize>::max(), '\n')) {
        if (double kilobytes = 0.0; key == "VmRSS:" && status >> kilobytes) {
            return kilobytes / 1024.0;
        }
    }
    return 0.0;
}

} // namespace

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
    std::cout << residentMegabytes() << '\n';
    return sums.glyphs > 0 ? 0 : 1;
}
