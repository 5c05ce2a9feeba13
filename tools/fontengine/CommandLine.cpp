#include "CommandLine.h"

#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>
#include <FontEngine/Version.h>

namespace tool {

namespace {

// Sizes beyond are no numbers any more when a text's width is counted in them.
constexpr double smallestSize = 1e-30;
constexpr double largestSize = 1e30;

// Options that name a file take it once; what is missing stays empty.
void addFile(CLI::App* command, const std::string& option, std::optional<std::string>& file, const std::string& help) {
    command->add_option(option, file, help)->type_name("FILE");
}

void addFontMap(CLI::App* command, std::optional<std::string>& file) {
    addFile(command, "--font-map", file, "JSON table of fonts that stand in for missing ones");
}

std::string joined(const std::vector<std::string>& words) {
    std::string list;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const char* separator = i == 0 ? "" : i + 1 == words.size() ? " or " : ", ";
        list += separator + words[i];
    }
    return list;
}

// An option that takes one of a few words.
template <typename Value>
void addChoice(CLI::App* command, const std::string& option, Value& value,
               const std::vector<std::pair<std::string, Value>>& choices, const std::string& help) {
    std::map<std::string, Value> values(choices.begin(), choices.end());
    std::vector<std::string> words;
    std::string typeName;
    for (const auto& [word, chosen] : choices) {
        words.push_back(word);
        typeName += (typeName.empty() ? "" : "|") + word;
    }
    command
        ->add_option_function<std::string>(
            option, [&value, values](const std::string& word) { value = values.at(word); }, help)
        ->type_name(typeName)
        ->check([values, list = joined(words)](const std::string& word) {
            return values.contains(word) ? std::string() : "\"" + word + "\" is none of its values; say " + list;
        });
}

std::string refuseSize(const std::string& word) {
    char* end = nullptr;
    const double size = std::strtod(word.c_str(), &end);
    const bool number = !word.empty() && end == word.c_str() + word.size();
    return number && size >= smallestSize && size <= largestSize
               ? std::string()
               : "\"" + word + "\" is no size; give a number from 1e-30 to 1e30";
}

void addLimits(CLI::App* command, dxf::Limits& limits) {
    const auto add = [&](const std::string& option, std::size_t& limit, const std::string& help) {
        command->add_option(option, limit, help)->type_name("COUNT")->capture_default_str();
    };
    add("--max-placements", limits.placements, "Refuse drawings whose references place more");
    add("--max-depth", limits.depth, "Refuse drawings with blocks nested deeper, 256 at most");
    add("--max-text-length", limits.textLength, "Refuse drawings with a text of more characters");
    add("--max-placed-length", limits.placedLength, "Refuse drawings with more characters in placed blocks");
}

void addQuiet(CLI::App* command, Call& call) {
    command->add_flag("--quiet", call.quiet, "Print no summary");
}

void addLayout(CLI::App& app, Call& call) {
    LayoutOptions& options = call.layout;
    CLI::App* command = app.add_subcommand("layout", "Lay out and measure every text of DXF drawings");
    command->add_option("DRAWING", options.drawings, "DXF drawings, R12 to 2018; - is standard input")
        ->required()
        ->type_name("DXF");
    addFile(command, "--json", options.json, "Write boxes, ink boxes, baselines and findings; - is standard output");
    addFile(command, "--svg", options.svg, "Draw the texts; several drawings get a file each");
    addFile(command, "--png", options.png, "Draw the texts; several drawings get a file each");
    addFontMap(command, options.fontMap);
    command->add_flag("--boxes", options.boxes, "Draw paragraph boxes, ink boxes and baselines too");
    command->add_flag("--align-by-ink", options.layout.alignByInk,
                      "Align the ink of paragraphs rather than their boxes (mode document)");
    addChoice<LayoutMode>(
        command, "--mode", options.layout.mode,
        {{"document", LayoutMode::Document}, {"mtext", LayoutMode::MText}, {"clusters", LayoutMode::Clusters}},
        "What is placed: paragraphs, MTEXT entities or glyph clusters");
    addLimits(command, options.limits);
    addQuiet(command, call);
}

void addExplode(CLI::App& app, Call& call) {
    ExplodeOptions& options = call.explode;
    CLI::App* command = app.add_subcommand("explode", "Turn every MTEXT of a drawing into pieces that show the same");
    command->add_option("IN", options.input, "DXF drawing, R12 to 2018; - is standard input")
        ->required()
        ->type_name("DXF");
    command->add_option("OUT", options.output, "Where the changed copy goes; - is standard output")
        ->required()
        ->type_name("DXF");
    addChoice<PieceKind>(command, "--to", options.kind,
                         {{"clusters", PieceKind::Clusters}, {"outlines", PieceKind::Outlines}},
                         "Single-line MTEXT entities, or filled areas");
    addFontMap(command, options.fontMap);
    addFile(command, "--report", options.report, "Write what became of the texts as JSON; - is standard output");
    command->add_flag("--check", options.check, "Lay the result out again and compare every glyph's place");
    addLimits(command, options.limits);
    addQuiet(command, call);
}

void addMeasure(CLI::App& app, Call& call) {
    MeasureOptions& options = call.measure;
    CLI::App* command = app.add_subcommand("measure", "Measure one line of text");
    command->add_option("TEXT", options.text, "The text, UTF-8")->required()->type_name("TEXT");
    command->add_option("--font", options.font, "Family name")->required()->type_name("FAMILY");
    command->add_option("--cap-size", options.capSize, "Height of capital letters, in any unit")
        ->required()
        ->type_name("SIZE")
        ->check(refuseSize);
    addFontMap(command, options.fontMap);
    command->add_flag("--bold", options.bold, "Bold");
    command->add_flag("--italic", options.italic, "Italic");
    command->add_flag("--json", options.json, "Print JSON");
}

void addFonts(CLI::App& app, Call& call) {
    CLI::App* command = app.add_subcommand("fonts", "List the font families, or the fonts of one");
    command->add_option("--family", call.fonts.family, "Show the fonts of this family")->type_name("NAME");
}

std::string helpFor(const std::string& command) {
    return "; \"fontengine " + (command.empty() ? "" : command + " ") + "--help\" shows how it is used";
}

bool looksLikeOption(const std::string& word) {
    return word.size() > 1 && word.front() == '-';
}

std::string before(const std::string& text, const std::string& mark) {
    return text.substr(0, text.find(mark));
}

// The library's own messages name neither the command nor what to do.
std::string usageMessage(const CLI::App& app, const CLI::ParseError& error) {
    const std::vector<CLI::App*> parsed = app.get_subcommands();
    const std::string command = parsed.empty() ? std::string() : parsed.front()->get_name();
    const std::vector<std::string> unknown = parsed.empty() ? app.remaining() : parsed.front()->remaining();
    const std::string name = command.empty() ? std::string() : command + ": ";
    const std::string what = error.what();
    for (const std::string& word : unknown) {
        if (looksLikeOption(word)) {
            return name + "\"" + word + "\" is not an option" + helpFor(command);
        }
    }
    if (parsed.empty()) {
        return (unknown.empty() ? std::string("a command is missing")
                                : "\"" + unknown.front() + "\" is not a command") +
               "; say layout, explode, measure or fonts";
    }
    if (dynamic_cast<const CLI::RequiredError*>(&error) != nullptr) {
        return name + before(what, " is required") + " is missing" + helpFor(command);
    }
    if (!unknown.empty()) {
        return name + "\"" + unknown.front() + "\" is one argument too many" + helpFor(command);
    }
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr) {
        const bool missing = what.ends_with("missing");
        return name + before(what, ":") + (missing ? " lacks its value" : " is there more than once") +
               helpFor(command);
    }
    return name + what;
}

Command commandOf(const CLI::App& app) {
    static const std::map<std::string, Command> commands{{"layout", Command::Layout},
                                                         {"explode", Command::Explode},
                                                         {"measure", Command::Measure},
                                                         {"fonts", Command::Fonts}};
    return commands.at(app.get_subcommands().front()->get_name());
}

} // namespace

std::optional<Call> readCommandLine(int argc, char** argv) {
    Call call;
    CLI::App app("Rich text of drawings: laid out, measured, drawn.", "fontengine");
    app.require_subcommand(1);
    app.set_version_flag("--version", std::string("fontengine " FONTENGINE_VERSION), "Print the version and end");
    addLayout(app, call);
    addExplode(app, call);
    addMeasure(app, call);
    addFonts(app, call);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& asked) {
        app.exit(asked);
        return std::nullopt;
    } catch (const CLI::ParseError& error) {
        throw InputError(usageMessage(app, error), ExitCode::Usage);
    }
    call.command = commandOf(app);
    return call;
}

} // namespace tool
