#pragma once

#include "fonts/CaseFolding.h"

#include <memory>
#include <mutex>
#include <shared_mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace platform {

class CFontCollection;
class CFontFamily;

/// What stands for family names that no family of a collection has.
///
/// Drawings name fonts as GDI does. A Win32 family such as "Liberation Sans Narrow", whose faces are members of
/// "Liberation Sans", becomes a family of its own here, with the same faces. Other names get the first installed family
/// that the Fontconfig configuration puts in their place, as for fonts made to the measures of others. Its weak
/// preferences, which are there for any name at all, do not count, nor does the environment's language.
///
/// Any number of threads may ask.
class FamilySubstitutes {
public:
    /// `collection` outlives this object and is complete before the first question.
    explicit FamilySubstitutes(CFontCollection& collection);
    ~FamilySubstitutes();

    /// Null if nothing stands for the name.
    CFontFamily* find(std::wstring_view name);

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::wstring_view text) const noexcept { return std::hash<std::wstring_view>()(text); }
    };

    CFontFamily* lookUp(const std::wstring& name);
    void readWin32Families();
    CFontFamily* win32Family(std::wstring_view name) const;
    CFontFamily* configuredFamily(const std::wstring& name) const;

    CFontCollection& m_collection;
    std::once_flag m_reading;
    std::vector<std::unique_ptr<CFontFamily>> m_win32Families;
    std::unordered_map<std::wstring, CFontFamily*, FoldedHash, FoldedEqual> m_win32ByFoldedName;
    std::shared_mutex m_guard;
    // Names that were asked for, bounded.
    std::unordered_map<std::wstring, CFontFamily*, Hash, std::equal_to<>> m_known;
};

} // namespace platform
