#include "Converter.h"
#include <dxf/CodePage.h>

#include <algorithm>
#include <array>
#include <charconv>

namespace dxf {
namespace {

struct NamedPage {
    unsigned number;
    const char* converter; ///< As ICU knows it.
};

/// The Windows, DOS, Macintosh and ISO pages that drawings are written in. Where several converters share a page's
/// number, the one that maps 0x5C to a backslash and follows Windows is named.
constexpr std::array pages{
    NamedPage{437, "ibm-437"},          NamedPage{720, "ibm-720"},          NamedPage{737, "ibm-737"},
    NamedPage{775, "ibm-775"},          NamedPage{850, "ibm-850"},          NamedPage{852, "ibm-852"},
    NamedPage{855, "ibm-855"},          NamedPage{857, "ibm-857"},          NamedPage{860, "ibm-860"},
    NamedPage{861, "ibm-861"},          NamedPage{862, "ibm-862"},          NamedPage{863, "ibm-863"},
    NamedPage{864, "ibm-864"},          NamedPage{865, "ibm-865"},          NamedPage{866, "ibm-866"},
    NamedPage{869, "ibm-869"},          NamedPage{874, "windows-874"},      NamedPage{932, "windows-31j"},
    NamedPage{936, "windows-936-2000"}, NamedPage{949, "windows-949-2000"}, NamedPage{950, "windows-950-2000"},
    NamedPage{1250, "windows-1250"},    NamedPage{1251, "windows-1251"},    NamedPage{1252, "windows-1252"},
    NamedPage{1253, "windows-1253"},    NamedPage{1254, "windows-1254"},    NamedPage{1255, "windows-1255"},
    NamedPage{1256, "windows-1256"},    NamedPage{1257, "windows-1257"},    NamedPage{1258, "windows-1258"},
    NamedPage{10000, "macintosh"},      NamedPage{28591, "iso-8859-1"},     NamedPage{28592, "iso-8859-2"},
    NamedPage{28593, "iso-8859-3"},     NamedPage{28594, "iso-8859-4"},     NamedPage{28595, "iso-8859-5"},
    NamedPage{28596, "iso-8859-6"},     NamedPage{28597, "iso-8859-7"},     NamedPage{28598, "iso-8859-8"},
    NamedPage{28599, "iso-8859-9"},     NamedPage{28603, "iso-8859-13"},    NamedPage{28605, "iso-8859-15"},
    NamedPage{54936, "gb18030"},        NamedPage{65001, "utf-8"},
};

struct Alias {
    std::string_view name; ///< Upper case, letters and digits only.
    unsigned number;
};

constexpr std::array aliases{
    Alias{"ASCII", 1252},  Alias{"USASCII", 1252}, Alias{"MACROMAN", 10000}, Alias{"MACINTOSH", 10000},
    Alias{"UTF8", 65001},  Alias{"BIG5", 950},     Alias{"GB2312", 936},     Alias{"GBK", 936},
    Alias{"KSC5601", 949}, Alias{"SHIFTJIS", 932}, Alias{"GB18030", 54936},
};

constexpr unsigned isoBase = 28590;

} // namespace

const char* converterName(unsigned codePage) {
    const auto* found = std::ranges::find(pages, codePage, &NamedPage::number);
    return found == pages.end() ? nullptr : found->converter;
}

bool isKnownCodePage(unsigned codePage) {
    return converterName(codePage) != nullptr;
}

std::optional<unsigned> codePageFromName(std::string_view name) {
    // "ANSI_1252", "ansi-1252" and "Windows 1252" are all met with.
    std::string compact;
    for (const char c : name) {
        if (c >= 'a' && c <= 'z') {
            compact += static_cast<char>(c - 'a' + 'A');
        } else if ((c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')) {
            compact += c;
        }
    }
    if (const auto* alias = std::ranges::find(aliases, compact, &Alias::name); alias != aliases.end()) {
        return alias->number;
    }
    std::string_view digits = compact;
    const bool iso = digits.starts_with("ISO8859");
    for (const std::string_view family : {"ANSI", "DOS", "WINDOWS", "CP", "IBM", "ISO8859"}) {
        if (digits.starts_with(family)) {
            digits.remove_prefix(family.size());
            break;
        }
    }
    unsigned number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc{} || end != digits.data() + digits.size()) {
        return std::nullopt;
    }
    number += iso ? isoBase : 0;
    return isKnownCodePage(number) ? std::optional(number) : std::nullopt;
}

} // namespace dxf
