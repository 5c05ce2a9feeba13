#pragma once

#include "fonts/FaceNames.h"
#include "fonts/HarfBuzz.h"
#include "fonts/LocalizedStrings.h"

#include <dwrite_font.h>

#include <array>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace platform {

/// A font file. It is mapped while something uses it; the faces of a collection share
/// one mapping.
class FontFile {
public:
    explicit FontFile(std::string path) : m_path(std::move(path)) {}

    const std::string& path() const noexcept { return m_path; }
    /// The file's contents for a short look; null if it cannot be read.
    HbBlobPtr open() const { return HbBlobPtr(hb_blob_create_from_file_or_fail(m_path.c_str())); }
    /// The file's contents for good; empty if it cannot be read.
    hb_blob_t* keepOpen();

private:
    const std::string m_path;
    std::mutex m_opening;
    HbBlobPtr m_blob;
};

/// What is read of a face when the collection is built.
struct FaceDescription {
    StoredNames names;
    WwsFace wws;
};

/// One face of a file, or a named instance of it: what a real font and its simulations
/// draw from. Thread-safe.
class FaceSource {
public:
    /// `index` is Fontconfig's: the face in its lower half, the named instance (from 1)
    /// in its upper one. Nothing if `blob` holds no such face with glyphs.
    static std::optional<FaceDescription> describe(hb_blob_t* blob, int index);

    FaceSource(std::shared_ptr<FontFile> file, int index, FaceDescription description);

    const FontFile& file() const noexcept { return *m_file; }
    int index() const noexcept { return m_index; }
    const StoredNames& names() const noexcept { return m_description.names; }
    const WwsFace& wws() const noexcept { return m_description.wws; }

    /// A font of the face in design units with the instance's variations; not immutable
    /// yet. One without glyphs if the file has become unreadable.
    HbFontPtr makeFont();

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

    const std::shared_ptr<FontFile> m_file;
    const int m_index;
    const FaceDescription m_description;
    std::once_flag m_faceOnce;
    HbFacePtr m_face;
    std::mutex m_stringsGuard;
    std::array<StringSlot, stringCount> m_strings;
};

} // namespace platform
