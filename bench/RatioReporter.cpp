#include "RatioReporter.h"

#include <algorithm>
#include <iomanip>
#include <iterator>

#include "Layouter.h"

namespace bench {

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

void RatioReporter::Finalize() {
    std::ostream& out = GetOutputStream();
    out << "\nParagraphs per second, fastest repetition, one thread:\n\n"
        << "| corpus | question | FontEngine | hb_shape alone | ratio |\n|---|---|---:|---:|---:|\n";
    for (const char* const corpus : {"labels", "notes", "world"}) {
        for (const Question question : questions) {
            const std::string row = std::string(corpus) + "/" + std::string(nameOf(question)) + "/";
            const double ours = m_perSecond[row + "engine"];
            const double raw = m_perSecond[row + "raw"];
            if (ours > 0.0 && raw > 0.0) {
                out << "| " << corpus << " | " << nameOf(question) << " | " << std::fixed << std::setprecision(0)
                    << ours << " | " << raw << " | " << std::setprecision(3) << ours / raw << " |\n";
            }
        }
    }
    out.flush();
}

} // namespace bench
