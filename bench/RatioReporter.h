#pragma once

#include <map>
#include <string>

#include <benchmark/benchmark.h>

namespace bench {

/// Prints, for every corpus and question, how many paragraphs per second the library lays out, how many raw shaping
/// handles, and the ratio. Each is the fastest of its repetitions: what else the machine does only ever slows one down.
class RatioReporter final : public benchmark::ConsoleReporter {
public:
    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

private:
    // By benchmark name, "corpus/question/who".
    std::map<std::string, double> m_perSecond;
};

} // namespace bench
