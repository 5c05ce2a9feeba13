#include <oslayer/checkHResult.h>

#include <oslayer/Errors.h>
#include <oslayer/Logger.h>
#include <oslayer/statusName.h>

#include <codecvt>
#include <cwchar>
#include <ios>
#include <locale>
#include <sstream>
#include <string>

namespace oslayer {

namespace {

constexpr std::uint32_t deviceRemoved = 0x887A0005;  // DXGI_ERROR_DEVICE_REMOVED
constexpr std::uint32_t deviceReset = 0x887A0007;    // DXGI_ERROR_DEVICE_RESET
constexpr std::uint32_t recreateTarget = 0x8899000C; // D2DERR_RECREATE_TARGET

bool isDeviceLoss(std::uint32_t code) {
    return code == deviceRemoved || code == deviceReset || code == recreateTarget;
}

/// The symbolic name in UTF-8, empty for a code without one. The standard converter throws std::range_error.
std::string nameOf(std::uint32_t code) {
    const wchar_t* name = statusName(code);
    if (std::wcscmp(name, L"Unknown") == 0) {
        return {};
    }
    return std::wstring_convert<std::codecvt_utf8_utf16<wchar_t>>().to_bytes(name);
}

} // namespace

void throwFailedHResult(const char* file, std::int32_t line, const char* expression, HRESULT result) {
    const auto code = static_cast<std::uint32_t>(result);
    std::string name = nameOf(code);

    std::ostringstream text;
    // The digits of line and code are the same whatever locale the host has set.
    text.imbue(std::locale::classic());
    text << (file != nullptr ? file : "") << '(' << line << "): ";
    if (!name.empty()) {
        text << "DX failed '" << expression << "' -- '" << name << "'";
    } else {
        name = "COM call failed";
        text << "COM failed '" << expression << "' -- code 0x" << std::hex << code << "'";
    }

    if (isDeviceLoss(code)) {
        { const SLogRecord record(severityDeviceLost, text.str()); }
        throw EDxDeviceRemoved(name);
    }
    { const SLogRecord record(severityFailure, text.str()); }
    throw EOsLayerError(name);
}

} // namespace oslayer
