// RapidJSON: SAX in situ; Writer and Reader to PrettyWriter.

#include <kiv/KDXToStringMapMap.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>

#include <stdexcept>
#include <string_view>

#include "Library.h"
#include "ReadJob.h"

#ifndef BENCH_RAPIDJSON_JOBS
#define BENCH_RAPIDJSON_JOBS rapidJsonJobs
#define BENCH_RAPIDJSON_NAME "RapidJSON"
#endif

namespace bench {
namespace {

namespace rapidjson = RAPIDJSON_NAMESPACE;

/// Turns SAX events into objects and parameters. The document itself is no object.
template <typename Sink>
class Handler : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Handler<Sink>> {
public:
    explicit Handler(Sink& target) : sink(target) {}

    bool StartObject() {
        if (depth++ != 0) sink.openObject(key);
        return true;
    }
    bool EndObject(rapidjson::SizeType /*count*/) {
        if (--depth != 0) sink.closeObject();
        return true;
    }
    bool Key(const char* text, rapidjson::SizeType length, bool /*copy*/) {
        key = {text, length};  // in situ: it stays where it is
        return true;
    }
    bool String(const char* text, rapidjson::SizeType length, bool /*copy*/) {
        sink.parameter(key, {text, length});
        return true;
    }

private:
    Sink& sink;
    std::string_view key;
    std::size_t depth = 0;
};

struct PrettyJson {
    static constexpr const char* kFormat = "json";
};
struct CompactJson {
    static constexpr const char* kFormat = "compact.json";
};

template <typename Format>
class InSitu {
public:
    static constexpr const char* kFormat = Format::kFormat;

    void load(std::string json) { text = std::move(json); }

    template <typename Sink>
    void read(Sink& sink) {
        rapidjson::InsituStringStream stream(text.data());
        Handler<Sink> handler(sink);
        rapidjson::Reader reader;
        if (!reader.Parse<rapidjson::kParseInsituFlag>(stream, handler))
            throw std::runtime_error("RapidJSON refuses the corpus");
    }

private:
    std::string text;
};

Counts countsOfJson(const rapidjson::StringBuffer& json) {
    TouchSink sink;
    InSitu<PrettyJson> reader;
    reader.load(json.GetString());
    reader.read(sink);
    return sink.counts();
}

using Writer = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

rapidjson::SizeType length(const std::string& text) {
    return static_cast<rapidjson::SizeType>(text.size());
}

class WriteMap : public Job {
public:
    explicit WriteMap(const Corpus& corpus) : map(mapOf(corpus.text("kdx"))) {}
    void prepare() override { json.emplace(); }
    void run() override {
        Writer writer(*json);
        writer.SetIndent(' ', 2);
        writer.StartObject();
        for (const auto& [path, parameters] : map) {
            writer.Key(path.data(), length(path));
            writer.StartObject();
            for (const auto& [name, value] : parameters) {
                writer.Key(name.data(), length(name));
                writer.String(value.data(), length(value));
            }
            writer.EndObject();
        }
        writer.EndObject();
    }
    Counts counts() const override { return countsOfJson(*json); }

private:
    kiv::StringMapMap map;
    std::optional<rapidjson::StringBuffer> json;
};

class Reindent : public Job {
public:
    explicit Reindent(const Corpus& corpus) : text(corpus.text("json")) {}
    void prepare() override {
        working = text;
        json.emplace();
    }
    void run() override {
        rapidjson::InsituStringStream stream(working.data());
        Writer writer(*json);
        writer.SetIndent(' ', 2);
        rapidjson::Reader().Parse<rapidjson::kParseInsituFlag>(stream, writer);
    }
    Counts counts() const override { return countsOfJson(*json); }

private:
    std::string text;
    std::string working;
    std::optional<rapidjson::StringBuffer> json;
};

}  // namespace

JobTypes BENCH_RAPIDJSON_JOBS() {
    const std::string name = BENCH_RAPIDJSON_NAME;
    JobTypes jobs = readJobs<InSitu<PrettyJson>>(name);
    const JobTypes compact = readJobs<InSitu<CompactJson>>(name + " compact");
    jobs.insert(jobs.end(), compact.begin(), compact.end());
    jobs.push_back({"map-to-text", name, "json", makeJob<WriteMap>});
    jobs.push_back({"re-indent", name, "json", makeJob<Reindent>});
    return jobs;
}

}  // namespace bench
