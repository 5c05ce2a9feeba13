// Measures a label: its box, its ink, its baseline, and the font, with its file, that its first letter comes from.
#include <iostream>

#include <Common/Utf.h>
#include <FontEngine/FontEngine.h>
#include <render/RichTextDocument.h>

namespace {

void print(const char* name, const MbRect& rect) {
    std::cout << name << ": x " << rect.xmin << " to " << rect.xmax << ", y " << rect.ymin << " to " << rect.ymax
              << '\n';
}

} // namespace

int main() {
    const auto engine = fonts::createFontEngine(L"DejaVu Sans");
    render::CRichTextParagraph label;
    label.tokens = {render::makeToken(L"Room 12", L"Liberation Sans", 2.5F, {})};

    const auto layout = fonts::CParagraphLayout::make(label, *engine);
    print("box", layout.box());
    print("ink", layout.ink());
    std::cout << "baseline: y " << layout.lines().front().baseline << '\n';
    const fonts::SFontFace face = layout.face(layout.runs().front().face);
    std::cout << "font: " << common::utf8FromWide(face.family + L' ' + face.face + L", " + face.file) << '\n';
}
