// The library itself.

#include <kiv/KDXDocument.h>
#include <kiv/KDXFormatting.h>
#include <kiv/KDXReader.h>
#include <kiv/KDXToStringMapMap.h>
#include <kiv/StringMapMapToKDX.h>

#include "Job.h"
#include "Library.h"
#include "ReadJob.h"

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

using LineType = kiv::MiniKDXParser::lineType;

template <typename Sink>
void tell(Sink& sink, LineType kind, std::string_view first, std::string_view second) {
    if (kind == LineType::lineParameter) sink.parameter(first, second);
    if (kind == LineType::lineObject) sink.openObject(first, second);
    if (kind == LineType::lineEnd) sink.closeObject();
}

/// KDXReader over a text.
class Statements {
public:
    static constexpr const char* kFormat = "kdx";

    void load(std::string kdx) { text = std::move(kdx); }

    template <typename Sink>
    void read(Sink& sink) {
        kiv::KDXReader reader(text);
        while (reader.next()) tell(sink, reader.kind(), reader.first(), reader.second());
    }

private:
    std::string text;
};

/// KDXDocument loaded and walked.
class LoadAndWalk {
public:
    static constexpr const char* kFormat = "kdx";

    void load(std::string kdx) { text = std::move(kdx); }

    template <typename Sink>
    void read(Sink& sink) {
        document.emplace(std::move(text));
        kiv::KDXDocumentReader reader(*document);
        while (reader.next()) tell(sink, reader.kind(), reader.first(), reader.second());
    }

private:
    std::string text;
    std::optional<kiv::KDXDocument> document;
};

/// What stands in the middle of a document, to be changed.
struct Target {
    explicit Target(const kiv::KDXDocument& document)
        : node(document.nodeAt(document.text().size() / 2)) {
        while (document.kind(node) != LineType::lineParameter) node = document.next(node);
    }

    kiv::KDXDocument::Node node;
};

class Write : public Job {
public:
    explicit Write(const Corpus& corpus) : document(corpus.text("kdx")) {}
    void prepare() override { text = std::string(); }
    void run() override { document.write(text); }
    Counts counts() const override { return countsOf(mapOf(text)); }

protected:
    kiv::KDXDocument document;
    std::string text;
};

class WriteChanged : public Write {
public:
    explicit WriteChanged(const Corpus& corpus) : Write(corpus) {
        const auto node = Target(document).node;
        const std::string value = document.second(node);
        document.setValue(node, "");
        document.setValue(node, value);
    }
};

class LoadAndWrite : public Job {
public:
    explicit LoadAndWrite(const Corpus& corpus) : text(corpus.text("kdx")) {}
    void prepare() override {
        document.reset();
        written = std::string();
        loaded = text;
    }
    void run() override {
        document.emplace(std::move(loaded));
        document->write(written);
    }
    Counts counts() const override { return countsOf(mapOf(written)); }

private:
    std::string text;
    std::string loaded;
    std::optional<kiv::KDXDocument> document;
    std::string written;
};

class Edit : public Job {
public:
    explicit Edit(const Corpus& corpus)
        : original(corpus.text("kdx")), node(Target(original).node) {}
    void prepare() override {
        document = original;
        value = document.second(node);
    }
    void run() override { document.setValue(node, value); }
    Counts counts() const override { return countsOf(mapOf(document.text())); }

private:
    kiv::KDXDocument original;
    kiv::KDXDocument::Node node;
    kiv::KDXDocument document;
    std::string value;
};

}  // namespace

JobTypes libraryJobs() {
    return {{"events", "KDX", "kdx", makeJob<Events>},
            {"text-to-map", "KDX", "kdx", makeJob<TextToMap>},
            {"lines-to-map", "KDX", "kdx", makeJob<LinesToMap>},
            {"map-to-text", "KDX", "kdx", makeJob<MapToText>},
            {"re-indent", "KDX", "kdx", makeJob<Reindent>},
            {"format", "KDX", "kdx", makeJob<Format>},
            {"format", "indentKDX", "kdx", makeJob<Reindent>},
            touchJob<Statements>("read", "KDX"),
            touchJob<LoadAndWalk>("document", "KDX"),
            firstTouchJob<LoadAndWalk>("first-document", "KDX"),
            {"write", "KDX", "kdx", makeJob<Write>},
            {"write", "KDX changed", "kdx", makeJob<WriteChanged>},
            {"edit", "KDX", "kdx", makeJob<Edit>},
            {"edit", "load and write", "kdx", makeJob<LoadAndWrite>}};
}

}  // namespace bench
