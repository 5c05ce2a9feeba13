#pragma once

#include <dxf/Drawing.h>

#include <initializer_list>
#include <sstream>
#include <string>
#include <utility>

/// Small drawings, built in the tests that read them.
namespace dxftest {

using Group = std::pair<int, std::string>;

/// Pairs as they stand in a file.
inline std::string groups(std::initializer_list<Group> list, const std::string& ending = "\n") {
    std::string result;
    for (const auto& [code, value] : list) {
        std::string number = std::to_string(code);
        result += std::string(number.size() < 3 ? 3 - number.size() : 0, ' ') + number + ending + value + ending;
    }
    return result;
}

inline std::string section(const std::string& name, const std::string& body) {
    return groups({{0, "SECTION"}, {2, name}}) + body + groups({{0, "ENDSEC"}});
}

inline std::string table(const std::string& name, const std::string& records) {
    return groups({{0, "TABLE"}, {2, name}, {70, "1"}}) + records + groups({{0, "ENDTAB"}});
}

inline std::string endMark() {
    return groups({{0, "EOF"}});
}

/// A header with these two variables.
inline std::string header(const std::string& version, const std::string& codePage) {
    return section("HEADER", groups({{9, "$ACADVER"}, {1, version}, {9, "$DWGCODEPAGE"}, {3, codePage}}));
}

/// A whole drawing without a header.
inline std::string entitiesOnly(const std::string& entities) {
    return section("ENTITIES", entities) + endMark();
}

inline dxf::Drawing read(const std::string& bytes) {
    std::istringstream input(bytes);
    return dxf::readDrawing(input);
}

/// The drawing's only text.
inline dxf::TextEntity readText(const std::string& entity) {
    dxf::Drawing drawing = read(entitiesOnly(entity));
    return drawing.texts.size() == 1 ? drawing.texts.front() : dxf::TextEntity{};
}

} // namespace dxftest
