#include "fonts/HostFonts.h"

#include "fonts/FaceSource.h"
#include "fonts/FontCollection.h"
#include "fonts/FontFace.h"
#include "fonts/FontFileReference.h"
#include "fonts/SfntTables.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace platform {

namespace {

struct ReleaseLife {
    void operator()(CommonLife* life) const noexcept { life->release(); }
};

/// A face that belongs to no collection.
class LoneFace final : public CommonLife {
public:
    LoneFace(std::shared_ptr<FontData> data, int index, DWRITE_FONT_FACE_TYPE type, DWRITE_FONT_SIMULATIONS simulations)
        : m_source(std::move(data), index, describe(type), this), m_face(m_source, simulations, this) {}

    const FaceSource& source() const noexcept { return m_source; }
    CFontFace& face() noexcept { return m_face; }

private:
    static FaceDescription describe(DWRITE_FONT_FACE_TYPE type) {
        FaceDescription description;
        description.type = type;
        return description;
    }

    FaceSource m_source;
    CFontFace m_face;
};

/// The fonts of a host's files.
class HostFonts final : public CommonLife {
public:
    CFontCollection& makeCollection(std::vector<std::unique_ptr<FaceSource>> sources) {
        m_collection = std::make_unique<CFontCollection>(std::move(sources), this);
        return *m_collection;
    }

private:
    std::unique_ptr<CFontCollection> m_collection;
};

/// Whether a face has what every font has, and all of its tables within the file.
bool isWhole(const FontFile& file, const std::vector<TableRecord>& tables, hb_face_t* face) {
    return hasHead(face) && hb_face_get_glyph_count(face) > 0 &&
           std::all_of(tables.begin(), tables.end(), [&file](const TableRecord& table) {
               return std::uint64_t{table.offset} + table.length <= file.size();
           });
}

/// Whether a named instance is the font's default too.
bool isDefault(hb_face_t* face, unsigned instance) {
    std::vector<hb_ot_var_axis_info_t> axes(hb_ot_var_get_axis_count(face));
    unsigned axisCount = static_cast<unsigned>(axes.size());
    hb_ot_var_get_axis_infos(face, 0, &axisCount, axes.data());
    std::vector<float> values(axes.size());
    unsigned valueCount = static_cast<unsigned>(values.size());
    hb_ot_var_named_instance_get_design_coords(face, instance, &valueCount, values.data());
    return std::equal(axes.begin(), axes.end(), values.begin(),
                      [](const hb_ot_var_axis_info_t& axis, float value) { return axis.default_value == value; });
}

/// The fonts that a face of a file is, as indices: the default one and, of a variable font, its other named instances.
/// None for a damaged face.
std::vector<int> fontsOf(const FontFile& file, unsigned index) {
    const std::vector<TableRecord> tables = file.tables(index);
    const HbFacePtr face = FaceTables::look(file, tables);
    if (!isWhole(file, tables, face.get())) {
        return {};
    }
    std::vector<int> fonts = {static_cast<int>(index)};
    const unsigned instances = std::min(hb_ot_var_get_named_instance_count(face.get()), 0x7FFEU);
    for (unsigned instance = 0; instance < instances; ++instance) {
        if (!isDefault(face.get(), instance)) {
            fonts.push_back(static_cast<int>((instance + 1) << 16 | index));
        }
    }
    return fonts;
}

/// What reading ended with, where what was read is no whole font.
HRESULT failureOf(const FontFile& file) {
    return FAILED(file.failure()) ? file.failure() : DWRITE_E_FILEFORMAT;
}

/// Whether a file has a face that can be drawn with.
HRESULT checkFace(FontData& data, DWRITE_FONT_FACE_TYPE type, int index) {
    std::shared_ptr<const FontFile> file;
    if (const HRESULT result = data.open(file); FAILED(result)) {
        return result;
    }
    const FileKind kind = file->kind();
    if (kind.faceCount == 0 || kind.face != type) {
        return failureOf(*file);
    }
    if (faceIndex(index) >= kind.faceCount) {
        return E_INVALIDARG;
    }
    const std::vector<TableRecord> tables = file->tables(faceIndex(index));
    const HbFacePtr face = FaceTables::look(*file, tables);
    if (!isWhole(*file, tables, face.get())) {
        return failureOf(*file);
    }
    return instanceNumber(index) <= hb_ot_var_get_named_instance_count(face.get()) ? S_OK : E_INVALIDARG;
}

/// Adds the faces of a file that can be used. A file of another kind has none.
HRESULT addFaces(IDWriteFontFile& file, std::vector<std::unique_ptr<FaceSource>>& sources, CommonLife* life) {
    std::shared_ptr<FontData> data;
    std::shared_ptr<const FontFile> opened;
    HRESULT result = CFontFileReference::dataOf(file, data);
    if (SUCCEEDED(result)) {
        result = data->open(opened);
    }
    if (FAILED(result)) {
        return result;
    }
    // An index has 16 bits for the face.
    const unsigned faceCount = std::min(opened->kind().faceCount, 0x10000U);
    for (unsigned face = 0; face < faceCount; ++face) {
        for (const int font : fontsOf(*opened, face)) {
            if (std::optional<FaceDescription> description = FaceSource::describe(*opened, font)) {
                sources.push_back(std::make_unique<FaceSource>(data, font, std::move(*description), life));
            }
        }
        if (FAILED(opened->failure())) {
            return opened->failure();
        }
    }
    return S_OK;
}

HRESULT readFiles(IDWriteFontFileEnumerator& files, std::vector<std::unique_ptr<FaceSource>>& sources,
                  CommonLife* life) {
    for (;;) {
        BOOL hasFile = FALSE;
        HRESULT result = files.MoveNext(&hasFile);
        if (FAILED(result) || hasFile == FALSE) {
            return FAILED(result) ? result : S_OK;
        }
        IDWriteFontFile* current = nullptr;
        result = files.GetCurrentFontFile(&current);
        if (SUCCEEDED(result)) {
            const Reference<IDWriteFontFile> file(current, false);
            result = file ? addFaces(*file, sources, life) : E_FAIL;
        }
        if (FAILED(result)) {
            return result;
        }
    }
}

} // namespace

HRESULT createFontFace(DWRITE_FONT_FACE_TYPE type, IDWriteFontFile& file, UINT32 index,
                       DWRITE_FONT_SIMULATIONS simulations, IDWriteFontFace** fontFace) {
    std::shared_ptr<FontData> data;
    HRESULT result = CFontFileReference::dataOf(file, data);
    if (SUCCEEDED(result)) {
        result = checkFace(*data, type, static_cast<int>(index));
    }
    if (FAILED(result)) {
        return result;
    }
    const std::unique_ptr<LoneFace, ReleaseLife> made(
        new LoneFace(std::move(data), static_cast<int>(index), type, simulations));
    if (FAILED(made->source().failure())) {
        return made->source().failure();
    }
    handOut(made->face(), fontFace);
    return S_OK;
}

HRESULT createCollection(IDWriteFactory& factory, IDWriteFontCollectionLoader& loader, const void* key, UINT32 keySize,
                         IDWriteFontCollection** fontCollection) {
    IDWriteFontFileEnumerator* created = nullptr;
    HRESULT result = loader.CreateEnumeratorFromKey(&factory, key, keySize, &created);
    if (FAILED(result)) {
        return result;
    }
    const Reference<IDWriteFontFileEnumerator> files(created, false);
    const std::unique_ptr<HostFonts, ReleaseLife> fonts(new HostFonts);
    std::vector<std::unique_ptr<FaceSource>> sources;
    result = files ? readFiles(*files, sources, fonts.get()) : E_FAIL;
    if (FAILED(result)) {
        return result;
    }
    handOut(fonts->makeCollection(std::move(sources)), fontCollection);
    return S_OK;
}

} // namespace platform
