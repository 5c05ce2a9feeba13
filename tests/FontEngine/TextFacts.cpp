#include "TextFacts.h"

#include <fstream>
#include <sstream>

#include <Common/Utf.h>

namespace {

TextFact parseFact(const std::string& line) {
    std::istringstream fields(line);
    std::vector<std::string> field;
    for (std::string each; std::getline(fields, each, '\t');)
        field.push_back(each);
    TextFact fact;
    fact.name = field.at(0);
    fact.family = common::wideFromUtf8(field.at(1));
    fact.style.bold = field.at(2).find('b') != std::string::npos;
    fact.style.italic = field.at(2).find('i') != std::string::npos;
    fact.isRightToLeft = field.at(3) == "rtl";
    fact.text = common::wideFromUtf8(field.at(4));
    fact.capHeight = std::stod(field.at(6));
    fact.ascent = std::stod(field.at(7));
    fact.descent = std::stod(field.at(8));
    fact.lineGap = std::stod(field.at(9));
    fact.advance = std::stod(field.at(10));
    fact.ink.Set(std::stod(field.at(11)), std::stod(field.at(12)), std::stod(field.at(13)), std::stod(field.at(14)));
    std::istringstream starts(field.at(15));
    for (std::string each; std::getline(starts, each, ',');)
        fact.clusterStarts.push_back(static_cast<uint32_t>(std::stoul(each)));
    std::istringstream origins(field.at(16));
    for (std::string each; std::getline(origins, each, ' ');)
        fact.glyphOrigins.push_back({std::stod(each), std::stod(each.substr(each.find(',') + 1))});
    return fact;
}

} // namespace

void PrintTo(const TextFact& fact, std::ostream* stream) {
    *stream << fact.name;
}

std::vector<TextFact> readTextFacts(const std::string& table) {
    std::ifstream file(FONTENGINE_TEST_DATA "/FontEngine/facts/" + table);
    std::vector<TextFact> facts;
    for (std::string line; std::getline(file, line);)
        if (!line.starts_with('#'))
            facts.push_back(parseFact(line));
    return facts;
}
