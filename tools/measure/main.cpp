#include <algorithm>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include <Common/Violations.h>

#include "Arguments.h"
#include "InputError.h"
#include "MTextCommand.h"
#include "MeasureCommand.h"

namespace {

using tool::ExitCode;

void addFont(CLI::App* command, std::string& font, double& capSize) {
    command->add_option("--font", font, "Family name")->required()->type_name("FAMILY");
    command->add_option("--cap-size", capSize, "Height of capital letters, in any unit")
        ->required()
        ->type_name("SIZE")
        ->check(CLI::PositiveNumber);
}

CLI::App* addLine(CLI::App& app, tool::MeasureOptions& options) {
    CLI::App* command = app.add_subcommand("line", "Measure one line of text");
    command->add_option("TEXT", options.text, "The text")->required()->type_name("TEXT");
    addFont(command, options.font, options.capSize);
    command->add_flag("--bold", options.bold, "Bold");
    command->add_flag("--italic", options.italic, "Italic");
    command->add_flag("--json", options.json, "Print JSON");
    return command;
}

void addMText(CLI::App& app, tool::MTextOptions& options) {
    CLI::App* command = app.add_subcommand("mtext", "Measure the paragraphs of a formatted content string");
    command->add_option("CONTENT", options.content, "The content, with its formatting codes")
        ->required()
        ->type_name("CONTENT");
    addFont(command, options.font, options.capSize);
    command->add_option("--width", options.width, "Width to wrap at")->type_name("WIDTH")->check(CLI::PositiveNumber);
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app("Measures text of drawings.", "measure");
    app.require_subcommand(1);
    tool::MeasureOptions lineOptions;
    tool::MTextOptions mtextOptions;
    const CLI::App* line = addLine(app, lineOptions);
    addMText(app, mtextOptions);
    try {
        std::vector<std::string> arguments = tool::commandLineArguments(argc, argv);
        // The parser takes them from the end.
        std::reverse(arguments.begin(), arguments.end());
        app.parse(arguments);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? static_cast<int>(ExitCode::Success) : static_cast<int>(ExitCode::Usage);
    }
    try {
        return static_cast<int>(line->parsed() ? tool::runMeasure(lineOptions) : tool::runMText(mtextOptions));
    } catch (const tool::InputError& error) {
        std::cerr << "measure: " << error.what() << '\n';
        return static_cast<int>(error.code());
    } catch (const common::EAssertionViolation& violation) {
        std::cerr << "measure: " << violation.message.c_str() << '\n';
    } catch (const std::exception& error) {
        std::cerr << "measure: " << error.what() << '\n';
    }
    return static_cast<int>(ExitCode::Failure);
}
