#include <kiv/ActionBuilder.h>
#include <kiv/Error.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/Failure.h"
#include "support/ValueSemantics.h"

using kiv::ActionBuilder;

namespace {

const std::nullopt_t kAlone = std::nullopt;  // a value without a name

struct Row {
    const char* action;
    std::vector<std::pair<std::optional<std::string>, const char*>> parameters;
    const char* line;
};
const std::vector<Row> kRows = {
    {"", {}, ">"},
    {">run ", {}, ">>run "},
    {"start", {{"n", "10"}, {"m", "a,b"}, {kAlone, "fast"}}, ">start n=10, m=a\\,b, fast"},
    {"act", {{kAlone, ""}}, ">act "},
    {"act", {{kAlone, ""}, {kAlone, "x"}}, ">act , x"},
    {"act", {{"a", ""}, {"b", "C:\\dir\\"}}, ">act a=, b=C:\\dir\\"},
    {"act", {{"a", ",1,,2,"}, {kAlone, "x,y"}}, ">act a=\\,1\\,\\,2\\,, x\\,y"},
    {"act", {{"a,b=", "c\\,d"}, {" ", "# = \n"}}, ">act a,b==c\\\\,d,  =# = \n"},
};

}  // namespace

TEST(ActionBuilder, appendsParameters) {
    for (const auto& [action, parameters, line] : kRows) {
        ActionBuilder builder(action);
        for (const auto& [name, value] : parameters)
            name ? builder.addParam(*name, value) : builder.addParam(value);
        EXPECT_EQ(builder.getKDX(), line);
    }
}

TEST(ActionBuilder, refusesAnEmptyNameWithoutAChange) {
    ActionBuilder builder("act");
    for (const char* line : {">act x", ">act x, x"}) {
        EXPECT_EQ(failureOf<kiv::internal::error>([&] { builder.addParam("", "1"); }),
                  "ActionBuilder::addParam (4): Parameter name must not be empty.");
        builder.addParam("x");
        EXPECT_EQ(builder.getKDX(), line);
    }
}

TEST(ActionBuilder, isAValueThatGoesOnWhereItWas) {
    const auto textOf = [](ActionBuilder builder) {
        const std::string before = builder.getKDX();
        builder.addParam("x");
        return before.empty() ? before : builder.getKDX();
    };
    ActionBuilder source("a");
    source.addParam("1");
    EXPECT_EQ(textOf(source), ">a 1, x");
    expectValueSemantics(source, ActionBuilder("b"), textOf, "");
}
