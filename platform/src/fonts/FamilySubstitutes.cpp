#include "fonts/FamilySubstitutes.h"

#include "fonts/FaceSource.h"
#include "fonts/FontCollection.h"
#include "fonts/FontFamily.h"
#include "fonts/FontconfigPointers.h"
#include "fonts/NameTable.h"

#include <fontconfig/fontconfig.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <new>
#include <optional>

namespace platform {

namespace {

constexpr std::size_t mostNames = 1024;
/// No family has a longer name: it would not fit a font's name table.
constexpr std::size_t longestName = 256;

/// Nothing for a name that is no UTF-16 or too long to be one.
std::optional<std::string> toUtf8(const std::wstring& name) {
    if (std::any_of(name.begin(), name.end(), [](wchar_t c) { return c < 0 || c > 0xFFFF; })) {
        return std::nullopt;
    }
    const std::u16string units(name.begin(), name.end());
    std::array<char, 3 * longestName + 1> buffer{};
    UErrorCode error = U_ZERO_ERROR;
    u_strToUTF8(buffer.data(), static_cast<std::int32_t>(buffer.size()), nullptr, units.data(),
                static_cast<std::int32_t>(units.size()), &error);
    return U_SUCCESS(error) ? std::optional<std::string>(buffer.data()) : std::nullopt;
}

std::wstring fromUtf8(const char* name) {
    std::array<char16_t, longestName> buffer{};
    std::int32_t length = 0;
    UErrorCode error = U_ZERO_ERROR;
    u_strFromUTF8(buffer.data(), static_cast<std::int32_t>(buffer.size()), &length, name, -1, &error);
    return U_SUCCESS(error) ? std::wstring(buffer.begin(), buffer.begin() + length) : std::wstring();
}

/// The families that a configuration binds to a name, that itself first.
std::vector<std::wstring> boundFamilies(const std::string& name) {
    const PatternPtr pattern(FcPatternCreate());
    if (!pattern) {
        throw std::bad_alloc();
    }
    FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(name.c_str()));
    // Else Fontconfig adds the languages that the environment speaks.
    FcPatternAddString(pattern.get(), FC_LANG, reinterpret_cast<const FcChar8*>("und"));
    FcConfigSubstitute(nullptr, pattern.get(), FcMatchPattern);
    std::vector<std::wstring> families;
    FcValue value{};
    FcValueBinding binding = FcValueBindingWeak;
    for (int i = 0; FcPatternGetWithBinding(pattern.get(), FC_FAMILY, i, &value, &binding) == FcResultMatch; ++i) {
        if (binding == FcValueBindingStrong && value.type == FcTypeString) {
            families.push_back(fromUtf8(reinterpret_cast<const char*>(value.u.s)));
        }
    }
    return families;
}

} // namespace

FamilySubstitutes::FamilySubstitutes(CFontCollection& collection) : m_collection(collection) {}

FamilySubstitutes::~FamilySubstitutes() = default;

void FamilySubstitutes::readWin32Families() {
    std::map<std::wstring, std::vector<CFont*>> groups;
    for (const std::unique_ptr<CFontFamily>& family : m_collection.families()) {
        for (const std::unique_ptr<CFont>& font : family->fonts()) {
            const std::wstring* const name = preferredName(font->source().names().win32Family);
            if (name != nullptr && m_collection.findFamily(*name) == nullptr) {
                groups[foldCase(*name)].push_back(font.get());
            }
        }
    }
    for (const auto& [foldedName, members] : groups) {
        const LocalizedNames& names = members.front()->source().names().win32Family;
        auto family = std::make_unique<CFontFamily>(m_collection, names);
        std::vector<std::unique_ptr<CFont>> fonts;
        for (CFont* const member : members) {
            fonts.push_back(std::make_unique<CFont>(*family, *member));
        }
        family->setFonts(std::move(fonts));
        m_win32ByFoldedName[foldedName] = family.get();
        for (const LocalizedName& name : names) {
            m_win32ByFoldedName.emplace(foldCase(name.text), family.get());
        }
        m_win32Families.push_back(std::move(family));
    }
}

CFontFamily* FamilySubstitutes::win32Family(std::wstring_view name) const {
    const auto found = m_win32ByFoldedName.find(foldCase(name));
    return found != m_win32ByFoldedName.end() ? found->second : nullptr;
}

CFontFamily* FamilySubstitutes::configuredFamily(const std::wstring& name) const {
    const std::optional<std::string> utf8 = toUtf8(name);
    if (!utf8 || utf8->empty()) {
        return nullptr;
    }
    for (const std::wstring& bound : boundFamilies(*utf8)) {
        if (CFontFamily* const family = m_collection.findFamily(bound)) {
            return family;
        }
        if (CFontFamily* const family = win32Family(bound)) {
            return family;
        }
    }
    return nullptr;
}

CFontFamily* FamilySubstitutes::lookUp(const std::wstring& name) {
    std::call_once(m_reading, [this] { readWin32Families(); });
    CFontFamily* const family = win32Family(name);
    return family != nullptr ? family : configuredFamily(name);
}

CFontFamily* FamilySubstitutes::find(std::wstring_view name) {
    {
        const std::shared_lock lock(m_guard);
        if (const auto known = m_known.find(name); known != m_known.end()) {
            return known->second;
        }
    }
    if (name.size() > longestName) {
        return nullptr;
    }
    const std::wstring key(name);
    CFontFamily* const family = lookUp(key);
    const std::unique_lock lock(m_guard);
    if (m_known.size() >= mostNames) {
        m_known.clear();
    }
    m_known.emplace(key, family);
    return family;
}

} // namespace platform
