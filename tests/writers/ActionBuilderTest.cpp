#include <kiv/ActionBuilder.h>

#include <utility>
#include <vector>

#include "support/Failure.h"
#include "support/ValueSemantics.h"

using kiv::ActionBuilder;

namespace {

/// The line of an action with these parameters, of which one without a name is a value alone.
std::string lineOf(const std::string& action,
                   const std::vector<std::pair<std::string, std::string>>& parameters) {
    ActionBuilder builder(action);
    for (const auto& [name, value] : parameters)
        name.empty() ? builder.addParam(value) : builder.addParam(name, value);
    return builder.getKDX();
}

}  // namespace

TEST(ActionBuilder, appendsParameters) {
    EXPECT_EQ(lineOf("", {}), ">");
    EXPECT_EQ(lineOf(">run ", {}), ">>run ");
    EXPECT_EQ(lineOf("start", {{"n", "10"}, {"m", "a,b"}, {"", "fast"}}),
              ">start n=10, m=a\\,b, fast");
    EXPECT_EQ(lineOf("act", {{"", ""}, {"", "x,y"}}), ">act , x\\,y");
    EXPECT_EQ(lineOf("act", {{"a", ""}, {"b", "C:\\dir\\"}}), ">act a=, b=C:\\dir\\");
    EXPECT_EQ(lineOf("act", {{"a,b=", ",1,,c\\,"}, {" ", "# = \n"}}),
              ">act a,b==\\,1\\,\\,c\\\\,,  =# = \n");
}

TEST(ActionBuilder, refusesAnEmptyNameWithoutAChange) {
    ActionBuilder builder("act");
    EXPECT_EQ(failureOf<kiv::internal::error>([&] { builder.addParam("", "1"); }),
              "ActionBuilder::addParam (4): Parameter name must not be empty.");
    builder.addParam("x", ~0ULL);
    builder.addParam(0);
    EXPECT_EQ(builder.getKDX(), ">act x=18446744073709551615, 0");
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
