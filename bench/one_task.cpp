// Runs one job twice, for callgrind and perf: one_task DIRECTORY CORPUS TASK CONTESTANT
//
// Under valgrind --tool=callgrind --collect-atstart=no only the second run itself is counted, in
// the memory that the first one left. Prints the number of parameters.

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
        bench::prepareRun(*job);
        job->run();
        bench::prepareRun(*job);
        CALLGRIND_TOGGLE_COLLECT;
        job->run();
        CALLGRIND_TOGGLE_COLLECT;
        std::cout << corpus.expected(type.format).parameters << '\n';
        return 0;
    }
    std::cerr << "no such task and contestant\n";
    return 1;
}
