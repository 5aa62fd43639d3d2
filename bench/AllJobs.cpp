#include "Job.h"

namespace bench {

JobTypes allJobs() {
    JobTypes all;
    for (const auto& jobs : {libraryJobs(), floorJobs(), rapidJsonJobs()})
        all.insert(all.end(), jobs.begin(), jobs.end());
    return all;
}

}  // namespace bench
