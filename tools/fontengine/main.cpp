#include <optional>
#include <string>

#include "CommandLine.h"
#include "Failure.h"
#include "FileIdentity.h"
#include "InputError.h"
#include "StandardStreams.h"
#include "TemporaryFile.h"

namespace {

using tool::ExitCode;

bool printsAnOutput(const tool::Call& call) {
    const auto isPrinted = [](const std::optional<std::string>& path) { return path && tool::isStandardOutput(*path); };
    switch (call.command) {
    case tool::Command::Layout:
        return isPrinted(call.layout.json) || isPrinted(call.layout.png) || isPrinted(call.layout.svg);
    case tool::Command::Explode:
        return isPrinted(call.explode.output) || isPrinted(call.explode.report);
    default:
        return false;
    }
}

tool::Summary::Target summaryOf(const tool::Call& call) {
    if (call.quiet) {
        return tool::Summary::Target::Nowhere;
    }
    return printsAnOutput(call) ? tool::Summary::Target::StandardError : tool::Summary::Target::StandardOutput;
}

ExitCode runCommand(const tool::Call& call) {
    const tool::Summary summary(summaryOf(call));
    switch (call.command) {
    case tool::Command::Layout:
        return tool::runLayout(call.layout);
    case tool::Command::Explode:
        return tool::runExplode(call.explode);
    case tool::Command::Measure:
        return tool::runMeasure(call.measure);
    case tool::Command::Fonts:
        return tool::runFonts(call.fonts);
    }
    return ExitCode::Usage;
}

ExitCode run(int argc, char** argv) {
    const std::optional<tool::Call> call = tool::readCommandLine(argc, argv);
    const ExitCode code = call ? runCommand(*call) : ExitCode::Success;
    tool::requirePrinted();
    return code;
}

} // namespace

// Every failure ends in one line on standard error that says what to do.
int main(int argc, char** argv) {
    tool::occupyStandardStreams();
    tool::removeTemporaryFilesOnSignals();
    ExitCode code = ExitCode::Failure;
    try {
        code = run(argc, argv);
    } catch (const tool::InputError& error) {
        tool::complain(error.what());
        code = error.code();
    } catch (...) {
        tool::complain(tool::describeFailure());
    }
    return static_cast<int>(code);
}
