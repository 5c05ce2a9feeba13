#include "EntityOriginReader.h"

namespace dxf {
namespace {

constexpr int firstExtendedData = 1000;
constexpr int applicationName = 1001;

/// Groups that say how and where any entity is shown. Graphics that stand in for the text are none of them.
bool isCommonGroup(int code) {
    switch (code) {
    case 6:   // Line type.
    case 8:   // Layer.
    case 48:  // Scale of the line type.
    case 60:  // Invisible.
    case 67:  // Paper space.
    case 284: // Shadow.
    case 347: // Material.
    case 348: // Visual style.
    case 370: // Line weight.
    case 390: // Plot style.
    case 410: // Layout.
    case 440: // Transparency.
        return true;
    default:
        return false;
    }
}

bool isColorGroup(int code) {
    return code == 62 || code == 420 || code == 430;
}

/// Applications whose extended data describe the text's own form, which the pieces do not have.
bool isAboutTheText(std::string_view application) {
    return application == "ACAD" || application == "AcadAnnotative";
}

} // namespace

EntityOriginReader::EntityOriginReader(const Pair& first) {
    m_origin.style = PairStyle::of(first.bytes);
    m_origin.isMText = first.is(0, "MTEXT");
}

bool EntityOriginReader::addBracketed(const Pair& pair) {
    if (pair.code == 102) {
        const std::string_view name = pair.trimmedValue();
        if (name.starts_with('{')) {
            // The dictionary of a text can hold a field, which would write the whole text into its first piece.
            m_bracketed = true;
            m_keepBracketed = name != "{ACAD_XDICTIONARY";
        } else {
            m_bracketed = false;
        }
    } else if (!m_bracketed) {
        return false;
    }
    if (m_keepBracketed) {
        m_origin.reactors += pair.bytes;
    }
    return true;
}

void EntityOriginReader::addCommon(const Pair& pair) {
    if (pair.code == 5) {
        m_origin.handle = m_origin.handle == 0 ? pair.handle() : m_origin.handle;
        return;
    }
    if (pair.code == 330) {
        m_origin.owner = m_origin.owner == 0 ? pair.handle() : m_origin.owner;
        return;
    }
    // In a paragraph text's own part the colour groups are its background's.
    const bool ofEntity = m_subclass.empty() || m_subclass == "AcDbEntity";
    const bool layer = pair.code == 8;
    if ((ofEntity && isCommonGroup(pair.code)) || layer) {
        m_origin.common += pair.bytes;
    } else if (ofEntity && isColorGroup(pair.code)) {
        m_origin.color += pair.bytes;
    }
}

void EntityOriginReader::add(const Pair& pair) {
    if (pair.code >= firstExtendedData) {
        if (pair.code == applicationName) {
            m_keepExtended = !isAboutTheText(pair.trimmedValue());
        }
        m_inExtended = true;
        m_origin.ownExtended += m_keepExtended ? pair.bytes : std::string_view();
        return;
    }
    if (m_inExtended || m_embedded || pair.code == 0 || addBracketed(pair)) {
        return;
    }
    if (pair.code == 100) {
        m_subclass = pair.trimmedValue();
        m_origin.hasSubclasses = true;
    } else if (pair.code == 101) {
        m_embedded = true;
    } else {
        addCommon(pair);
    }
}

} // namespace dxf
