#include "fonts/FaceSource.h"

#include "fonts/NameTable.h"
#include "fonts/SfntTables.h"

#include <algorithm>
#include <cmath>

namespace platform {

namespace {

constexpr hb_ot_name_id_t wwsFamilyId = 21;
constexpr hb_ot_name_id_t wwsSubfamilyId = 22;

HbFontPtr makeInstance(hb_face_t* face, int index) {
    HbFontPtr font(hb_font_create(face));
    if (const unsigned instance = instanceNumber(index)) {
        hb_font_set_var_named_instance(font.get(), instance - 1);
    }
    return font;
}

bool hasAxis(hb_face_t* face, hb_tag_t tag) {
    hb_ot_var_axis_info_t info;
    return hb_ot_var_find_axis_info(face, tag, &info) != 0;
}

DWRITE_FONT_WEIGHT toWeight(long stored) {
    const long weight = stored >= 1 && stored <= 9 ? stored * 100 : stored;
    return static_cast<DWRITE_FONT_WEIGHT>(weight <= 0 ? 400 : std::min(weight, 950L));
}

/// The width class that a width in percent of the normal one comes closest to.
DWRITE_FONT_STRETCH toStretch(float percent) {
    constexpr std::array<float, 9> classes = {50, 62.5, 75, 87.5, 100, 112.5, 125, 150, 200};
    const auto closest = std::min_element(classes.begin(), classes.end(), [&](float a, float b) {
        return std::fabs(a - percent) < std::fabs(b - percent);
    });
    return static_cast<DWRITE_FONT_STRETCH>(closest - classes.begin() + 1);
}

DWRITE_FONT_WEIGHT readWeight(hb_font_t* font, const std::optional<Os2Table>& os2) {
    if (!os2 || hasAxis(hb_font_get_face(font), HB_OT_TAG_VAR_AXIS_WEIGHT)) {
        return toWeight(std::lround(hb_style_get_value(font, HB_STYLE_TAG_WEIGHT)));
    }
    const DWRITE_FONT_WEIGHT weight = toWeight(os2->weightClass);
    // Bold fonts exist whose weight class was left at normal.
    const bool bold = (os2->selection & Os2Table::selectionBold) != 0;
    return weight == DWRITE_FONT_WEIGHT_NORMAL && bold ? DWRITE_FONT_WEIGHT_BOLD : weight;
}

DWRITE_FONT_STRETCH readStretch(hb_font_t* font, const std::optional<Os2Table>& os2) {
    if (hasAxis(hb_font_get_face(font), HB_OT_TAG_VAR_AXIS_WIDTH)) {
        return toStretch(hb_style_get_value(font, HB_STYLE_TAG_WIDTH));
    }
    const bool valid = os2 && os2->widthClass >= 1 && os2->widthClass <= 9;
    return valid ? static_cast<DWRITE_FONT_STRETCH>(os2->widthClass) : DWRITE_FONT_STRETCH_NORMAL;
}

DWRITE_FONT_STYLE readStyle(hb_font_t* font, const std::optional<Os2Table>& os2, const StoredNames& names) {
    const LocalizedNames& faceNames =
        names.typographicSubfamily.empty() ? names.win32Subfamily : names.typographicSubfamily;
    const bool slanted = hasAxis(hb_font_get_face(font), HB_OT_TAG_VAR_AXIS_SLANT) &&
                         hb_style_get_value(font, HB_STYLE_TAG_SLANT_ANGLE) != 0;
    const bool variableItalic = hasAxis(hb_font_get_face(font), HB_OT_TAG_VAR_AXIS_ITALIC);
    const bool italic = os2 && !variableItalic ? (os2->selection & Os2Table::selectionItalic) != 0
                                               : hb_style_get_value(font, HB_STYLE_TAG_ITALIC) != 0;
    const bool oblique = os2 && (os2->selection & Os2Table::selectionOblique) != 0;
    // Before the bit for it existed, fonts said only in their names that they are oblique.
    if (oblique || slanted || (italic && namesOblique(faceNames))) {
        return DWRITE_FONT_STYLE_OBLIQUE;
    }
    return italic ? DWRITE_FONT_STYLE_ITALIC : DWRITE_FONT_STYLE_NORMAL;
}

/// The traits a face's tables state; for a variable font those of the instance.
FaceTraits readTraits(hb_font_t* font, const StoredNames& names) {
    const std::optional<Os2Table> os2 = readOs2(hb_font_get_face(font));
    return {readWeight(font, os2), readStretch(font, os2), readStyle(font, os2, names)};
}

StoredNames readStoredNames(hb_face_t* face) {
    StoredNames names;
    names.win32Family = readNames(face, HB_OT_NAME_ID_FONT_FAMILY);
    names.win32Subfamily = readNames(face, HB_OT_NAME_ID_FONT_SUBFAMILY);
    names.typographicFamily = readNames(face, HB_OT_NAME_ID_TYPOGRAPHIC_FAMILY);
    names.typographicSubfamily = readNames(face, HB_OT_NAME_ID_TYPOGRAPHIC_SUBFAMILY);
    names.wwsFamily = readNames(face, wwsFamilyId);
    names.wwsSubfamily = readNames(face, wwsSubfamilyId);
    return names;
}

/// A face without any family name goes by another name that it has.
void nameFamilyless(hb_face_t* face, WwsFace& wws) {
    for (const hb_ot_name_id_t id : {HB_OT_NAME_ID_FULL_NAME, HB_OT_NAME_ID_POSTSCRIPT_NAME}) {
        if (wws.family.empty()) {
            wws.family = readNames(face, id);
            wws.face = {{L"en-us", L"Regular"}};
        }
    }
}

/// The instance's own name takes the place of the default instance's face name.
void nameInstance(hb_face_t* face, unsigned instance, WwsFace& wws) {
    const hb_ot_name_id_t id = hb_ot_var_named_instance_get_subfamily_name_id(face, instance - 1);
    LocalizedNames names = id != HB_OT_NAME_ID_INVALID ? readNames(face, id) : LocalizedNames();
    if (!names.empty()) {
        wws.face = std::move(names);
    }
}

/// The name ID behind an informational string.
hb_ot_name_id_t nameId(DWRITE_INFORMATIONAL_STRING_ID id) {
    switch (id) {
    case DWRITE_INFORMATIONAL_STRING_COPYRIGHT_NOTICE:
        return HB_OT_NAME_ID_COPYRIGHT;
    case DWRITE_INFORMATIONAL_STRING_VERSION_STRINGS:
        return HB_OT_NAME_ID_VERSION_STRING;
    case DWRITE_INFORMATIONAL_STRING_TRADEMARK:
        return HB_OT_NAME_ID_TRADEMARK;
    case DWRITE_INFORMATIONAL_STRING_MANUFACTURER:
        return HB_OT_NAME_ID_MANUFACTURER;
    case DWRITE_INFORMATIONAL_STRING_DESIGNER:
        return HB_OT_NAME_ID_DESIGNER;
    case DWRITE_INFORMATIONAL_STRING_DESIGNER_URL:
        return HB_OT_NAME_ID_DESIGNER_URL;
    case DWRITE_INFORMATIONAL_STRING_DESCRIPTION:
        return HB_OT_NAME_ID_DESCRIPTION;
    case DWRITE_INFORMATIONAL_STRING_FONT_VENDOR_URL:
        return HB_OT_NAME_ID_VENDOR_URL;
    case DWRITE_INFORMATIONAL_STRING_LICENSE_DESCRIPTION:
        return HB_OT_NAME_ID_LICENSE;
    case DWRITE_INFORMATIONAL_STRING_LICENSE_INFO_URL:
        return HB_OT_NAME_ID_LICENSE_URL;
    case DWRITE_INFORMATIONAL_STRING_WIN32_FAMILY_NAMES:
        return HB_OT_NAME_ID_FONT_FAMILY;
    case DWRITE_INFORMATIONAL_STRING_WIN32_SUBFAMILY_NAMES:
        return HB_OT_NAME_ID_FONT_SUBFAMILY;
    case DWRITE_INFORMATIONAL_STRING_PREFERRED_FAMILY_NAMES:
        return HB_OT_NAME_ID_TYPOGRAPHIC_FAMILY;
    case DWRITE_INFORMATIONAL_STRING_PREFERRED_SUBFAMILY_NAMES:
        return HB_OT_NAME_ID_TYPOGRAPHIC_SUBFAMILY;
    case DWRITE_INFORMATIONAL_STRING_SAMPLE_TEXT:
        return HB_OT_NAME_ID_SAMPLE_TEXT;
    case DWRITE_INFORMATIONAL_STRING_FULL_NAME:
        return HB_OT_NAME_ID_FULL_NAME;
    case DWRITE_INFORMATIONAL_STRING_POSTSCRIPT_NAME:
        return HB_OT_NAME_ID_POSTSCRIPT_NAME;
    case DWRITE_INFORMATIONAL_STRING_POSTSCRIPT_CID_NAME:
        return HB_OT_NAME_ID_CID_FINDFONT_NAME;
    case DWRITE_INFORMATIONAL_STRING_WWS_FAMILY_NAME:
        return wwsFamilyId;
    case DWRITE_INFORMATIONAL_STRING_NONE:
        break;
    }
    return HB_OT_NAME_ID_INVALID;
}

} // namespace

FaceSource::FaceSource(std::shared_ptr<FontData> data, int index, FaceDescription description, CommonLife* life)
    : m_data(std::move(data)), m_index(index), m_description(std::move(description)), m_life(life) {}

bool FaceSource::isSameFace(const FaceSource& other) const {
    return m_index == other.m_index && m_data->isSameFile(*other.m_data);
}

hb_face_t* FaceSource::hbFace() {
    std::call_once(m_faceOnce, [this] {
        m_tables = FaceTables::load(m_data, faceIndex(m_index));
        m_face = FaceTables::makeFace(m_tables);
        hb_face_make_immutable(m_face.get());
    });
    return m_face.get();
}

HbFontPtr FaceSource::makeFont() {
    return makeInstance(hbFace(), m_index);
}

HbBlobPtr FaceSource::table(hb_tag_t tag) {
    hbFace();
    return m_tables->table(tag);
}

LocalizedNames FaceSource::readStrings(DWRITE_INFORMATIONAL_STRING_ID id) {
    const StoredNames& names = m_description.names;
    switch (id) {
    case DWRITE_INFORMATIONAL_STRING_WIN32_FAMILY_NAMES:
        return names.win32Family;
    case DWRITE_INFORMATIONAL_STRING_WIN32_SUBFAMILY_NAMES:
        return names.win32Subfamily;
    case DWRITE_INFORMATIONAL_STRING_PREFERRED_FAMILY_NAMES:
        return names.typographicFamily;
    case DWRITE_INFORMATIONAL_STRING_PREFERRED_SUBFAMILY_NAMES:
        return names.typographicSubfamily;
    case DWRITE_INFORMATIONAL_STRING_WWS_FAMILY_NAME:
        return names.wwsFamily;
    default:
        break;
    }
    const hb_ot_name_id_t stored = nameId(id);
    return stored != HB_OT_NAME_ID_INVALID ? readNames(hbFace(), stored) : LocalizedNames();
}

CLocalizedStrings* FaceSource::strings(DWRITE_INFORMATIONAL_STRING_ID id) {
    const auto slotNumber = static_cast<std::size_t>(id);
    if (slotNumber >= m_strings.size()) {
        return nullptr;
    }
    const std::lock_guard lock(m_stringsGuard);
    StringSlot& slot = m_strings[slotNumber];
    if (!slot.known) {
        LocalizedNames names = readStrings(id);
        if (!names.empty()) {
            slot.strings = std::make_unique<CLocalizedStrings>(std::move(names), m_life);
        }
        slot.known = true;
    }
    return slot.strings.get();
}

std::optional<FaceDescription> FaceSource::describe(const FontFile& file, int index) {
    const std::vector<TableRecord> tables = file.tables(faceIndex(index));
    const HbFacePtr face = FaceTables::look(file, tables);
    if (hb_face_get_glyph_count(face.get()) == 0) {
        return std::nullopt;
    }
    const unsigned instance = instanceNumber(index);
    FaceDescription description;
    description.edition = {readRevision(face.get()), hb_face_get_glyph_count(face.get()), fingerprintOf(tables)};
    description.type = file.kind().face;
    description.names = readStoredNames(face.get());
    const HbFontPtr font = makeInstance(face.get(), index);
    const FaceTraits stored = readTraits(font.get(), description.names);
    description.wws = wwsFace(description.names, stored);
    if (hb_ot_var_has_data(face.get())) {
        // What an instance is like its axes say; the names are those of another instance.
        description.wws.traits = stored;
    }
    nameFamilyless(face.get(), description.wws);
    if (instance != 0) {
        nameInstance(face.get(), instance, description.wws);
    }
    if (description.wws.family.empty()) {
        return std::nullopt;
    }
    return description;
}

} // namespace platform
