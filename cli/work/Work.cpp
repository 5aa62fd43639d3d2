#include "Work.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <functional>
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
constexpr std::size_t kAhead = 16;     // files begun before an earlier one is finished, per job

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

/// Takes a file's outcome further.
using Finish = std::function<void(const Outcome& outcome, std::size_t index)>;

/// Works on files on several threads, of which the calling one is the first: the others are as many
/// as there are jobs, as far as there is room for threads. The thread that has worked on the file
/// whose turn it is finishes it, and those that waited for it: waking another one for that would
/// cost more than most files.
class WorkerPool {
public:
    WorkerPool(const std::vector<std::string>& allFiles, const Settings& givenSettings,
               const Work& givenWork, const Finish& givenFinish)
        : files(allFiles),
          settings(givenSettings),
          work(givenWork),
          finish(givenFinish),
          outcomes(files.size()) {}

    /// Works on all files, and finishes them one after the other, in their order.
    /// @throws what finishing one throws; those behind it are then left alone.
    void run() {
        startThreads();
        workOnFiles();
        for (std::thread& thread : threads) thread.join();
        if (failure) std::rethrow_exception(failure);
    }

private:
    void startThreads() {
        const std::size_t count = std::min(settings.jobs, files.size());
        threads.reserve(count);
        while (threads.size() + 1 < count) {
            std::thread thread = startThread([this] { workOnFiles(); });
            if (!thread.joinable()) return;
            threads.push_back(std::move(thread));
        }
    }

    void workOnFiles() {
        std::unique_lock lock(mutex);
        for (;;) {
            changed.wait(lock, [this] { return isOver() || begun < finished + mayWait; });
            if (isOver()) return;
            const std::size_t index = begun++;
            lock.unlock();
            Outcome outcome = guarded(work, files[index], index, settings);
            lock.lock();
            outcomes[index] = std::move(outcome);
            if (!finishing) finishFiles(lock);
        }
    }

    bool isOver() const { return begun >= files.size(); }

    /// Finishes the files whose turn it is, unlocked meanwhile.
    void finishFiles(std::unique_lock<std::mutex>& lock) {
        finishing = true;
        while (finished < files.size() && outcomes[finished] && !failure) {
            const Outcome outcome = *std::exchange(outcomes[finished], std::nullopt);
            lock.unlock();
            const std::exception_ptr thrown = finishFile(outcome, finished);
            lock.lock();
            ++finished;
            if (thrown) stop(thrown);
        }
        finishing = false;
        changed.notify_all();  // of the threads that were too far ahead
    }

    std::exception_ptr finishFile(const Outcome& outcome, std::size_t index) {
        try {
            finish(outcome, index);
            return nullptr;
        } catch (...) {
            return std::current_exception();
        }
    }

    void stop(const std::exception_ptr& why) {
        failure = why;
        begun = files.size();
    }

    const std::vector<std::string>& files;
    const Settings& settings;
    const Work& work;
    const Finish& finish;
    const std::size_t mayWait = kAhead * settings.jobs;
    std::mutex mutex;
    std::condition_variable changed;
    std::size_t begun = 0;
    std::size_t finished = 0;
    bool finishing = false;  // by some thread
    std::exception_ptr failure;
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
    Progress progress(list.files);
    const Finish finish = [&](const Outcome& outcome, std::size_t index) {
        progress.finishFile(outcome);
        if (then) then(index);
        status = worse(status, outcome.status);
    };
    WorkerPool(list.files, settings, work, finish).run();
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
