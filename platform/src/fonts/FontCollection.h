#pragma once

#include "com/ComObject.h"
#include "fonts/CaseFolding.h"
#include "fonts/FontFamily.h"

#include <dwrite_font.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace platform {

class FaceSource;
class FamilySubstitutes;
struct FontSet;

/// Asked of a collection, gives the CFontCollection behind it, counted; only ours know it.
inline constexpr GUID ownFontCollectionId = detail::guid("0b8c2a9e-6f3d-4c57-8a1b-92d7e4f06c35");

/// All families, ordered by name. Interned; immutable once built. The system's lives with the process.
class CFontCollection final : public CInternedObject<IDWriteFontCollection> {
public:
    /// The fonts of the system, read at the first call. Empty when there are none.
    static CFontCollection& system();
    /// Makes a change to what fonts the process has, unless they have been read: then nothing, and false. Also false
    /// where the change says so.
    static bool beforeReading(const std::function<bool()>& change);
    /// Whether text can be set in the fonts of a collection: null and ours, those of a host's files among them, but
    /// none that is a caller's own object, since no interface hands out the bytes of its fonts.
    static bool isUsable(IDWriteFontCollection* collection);
    /// The collection behind an interface pointer that is usable: the system's for null.
    static CFontCollection& of(IDWriteFontCollection* collection);

    /// Families and fonts of `set`.
    explicit CFontCollection(const FontSet& set);
    /// Families and fonts of `sources`, all of which live with `life`.
    CFontCollection(std::vector<std::unique_ptr<FaceSource>> sources, CommonLife* life);
    ~CFontCollection();

    const std::vector<std::unique_ptr<CFontFamily>>& families() const noexcept { return m_families; }
    /// The family with this name (any of its languages), letter case ignored; null if none.
    CFontFamily* findFamily(std::wstring_view name) const;
    /// The family to set text in that asks for this name: the one of the name, else what stands for it; null if nothing
    /// does.
    CFontFamily* familyFor(std::wstring_view name) const;
    /// The real font of a face as Fontconfig lists it (FC_FILE and FC_INDEX); null if none.
    CFont* fontOfFile(std::string_view file, int index) const;

    // IDWriteFontCollection
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override;
    using IUnknown::QueryInterface;
    UINT32 STDMETHODCALLTYPE GetFontFamilyCount() override;
    HRESULT STDMETHODCALLTYPE GetFontFamily(UINT32 index, IDWriteFontFamily** fontFamily) override;
    HRESULT STDMETHODCALLTYPE FindFamilyName(const WCHAR* familyName, UINT32* index, BOOL* exists) override;
    HRESULT STDMETHODCALLTYPE GetFontFromFontFace(IDWriteFontFace* fontFace, IDWriteFont** font) override;

private:
    template <typename Matches>
    CFont* findFont(Matches matches) const;
    /// The index of a family, or `noFamily`.
    std::size_t indexOf(std::wstring_view name) const;

    static constexpr std::size_t noFamily = static_cast<std::size_t>(-1);

    std::vector<std::unique_ptr<FaceSource>> m_sources;
    std::vector<std::unique_ptr<CFontFamily>> m_families;
    std::unordered_map<std::wstring, std::size_t, FoldedHash, FoldedEqual> m_familyByFoldedName;
    std::unordered_map<std::string, CFont*> m_fontByFile;
    const std::unique_ptr<FamilySubstitutes> m_substitutes;
};

} // namespace platform
