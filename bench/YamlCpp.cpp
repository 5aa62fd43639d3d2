// yaml-cpp: events.

#include <yaml-cpp/eventhandler.h>
#include <yaml-cpp/yaml.h>

#include <sstream>

#include "ReadJob.h"

namespace bench {
namespace {

/// In a mapping, scalars are keys and values in turn. The document's own mapping is no object.
template <typename Sink>
class Handler : public YAML::EventHandler {
public:
    explicit Handler(Sink& target) : sink(target) {}

    void OnMapStart(const YAML::Mark& /*mark*/, const std::string& /*tag*/,
                    YAML::anchor_t /*anchor*/, YAML::EmitterStyle::value /*style*/) override {
        if (depth++ != 0) sink.openObject(key);
        haveKey = false;
    }
    void OnMapEnd() override {
        if (--depth != 0) sink.closeObject();
    }
    void OnScalar(const YAML::Mark& /*mark*/, const std::string& /*tag*/, YAML::anchor_t /*anchor*/,
                  const std::string& value) override {
        if (haveKey)
            sink.parameter(key, value);
        else
            key = value;
        haveKey = !haveKey;
    }

    void OnDocumentStart(const YAML::Mark& /*mark*/) override {}
    void OnDocumentEnd() override {}
    void OnNull(const YAML::Mark& /*mark*/, YAML::anchor_t /*anchor*/) override {}
    void OnAlias(const YAML::Mark& /*mark*/, YAML::anchor_t /*anchor*/) override {}
    void OnSequenceStart(const YAML::Mark& /*mark*/, const std::string& /*tag*/,
                         YAML::anchor_t /*anchor*/, YAML::EmitterStyle::value /*style*/) override {}
    void OnSequenceEnd() override {}

private:
    Sink& sink;
    std::string key;
    bool haveKey = false;
    std::size_t depth = 0;
};

class Events {
public:
    static constexpr const char* kFormat = "yaml";

    void load(const std::string& yaml) { stream.str(yaml); }

    template <typename Sink>
    void read(Sink& sink) {
        Handler<Sink> handler(sink);
        YAML::Parser parser(stream);
        parser.HandleNextDocument(handler);
    }

private:
    std::istringstream stream;
};

}  // namespace

JobTypes yamlCppJobs() {
    return readJobs<Events>("yaml-cpp");
}

}  // namespace bench
