#include "Work.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <new>
#include <optional>
#include <thread>

#include <kiv/Error.h>

#include "Diagnostics.h"
#include "Output.h"
#include "Source.h"

namespace kdx {
namespace {

using namespace std::chrono_literals;

constexpr auto kQuietTime = 1s;        // before the first progress line
constexpr auto kProgressTime = 200ms;  // between two
constexpr std::size_t kAhead = 16;     // outcomes that may wait for an earlier one, per thread

Outcome failed(const std::string& file, std::string_view why, const Settings& settings) {
    Outcome outcome;
    appendTrouble(outcome.diagnostics, displayName(file), why, settings);
    outcome.status = Status::trouble;
    return outcome;
}

Outcome guarded(const Work& work, const std::string& file, std::size_t index,
                const Settings& settings) {
    try {
        return work(file, index);
    } catch (const kiv::Error& error) {
        return failed(file, shown(error.message()), settings);
    } catch (const std::bad_alloc&) {
        return failed(file, "does not fit into memory", settings);
    } catch (const std::exception& error) {
        return failed(file, error.what(), settings);
    }
}

/// The outcomes of the files, made on several threads and taken in order.
class Workshop {
public:
    Workshop(const std::vector<std::string>& allFiles, const Settings& givenSettings,
             const Work& givenWork)
        : files(allFiles), settings(givenSettings), work(givenWork), outcomes(files.size()) {
        const std::size_t count = std::min(std::max<std::size_t>(settings.jobs, 1), files.size());
        for (std::size_t i = 0; i < count; ++i) threads.emplace_back([this] { run(); });
    }

    ~Workshop() {
        {
            const std::lock_guard lock(mutex);
            begun = files.size();
            taken = files.size();
        }
        changed.notify_all();
        for (std::thread& thread : threads) thread.join();
    }

    Workshop(const Workshop&) = delete;
    Workshop& operator=(const Workshop&) = delete;

    /// The outcome of the next file; waits for it until `deadline`.
    std::optional<Outcome> take(std::chrono::steady_clock::time_point deadline) {
        std::unique_lock lock(mutex);
        if (!changed.wait_until(lock, deadline, [this] { return outcomes[taken].has_value(); }))
            return std::nullopt;
        std::optional<Outcome> outcome = std::move(outcomes[taken]);
        outcomes[taken++].reset();
        changed.notify_all();
        return outcome;
    }

private:
    void run() {
        std::unique_lock lock(mutex);
        for (;;) {
            changed.wait(lock, [this] { return begun < taken + kAhead || begun >= files.size(); });
            if (begun >= files.size()) return;
            const std::size_t index = begun++;
            lock.unlock();
            Outcome outcome = guarded(work, files[index], index, settings);
            lock.lock();
            outcomes[index] = std::move(outcome);
            changed.notify_all();
        }
    }

    const std::vector<std::string>& files;
    const Settings& settings;
    const Work& work;
    std::mutex mutex;
    std::condition_variable changed;
    std::size_t begun = 0;
    std::size_t taken = 0;
    std::vector<std::optional<Outcome>> outcomes;
    std::vector<std::thread> threads;
};

/// A line on the terminal that says how far the work is.
class Progress {
public:
    explicit Progress(const std::vector<std::string>& allFiles)
        : files(allFiles), enabled(errorIsTerminal()) {}

    void show(std::size_t done) {
        if (!enabled) return;
        writeError("\r\033[Kkdx: " + std::to_string(done) + " of " + counted(files.size(), "file") +
                   ", at " + shown(displayName(files[done])));
        visible = true;
    }

    void clear() {
        if (visible) writeError("\r\033[K");
        visible = false;
    }

private:
    const std::vector<std::string>& files;
    bool enabled;
    bool visible = false;
};

void writeOutcome(const Outcome& outcome) {
    writeError(outcome.diagnostics);
    writeOutput(outcome.results);
}

}  // namespace

Status workOnFiles(const FileList& list, const Settings& settings, const Work& work,
                   const Then& then) {
    writeError(list.diagnostics);
    Status status = list.status;
    Workshop workshop(list.files, settings, work);
    Progress progress(list.files);
    auto deadline = std::chrono::steady_clock::now() + kQuietTime;
    for (std::size_t done = 0; done < list.files.size();) {
        const std::optional<Outcome> outcome = workshop.take(deadline);
        if (!outcome) {
            progress.show(done);
            deadline = std::chrono::steady_clock::now() + kProgressTime;
            continue;
        }
        progress.clear();
        writeOutcome(*outcome);
        if (then) then(done);
        status = worse(status, outcome->status);
        ++done;
    }
    return status;
}

Status workOnArguments(const std::vector<std::string>& arguments, const Settings& settings,
                       const Work& work) {
    return workOnFiles(listFiles(arguments, settings), settings, work);
}

Status workOnFile(const std::string& file, const Settings& settings, const Work& work) {
    return workOnFiles({{file}, {}, Status::fine}, settings, work);
}

}  // namespace kdx
