#include "FontMap.h"

#include <algorithm>
#include <array>
#include <cwctype>
#include <iostream>
#include <string_view>

#include <nlohmann/json.hpp>

#include "InputError.h"
#include "InputFile.h"

#include <Common/Utf.h>

namespace tool {

namespace {

struct BuiltInRow {
    std::wstring_view names;    // separated by '|', lower case, without ending
    std::wstring_view families; // separated by '|', best first
};

// Families with the same widths as the original come first in each row.
constexpr std::array builtInRows{
    BuiltInRow{
        L"arial|arialbd|ariali|arialbi|helvetica|swiss|swissl|swissb|isocpeur|isocp|isocp2|isocp3|isoct|isoct2|isoct3",
        L"Arial|Liberation Sans|DejaVu Sans"},
    BuiltInRow{L"arial narrow|arialn|arialnb|swissc|swissk",
               L"Arial Narrow|Liberation Sans Narrow|DejaVu Sans Condensed"},
    BuiltInRow{L"times|timesbd|timesi|times new roman|dutch|dutchi|dutchb|romantic",
               L"Times New Roman|Liberation Serif|DejaVu Serif"},
    BuiltInRow{L"cour|courbd|courier|courier new|consola|consolas|lucon|monotxt|monos",
               L"Courier New|Liberation Mono|DejaVu Sans Mono"},
    BuiltInRow{L"calibri|segoeui|segoe ui", L"Calibri|Carlito|Liberation Sans|DejaVu Sans"},
    BuiltInRow{L"cambria|georgia", L"Cambria|Caladea|Liberation Serif|DejaVu Serif"},
    BuiltInRow{L"verdana|tahoma|trebuc|trebuchet ms", L"Verdana|Tahoma|DejaVu Sans"},
    BuiltInRow{L"txt|simplex|romans|romand|romanc|romant|scripts|scriptc|italic|italicc|italict|gothice|gothicg|"
               L"gothici|ltypeshp|standard",
               L"DejaVu Sans|Liberation Sans"},
    BuiltInRow{L"gost|gost type a|gost type b|gost type au|gost type bu|gost_a|gost_b|gost common|gostw|cs_gost2304",
               L"GOST type A|GOST type B|DejaVu Sans Condensed|DejaVu Sans"},
    BuiltInRow{L"simsun|nsimsun|simhei|simfang|simkai|fangsong|gbcbig|gbenor|gbeitc|hztxt|chinset",
               L"SimSun|Noto Sans CJK SC|DejaVu Sans"},
    BuiltInRow{L"mingliu|pmingliu|chineset", L"MingLiU|Noto Sans CJK TC|DejaVu Sans"},
    BuiltInRow{L"msgothic|ms gothic|ms pgothic|msmincho|ms mincho|extfont|extfont2|bigfont|@extfont2",
               L"MS Gothic|Noto Sans CJK JP|DejaVu Sans"},
    BuiltInRow{L"gulim|batang|dotum|malgun gothic|malgun|whgtxt|whgdtxt|whtgtxt|whtmtxt",
               L"Gulim|Noto Sans CJK KR|DejaVu Sans"},
};

// Files that are named otherwise than the family they hold.
constexpr std::array fileRows{
    BuiltInRow{L"arial|arialbd|ariali|arialbi", L"Arial"},
    BuiltInRow{L"times|timesbd|timesi|timesbi", L"Times New Roman"},
    BuiltInRow{L"cour|courbd|couri|courbi", L"Courier New"},
    BuiltInRow{L"dejavusans|dejavusans-bold|dejavusans-oblique|dejavusans-boldoblique", L"DejaVu Sans"},
    BuiltInRow{L"dejavusansmono|dejavusansmono-bold", L"DejaVu Sans Mono"},
    BuiltInRow{L"dejavuserif|dejavuserif-bold|dejavuserif-italic|dejavuserif-bolditalic", L"DejaVu Serif"},
    BuiltInRow{L"liberationsans-regular|liberationsans-bold|liberationsans-italic|liberationsans-bolditalic",
               L"Liberation Sans"},
    BuiltInRow{L"liberationserif-regular|liberationserif-bold|liberationserif-italic|liberationserif-bolditalic",
               L"Liberation Serif"},
    BuiltInRow{L"liberationmono-regular|liberationmono-bold|liberationmono-italic|liberationmono-bolditalic",
               L"Liberation Mono"},
};

// The family for what no row names.
constexpr std::array<std::wstring_view, 3> defaultFamilies{L"DejaVu Sans", L"Liberation Sans", L"Noto Sans"};

std::vector<std::wstring> split(std::wstring_view list) {
    std::vector<std::wstring> parts;
    while (true) {
        const std::size_t bar = list.find(L'|');
        parts.emplace_back(list.substr(0, bar));
        if (bar == std::wstring_view::npos) {
            return parts;
        }
        list.remove_prefix(bar + 1);
    }
}

// "C:\fonts\ARIAL.TTF" and "arial" are the same font.
std::wstring keyOf(std::wstring name) {
    if (const std::size_t slash = name.find_last_of(L"/\\"); slash != std::wstring::npos) {
        name.erase(0, slash + 1);
    }
    std::transform(name.begin(), name.end(), name.begin(),
                   [](wchar_t unit) { return static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(unit))); });
    for (const std::wstring_view ending : {L".shx", L".ttf", L".ttc", L".otf", L".pfb"}) {
        if (name.size() > ending.size() && name.ends_with(ending)) {
            name.erase(name.size() - ending.size());
            break;
        }
    }
    return name;
}

std::vector<std::wstring> familiesOf(const nlohmann::json& value, const std::string& name, const std::string& path) {
    std::vector<std::wstring> families;
    if (value.is_string()) {
        families.push_back(common::wideFromUtf8(value.get<std::string>()));
    } else if (value.is_array() &&
               std::all_of(value.begin(), value.end(), [](const auto& v) { return v.is_string(); })) {
        for (const auto& family : value) {
            families.push_back(common::wideFromUtf8(family.get<std::string>()));
        }
    } else {
        throw InputError(inputName(path) + ": the entry \"" + name +
                         "\" must be a family name or a list of family names");
    }
    return families;
}

} // namespace

FontMap::FontMap(fonts::IFontEngine& engine) : m_engine(engine) {
    const auto fill = [](Rows& rows, const auto& table) {
        for (const BuiltInRow& row : table) {
            for (std::wstring& name : split(row.names)) {
                rows[std::move(name)] = split(row.families);
            }
        }
    };
    fill(m_fileRows, fileRows);
    fill(m_builtInRows, builtInRows);
}

void FontMap::load(const std::string& path) {
    InputFile file(path, InputFile::Readings::One);
    const nlohmann::json table = nlohmann::json::parse(file.stream(), nullptr, false);
    file.requireRead();
    if (!table.is_object()) {
        throw InputError(inputName(path) + R"(: is not a font map; write {"romans.shx": "DejaVu Sans", ...})");
    }
    for (const auto& [name, value] : table.items()) {
        m_userRows[keyOf(common::wideFromUtf8(name))] = familiesOf(value, name, path);
    }
}

bool FontMap::isInstalled(const std::wstring& family) {
    // The engine answers a family that it lacks with its fallback font.
    return m_engine.getFont(family, fonts::Weight::Normal, fonts::Style::Normal) != m_engine.getFallbackFont();
}

std::wstring FontMap::firstInstalled(const Rows& rows, const std::wstring& key) {
    if (const auto row = rows.find(key); row != rows.end()) {
        for (const std::wstring& family : row->second) {
            if (isInstalled(family)) {
                return family;
            }
        }
    }
    return {};
}

std::wstring FontMap::replacementFor(const std::wstring& requested) {
    const std::wstring key = keyOf(requested);
    if (std::wstring family = firstInstalled(m_userRows, key); !family.empty()) {
        return family;
    }
    if (isInstalled(requested)) {
        return requested;
    }
    if (std::wstring family = firstInstalled(m_fileRows, key); !family.empty()) {
        return family;
    }
    if (std::wstring family = firstInstalled(m_builtInRows, key); !family.empty()) {
        return family;
    }
    for (const std::wstring_view family : defaultFamilies) {
        if (isInstalled(std::wstring(family))) {
            return std::wstring(family);
        }
    }
    return requested; // none of the usual families: font fallback decides
}

std::wstring FontMap::familyFor(const std::wstring& requested) {
    if (const auto answer = m_answers.find(requested); answer != m_answers.end()) {
        return answer->second;
    }
    std::wstring family = replacementFor(requested);
    if (family != requested && family != firstInstalled(m_fileRows, keyOf(requested))) {
        m_replacements.push_back({requested, family});
    }
    return m_answers[requested] = std::move(family);
}

void FontMap::coverBigFont(const std::wstring& bigFont, const std::wstring& family) {
    if (!bigFont.empty() && m_answers.emplace(bigFont, family).second) {
        m_replacements.push_back({bigFont, family});
    }
}

void reportReplacements(const std::vector<FontMap::Replacement>& replacements) {
    for (const FontMap::Replacement& replacement : replacements) {
        std::cout << "font " << common::utf8FromWide(replacement.requested)
                  << " is not installed: " << common::utf8FromWide(replacement.family)
                  << " stands in (change it with --font-map)\n";
    }
}

} // namespace tool
