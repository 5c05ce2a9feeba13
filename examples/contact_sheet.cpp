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

#include "Picture.h"
#include "Session.h"

namespace {

constexpr double capSizeInBoxes = 2.5;

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

bool isReadFromTheRight(const std::string& locale) {
    static const std::set<std::string> languages = {"ar", "dv", "fa", "he", "ur"};
    return languages.contains(locale);
}

/// A width of 0 is no limit.
fonts::CParagraphLayout layOut(const std::string& text, const std::string& locale, double capSize, double width) {
    static tool::Session session;
    render::CRichTextParagraph paragraph;
    paragraph.tokens.push_back(
        render::makeToken(common::wideFromUtf8(text), L"Liberation Sans", static_cast<float>(capSize), {}));
    fonts::SParagraphLayoutOptions options;
    options.maxWidth = width;
    options.locale = common::wideFromUtf8(locale);
    options.baselineGrid = 0.0;
    if (isReadFromTheRight(locale)) {
        options.direction = fonts::EReadingDirection::RightToLeft;
    }
    return session.layouts().make(paragraph, options);
}

/// What an editor draws around a selected cluster, for every cluster.
std::vector<tool::LaidOutCluster> clusterBoxes(const fonts::CParagraphLayout& layout) {
    std::vector<tool::LaidOutCluster> clusters;
    for (const fonts::SCluster& cluster : layout.clusters()) {
        if (!cluster.isBlank && cluster.rect.xmax > cluster.rect.xmin) {
            clusters.emplace_back().rect = cluster.rect;
        }
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

tool::LaidOutParagraph paragraphOf(fonts::CParagraphLayout layout) {
    tool::LaidOutParagraph paragraph;
    paragraph.layout = std::move(layout);
    paragraph.colors = {0xFF000000U};
    return paragraph;
}

tool::LaidOutText plainText(const std::string& text, const std::string& locale, double capSize, double x, double y) {
    tool::LaidOutParagraph paragraph = paragraphOf(layOut(text, locale, capSize, 0.0));
    const MbRect box = paragraph.layout.box();
    // Without a box, text that is read from the right stands left of the origin.
    return placed(std::move(paragraph), box, x - box.xmin, y);
}

tool::LaidOutText boxedText(const Sample& sample, double width, double x, double y) {
    tool::LaidOutParagraph paragraph = paragraphOf(layOut(sample.sentence, sample.tag, capSizeInBoxes, width));
    const MbRect& box = paragraph.layout.box();
    paragraph.box = MbRect(0.0, box.ymin, width, box.ymax);
    paragraph.ink = paragraph.layout.ink();
    if (paragraph.ink.isEmpty()) {
        throw std::runtime_error(sample.language + " has no ink");
    }
    paragraph.clusters = clusterBoxes(paragraph.layout);
    const MbRect extent = paragraph.box;
    return placed(std::move(paragraph), extent, x, y);
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
        texts.push_back(plainText(sample.script + " (" + sample.language + ")", "en", 1.4, x, y));
        texts.push_back(boxedText(sample, 46.0, x, y - 3.4));
        ++cell;
    }
    draw(texts, path, {.boxes = true, .longerSide = 2600.0});
    std::cout << "A sheet of " << scripts.size() << " scripts.\n";
}

/// The families that draw a sentence, each once, in the order of the text.
std::string familiesOf(const std::string& sentence, const std::string& locale) {
    const fonts::CParagraphLayout layout = layOut(sentence, locale, capSizeInBoxes, 0.0);
    std::vector<std::string> names;
    for (const fonts::SRun& run : layout.runs()) {
        const std::wstring text = layout.text().substr(run.range.startPosition, run.range.length);
        const std::string name = common::utf8FromWide(layout.face(run.face).family);
        if (text.find_first_not_of(L' ') != std::wstring::npos && std::ranges::find(names, name) == names.end()) {
            names.push_back(name);
        }
    }
    std::string joined;
    for (const std::string& name : names) {
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
        texts.push_back(plainText(label, "en", 1.25, x, y - 1.2));
        texts.push_back(plainText(samples[i].sentence, samples[i].tag, 1.95, x + 52.0, y));
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
