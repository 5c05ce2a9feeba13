// Content strings, as paragraph texts and as one-line texts.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <Common/Utf.h>
#include <mtext/MText.h>

#include "Input.h"

namespace {

void expectSound(const mtext::Result& result, const std::wstring& content) {
    fuzz::require(result.document.paragraphs.size() > 0);
    fuzz::require(static_cast<std::size_t>(result.document.paragraphs.size()) == result.formats.size());
    for (const mtext::Diagnostic& diagnostic : result.diagnostics) {
        fuzz::require(diagnostic.position <= content.size());
        fuzz::require(diagnostic.length <= content.size() - diagnostic.position);
        fuzz::require(diagnostic.text.size() <= 64);
    }
    mtext::plainText(result.document);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    mtext::Defaults defaults;
    defaults.fontFamily = L"DejaVu Sans";
    defaults.shapeFont = input.below(2) == 0;
    defaults.decodeBytes = [](std::string_view bytes, unsigned codePage) -> std::optional<std::wstring> {
        if (codePage % 2 == 0) {
            return std::nullopt;
        }
        return std::wstring(bytes.begin(), bytes.end());
    };
    const std::wstring content = common::wideFromUtf8(input.rest());
    expectSound(mtext::parse(content, defaults), content);
    expectSound(mtext::parseText(content, defaults), content);
    return 0;
}
