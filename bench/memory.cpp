// How much memory a conversion needs beside its result, and a document beside its text:
// memory DIRECTORY CORPUS...
//
// Counts what operator new hands out, in this program and in the library.

#include <kiv/KDXDocument.h>
#include <kiv/KDXToStringMapMap.h>
#include <kiv/StringMapMapToKDX.h>
#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <new>

#include "Corpus.h"

namespace {

std::size_t heap = 0;
std::size_t peak = 0;

}  // namespace

void* operator new(std::size_t size) {
    void* block = std::malloc(size);
    if (block == nullptr) throw std::bad_alloc();
    heap += malloc_usable_size(block);
    peak = std::max(peak, heap);
    return block;
}

void operator delete(void* block) noexcept {
    heap -= malloc_usable_size(block);
    std::free(block);
}

void operator delete(void* block, std::size_t /*size*/) noexcept {
    operator delete(block);
}

namespace {

/// Bytes beyond what was on the heap at the construction.
class Measure {
public:
    Measure() { peak = heap; }
    double now() const { return static_cast<double>(heap - before); }
    double highest() const { return static_cast<double>(peak - before); }

private:
    std::size_t before = heap;
};

void printRow(const char* task, const std::string& corpus, double used, double atMost) {
    std::printf("| %-12s | %-12s | %11.0f | %11.0f | %5.2f | %s |\n", task, corpus.c_str(), used,
                atMost, used / atMost, used <= atMost ? "met    " : "NOT MET");
}

double statementsIn(const std::string& text) {
    kiv::KDXReader reader(text);
    double count = 0;
    while (reader.next()) ++count;
    return count;
}

void measure(const std::string& directory, const std::string& name) {
    const std::string text = bench::Corpus(directory, name).text("kdx");
    kiv::StringMapMap map;
    const Measure reading;
    kiv::KDXToStringMapMap::convert(text, map);
    printRow("text-to-map", name, reading.highest(), 1.05 * reading.now());

    std::string written;
    const Measure writing;
    kiv::StringMapMapToKDX::convert(map, written);
    printRow("map-to-text", name, writing.highest(),
             1.1 * static_cast<double>(written.size()) + 100 * static_cast<double>(map.size()));

    std::string loaded = text;
    const Measure loading;
    const kiv::KDXDocument document(std::move(loaded));
    printRow("document", name, loading.now(), 48 * statementsIn(text));
}

}  // namespace

int main(int argc, char** argv) {
    std::puts("| peak heap    | corpus       |       bytes |     at most | ratio |         |");
    std::puts("| ------------ | ------------ | ----------: | ----------: | ----: | ------- |");
    for (int i = 2; i < argc; ++i) measure(argv[1], argv[i]);
    return 0;
}
