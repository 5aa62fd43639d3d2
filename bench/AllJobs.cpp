#include "Job.h"

namespace bench {

JobTypes allJobs() {
    constexpr JobTypes (*kGroups[])() = {
        libraryJobs, floorJobs, rapidJsonJobs,    rapidJsonSse2Jobs, simdJsonJobs, nlohmannJsonJobs,
        pugixmlJobs, expatJobs, tomlPlusPlusJobs, yamlCppJobs,       inihJobs};
    JobTypes all;
    for (const auto group : kGroups) {
        const JobTypes jobs = group();
        all.insert(all.end(), jobs.begin(), jobs.end());
    }
    return all;
}

}  // namespace bench
