// Writes a note of several styled runs as SVG: the outlines of each run in its token's colour, thin beside them its ink
// box and its baseline, and the bars of underlined text.
//
//     note_to_svg [FILE]        without FILE to standard output
#include <fstream>
#include <iostream>
#include <string>

#include <FontEngine/FontEngine.h>
#include <render/RichTextDocument.h>

namespace {

/// Tokens' colours are the host's own affair: here 0xRRGGBB.
std::string css(std::uint32_t color) {
    std::string text = "#";
    for (int shift = 20; shift >= 0; shift -= 4) {
        text += "0123456789abcdef"[color >> shift & 0xFU];
    }
    return text;
}

/// Writes outlines as the data of an SVG path.
class SvgPathData : public fonts::IOutlineSink {
public:
    explicit SvgPathData(std::ostream& out) : m_out(out) {}

    void moveTo(MbCartPoint point) override { m_out << 'M' << point.x << ' ' << point.y; }
    void lineTo(MbCartPoint point) override { m_out << 'L' << point.x << ' ' << point.y; }
    void cubicTo(MbCartPoint control1, MbCartPoint control2, MbCartPoint end) override {
        m_out << 'C' << control1.x << ' ' << control1.y << ' ' << control2.x << ' ' << control2.y << ' ' << end.x << ' '
              << end.y;
    }
    void close() override { m_out << 'Z'; }

private:
    std::ostream& m_out;
};

/// A note, and how each of its tokens is set beside what the token says.
struct Note {
    render::CRichTextParagraph paragraph;
    fonts::SParagraphLayoutOptions options;

    void add(const std::wstring& text, std::uint32_t color, render::SRichTextFontStyle style = {},
             const fonts::SRunFormat& format = {}) {
        paragraph.tokens.push_back({text, L"Liberation Sans", 2.5F, color, style});
        options.runFormats.push_back(format);
    }
};

Note makeNote() {
    Note note;
    note.options.maxWidth = 104.0;
    note.add(L"Walls are ", 0x202020);
    note.add(L"load-bearing", 0xB00000, {.bold = true});
    note.add(L" and set out ", 0x202020);
    note.add(L"from the axis", 0x0040B0, {.italic = true});
    note.add(L"; see ", 0x202020);
    note.add(L"A-12", 0x006020, {.underline = true});
    note.add(L" (all levels, scale 1:50), ", 0x805000, {}, {.widthFactor = 0.8});
    note.add(L"draft ", 0x404040, {}, {.obliqueAngle = 20.0});
    // "Floor plan" in Hebrew.
    note.add(L"\x05EA\x05D5\x05DB\x05E0\x05D9\x05EA \x05E7\x05D5\x05DE\x05D4", 0x700080);
    note.paragraph.tokens.back().fontFamily = L"DejaVu Sans";
    return note;
}

void writeRect(std::ostream& svg, const MbRect& rect, const std::string& look) {
    svg << "<rect x='" << rect.xmin << "' y='" << rect.ymin << "' width='" << rect.xmax - rect.xmin << "' height='"
        << rect.ymax - rect.ymin << "' " << look << "/>\n";
}

void writeRun(std::ostream& svg, const fonts::CParagraphLayout& layout, const fonts::SRun& run, std::uint32_t color) {
    svg << "<line x1='" << run.origin.x << "' y1='" << run.origin.y << "' x2='" << run.origin.x + run.width << "' y2='"
        << run.origin.y << "' stroke='#00a000' stroke-width='0.05'/>\n";
    if (run.ink.isEmpty()) {
        return;
    }
    svg << "<path fill='" << css(color) << "' d='";
    SvgPathData path(svg);
    layout.outline(run, path);
    svg << "'/>\n";
    writeRect(svg, run.ink, "fill='none' stroke='#e08080' stroke-width='0.05'");
}

void writeSvg(std::ostream& svg, const Note& note, const fonts::CParagraphLayout& layout) {
    MbRect all = layout.box();
    all |= layout.ink();
    constexpr double margin = 2.0;
    svg << "<svg xmlns='http://www.w3.org/2000/svg' viewBox='" << all.xmin - margin << ' ' << -all.ymax - margin << ' '
        << all.xmax - all.xmin + 2.0 * margin << ' ' << all.ymax - all.ymin + 2.0 * margin << "'>\n";
    // SVG's y points down, the layout's up: turned over once for all that follows.
    svg << "<g transform='scale(1,-1)'>\n";
    for (const fonts::SRun& run : layout.runs()) {
        writeRun(svg, layout, run, note.paragraph.tokens[run.token].color);
    }
    for (const fonts::SBar& bar : layout.bars()) {
        writeRect(svg, bar.rect, "fill='" + css(note.paragraph.tokens[bar.token].color) + "'");
    }
    svg << "</g>\n</svg>\n";
}

} // namespace

int main(int argc, char** argv) {
    const auto engine = fonts::createFontEngine(L"DejaVu Sans");
    const Note note = makeNote();
    const auto layout = fonts::CParagraphLayout::make(note.paragraph, *engine, note.options);
    if (argc < 2) {
        writeSvg(std::cout, note, layout);
        return 0;
    }
    std::ofstream file(argv[1]);
    writeSvg(file, note, layout);
    if (!file.flush()) {
        std::cerr << "note_to_svg: " << argv[1] << " cannot be written: give the path of a file that can\n";
        return 1;
    }
}
