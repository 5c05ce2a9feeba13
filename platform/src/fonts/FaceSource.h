#pragma once

#include "fonts/FaceNames.h"
#include "fonts/FaceTables.h"
#include "fonts/HarfBuzz.h"
#include "fonts/LocalizedStrings.h"

#include <dwrite_font.h>

#include <array>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace platform {

/// What tells faces of the same names and traits apart, as the font says.
struct FaceEdition {
    /// Of the table head, a fixed number of 16 and 16 bits.
    std::uint32_t revision = 0;
    std::uint32_t glyphCount = 0;
    /// Equal for faces that are the same byte for byte, by the checksums in their directories.
    std::uint64_t fingerprint = 0;

    bool operator==(const FaceEdition&) const = default;
};

/// What is read of a face when the collection is built.
struct FaceDescription {
    StoredNames names;
    WwsFace wws;
    FaceEdition edition;
    DWRITE_FONT_FACE_TYPE type = DWRITE_FONT_FACE_TYPE_UNKNOWN;
};

/// The parts of an index as Fontconfig and FreeType have it: the face of the file, and the named instance of a variable
/// font from 1 (0: the default one).
constexpr unsigned faceIndex(int index) {
    return static_cast<unsigned>(index) & 0xFFFF;
}
constexpr unsigned instanceNumber(int index) {
    return static_cast<unsigned>(index) >> 16;
}

/// One face of a file, or a named instance of it: what a real font and its simulations
/// draw from. Thread-safe.
class FaceSource {
public:
    /// `index` is Fontconfig's. Nothing if `file` holds no such face with glyphs.
    static std::optional<FaceDescription> describe(const FontFile& file, int index);

    /// `life` is what the face's strings live with; null for the process.
    FaceSource(std::shared_ptr<FontData> data, int index, FaceDescription description, CommonLife* life = nullptr);

    const std::shared_ptr<FontData>& data() const noexcept { return m_data; }
    /// Empty if the file is a host's.
    const std::string& path() const noexcept { return m_data->path(); }
    int index() const noexcept { return m_index; }
    const StoredNames& names() const noexcept { return m_description.names; }
    const WwsFace& wws() const noexcept { return m_description.wws; }
    const FaceEdition& edition() const noexcept { return m_description.edition; }
    DWRITE_FONT_FACE_TYPE type() const noexcept { return m_description.type; }
    /// Whether both are the same face of the same file.
    bool isSameFace(const FaceSource& other) const;

    /// A font of the face in design units with the instance's variations; not immutable
    /// yet. One without glyphs if the file is no longer the one that was described.
    HbFontPtr makeFont();
    /// Whether outlines are missing because the file changed after the font was made.
    bool isTorn() const noexcept { return m_tables && m_tables->isTorn(); }
    /// What reading of the file failed with last; S_OK if it never did.
    HRESULT failure() const noexcept { return m_tables ? m_tables->failure() : S_OK; }
    /// A table of the face; null if it has none. Throws where it cannot be read.
    HbBlobPtr table(hb_tag_t tag);

    /// The strings of the name table; null if the face has none.
    CLocalizedStrings* strings(DWRITE_INFORMATIONAL_STRING_ID id);

private:
    static constexpr std::size_t stringCount = DWRITE_INFORMATIONAL_STRING_WWS_FAMILY_NAME + 1;
    struct StringSlot {
        bool known = false;
        std::unique_ptr<CLocalizedStrings> strings;
    };

    hb_face_t* hbFace();
    LocalizedNames readStrings(DWRITE_INFORMATIONAL_STRING_ID id);

    const std::shared_ptr<FontData> m_data;
    const int m_index;
    const FaceDescription m_description;
    CommonLife* const m_life;
    std::once_flag m_faceOnce;
    std::shared_ptr<FaceTables> m_tables;
    HbFacePtr m_face;
    std::mutex m_stringsGuard;
    std::array<StringSlot, stringCount> m_strings;
};

} // namespace platform
