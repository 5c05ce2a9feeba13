#include "ExplodeCommand.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>

#include <nlohmann/json.hpp>

#include <Common/Utf.h>

#include "DrawingLayout.h"
#include "Progress.h"
#include "RoundTrip.h"

namespace tool {

namespace {

InputError unwritable(const std::string& path) {
    return InputError(path + ": cannot be written; check the folder, its permissions and the space left",
                      ExitCode::UnwritableOutput);
}

void requireComparable(const ExplodeOptions& options) {
    if (options.check && options.kind == PieceKind::Outlines) {
        throw InputError("--check compares glyphs of texts, and outlines are none; use it with --to clusters",
                         ExitCode::Usage);
    }
}

void requireTwoFiles(const ExplodeOptions& options) {
    std::error_code error;
    if (std::filesystem::equivalent(options.input, options.output, error)) {
        throw InputError(options.output + ": is the drawing itself; give another file to write to", ExitCode::Usage);
    }
    if (std::filesystem::is_directory(options.output, error)) {
        throw InputError(options.output + ": is a folder; give the path of a DXF file", ExitCode::UnwritableOutput);
    }
}

// Written beside its place and moved there whole, so that a failure leaves what
// stood there.
dxf::RewriteResult rewrite(const ExplodeOptions& options, const dxf::Drawing& drawing, Exploder& exploder) {
    const std::string partial = options.output + ".partial";
    std::error_code ignored;
    try {
        std::ifstream input(options.input, std::ios::binary);
        std::ofstream output(partial, std::ios::binary);
        if (!output) {
            throw unwritable(options.output);
        }
        Progress progress("Exploding " + options.input + ", bytes");
        const dxf::RewriteResult result =
            dxf::rewriteDrawing(input, output, drawing, exploder, [&](std::uint64_t bytes) {
                progress.update(static_cast<std::size_t>(bytes), static_cast<std::size_t>(drawing.byteCount));
                return true;
            });
        output.close();
        if (!output) {
            throw unwritable(options.output);
        }
        std::filesystem::rename(partial, options.output);
        return result;
    } catch (const dxf::Error& failure) {
        std::filesystem::remove(partial, ignored);
        if (failure.kind() == dxf::ErrorKind::Unwritable) {
            throw unwritable(options.output);
        }
        throw InputError(options.input + ": " + failure.what());
    } catch (const std::filesystem::filesystem_error&) {
        std::filesystem::remove(partial, ignored);
        throw unwritable(options.output);
    } catch (const InputError&) {
        std::filesystem::remove(partial, ignored);
        throw;
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
    std::cout << options.input << ": " << counts.texts << " paragraph texts became " << outcome.rewritten.written
              << " entities in " << options.output << '\n';
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
    say(counts.missingGlyphs, "characters are in no installed font and are shown as boxes");
    for (const dxf::Problem& problem : outcome.drawing.problems) {
        std::cout << "  damaged: " << problem.message << '\n';
    }
    for (const std::string& failure : outcome.exploder.failures()) {
        std::cout << "  left as it is: " << failure << '\n';
    }
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
    json["missingGlyphs"] = counts.missingGlyphs;
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
    std::ofstream file(path, std::ios::binary);
    file << json.dump(1, ' ', false, Json::error_handler_t::replace) << '\n';
    file.close();
    if (!file) {
        throw unwritable(path);
    }
}

ExitCode exitCodeOf(const ExplodeOptions& options, const Outcome& outcome) {
    if (!outcome.exploder.failures().empty() || (outcome.roundTrip && !outcome.roundTrip->holds())) {
        return ExitCode::Failure;
    }
    if (outcome.drawing.truncated()) {
        return ExitCode::DamagedInput;
    }
    if (outcome.exploder.counts().texts == 0) {
        std::cerr << options.input << ": holds no paragraph text; the copy is unchanged\n";
        return ExitCode::NoText;
    }
    return ExitCode::Success;
}

} // namespace

ExitCode runExplode(const ExplodeOptions& options) {
    requireComparable(options);
    Session session;
    if (options.fontMap) {
        session.fontMap().load(*options.fontMap);
    }
    const dxf::Drawing drawing = readDrawingFile(options.input);
    requireTwoFiles(options);
    Exploder exploder(session, drawing, options.kind, options.check);
    Outcome outcome{drawing, exploder, rewrite(options, drawing, exploder), std::nullopt, 0};
    outcome.lineTexts = static_cast<std::size_t>(
        std::count_if(drawing.texts.begin(), drawing.texts.end(),
                      [](const dxf::TextEntity& text) { return text.kind == dxf::TextKind::Text; }));
    if (options.check) {
        outcome.roundTrip = checkRoundTrip(session, options.output, drawing, exploder);
    }
    report(options, outcome);
    reportReplacements(session.fontMap().replacements());
    if (options.report) {
        writeReport(*options.report, options, outcome, session.fontMap().replacements());
    }
    return exitCodeOf(options, outcome);
}

} // namespace tool
