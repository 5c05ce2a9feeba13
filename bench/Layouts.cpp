// How fast paragraphs are laid out, beside HarfBuzz shaping the same text and, where configured, other libraries laying
// it out in the same run.

#include <algorithm>
#include <deque>
#include <iterator>
#include <string>
#include <thread>

#include <Common/Utf.h>
#include <benchmark/benchmark.h>

#include "Layouter.h"
#include "Peers.h"
#include "RatioReporter.h"
#include "RawShaper.h"

namespace {

using bench::Question;
using bench::Sums;

struct Prepared {
    bench::Texts texts;
    std::vector<bench::PeerText> same;
};

std::deque<Prepared> prepare() {
    std::deque<Prepared> prepared;
    for (bench::Texts& texts : bench::allTexts()) {
        Prepared& one = prepared.emplace_back();
        for (const std::wstring& paragraph : texts.paragraphs) {
            bench::PeerText& same = one.same.emplace_back();
            same.utf8 = common::utf8FromWide(paragraph);
            std::transform(paragraph.begin(), paragraph.end(), std::back_inserter(same.utf16),
                           [](wchar_t unit) { return static_cast<char16_t>(unit); });
        }
        one.texts = std::move(texts);
    }
    return prepared;
}

/// What is known when a corpus begins.
enum class Memory {
    /// The words of earlier iterations.
    Warm,
    /// Nothing: a new thread has shaped no words yet.
    Cold
};

/// One iteration lays the whole corpus out; sums of the last one are reported, so that the two ways can be compared.
template <typename Ask>
void run(benchmark::State& state, std::size_t paragraphs, Memory memory, Ask ask) {
    Sums sums;
    const auto layOutAll = [&] {
        sums = {};
        for (std::size_t i = 0; i < paragraphs; ++i) {
            ask(i, sums);
        }
    };
    for ([[maybe_unused]] auto iteration : state) {
        if (memory == Memory::Cold) {
            std::thread(layOutAll).join();
        } else {
            layOutAll();
        }
        benchmark::DoNotOptimize(sums);
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(paragraphs) * state.iterations());
    state.counters["width"] = sums.width;
    state.counters["glyphs"] = static_cast<double>(sums.glyphs);
}

void registerAll(const std::deque<Prepared>& corpora, const bench::Layouter& layouter, bench::RawShaper& raw,
                 const std::vector<bench::Peer>& peers) {
    for (const Prepared& corpus : corpora) {
        for (const Question question : bench::questions) {
            const std::string name = corpus.texts.name + "/" + std::string(bench::nameOf(question)) + "/";
            const std::size_t count = corpus.same.size();
            const auto ours = [&corpus, &layouter, question](std::size_t i, Sums& sums) {
                layouter.ask(question, corpus.texts.paragraphs[i], corpus.texts.wrapWidth, sums);
            };
            const auto bare = [&corpus, &raw, question](std::size_t i, Sums& sums) {
                raw.ask(question, corpus.same[i].utf16, sums);
            };
            const auto add = [count](const std::string& benchmarkName, Memory memory, auto ask) {
                benchmark::RegisterBenchmark(
                    benchmarkName.c_str(),
                    [count, memory, ask](benchmark::State& state) { run(state, count, memory, ask); })
                    ->Unit(benchmark::kMillisecond)
                    ->MinTime(0.2)
                    ->MeasureProcessCPUTime()
                    ->Repetitions(5);
            };
            add(name + "raw", Memory::Warm, bare);
            add(name + "engine", Memory::Warm, ours);
            add(name + "cold", Memory::Cold, ours);
            for (const bench::Peer& peer : peers) {
                add(name + peer.name, Memory::Warm, [&corpus, &peer, question](std::size_t i, Sums& sums) {
                    peer.ask(question, corpus.same[i], corpus.texts.wrapWidth, sums);
                });
            }
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    const std::deque<Prepared> corpora = prepare();
    const bench::Layouter layouter;
    bench::RawShaper raw;
    const std::vector<bench::Peer> peers = bench::peers();
    registerAll(corpora, layouter, raw, peers);
    bench::RatioReporter reporter(peers);
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}
