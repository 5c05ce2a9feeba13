#include "RatioReporter.h"

#include <algorithm>
#include <iomanip>
#include <iterator>

#include "Layouter.h"

namespace bench {

RatioReporter::RatioReporter(const std::vector<Peer>& peers)
    : benchmark::ConsoleReporter(OO_Tabular), m_columns{{"engine", "FontEngine"},
                                                        {"cold", "FontEngine, words not seen before"}} {
    for (const Peer& peer : peers) {
        m_columns.emplace_back(peer.name, peer.name);
    }
}

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        const auto rate = run.counters.find("items_per_second");
        if (run.run_type == Run::RT_Iteration && rate != run.counters.end()) {
            double& fastest = m_perSecond[run.run_name.function_name];
            fastest = std::max(fastest, static_cast<double>(rate->second));
        }
    }
    std::vector<Run> medians;
    std::copy_if(runs.begin(), runs.end(), std::back_inserter(medians),
                 [](const Run& run) { return run.aggregate_name == "median" || run.repetitions == 1; });
    benchmark::ConsoleReporter::ReportRuns(medians);
}

double RatioReporter::perSecond(const std::string& benchmarkName) const {
    const auto found = m_perSecond.find(benchmarkName);
    return found != m_perSecond.end() ? found->second : 0.0;
}

void RatioReporter::Finalize() {
    std::ostream& out = GetOutputStream();
    out << "\nParagraphs per second, fastest repetition, one thread (in brackets the ratio to hb_shape alone):\n\n"
        << "| corpus | question | hb_shape alone |";
    std::string rule = "|---|---|---:|";
    for (const auto& [who, heading] : m_columns) {
        out << ' ' << heading << " |";
        rule += "---:|";
    }
    out << '\n' << rule << '\n' << std::fixed;
    for (const char* const corpus : {"labels", "notes", "world"}) {
        for (const Question question : questions) {
            const std::string row = std::string(corpus) + "/" + std::string(nameOf(question)) + "/";
            const double raw = perSecond(row + "raw");
            if (raw == 0.0) {
                continue;
            }
            out << "| " << corpus << " | " << nameOf(question) << " | " << std::setprecision(0) << raw << " |";
            for (const auto& [who, heading] : m_columns) {
                const double rate = perSecond(row + who);
                out << ' ' << std::setprecision(0) << rate << " (" << std::setprecision(3) << rate / raw << ") |";
            }
            out << '\n';
        }
    }
    out.flush();
}

} // namespace bench
