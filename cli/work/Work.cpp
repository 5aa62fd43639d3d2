#include "Work.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <new>
#include <optional>
#include <thread>
#include <utility>

#include <kiv/Error.h>
#include <kiv/KDXText.h>

#include "io/Output.h"
#include "io/Source.h"
#include "messages/Diagnostics.h"
#include "text/ShownText.h"

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
        return failed(file, kiv::visibleText(error.message()), settings);
    } catch (const std::bad_alloc&) {
        return failed(file, "does not fit into memory", settings);
    } catch (const std::exception& error) {
        return failed(file, error.what(), settings);
    }
}

/// A thread that runs a function; none when the system has no room for it.
template <typename Function>
std::thread startThread(const Function& function) {
    try {
        return std::thread(function);
    } catch (const std::exception&) {
        return {};
    }
}

/// The outcomes of the files, taken in order. Of several jobs, each has a thread, as far as there
/// is room for threads; a single one needs none, and its memory comes cheaper on the program's own.
class WorkerPool {
public:
    WorkerPool(const std::vector<std::string>& allFiles, const Settings& givenSettings,
               const Work& givenWork)
        : files(allFiles), settings(givenSettings), work(givenWork), outcomes(files.size()) {
        const std::size_t count = std::min(settings.jobs, files.size());
        threads.reserve(count);
        while (count > 1 && threads.size() < count) {
            std::thread thread = startThread([this] { run(); });
            if (!thread.joinable()) break;
            threads.push_back(std::move(thread));
        }
    }

    ~WorkerPool() {
        {
            const std::lock_guard lock(mutex);
            begun = files.size();
            taken = files.size();
        }
        changed.notify_all();
        for (std::thread& thread : threads) thread.join();
    }

    WorkerPool(const WorkerPool&) = delete;
    WorkerPool& operator=(const WorkerPool&) = delete;

    /// The outcome of the next file.
    Outcome take() {
        if (threads.empty()) {
            const std::size_t index = taken++;
            return guarded(work, files[index], index, settings);
        }
        std::unique_lock lock(mutex);
        changed.wait(lock, [this] { return outcomes[taken].has_value(); });
        Outcome outcome = *std::exchange(outcomes[taken++], std::nullopt);
        if (begun + 1 == taken + kAhead) changed.notify_all();  // the threads were that far ahead
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
            if (index == taken) changed.notify_all();  // the only one that is waited for
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

/// Whether somebody types what is read, and would type over what is written.
bool isTyped(const std::vector<std::string>& files) {
    return inputIsTerminal() &&
           std::find(files.begin(), files.end(), kStandardInput) != files.end();
}

/// A line on the terminal, if there is one, that says how far the work is.
class Progress {
public:
    explicit Progress(const std::vector<std::string>& allFiles) : files(allFiles) {
        if (errorIsTerminal() && terminalFollowsControls() && !isTyped(files))
            thread = startThread([this] { run(); });
    }

    ~Progress() {
        {
            const std::lock_guard lock(mutex);
            done = files.size();
        }
        changed.notify_all();
        if (thread.joinable()) thread.join();
    }

    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Writes the next file's outcome in the place of the line.
    void finishFile(const Outcome& outcome) {
        const std::lock_guard lock(mutex);
        clear();
        ++done;
        writeError(outcome.diagnostics);
        writeOutput(outcome.results);
    }

private:
    void run() {
        std::unique_lock lock(mutex);
        auto pause = std::chrono::milliseconds(kQuietTime);
        const auto isDone = [this] { return done >= files.size(); };
        while (!changed.wait_for(lock, pause, isDone)) {
            const std::string text = "kdx: " + std::to_string(done) + " of " +
                                     counted(files.size(), "file") + ", at " +
                                     shown(displayName(files[done]));
            writeError("\r\033[K" + std::string(firstColumns(text, errorWidth() - 1)));
            visible = true;
            pause = kProgressTime;
        }
        clear();
    }

    void clear() {
        if (visible) writeError("\r\033[K");
        visible = false;
    }

    const std::vector<std::string>& files;
    std::mutex mutex;
    std::condition_variable changed;
    std::size_t done = 0;
    bool visible = false;
    std::thread thread;
};

}  // namespace

Status workOnFiles(const FileList& list, const Settings& settings, const Work& work,
                   const Then& then) {
    writeError(list.diagnostics);
    Status status = list.status;
    WorkerPool workers(list.files, settings, work);
    Progress progress(list.files);
    for (std::size_t index = 0; index < list.files.size(); ++index) {
        const Outcome outcome = workers.take();
        progress.finishFile(outcome);
        if (then) then(index);
        status = worse(status, outcome.status);
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
