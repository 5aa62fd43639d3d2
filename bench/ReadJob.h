#pragma once

#include <optional>
#include <string>

#include "Job.h"
#include "Sinks.h"

namespace bench {

/// Reads a text into a sink. `Reader` says what format it reads, takes a text that it may keep and
/// change, and reports what stands in it:
///
///     static constexpr const char* kFormat;
///     void load(std::string text);
///     template <typename Sink> void read(Sink& sink);
template <typename Reader, typename Sink>
class ReadJob : public Job {
public:
    explicit ReadJob(const Corpus& corpus) : text(corpus.text(Reader::kFormat)) {}

    void prepare() override {
        sink.emplace();
        reader.emplace().load(text);
    }
    void run() override { reader->read(*sink); }
    Counts counts() const override { return sink->counts(); }

private:
    std::string text;
    std::optional<Reader> reader;
    std::optional<Sink> sink;
};

/// The same as the first thing that a program does.
template <typename Reader, typename Sink>
class FirstReadJob : public ReadJob<Reader, Sink> {
public:
    using ReadJob<Reader, Sink>::ReadJob;
    bool takesFreshMemory() const override { return true; }
};

/// A task of looking at all that stands in a text.
template <typename Reader>
JobType touchJob(const std::string& task, const std::string& contestant) {
    return {task, contestant, Reader::kFormat, makeJob<ReadJob<Reader, TouchSink>>};
}

template <typename Reader>
JobType firstTouchJob(const std::string& task, const std::string& contestant) {
    return {task, contestant, Reader::kFormat, makeJob<FirstReadJob<Reader, TouchSink>>};
}

/// The two tasks that a reader can do.
template <typename Reader>
JobTypes readJobs(const std::string& contestant) {
    return {touchJob<Reader>("events", contestant),
            {"text-to-map", contestant, Reader::kFormat, makeJob<ReadJob<Reader, MapSink>>}};
}

}  // namespace bench
