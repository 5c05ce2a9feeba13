// Draws sentences in many languages: as a contact sheet of scripts, each laid out in a box, or as a list of languages
// with the fonts that stand in. Reads a table: tag, language, script, sentence, and what else a line holds.
#include <algorithm>
#include <fstream>
#include <iostream>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>
#include <Common/Utf.h>
#include <FontEngine/RichTextDocumentProcessor.h>
#include <dwrite.h>
#include <oslayer/checkHResult.h>
#include <oslayer/com_ptr.h>

#include "Picture.h"

namespace {

constexpr float emSize = 3.6F;

struct Sample {
    std::string tag;
    std::string language;
    std::string script;
    std::string sentence;
    std::string remark;
};

std::vector<Sample> readSamples(const std::string& path) {
    std::ifstream file(path);
    std::vector<Sample> samples;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line.front() == '#') {
            continue;
        }
        std::istringstream fields(line);
        Sample sample;
        std::string expectedFamily;
        for (std::string* field :
             {&sample.tag, &sample.language, &sample.script, &sample.sentence, &expectedFamily, &sample.remark}) {
            std::getline(fields, *field, '\t');
        }
        samples.push_back(sample);
    }
    return samples;
}

/// The samples whose script no earlier one has.
std::vector<Sample> oneOfEachScript(const std::vector<Sample>& samples) {
    std::set<std::string> seen;
    std::vector<Sample> chosen;
    for (const Sample& sample : samples) {
        if (seen.insert(sample.script).second) {
            chosen.push_back(sample);
        }
    }
    return chosen;
}

oslayer::com_ptr<IDWriteFactory> factory() {
    oslayer::com_ptr<IDWriteFactory> shared;
    OSLAYER_CHECK(DWriteCreateFactory(DWRITE_FACTORY_TYPE_SHARED, __uuidof(IDWriteFactory),
                                      reinterpret_cast<IUnknown**>(&shared)));
    return shared;
}

bool isReadFromTheRight(const std::string& locale) {
    static const std::set<std::string> languages = {"ar", "dv", "fa", "he", "ur"};
    return languages.contains(locale);
}

/// Straight from the platform's interface, because the document model has no languages. A width of 0 is no limit.
fonts::SLayoutDesc layOut(const std::string& text, const std::string& locale, float size, float width) {
    oslayer::com_ptr<IDWriteTextFormat> format;
    OSLAYER_CHECK(factory()->CreateTextFormat(L"Liberation Sans", nullptr, DWRITE_FONT_WEIGHT_NORMAL,
                                              DWRITE_FONT_STYLE_NORMAL, DWRITE_FONT_STRETCH_NORMAL, size,
                                              common::wideFromUtf8(locale).c_str(), &format));
    if (isReadFromTheRight(locale)) {
        OSLAYER_CHECK(format->SetReadingDirection(DWRITE_READING_DIRECTION_RIGHT_TO_LEFT));
    }
    const std::wstring wide = common::wideFromUtf8(text);
    fonts::SLayoutDesc layout;
    OSLAYER_CHECK(factory()->CreateTextLayout(wide.c_str(), static_cast<UINT32>(wide.size()), format, width, 0.0F,
                                              &layout.pObject));
    return layout;
}

/// What an editor draws around a selected cluster, for every cluster.
std::vector<tool::LaidOutCluster> clusterBoxes(IDWriteTextLayout& layout) {
    UINT32 count = 0;
    layout.GetClusterMetrics(nullptr, 0, &count);
    std::vector<DWRITE_CLUSTER_METRICS> metrics(count);
    OSLAYER_CHECK(layout.GetClusterMetrics(metrics.data(), count, &count));
    std::vector<tool::LaidOutCluster> clusters;
    UINT32 position = 0;
    for (const DWRITE_CLUSTER_METRICS& cluster : metrics) {
        FLOAT x = 0.0F;
        FLOAT y = 0.0F;
        DWRITE_HIT_TEST_METRICS hit{};
        OSLAYER_CHECK(layout.HitTestTextPosition(position, FALSE, &x, &y, &hit));
        tool::LaidOutCluster box;
        box.rect = MbRect(hit.left, -hit.top - hit.height, hit.left + hit.width, -hit.top);
        box.hasInk = !cluster.isWhitespace && cluster.width > 0.0F;
        clusters.push_back(box);
        position += cluster.length;
    }
    return clusters;
}

tool::LaidOutText placed(tool::LaidOutParagraph paragraph, const MbRect& extent, double x, double y) {
    tool::LaidOutText text;
    text.box = extent;
    text.toDrawing = dxf::Transform::translation({x, y, 0.0});
    text.paragraphs.push_back(std::move(paragraph));
    return text;
}

tool::LaidOutText plainText(const std::string& text, const std::string& locale, float size, double x, double y) {
    const fonts::SLayoutDesc layout = layOut(text, locale, size, 0.0F);
    DWRITE_TEXT_METRICS metrics{};
    OSLAYER_CHECK(layout.pObject->GetMetrics(&metrics));
    tool::LaidOutParagraph paragraph;
    paragraph.painted = tool::paintParagraph(layout);
    paragraph.painted.baselines.clear();
    // Without a box, text that is read from the right stands left of the origin.
    const double left = metrics.left;
    return placed(std::move(paragraph), MbRect(left, -metrics.height, left + metrics.width, 0.0), x - left, y);
}

tool::LaidOutText boxedText(const Sample& sample, float width, double x, double y) {
    const fonts::SLayoutDesc layout = layOut(sample.sentence, sample.tag, emSize, width);
    DWRITE_TEXT_METRICS metrics{};
    OSLAYER_CHECK(layout.pObject->GetMetrics(&metrics));
    OSLAYER_CHECK(layout.pObject->SetMaxHeight(metrics.height));
    DWRITE_OVERHANG_METRICS overhang{};
    OSLAYER_CHECK(layout.pObject->GetOverhangMetrics(&overhang));
    if (width + overhang.right + overhang.left <= 0.0F) {
        throw std::runtime_error(sample.language + " has no ink");
    }
    tool::LaidOutParagraph paragraph;
    paragraph.painted = tool::paintParagraph(layout);
    paragraph.box = MbRect(0.0, -metrics.height, width, 0.0);
    paragraph.ink = MbRect(-overhang.left, -metrics.height - overhang.bottom, width + overhang.right, overhang.top);
    paragraph.clusters = clusterBoxes(*layout.pObject);
    const MbRect box = paragraph.box;
    return placed(std::move(paragraph), box, x, y);
}

void draw(const std::vector<tool::LaidOutText>& texts, const std::string& path, const tool::PictureOptions& options) {
    tool::PictureExtent extent;
    for (const tool::LaidOutText& text : texts) {
        extent.include(text);
    }
    tool::Picture picture(tool::PictureFormat::Png, path, extent, options);
    for (const tool::LaidOutText& text : texts) {
        picture.draw(text);
    }
    picture.finish();
}

void drawSheet(const std::vector<Sample>& samples, const std::string& path) {
    constexpr int columns = 5;
    constexpr double cellWidth = 52.0;
    constexpr double cellHeight = 20.0;
    const std::vector<Sample> scripts = oneOfEachScript(samples);
    std::vector<tool::LaidOutText> texts;
    int cell = 0;
    for (const Sample& sample : scripts) {
        const double x = cell % columns * cellWidth;
        const double y = -(cell / columns) * cellHeight;
        texts.push_back(plainText(sample.script + " (" + sample.language + ")", "en", 2.0F, x, y));
        texts.push_back(boxedText(sample, 46.0F, x, y - 3.4));
        ++cell;
    }
    draw(texts, path, {.boxes = true, .longerSide = 2600.0});
    std::cout << "A sheet of " << scripts.size() << " scripts.\n";
}

/// The families that draw a sentence, each once, in the order of the text.
class Families final : public IDWriteTextRenderer {
public:
    explicit Families(IDWriteFontCollection& collection) : m_collection(collection) {}
    std::vector<std::string> names;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    // Lives on the stack of the one call that draws into it.
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE IsPixelSnappingDisabled(void*, BOOL* isDisabled) override {
        *isDisabled = TRUE;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetCurrentTransform(void*, DWRITE_MATRIX* transform) override {
        *transform = {1.0F, 0.0F, 0.0F, 1.0F, 0.0F, 0.0F};
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetPixelsPerDip(void*, FLOAT* pixelsPerDip) override {
        *pixelsPerDip = 1.0F;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE DrawGlyphRun(void*, FLOAT, FLOAT, DWRITE_MEASURING_MODE, const DWRITE_GLYPH_RUN* run,
                                           const DWRITE_GLYPH_RUN_DESCRIPTION* description, IUnknown*) override {
        const std::wstring text(description->string, description->stringLength);
        if (text.find_first_not_of(L' ') == std::wstring::npos) {
            return S_OK;
        }
        const std::string name = nameOf(run->fontFace);
        if (std::find(names.begin(), names.end(), name) == names.end()) {
            names.push_back(name);
        }
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE DrawUnderline(void*, FLOAT, FLOAT, const DWRITE_UNDERLINE*, IUnknown*) override {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE DrawStrikethrough(void*, FLOAT, FLOAT, const DWRITE_STRIKETHROUGH*, IUnknown*) override {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE DrawInlineObject(void*, FLOAT, FLOAT, IDWriteInlineObject*, BOOL, BOOL,
                                               IUnknown*) override {
        return S_OK;
    }

private:
    std::string nameOf(IDWriteFontFace* face) const {
        oslayer::com_ptr<IDWriteFont> font;
        OSLAYER_CHECK(m_collection.GetFontFromFontFace(face, &font));
        oslayer::com_ptr<IDWriteFontFamily> family;
        OSLAYER_CHECK(font->GetFontFamily(&family));
        oslayer::com_ptr<IDWriteLocalizedStrings> strings;
        OSLAYER_CHECK(family->GetFamilyNames(&strings));
        wchar_t name[256] = {};
        OSLAYER_CHECK(strings->GetString(0, name, 256));
        return common::utf8FromWide(name);
    }

    IDWriteFontCollection& m_collection;
};

std::string familiesOf(const std::string& sentence, const std::string& locale) {
    oslayer::com_ptr<IDWriteFontCollection> collection;
    OSLAYER_CHECK(factory()->GetSystemFontCollection(&collection));
    Families families(*collection);
    const fonts::SLayoutDesc layout = layOut(sentence, locale, emSize, 0.0F);
    OSLAYER_CHECK(layout.pObject->Draw(nullptr, &families, 0.0F, 0.0F));
    std::string joined;
    for (const std::string& name : families.names) {
        joined += (joined.empty() ? "" : ", ") + name;
    }
    return joined;
}

void printTable(const std::vector<Sample>& samples) {
    std::cout << "| Tag | Language | Sentence | Drawn with | Without a locale | Remarks |\n|---|---|---|---|---|---|\n";
    for (const Sample& sample : samples) {
        const std::string families = familiesOf(sample.sentence, sample.tag);
        const std::string unnamed = familiesOf(sample.sentence, "");
        std::cout << "| " << sample.tag << " | " << sample.language << " | " << sample.sentence << " | " << families
                  << " | " << (unnamed == families ? "the same" : unnamed) << " | " << sample.remark << " |\n";
    }
}

void drawList(const std::vector<Sample>& samples, const std::string& path) {
    constexpr double columnWidth = 145.0;
    constexpr double rowHeight = 6.0;
    std::vector<tool::LaidOutText> texts;
    const std::size_t rows = (samples.size() + 1) / 2;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double x = i < rows ? 0.0 : columnWidth;
        const double y = -static_cast<double>(i % rows) * rowHeight;
        const std::string label = samples[i].tag + "  " + familiesOf(samples[i].sentence, samples[i].tag);
        texts.push_back(plainText(label, "en", 1.8F, x, y - 1.2));
        texts.push_back(plainText(samples[i].sentence, samples[i].tag, 2.8F, x + 52.0, y));
    }
    draw(texts, path, {.boxes = false, .longerSide = 2000.0});
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app("Draws sentences in many languages.");
    std::string table;
    std::string sheet;
    std::string list;
    app.add_option("table", table, "Tab-separated: tag, language, script, sentence")
        ->required()
        ->check(CLI::ExistingFile);
    app.add_option("--sheet", sheet, "PNG of one sentence of each script in a box, with baselines and clusters");
    app.add_option("--list", list, "PNG of all sentences; without this and --sheet, a Markdown table is printed");
    CLI11_PARSE(app, argc, argv);
    try {
        const std::vector<Sample> samples = readSamples(table);
        if (!sheet.empty()) {
            drawSheet(samples, sheet);
        }
        if (!list.empty()) {
            drawList(samples, list);
        }
        if (sheet.empty() && list.empty()) {
            printTable(samples);
        }
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    return 0;
}
