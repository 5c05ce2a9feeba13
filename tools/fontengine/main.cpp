#include <exception>
#include <functional>
#include <iostream>
#include <map>
#include <string>

#include <CLI/CLI.hpp>

#include <Common/Violations.h>

#include "ExplodeCommand.h"
#include "FontsCommand.h"
#include "InputError.h"
#include "LayoutCommand.h"
#include "MeasureCommand.h"
#include "StandardStreams.h"
#include "TemporaryFile.h"

namespace {

using tool::ExitCode;

// Options that name a file take it once; what is missing stays empty.
void addFile(CLI::App* command, const std::string& option, std::optional<std::string>& file, const std::string& help) {
    command->add_option(option, file, help)->type_name("FILE");
}

CLI::App* addLayout(CLI::App& app, tool::LayoutOptions& options) {
    CLI::App* command = app.add_subcommand("layout", "Lay out and measure every text of DXF drawings");
    command->add_option("DRAWING", options.drawings, "DXF drawings, R12 to 2018")->required()->type_name("DXF");
    addFile(command, "--json", options.json, "Write boxes, ink boxes, baselines and findings");
    addFile(command, "--svg", options.svg, "Draw the texts; several drawings get a file each");
    addFile(command, "--png", options.png, "Draw the texts; several drawings get a file each");
    addFile(command, "--font-map", options.fontMap, "JSON table of fonts that stand in for missing ones");
    command->add_flag("--boxes", options.boxes, "Draw paragraph boxes, ink boxes and baselines too");
    command->add_flag("--align-by-ink", options.layout.alignByInk,
                      "Align the ink of paragraphs rather than their boxes (mode document)");
    using tool::LayoutMode;
    static const std::map<std::string, LayoutMode> modes{
        {"document", LayoutMode::Document}, {"mtext", LayoutMode::MText}, {"clusters", LayoutMode::Clusters}};
    command->add_option("--mode", options.layout.mode, "What is placed: paragraphs, MTEXT entities or glyph clusters")
        ->type_name("document|mtext|clusters")
        ->transform(CLI::CheckedTransformer(modes).description(""));
    return command;
}

CLI::App* addExplode(CLI::App& app, tool::ExplodeOptions& options) {
    CLI::App* command = app.add_subcommand("explode", "Turn every MTEXT of a drawing into pieces that show the same");
    command->add_option("IN", options.input, "DXF drawing, R12 to 2018")->required()->type_name("DXF");
    command->add_option("OUT", options.output, "Where the changed copy goes")->required()->type_name("DXF");
    using tool::PieceKind;
    static const std::map<std::string, PieceKind> kinds{{"clusters", PieceKind::Clusters},
                                                        {"outlines", PieceKind::Outlines}};
    command->add_option("--to", options.kind, "Single-line MTEXT entities, or filled areas")
        ->type_name("clusters|outlines")
        ->transform(CLI::CheckedTransformer(kinds).description(""));
    addFile(command, "--font-map", options.fontMap, "JSON table of fonts that stand in for missing ones");
    addFile(command, "--report", options.report, "Write what became of the texts as JSON");
    command->add_flag("--check", options.check, "Lay the result out again and compare every glyph's place");
    return command;
}

CLI::App* addMeasure(CLI::App& app, tool::MeasureOptions& options) {
    CLI::App* command = app.add_subcommand("measure", "Measure one line of text");
    command->add_option("TEXT", options.text, "The text, UTF-8")->required()->type_name("TEXT");
    command->add_option("--font", options.font, "Family name")->required()->type_name("FAMILY");
    command->add_option("--cap-size", options.capSize, "Height of capital letters, in any unit")
        ->required()
        ->type_name("SIZE")
        ->check(CLI::PositiveNumber);
    command->add_flag("--bold", options.bold, "Bold");
    command->add_flag("--italic", options.italic, "Italic");
    command->add_flag("--json", options.json, "Print JSON");
    return command;
}

CLI::App* addFonts(CLI::App& app, tool::FontsOptions& options) {
    CLI::App* command = app.add_subcommand("fonts", "List the font families, or the fonts of one");
    command->add_option("--family", options.family, "Show the fonts of this family")->type_name("NAME");
    return command;
}

// Every failure ends in one line on standard error that says what to do.
ExitCode guarded(const std::function<ExitCode()>& run) {
    try {
        return run();
    } catch (const tool::InputError& error) {
        std::cerr << "fontengine: " << error.what() << '\n';
        return error.code();
    } catch (const common::EAssertionViolation& violation) {
        std::cerr << "fontengine: " << violation.message.c_str() << '\n';
    } catch (const std::exception& error) {
        std::cerr << "fontengine: " << error.what() << '\n';
    }
    return ExitCode::Failure;
}

} // namespace

int main(int argc, char** argv) {
    tool::occupyStandardStreams();
    tool::removeTemporaryFilesOnSignals();
    CLI::App app("Rich text of drawings: laid out, measured, drawn.", "fontengine");
    app.require_subcommand(1);
    tool::LayoutOptions layoutOptions;
    tool::ExplodeOptions explodeOptions;
    tool::MeasureOptions measureOptions;
    tool::FontsOptions fontsOptions;
    const CLI::App* layout = addLayout(app, layoutOptions);
    const CLI::App* explode = addExplode(app, explodeOptions);
    const CLI::App* measure = addMeasure(app, measureOptions);
    addFonts(app, fontsOptions);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? static_cast<int>(ExitCode::Success) : static_cast<int>(ExitCode::Usage);
    }
    return static_cast<int>(guarded([&] {
        if (layout->parsed()) {
            return tool::runLayout(layoutOptions);
        }
        if (explode->parsed()) {
            return tool::runExplode(explodeOptions);
        }
        return measure->parsed() ? tool::runMeasure(measureOptions) : tool::runFonts(fontsOptions);
    }));
}
