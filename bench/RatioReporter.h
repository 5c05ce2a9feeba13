#pragma once

#include <map>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

namespace bench {

/// Prints, for every corpus and question, how many paragraphs per second the library lays out, how many raw shaping
/// handles, and the ratio. Each is the fastest of its repetitions: what else the machine does only ever slows one down.
class RatioReporter final : public benchmark::ConsoleReporter {
public:
    RatioReporter() : benchmark::ConsoleReporter(OO_Tabular) {}

    /// Prints the median of the repetitions only.
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

private:
    // By benchmark name, "corpus/question/who".
    std::map<std::string, double> m_perSecond;
};

} // namespace bench
