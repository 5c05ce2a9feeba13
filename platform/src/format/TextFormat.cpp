#include "format/TextFormat.h"

#include <utility>

namespace platform {

CTextFormat::CTextFormat(FormatSettings settings) : m_settings(std::move(settings)) {}

HRESULT CTextFormat::QueryInterface(REFIID riid, void** object) {
    if (riid == formatSettingsId) {
        *object = &m_settings;
        return S_OK;
    }
    return CHeapObject::QueryInterface(riid, object);
}

} // namespace platform
