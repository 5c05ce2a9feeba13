#include <render/RichTextDocument.h>

#include <bit>
#include <string_view>

namespace render {

namespace {

// Spelled out rather than left to a hash library: the value must not depend on the width of the platform's long, nor
// on the library's version.
void combine(std::uint64_t& seed, std::uint64_t value) {
    constexpr std::uint64_t multiplier = 0xc6a4a7935bd1e995;
    value *= multiplier;
    value ^= value >> 47;
    value *= multiplier;
    seed ^= value;
    seed *= multiplier;
    seed += 0xe6546b64;
}

std::uint64_t hashOf(std::wstring_view text) {
    std::uint64_t seed = 0;
    for (const wchar_t unit : text) {
        combine(seed, static_cast<std::uint32_t>(unit));
    }
    return seed;
}

std::uint64_t hashOf(float number) {
    return number == 0.0F ? 0 : std::bit_cast<std::uint32_t>(number);
}

void combineToken(std::uint64_t& seed, const SRichTextToken& token) {
    combine(seed, hashOf(token.text));
    combine(seed, hashOf(token.fontCapSize));
    combine(seed, hashOf(token.fontFamily));
    combine(seed, token.fontStyle.bold ? 1 : 0);
    combine(seed, token.fontStyle.italic ? 1 : 0);
    combine(seed, token.fontStyle.underline ? 1 : 0);
}

} // namespace

std::uint64_t hashDocument(const CRichTextDocument& document) {
    std::uint64_t seed = 0;
    combine(seed, hashOf(document.tabStopWidth));
    const auto count = static_cast<std::int32_t>(document.paragraphs.size());
    for (std::int32_t i = 0; i < count; ++i) {
        for (const SRichTextToken& token : document.paragraphs.at(i).tokens) {
            combineToken(seed, token);
        }
    }
    return seed;
}

std::uint64_t hashDocumentByParagraphs(const CRichTextDocument& document) {
    std::uint64_t seed = hashDocument(document);
    const auto count = static_cast<std::int32_t>(document.paragraphs.size());
    if (count > 1) {
        for (std::int32_t i = 0; i < count; ++i) {
            combine(seed, document.paragraphs.at(i).tokens.size());
        }
    }
    return seed;
}

} // namespace render
