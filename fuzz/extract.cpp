// A text: its runs of actions and of state.

#include <kiv/ExtractActionOrStateFromKDX.h>

#include "Support.h"

using namespace kiv::ExtractActionOrStateFromKDX;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text = fuzz::Input(data, size).all();
    const auto runs = extractActionOrStateFromKDX(text);
    fuzz::require(runs == extractActionOrStateFromKDX(text + "\n"),
                  "a line feed at the end does not matter");

    std::string joined;
    bool continued = false;
    for (std::size_t i = 0; i < runs.size(); ++i) {
        const auto& [kind, run] = runs[i];
        fuzz::require(i == 0 || kind != runs[i - 1].first, "runs alternate");
        fuzz::require(!run.empty(), "no run is empty");
        for (const std::string& line : fuzz::Input(run).lines()) {
            fuzz::require(!line.empty(), "no line is empty");
            fuzz::require((line.front() == '>') == (kind == Action), "a run is of one kind");
            continued = continued || fuzz::endsInBackslash(line);
        }
        joined += run + "\n";
    }
    fuzz::require(continued || runs == extractActionOrStateFromKDX(joined),
                  "extracting from the runs gives the runs");
    return 0;
}
