#include "FakePlatform.h"

#include <rpc.h>

#include <limits>
#include <utility>

#include <oslayer/Logger.h>

#include "FakeObjects.h"

namespace fake {

DWRITE_FONT_METRICS FontSpec::defaultMetrics() {
    DWRITE_FONT_METRICS metrics{};
    metrics.designUnitsPerEm = 2048;
    metrics.ascent = 1900;
    metrics.descent = 480;
    metrics.lineGap = -20;
    metrics.capHeight = 1467;
    return metrics;
}

namespace {

FontSpec sansFace(DWRITE_FONT_WEIGHT weight, DWRITE_FONT_STYLE style) {
    FontSpec face;
    face.weight = weight;
    face.style = style;
    face.win32FamilyNames = {L"Sans"};
    return face;
}

FamilySpec sans() {
    return {{L"Sans"},
            {sansFace(DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_STYLE_NORMAL),
             sansFace(DWRITE_FONT_WEIGHT_BOLD, DWRITE_FONT_STYLE_NORMAL),
             sansFace(DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_STYLE_ITALIC),
             sansFace(DWRITE_FONT_WEIGHT_BOLD, DWRITE_FONT_STYLE_ITALIC)}};
}

DWRITE_TEXT_METRICS oneLineOfTen(const LayoutState& layout) {
    DWRITE_TEXT_METRICS metrics{};
    metrics.width = static_cast<FLOAT>(layout.text.length());
    metrics.widthIncludingTrailingWhitespace = metrics.width;
    metrics.height = 10;
    metrics.layoutWidth = layout.maxWidth;
    metrics.layoutHeight = layout.maxHeight;
    metrics.maxBidiReorderingDepth = 1;
    metrics.lineCount = 1;
    return metrics;
}

D2D1_RECT_F noOutline() {
    constexpr FLOAT infinity = std::numeric_limits<FLOAT>::infinity();
    constexpr FLOAT largest = std::numeric_limits<FLOAT>::max();
    return {infinity, infinity, largest, largest};
}

} // namespace

Platform::Platform() {
    reset();
}

Platform::~Platform() = default;

Platform& Platform::instance() {
    static Platform platform;
    return platform;
}

void Platform::reset() {
    m_objects = std::make_unique<Objects>();
    m_failures.clear();
    calls.clear();
    families = {sans()};
    formatLocaleName.clear();
    mapCharacters = [](std::wstring_view, std::uint32_t, std::uint32_t length) { return FallbackAnswer{length, 0, 0}; };
    onAnalysisSource = nullptr;
    layoutMetrics = oneLineOfTen;
    draw = [](const LayoutState&, void*, IDWriteTextRenderer*, FLOAT, FLOAT) { return S_OK; };
    pathBounds = noOutline();
    uuidStatus = RPC_S_OK;
}

IDWriteFontFace* Platform::fontFace() {
    return &m_objects->face;
}

void Platform::fail(std::string call, HRESULT result, int occurrence) {
    m_failures.push_back({std::move(call), result, occurrence});
}

HRESULT Platform::record(std::string call) {
    HRESULT result = S_OK;
    for (Failure& failure : m_failures) {
        if (!call.starts_with(failure.call))
            continue;
        ++failure.seen;
        if (failure.occurrence == 0 || failure.occurrence == failure.seen)
            result = failure.result;
    }
    calls.push_back(std::move(call));
    return result;
}

std::vector<std::string> Platform::callsTo(std::string_view prefix) const {
    std::vector<std::string> found;
    for (const std::string& call : calls)
        if (call.starts_with(prefix))
            found.push_back(call);
    return found;
}

std::int64_t Platform::familyReferences() const {
    return m_objects->familyReferences;
}
std::int64_t Platform::familyNamesReferences() const {
    return m_objects->familyNamesReferences;
}
std::int64_t Platform::fontReferences() const {
    return m_objects->fontReferences;
}
std::int64_t Platform::otherReferences() const {
    return m_objects->otherReferences;
}

HRESULT unexpected(const char* operation) {
    ADD_FAILURE() << "nobody should have called " << operation;
    return E_UNEXPECTED;
}

LogCapture::LogCapture() {
    oslayer::CLogger::instance().setSink([this](std::int32_t severity, const std::string& text) {
        records.push_back({severity, text});
    });
}

LogCapture::~LogCapture() {
    oslayer::CLogger::instance().setSink({});
}

std::string LogCapture::expression() const {
    if (records.size() != 1)
        return "<" + std::to_string(records.size()) + " records>";
    const std::string& text = records.front().text;
    const std::string opening = "failed '";
    const std::size_t start = text.find(opening) + opening.size();
    return text.substr(start, text.rfind("' -- ") - start);
}

std::string LogCapture::path() const {
    if (records.size() != 1)
        return "<" + std::to_string(records.size()) + " records>";
    const std::string& text = records.front().text;
    return text.substr(0, text.find('('));
}

} // namespace fake

extern "C" {

HRESULT WINAPI DWriteCreateFactory(DWRITE_FACTORY_TYPE factoryType, REFIID iid, IUnknown** factory) {
    const char* interfaceName = iid == __uuidof(IDWriteFactory) ? "IDWriteFactory" : "another interface";
    const HRESULT result = fake::record("DWriteCreateFactory", factoryType, interfaceName);
    return fake::handOut(result, &fake::objects().factory, factory);
}

RPC_STATUS WINAPI UuidCreate(UUID* uuid) {
    static UINT32 last = 0;
    *uuid = {++last, 0, 0, {}};
    return fake::platform().uuidStatus;
}
}
