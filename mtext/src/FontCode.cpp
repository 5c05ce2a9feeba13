#include "FontCode.h"

#include <algorithm>
#include <array>

#include "ContentCursor.h"

namespace mtext {

namespace {

std::wstring_view trimmed(std::wstring_view text) {
    while (!text.empty() && (text.front() == L' ' || text.front() == L'\t')) {
        text.remove_prefix(1);
    }
    while (!text.empty() && (text.back() == L' ' || text.back() == L'\t')) {
        text.remove_suffix(1);
    }
    return text;
}

// Cuts the part before the first `separator` off `text`.
std::wstring_view takePart(std::wstring_view& text, wchar_t separator) {
    const std::size_t end = std::min(text.find(separator), text.size());
    const std::wstring_view part = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return part;
}

bool endsWith(std::wstring_view name, std::wstring_view lowerCaseEnd) {
    if (name.size() < lowerCaseEnd.size()) {
        return false;
    }
    const std::wstring_view end = name.substr(name.size() - lowerCaseEnd.size());
    return std::equal(end.begin(), end.end(), lowerCaseEnd.begin(),
                      [](wchar_t unit, wchar_t lower) { return lowerAscii(unit) == lower; });
}

// A file name without an extension is one of a shape file where no traits follow.
bool isShapeFont(const FontRequest& request, bool upperCase, bool hasTraits) {
    constexpr std::array<std::wstring_view, 3> OUTLINE_FILES{L".ttf", L".ttc", L".otf"};
    const bool outlineFile = std::any_of(OUTLINE_FILES.begin(), OUTLINE_FILES.end(),
                                         [&](std::wstring_view end) { return endsWith(request.name, end); });
    return endsWith(request.name, L".shx") || !request.bigFont.empty() || (upperCase && !hasTraits && !outlineFile);
}

void readTrait(std::wstring_view trait, FontRequest& request) {
    ContentCursor cursor(trait);
    const wchar_t letter = lowerAscii(*cursor.peek());
    cursor.advance(1);
    const std::optional<std::int32_t> value = cursor.readInteger();
    if (!value || *value < 0 || *value > 255) {
        return;
    }
    if (letter == L'b') {
        request.bold = *value != 0;
    } else if (letter == L'i') {
        request.italic = *value != 0;
    } else if (letter == L'c') {
        request.charset = static_cast<unsigned>(*value);
    } else if (letter == L'p') {
        request.pitch = static_cast<unsigned>(*value);
    }
}

} // namespace

FontRequest readFontCode(std::wstring_view argument, bool upperCase, const CharacterContext& context) {
    FontRequest request;
    std::wstring_view names = takePart(argument, L'|');
    request.name = replaceWrittenCharacters(trimmed(takePart(names, L',')), context);
    request.bigFont = replaceWrittenCharacters(trimmed(names), context);
    const bool hasTraits = !argument.empty();
    while (!argument.empty()) {
        const std::wstring_view trait = trimmed(takePart(argument, L'|'));
        if (!trait.empty()) {
            readTrait(trait, request);
        }
    }
    request.shapeFont = isShapeFont(request, upperCase, hasTraits);
    return request;
}

} // namespace mtext
