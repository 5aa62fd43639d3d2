#include <gtest/gtest.h>
#include <kiv/ActionBuilder.h>
#include <kiv/Error.h>

#include <string>
#include <utility>
#include <vector>

#include "support/Failure.h"

using kiv::ActionBuilder;

TEST(ActionBuilder, appendsParameters) {
    struct Parameter {
        const char *name, *value;  // no name: the parameter is a value alone
    };
    struct Row {
        const char* action;
        std::vector<Parameter> parameters;
        const char* line;
    };
    for (const auto& [action, parameters, line] : {
             Row{"start",
                 {{"speed", "10"}, {"mode", "a,b"}, {nullptr, "fast"}},
                 ">start speed=10, mode=a\\,b, fast"},
             Row{"stop", {{nullptr, "now"}}, ">stop now"},
             Row{"", {}, ">"},
             Row{">run ", {}, ">>run "},
             Row{"act", {{nullptr, ""}}, ">act "},
             Row{"act", {{nullptr, ""}, {nullptr, "x"}}, ">act , x"},
             Row{"act", {{"a", ""}, {"b", "C:\\dir\\"}}, ">act a=, b=C:\\dir\\"},
             Row{"act", {{"a", ",1,,2,"}, {nullptr, "x,y"}}, ">act a=\\,1\\,\\,2\\,, x\\,y"},
             Row{"act", {{"a,b=", "c\\,d"}}, ">act a,b==c\\\\,d"},
             Row{"act", {{" ", "# = \n"}}, ">act  =# = \n"},
         }) {
        ActionBuilder builder(action);
        for (const auto& [name, value] : parameters)
            name == nullptr ? builder.addParam(value) : builder.addParam(name, value);
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

TEST(ActionBuilder, copiesCarryOnAndMovesLeaveNoText) {
    ActionBuilder source("a");
    ActionBuilder copy = source;
    copy.addParam("1");
    EXPECT_EQ(source.getKDX(), ">a");
    source = copy;
    source.addParam("2");
    EXPECT_EQ(source.getKDX(), ">a 1, 2");

    // NOLINTBEGIN(bugprone-use-after-move): what a move leaves behind is promised.
    ActionBuilder moved = std::move(source);
    EXPECT_EQ(moved.getKDX(), ">a 1, 2");
    EXPECT_EQ(source.getKDX(), "");
    source = std::move(copy);
    source.addParam("3");
    EXPECT_EQ(source.getKDX(), ">a 1, 3");
    EXPECT_EQ(copy.getKDX(), "");
    // NOLINTEND(bugprone-use-after-move)
}
