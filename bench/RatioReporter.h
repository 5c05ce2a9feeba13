#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

#include "Peers.h"

namespace bench {

/// Prints, for every corpus and question, how many paragraphs per second the library lays out, how many raw shaping and
/// the peers handle, and their ratios to raw shaping. Each is the fastest of its repetitions: what else the machine
/// does only ever slows one down.
class RatioReporter final : public benchmark::ConsoleReporter {
public:
    explicit RatioReporter(const std::vector<Peer>& peers);

    /// Prints the median of the repetitions only.
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

private:
    /// How many paragraphs per second, or 0 if that did not run.
    double perSecond(const std::string& benchmarkName) const;

    // Columns of the table: a benchmark's last part and the heading.
    std::vector<std::pair<std::string, std::string>> m_columns;
    // By benchmark name, "corpus/question/who".
    std::map<std::string, double> m_perSecond;
};

} // namespace bench
