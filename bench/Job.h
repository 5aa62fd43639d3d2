#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Corpus.h"

namespace bench {

/// One thing to time. It is made from a corpus; then prepare() and run() take turns.
class Job {
public:
    Job() = default;
    Job(const Job&) = delete;
    Job& operator=(const Job&) = delete;
    virtual ~Job() = default;

    /// Drops the last run's result, its storage included, and sets up what a run uses up. Not
    /// timed.
    virtual void prepare() = 0;
    /// What is timed.
    virtual void run() = 0;
    /// What the last run saw or made. Not timed.
    virtual Counts counts() const = 0;
    /// Whether a run is the first that a program does: it pays for all the memory that it takes.
    virtual bool takesFreshMemory() const { return false; }
};

/// Calls prepare(), and makes memory what it is before each run that is measured: fresh memory is
/// not paid for, unless the job takes it, and free blocks are not scattered.
void prepareRun(Job& job);

/// A contestant's way to do a task.
struct JobType {
    /// "events", "read", "document", "first-document", "text-to-map", "lines-to-map",
    /// "map-to-text", "re-indent", "format", "write", "edit"
    std::string task;
    std::string contestant;
    std::string format;  ///< of the text that it starts from
    std::unique_ptr<Job> (*make)(const Corpus& corpus);
};

template <typename JobClass>
std::unique_ptr<Job> makeJob(const Corpus& corpus) {
    return std::make_unique<JobClass>(corpus);
}

using JobTypes = std::vector<JobType>;

JobTypes libraryJobs();
JobTypes floorJobs();
JobTypes rapidJsonJobs();
JobTypes rapidJsonSse2Jobs();
JobTypes simdJsonJobs();
JobTypes nlohmannJsonJobs();
JobTypes pugixmlJobs();
JobTypes expatJobs();
JobTypes tomlPlusPlusJobs();
JobTypes yamlCppJobs();
JobTypes inihJobs();

/// All of them.
JobTypes allJobs();

}  // namespace bench
