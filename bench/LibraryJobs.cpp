// The library itself.

#include <kiv/KDXFormatting.h>
#include <kiv/KDXToStringMapMap.h>
#include <kiv/StringMapMapToKDX.h>

#include "Job.h"
#include "Library.h"

namespace bench {
namespace {

class Events : public Job {
public:
    explicit Events(const Corpus& corpus) : parser(linesOf(corpus.text("kdx"))) {}
    void prepare() override { parser.sink = {}; }
    void run() override { parser.parse(); }
    Counts counts() const override { return parser.sink.counts(); }

private:
    TouchParser parser;
};

class TextToMap : public Job {
public:
    explicit TextToMap(const Corpus& corpus) : text(corpus.text("kdx")) {}
    void prepare() override { map.clear(); }
    void run() override { kiv::KDXToStringMapMap::convert(text, map); }
    Counts counts() const override { return countsOf(map); }

private:
    std::string text;
    kiv::StringMapMap map;
};

class LinesToMap : public Job {
public:
    explicit LinesToMap(const Corpus& corpus) : lines(linesOf(corpus.text("kdx"))) {}
    void prepare() override { map.clear(); }
    void run() override { kiv::KDXToStringMapMap::convert(lines, map); }
    Counts counts() const override { return countsOf(map); }

private:
    std::vector<std::string> lines;
    kiv::StringMapMap map;
};

class MapToText : public Job {
public:
    explicit MapToText(const Corpus& corpus) : map(mapOf(corpus.text("kdx"))) {}
    void prepare() override { text = std::string(); }
    void run() override { kiv::StringMapMapToKDX::convert(map, text); }
    Counts counts() const override { return countsOf(mapOf(text)); }

private:
    kiv::StringMapMap map;
    std::string text;
};

class Reindent : public Job {
public:
    explicit Reindent(const Corpus& corpus) : lines(linesOf(corpus.text("kdx"))) {}
    void prepare() override { indented = std::vector<std::string>(); }
    void run() override { indented = kiv::KDXFormatting::indentKDX(lines); }
    Counts counts() const override { return countsOf(indented); }

private:
    std::vector<std::string> lines;
    std::vector<std::string> indented;
};

class Format : public Job {
public:
    explicit Format(const Corpus& corpus) : text(corpus.text("kdx")) {}
    void prepare() override { formatted = std::string(); }
    void run() override { formatted = kiv::KDXFormatting::formatKDX(text); }
    Counts counts() const override { return countsOf(linesOf(formatted)); }

private:
    std::string text;
    std::string formatted;
};

}  // namespace

JobTypes libraryJobs() {
    return {{"events", "KDX", "kdx", makeJob<Events>},
            {"text-to-map", "KDX", "kdx", makeJob<TextToMap>},
            {"lines-to-map", "KDX", "kdx", makeJob<LinesToMap>},
            {"map-to-text", "KDX", "kdx", makeJob<MapToText>},
            {"re-indent", "KDX", "kdx", makeJob<Reindent>},
            {"format", "KDX", "kdx", makeJob<Format>}};
}

}  // namespace bench
