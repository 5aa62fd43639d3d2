#include <gtest/gtest.h>
#include <kiv/KDXPath.h>

#include <stdexcept>
#include <string>
#include <vector>

using kiv::KDXPath;

namespace {

/// "[type|name]" for each component.
std::string componentsOf(const KDXPath& path) {
    std::string text;
    for (std::size_t i = 0; i < path.numComponent(); ++i)
        text += '[' + path.getType(i) + '|' + path.getName(i) + ']';
    return text;
}

struct Row {
    const char *text, *components, *canonical;
};
const std::vector<Row> kTexts = {
    {"", "", ""},
    {"/", "[|]", "/"},
    {"//B", "[|][B|B]", "//B"},
    {"/A/", "[A|A][|]", "/A/"},
    {"/Sample:s1/Channel:A/F", "[Sample|s1][Channel|A][F|F]", "/Sample:s1/Channel:A/F"},
    {"Sample:s1/B", "[Sample|s1][B|B]", "/Sample:s1/B"},
    {"/Config:", "[Config|Config]", "/Config"},
    {"/A::b", "[A|:b]", "/A::b"},
    {"/:n", "[|n]", "/:n"},
    {"/my type: a:name ", "[my type| a:name ]", "/my type: a:name "},
};

// In order. Byte order of the texts would put "/A 1" and "/A.x" between "/A" and "/A/B".
const std::vector<std::string> kOrdered = {
    "",       "/",    "//A",    "/:n",  "/A",  "/A/B", "/A/B/C", "/A/B:a", "/A:B", "/A:a",
    "/A:a/B", "/A 1", "/A 1/B", "/A.x", "/AB", "/a:Z", "/a",     "/a/b",   "/a:b", "/\xC3\xA4",
};

}  // namespace

TEST(KDXPath, readsPathText) {
    for (const auto& [text, components, canonical] : kTexts) {
        const KDXPath path(text);
        EXPECT_EQ(componentsOf(path), components) << text;
        EXPECT_EQ(path.getSubPath(0, path.numComponent()), canonical) << text;
    }
}

TEST(KDXPath, getSubPathIsTheTextOfSomeComponents) {
    const KDXPath path("/Sample:s1/Config:Config/F");
    EXPECT_EQ(path.getSubPath(0, 0), "");
    EXPECT_EQ(path.getSubPath(0, 2), "/Sample:s1/Config");
    EXPECT_EQ(path.getSubPath(1, 99), "/Config/F");
    EXPECT_EQ(path.getSubPath(3, 1), "");
    EXPECT_THROW(path.getSubPath(4, 0), std::out_of_range);
    EXPECT_THROW(path.getType(3), std::out_of_range);
    EXPECT_THROW(KDXPath().getName(0), std::out_of_range);
    KDXPath copy;
    copy = path;
    EXPECT_EQ(copy.getSubPath(0, 3), path.getSubPath(0, 3));
}

// That each pair of the table compares as the places do makes the order a strict weak one.
TEST(KDXPath, ordersByComponent) {
    for (std::size_t i = 0; i < kOrdered.size(); ++i)
        for (std::size_t j = 0; j < kOrdered.size(); ++j)
            EXPECT_EQ(KDXPath(kOrdered[i]) < KDXPath(kOrdered[j]), i < j)
                << kOrdered[i] << " and " << kOrdered[j];
}
