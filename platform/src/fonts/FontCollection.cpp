#include "fonts/FontCollection.h"

#include "fonts/FaceSource.h"
#include "fonts/FamilyBuilder.h"
#include "fonts/FamilySubstitutes.h"
#include "fonts/FontFace.h"
#include "fonts/FontSet.h"
#include "fonts/LocalFontData.h"

#include <algorithm>
#include <mutex>

namespace platform {

namespace {

// What fonts the process has may change until the first question about them.
std::mutex readingGuard;
bool wasRead = false;

constexpr UINT32 noIndex = 0xFFFFFFFF;

/// The collection of ours behind an interface; null where there is none.
CFontCollection* ownCollection(IDWriteFontCollection& collection) {
    void* own = nullptr;
    if (FAILED(collection.QueryInterface(ownFontCollectionId, &own)) || own == nullptr) {
        return nullptr;
    }
    auto* const found = static_cast<CFontCollection*>(own);
    found->Release();
    return found;
}

std::string fileKey(std::string_view file, int index) {
    return std::string(file).append(1, '\0').append(std::to_string(index));
}

/// The faces of a set that can be used; each file is opened once and closed again.
std::vector<std::unique_ptr<FaceSource>> readSources(const FontSet& set) {
    std::vector<std::unique_ptr<FaceSource>> sources;
    std::string path;
    std::unique_ptr<LocalFontFile> file;
    std::shared_ptr<FontData> data;
    for (const FontSetEntry& entry : set.entries) {
        if (path != entry.file) {
            path = entry.file;
            file = LocalFontFile::open(path);
            data = file ? std::make_shared<LocalFontData>(path, file->identity()) : nullptr;
        }
        if (!file) {
            continue;
        }
        if (std::optional<FaceDescription> description = FaceSource::describe(*file, entry.index)) {
            sources.push_back(std::make_unique<FaceSource>(data, entry.index, std::move(*description)));
        }
    }
    return sources;
}

} // namespace

CFontCollection& CFontCollection::system() {
    // Lives as long as the process: callers may hold fonts until its very end.
    static auto& collection = *[] {
        const std::lock_guard lock(readingGuard);
        wasRead = true;
        return new CFontCollection(readFontSet(nullptr));
    }();
    return collection;
}

bool CFontCollection::beforeReading(const std::function<bool()>& change) {
    const std::lock_guard lock(readingGuard);
    return !wasRead && change();
}

bool CFontCollection::isUsable(IDWriteFontCollection* collection) {
    return collection == nullptr || ownCollection(*collection) != nullptr;
}

CFontCollection& CFontCollection::of(IDWriteFontCollection* collection) {
    CFontCollection* const own = collection != nullptr ? ownCollection(*collection) : nullptr;
    return own != nullptr ? *own : system();
}

CFontCollection::CFontCollection(const FontSet& set) : CFontCollection(readSources(set), nullptr) {}

CFontCollection::CFontCollection(std::vector<std::unique_ptr<FaceSource>> sources, CommonLife* life)
    : CInternedObject(life), m_sources(std::move(sources)), m_substitutes(std::make_unique<FamilySubstitutes>(*this)) {
    for (FamilyDraft& draft : groupFamilies(m_sources)) {
        const std::size_t index = m_families.size();
        m_familyByFoldedName[draft.foldedName] = index;
        m_families.push_back(buildFamily(*this, std::move(draft)));
    }
    // Other languages' names do not take a name from the family it belongs to.
    for (std::size_t index = 0; index < m_families.size(); ++index) {
        for (const std::unique_ptr<CFont>& font : m_families[index]->fonts()) {
            for (const LocalizedName& name : font->source().wws().family) {
                m_familyByFoldedName.emplace(foldCase(name.text), index);
            }
            if (font->simulations() == DWRITE_FONT_SIMULATIONS_NONE && !font->source().path().empty()) {
                m_fontByFile.emplace(fileKey(font->source().path(), font->source().index()), font.get());
            }
        }
    }
}

CFontCollection::~CFontCollection() = default;

std::size_t CFontCollection::indexOf(std::wstring_view name) const {
    const auto found = isAscii(name) ? m_familyByFoldedName.find(name) : m_familyByFoldedName.find(foldCase(name));
    return found != m_familyByFoldedName.end() ? found->second : noFamily;
}

CFontFamily* CFontCollection::findFamily(std::wstring_view name) const {
    const std::size_t index = indexOf(name);
    return index != noFamily ? m_families[index].get() : nullptr;
}

CFontFamily* CFontCollection::familyFor(std::wstring_view name) const {
    CFontFamily* const family = findFamily(name);
    return family != nullptr ? family : m_substitutes->find(name);
}

CFont* CFontCollection::fontOfFile(std::string_view file, int index) const {
    const auto found = m_fontByFile.find(fileKey(file, index));
    return found != m_fontByFile.end() ? found->second : nullptr;
}

HRESULT CFontCollection::QueryInterface(REFIID riid, void** object) {
    if (riid == ownFontCollectionId) {
        AddRef();
        *object = this;
        return S_OK;
    }
    return CInternedObject::QueryInterface(riid, object);
}

UINT32 CFontCollection::GetFontFamilyCount() {
    return static_cast<UINT32>(m_families.size());
}

HRESULT CFontCollection::GetFontFamily(UINT32 index, IDWriteFontFamily** fontFamily) {
    *fontFamily = nullptr;
    if (index >= m_families.size()) {
        return E_FAIL;
    }
    handOut(*m_families[index], fontFamily);
    return S_OK;
}

HRESULT CFontCollection::FindFamilyName(const WCHAR* familyName, UINT32* index, BOOL* exists) {
    *index = noIndex;
    *exists = FALSE;
    return guarded([&] {
        const std::size_t found = indexOf(familyName);
        if (found != noFamily) {
            *index = static_cast<UINT32>(found);
            *exists = TRUE;
        }
        return S_OK;
    });
}

template <typename Matches>
CFont* CFontCollection::findFont(Matches matches) const {
    for (const std::unique_ptr<CFontFamily>& family : m_families) {
        for (const std::unique_ptr<CFont>& candidate : family->fonts()) {
            if (matches(*candidate)) {
                return candidate.get();
            }
        }
    }
    return nullptr;
}

HRESULT CFontCollection::GetFontFromFontFace(IDWriteFontFace* fontFace, IDWriteFont** font) {
    *font = nullptr;
    return guarded([&] {
        CFont* found = findFont([fontFace](const CFont& candidate) { return candidate.hasFace(fontFace); });
        if (const Reference<CFontFace> face = found == nullptr ? CFontFace::ownFace(fontFace) : nullptr) {
            found = findFont([&face](const CFont& candidate) { return candidate.drawsLike(*face); });
        }
        if (found == nullptr) {
            return DWRITE_E_NOFONT;
        }
        handOut(*found, font);
        return S_OK;
    });
}

} // namespace platform
