#include "ExplodeCommand.h"

#include <algorithm>
#include <iostream>

#include <nlohmann/json.hpp>

#include <Common/Utf.h>

#include "CallPaths.h"
#include "DrawingLayout.h"
#include "OutputFile.h"
#include "Progress.h"
#include "RoundTrip.h"

namespace tool {

namespace {

void requireComparable(const ExplodeOptions& options) {
    if (options.check && options.kind == PieceKind::Outlines) {
        throw InputError("--check compares glyphs of texts, and outlines are none; use it with --to clusters",
                         ExitCode::Usage);
    }
}

void checkPaths(const ExplodeOptions& options) {
    std::vector<CallPath> paths{{"IN", options.input, CallPath::Use::Read, {}},
                                {"OUT", options.output, CallPath::Use::Written, {}}};
    if (options.fontMap) {
        paths.push_back({"--font-map", *options.fontMap, CallPath::Use::Read, {}});
    }
    if (options.report) {
        paths.push_back({"--report", *options.report, CallPath::Use::Written, {}});
    }
    checkPaths(paths);
}

dxf::RewriteResult rewrite(const ExplodeOptions& options, InputFile& input, OutputFile& output,
                           const dxf::Drawing& drawing, Exploder& exploder) {
    try {
        input.rewind();
        Progress progress("Exploding " + inputName(options.input) + ", bytes");
        return dxf::rewriteDrawing(input.stream(), output.stream(), drawing, exploder, [&](std::uint64_t bytes) {
            progress.update(static_cast<std::size_t>(bytes), static_cast<std::size_t>(drawing.byteCount));
            return true;
        });
    } catch (const dxf::Error& failure) {
        if (failure.kind() == dxf::ErrorKind::Unwritable) {
            output.collected(); // throws with the system's reason
        }
        throw InputError(inputName(options.input) + ": " + failure.what());
    }
}

struct Outcome {
    const dxf::Drawing& drawing;
    const Exploder& exploder;
    dxf::RewriteResult rewritten;
    std::optional<RoundTrip> roundTrip;
    std::size_t lineTexts = 0; // TEXT entities, which stay
};

void say(std::size_t count, const char* what) {
    if (count > 0) {
        std::cout << "  " << count << ' ' << what << '\n';
    }
}

void report(const ExplodeOptions& options, const Outcome& outcome) {
    const ExplodeCounts& counts = outcome.exploder.counts();
    std::cout << inputName(options.input) << ": " << counts.texts << " paragraph texts became "
              << outcome.rewritten.written << " entities in " << outputName(options.output) << '\n';
    say(counts.clusterTexts, "clusters became single-line texts");
    say(counts.outlined, options.kind == PieceKind::Outlines
                             ? "clusters became outlines"
                             : "clusters became outlines, because no text of their own draws them as in their word");
    say(counts.joined, "of the single-line texts hold joiners, which keep a letter's shape");
    say(counts.moved, "of the single-line texts stand where they are drawn rather than where the layouting counts them "
                      "(right-to-left runs)");
    say(counts.blanks, "clusters without ink (blanks) left out");
    say(counts.underlines, "underlines became areas");
    say(counts.emptyTexts, "paragraph texts show nothing and stay as they are");
    say(outcome.lineTexts, "one-line texts stay as they are");
    for (const dxf::Problem& problem : outcome.drawing.problems) {
        std::cout << "  damaged: " << problem.message << '\n';
    }
    for (const std::string& failure : outcome.exploder.failures()) {
        std::cout << "  left as it is: " << failure << '\n';
    }
    report(outcome.exploder.notes());
    if (const auto& trip = outcome.roundTrip) {
        std::cout << "  round trip: " << trip->glyphs << " glyphs, " << trip->different
                  << " different, largest deviation " << trip->largestDeviation * 100.0 << " % of the cap height";
        if (trip->largestDeviation > 0.0) {
            std::cout << " (text at line " << trip->line << ')';
        }
        std::cout << '\n';
    }
}

void writeReport(const std::string& path, const ExplodeOptions& options, const Outcome& outcome,
                 const std::vector<FontMap::Replacement>& replacements) {
    using Json = nlohmann::ordered_json;
    const ExplodeCounts& counts = outcome.exploder.counts();
    Json json;
    json["input"] = options.input;
    json["output"] = options.output;
    json["texts"] = counts.texts;
    json["entities"] = outcome.rewritten.written;
    json["clusters"] = counts.clusters;
    json["clusterTexts"] = counts.clusterTexts;
    json["outlined"] = counts.outlined;
    json["joined"] = counts.joined;
    json["moved"] = counts.moved;
    json["blanks"] = counts.blanks;
    json["underlines"] = counts.underlines;
    json["emptyTexts"] = counts.emptyTexts;
    json["lineTexts"] = outcome.lineTexts;
    addNotes(json, outcome.exploder.notes());
    json["failures"] = outcome.exploder.failures();
    json["problems"] = Json::array();
    for (const dxf::Problem& problem : outcome.drawing.problems) {
        json["problems"].push_back(problem.message);
    }
    json["replacedFonts"] = Json::array();
    for (const FontMap::Replacement& replacement : replacements) {
        json["replacedFonts"].push_back({{"requested", common::utf8FromWide(replacement.requested)},
                                         {"family", common::utf8FromWide(replacement.family)}});
    }
    if (const auto& trip = outcome.roundTrip) {
        json["roundTrip"] = {{"glyphs", trip->glyphs},
                             {"different", trip->different},
                             {"largestDeviation", trip->largestDeviation},
                             {"line", trip->line}};
    }
    OutputFile file(path);
    file.stream() << json.dump(1, ' ', false, Json::error_handler_t::replace) << '\n';
    file.commit();
}

ExitCode exitCodeOf(const ExplodeOptions& options, const Outcome& outcome) {
    if (!outcome.exploder.failures().empty() || (outcome.roundTrip && !outcome.roundTrip->holds())) {
        return ExitCode::Failure;
    }
    if (outcome.drawing.truncated()) {
        return ExitCode::DamagedInput;
    }
    if (outcome.exploder.counts().texts == 0) {
        const bool onlyEmpty = outcome.exploder.counts().emptyTexts > 0;
        std::cerr << "fontengine: " << inputName(options.input) << ": holds no paragraph text"
                  << (onlyEmpty ? " that shows anything" : "") << "; the copy is unchanged\n";
        return ExitCode::NoText;
    }
    return ExitCode::Success;
}

} // namespace

ExitCode runExplode(const ExplodeOptions& options) {
    requireComparable(options);
    checkPaths(options);
    Session session;
    if (options.fontMap) {
        session.fontMap().load(*options.fontMap);
    }
    InputFile input(options.input, InputFile::Readings::Several);
    const dxf::Drawing drawing = readDrawingFile(options.input, input, options.limits);
    requireWithin(options.limits, options.input, drawing);
    Exploder exploder(session, drawing, options.kind, options.check);
    OutputFile output(options.output);
    Outcome outcome{drawing, exploder, rewrite(options, input, output, drawing, exploder), std::nullopt, 0};
    outcome.lineTexts = static_cast<std::size_t>(
        std::count_if(drawing.texts.begin(), drawing.texts.end(),
                      [](const dxf::TextEntity& text) { return text.kind == dxf::TextKind::Text; }));
    if (options.check) {
        outcome.roundTrip = checkRoundTrip(
            session, readDrawingFile(output.collected(), {.textLength = dxf::Limits::none}), drawing, exploder);
    }
    output.commit();
    report(options, outcome);
    reportReplacements(session.fontMap().replacements());
    if (options.report) {
        writeReport(*options.report, options, outcome, session.fontMap().replacements());
    }
    return exitCodeOf(options, outcome);
}

} // namespace tool
