// Reads contents in UTF-8 from standard input, each ended by a NUL and begun
// by a letter: M for one of an MTEXT, T for one of a TEXT. Writes what a reader
// sees of each, ended by a NUL.

#include <iostream>
#include <string>

#include <Common/Utf.h>
#include <mtext/MText.h>

int main() {
    std::string record;
    while (std::getline(std::cin, record, '\0')) {
        if (record.empty()) {
            std::cerr << "A record has no letter.\n";
            return 1;
        }
        const std::wstring content = common::wideFromUtf8(record.substr(1));
        const mtext::Defaults defaults;
        const mtext::Result result =
            record.front() == 'T' ? mtext::parseText(content, defaults) : mtext::parse(content, defaults);
        std::cout << common::utf8FromWide(mtext::plainText(result.document)) << '\0';
    }
    return 0;
}
