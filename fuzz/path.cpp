// Three path texts: components and order.

#include <kiv/KDXPath.h>

#include "Support.h"

namespace {

bool beginsWith(const kiv::KDXPath& path, const kiv::KDXPath& start) {
    if (path.numComponent() < start.numComponent()) return false;
    for (std::size_t i = 0; i < start.numComponent(); ++i)
        if (path.getType(i) != start.getType(i) || path.getName(i) != start.getName(i))
            return false;
    return true;
}

bool same(const kiv::KDXPath& a, const kiv::KDXPath& b) {
    return beginsWith(a, b) && beginsWith(b, a);
}

void requireRoundTrip(const std::string& text) {
    const kiv::KDXPath path(text);
    const kiv::KDXPath again(path.getSubPath(0, path.numComponent()));
    fuzz::require(same(path, again), "the text of a path is that path");
    const kiv::KDXPath half(path.getSubPath(0, path.numComponent() / 2));
    fuzz::require(half.numComponent() == path.numComponent() / 2 && beginsWith(path, half),
                  "a part of a path begins it");
    fuzz::require(!(path < half) && (half < path || same(half, path)), "an ancestor comes first");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const std::vector<std::string> texts = {input.until('\n'), input.until('\n'), input.all()};
    for (const std::string& text : texts) requireRoundTrip(text);

    const kiv::KDXPath a(texts[0]);
    const kiv::KDXPath b(texts[1]);
    const kiv::KDXPath c(texts[2]);
    fuzz::require(!(a < kiv::KDXPath(a)), "no path comes before itself");
    fuzz::require(!(a < b) || !(b < a), "of two paths one comes first");
    fuzz::require((!(a < b) && !(b < a)) == same(a, b), "only the same paths are equivalent");
    if (!(a < b) || !(b < c)) return 0;
    fuzz::require(a < c, "the order is transitive");
    fuzz::require(!beginsWith(c, a) || beginsWith(b, a), "descendants follow their ancestor");
    return 0;
}
