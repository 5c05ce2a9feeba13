#include <mtext/MText.h>

namespace mtext {

std::wstring plainText(const render::CRichTextDocument& document) {
    std::wstring text;
    const auto count = static_cast<int>(document.paragraphs.size());
    for (int i = 0; i < count; ++i) {
        if (i > 0) {
            text += L'\n';
        }
        for (const render::SRichTextToken& token : document.paragraphs.at(i).tokens) {
            text += token.text;
        }
    }
    return text;
}

} // namespace mtext
