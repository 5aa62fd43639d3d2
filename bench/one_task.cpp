// Runs one job once, for callgrind and perf: one_task DIRECTORY CORPUS TASK CONTESTANT
//
// Under valgrind --tool=callgrind --collect-atstart=no only the run itself is counted, without
// what prepares it. Prints the number of parameters.

#include <valgrind/callgrind.h>

#include <iostream>

#include "Job.h"

int main(int argc, char** argv) {
    if (argc != 5) {
        std::cerr << "usage: one_task DIRECTORY CORPUS TASK CONTESTANT\n";
        return 1;
    }
    const bench::Corpus corpus(argv[1], argv[2]);
    for (const auto& type : bench::allJobs()) {
        if (type.task != argv[3] || type.contestant != argv[4]) continue;
        const auto job = type.make(corpus);
        job->prepare();
        CALLGRIND_TOGGLE_COLLECT;
        job->run();
        CALLGRIND_TOGGLE_COLLECT;
        std::cout << corpus.expected(type.format).parameters << '\n';
        return 0;
    }
    std::cerr << "no such task and contestant\n";
    return 1;
}
