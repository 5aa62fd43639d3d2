#include <gtest/gtest.h>
#include <kiv/Error.h>

#include <exception>
#include <memory>
#include <string>
#include <type_traits>

template <typename Exception>
class ErrorTest : public testing::Test {};
using Kinds = testing::Types<kiv::internal::error, kiv::data::error, kiv::data::invalid>;
TYPED_TEST_SUITE(ErrorTest, Kinds, );

TYPED_TEST(ErrorTest, carriesItsTextsThroughCopiesToAHandlerForTheRoot) {
    auto original = std::make_unique<TypeParam>("Class", "function", "What\nhappened.",
                                                static_cast<kiv::errorType>(4));
    TypeParam assigned("", "", "", kiv::errorTypeFailure);
    assigned = TypeParam(*original);
    original.reset();
    try {
        throw TypeParam(assigned);
    } catch (const kiv::Error& seen) {
        EXPECT_EQ(seen.className() + seen.functionName() + seen.message(),
                  "ClassfunctionWhat\nhappened.");
        EXPECT_EQ(seen.type(), 4);
    }
    static_assert(!std::is_base_of_v<std::exception, TypeParam>);
    static_assert(std::has_virtual_destructor_v<TypeParam>);
}

static_assert(std::is_base_of_v<kiv::data::error, kiv::data::invalid>);
static_assert(!std::is_base_of_v<kiv::data::error, kiv::internal::error>);
