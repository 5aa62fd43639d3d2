// What the library's results cost at the very least: the same allocations and copies, and nothing
// read or decided.

#include <kiv/StringMapMapToKDX.h>

#include <iterator>
#include <string_view>

#include "Job.h"
#include "Library.h"

namespace bench {
namespace {

/// Looks at both ends of every line.
class TouchLines : public Job {
public:
    explicit TouchLines(const Corpus& corpus)
        : lines(linesOf(corpus.text("kdx"))), expected(corpus.expected("kdx")) {}
    void prepare() override { sink = {}; }
    void run() override {
        for (const auto& line : lines) sink.openObject(line);
    }
    Counts counts() const override {
        return sink.counts().objects == lines.size() ? expected : Counts();
    }

private:
    std::vector<std::string> lines;
    Counts expected;
    TouchSink sink;
};

class CopyLines : public Job {
public:
    explicit CopyLines(const Corpus& corpus) : lines(linesOf(corpus.text("kdx"))) {}
    void prepare() override { copy = std::vector<std::string>(); }
    void run() override { copy = lines; }
    Counts counts() const override { return countsOf(copy); }

private:
    std::vector<std::string> lines;
    std::vector<std::string> copy;
};

class CopyText : public Job {
public:
    explicit CopyText(const Corpus& corpus) : text(corpus.text("kdx")) {}
    void prepare() override { copy = std::string(); }
    void run() override { copy = text; }
    Counts counts() const override { return countsOf(mapOf(copy)); }

private:
    std::string text;
    std::string copy;
};

/// Events of a text with every path, name and value ready to be copied, in one block of memory.
class ReadyCut : public kiv::MiniKDXParser {
public:
    enum class Kind { object, parameter, end };
    struct Step {
        Kind kind;
        std::size_t firstLength;   // of a path or a name
        std::size_t secondLength;  // of a value
    };

    using MiniKDXParser::MiniKDXParser;

    std::string texts;
    std::vector<Step> steps;

protected:
    void newObject(const std::string& type, const std::string& name) override {
        std::string path;
        for (const auto& object : objectStack) path += component(object.first, object.second);
        path += component(type, name);
        texts += path;
        steps.push_back({Kind::object, path.size(), 0});
    }
    void newParameter(const std::string& name, const std::string& value) override {
        texts += name;
        texts += value;
        steps.push_back({Kind::parameter, name.size(), value.size()});
    }
    void endObject() override { steps.push_back({Kind::end, 0, 0}); }

private:
    static std::string component(const std::string& type, const std::string& name) {
        return name.empty() || name == type ? '/' + type : '/' + type + ':' + name;
    }
};

class FillMap : public Job {
public:
    explicit FillMap(const Corpus& corpus) : input(linesOf(corpus.text("kdx"))) {
        input.parse();
        input.setCommands({});
    }
    void prepare() override { map.clear(); }
    void run() override {
        next = input.texts.data();
        for (const auto& step : input.steps) take(step);
    }
    Counts counts() const override { return countsOf(map); }

private:
    using Entry = kiv::StringMapMap::iterator;

    void take(const ReadyCut::Step& step) {
        switch (step.kind) {
            case ReadyCut::Kind::object: {
                const auto hint = open.empty() ? map.end() : std::next(last);
                last = map.emplace_hint(hint, cut(step.firstLength), kParameters);
                open.push_back(last);
                return;
            }
            case ReadyCut::Kind::parameter: {
                auto& parameters = open.back()->second;
                const std::string_view name = cut(step.firstLength);
                parameters.emplace_hint(parameters.end(), name, cut(step.secondLength));
                return;
            }
            case ReadyCut::Kind::end: open.pop_back();
        }
    }

    std::string_view cut(std::size_t length) {
        const std::string_view text(next, length);
        next += length;
        return text;
    }

    inline static const kiv::StringMapMap::mapped_type kParameters;

    ReadyCut input;
    const char* next = nullptr;
    kiv::StringMapMap map;
    Entry last;
    std::vector<Entry> open;
};

/// The lines of objects in a map's text, with their paths cut: views of the map's keys.
class WriteSteps : public kiv::MiniKDXParser {
public:
    struct Step {
        std::string_view type;
        std::string_view name;
        std::size_t indent;
        const kiv::StringMapMap::mapped_type* parameters;  // null at an END
    };

    WriteSteps(const std::vector<std::string>& lines, const kiv::StringMapMap& source)
        : MiniKDXParser(lines), map(source) {}

    std::vector<Step> steps;

protected:
    void newObject(const std::string& type, const std::string& name) override {
        path.resize(open.empty() ? 0 : open.back().pathLength);
        const std::size_t typeBegin = path.size() + 1;
        path.append("/").append(type);
        if (!name.empty()) path.append(":").append(name);
        const auto& [key, parameters] = *map.find(path);
        const auto cut = std::string_view(key).substr(typeBegin);
        const auto shownName = name.empty() ? cut.substr(cut.size()) : cut.substr(type.size() + 1);
        steps.push_back({cut.substr(0, type.size()), shownName, 2 * open.size(), &parameters});
        open.push_back({steps.size() - 1, path.size()});
    }
    void endObject() override {
        steps.push_back(steps[open.back().step]);
        steps.back().parameters = nullptr;
        open.pop_back();
    }

private:
    struct OpenObject {
        std::size_t step;
        std::size_t pathLength;
    };

    const kiv::StringMapMap& map;
    std::string path;
    std::vector<OpenObject> open;
};

class AppendText : public Job {
public:
    explicit AppendText(const Corpus& corpus) : map(mapOf(corpus.text("kdx"))) {
        std::string written;
        kiv::StringMapMapToKDX::convert(map, written);
        size = written.size();
        WriteSteps parser(linesOf(written), map);
        parser.parse();
        steps = std::move(parser.steps);
    }
    void prepare() override { text = std::string(); }
    void run() override {
        text.reserve(size);
        for (const auto& step : steps) step.parameters == nullptr ? appendEnd(step) : append(step);
    }
    Counts counts() const override {
        return text.size() == size ? countsOf(mapOf(text)) : Counts();
    }

private:
    void append(const WriteSteps::Step& step) {
        text.append(step.indent, ' ').append(step.type).append(": ").append(step.name) += '\n';
        for (const auto& [name, value] : *step.parameters) {
            text.append(step.indent + 2, ' ').append(name).append(" = ").append(value) += '\n';
        }
    }
    void appendEnd(const WriteSteps::Step& step) {
        text.append(step.indent, ' ').append("END # ").append(step.type).append(":");
        text.append(step.name) += '\n';
    }

    kiv::StringMapMap map;
    std::size_t size = 0;
    std::vector<WriteSteps::Step> steps;
    std::string text;
};

}  // namespace

JobTypes floorJobs() {
    return {{"events", "floor", "kdx", makeJob<TouchLines>},
            {"re-indent", "floor", "kdx", makeJob<CopyLines>},
            {"write", "floor", "kdx", makeJob<CopyText>},
            {"text-to-map", "floor", "kdx", makeJob<FillMap>},
            {"lines-to-map", "floor", "kdx", makeJob<FillMap>},
            {"map-to-text", "floor", "kdx", makeJob<AppendText>}};
}

}  // namespace bench
