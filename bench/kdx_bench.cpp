// Times every job on every corpus named: kdx_bench DIRECTORY [CORPUS...] [--benchmark_...]
//
// A benchmark is called TASK/CONTESTANT/CORPUS. It makes its job, checks what a first run saw,
// which also warms up, and times a second one. The contestants of a task follow one another, so
// that what else the machine does meets them alike: start the program again for each round.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <iostream>

#include "Job.h"

namespace {

void measure(benchmark::State& state, const bench::JobType& type, const bench::Corpus& corpus) {
    const bench::Counts expected = corpus.expected(type.format);
    const auto job = type.make(corpus);
    bench::prepareRun(*job);
    job->run();
    if (!(job->counts() == expected)) {
        state.SkipWithError(("saw " + toText(job->counts())).c_str());
        return;
    }
    for ([[maybe_unused]] const auto iteration : state) {
        state.PauseTiming();
        bench::prepareRun(*job);
        state.ResumeTiming();
        job->run();
    }
    state.counters["parameters"] = static_cast<double>(expected.parameters);
    state.counters["objects"] = static_cast<double>(expected.objects);
}

void registerJobs(const std::string& directory, const std::string& name) {
    const bench::Corpus corpus(directory, name);
    bench::JobTypes jobs = bench::allJobs();
    std::stable_sort(jobs.begin(), jobs.end(),
                     [](const auto& a, const auto& b) { return a.task < b.task; });
    for (const auto& type : jobs) {
        if (!corpus.has(type.format)) continue;
        const std::string title = type.task + '/' + type.contestant + '/' + name;
        benchmark::RegisterBenchmark(title.c_str(),
                                     [=](benchmark::State& state) { measure(state, type, corpus); })
            ->Iterations(1)
            ->Unit(benchmark::kMillisecond);
    }
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (argc < 3) {
        std::cerr << "usage: kdx_bench DIRECTORY CORPUS... [--benchmark_...]\n";
        return 1;
    }
    for (int i = 2; i < argc; ++i) registerJobs(argv[1], argv[i]);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
