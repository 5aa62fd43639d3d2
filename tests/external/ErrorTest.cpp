#include <gtest/gtest.h>
#include <kiv/Error.h>

#include <exception>
#include <string>
#include <type_traits>

namespace {

/// Which of a ladder of handlers, the narrowest first, catches the exception.
template <typename Exception>
std::string catcherOf(const Exception& exception) {
    try {
        throw Exception(exception);
    } catch (const std::exception&) {
        return "std::exception";
    } catch (const kiv::internal::error&) {
        return "internal::error";
    } catch (const kiv::data::invalid&) {
        return "data::invalid";
    } catch (const kiv::data::error&) {
        return "data::error";
    } catch (const kiv::Error&) {
        return "Error";
    }
}

template <typename Exception>
void expectTexts() {
    // As a handler for the root sees it, and as a copy of a copy.
    const auto type = static_cast<kiv::errorType>(4);
    auto original = std::make_unique<Exception>("Class", "function", "What\nhappened.", type);
    const Exception copy = *original;
    original.reset();
    Exception assigned("", "", "", static_cast<kiv::errorType>(0));
    assigned = copy;
    const kiv::Error& seen = assigned;
    EXPECT_EQ(seen.className(), "Class");
    EXPECT_EQ(seen.functionName(), "function");
    EXPECT_EQ(seen.message(), "What\nhappened.");
    EXPECT_EQ(seen.type(), 4);
}

}  // namespace

TEST(Error, isCaughtByItsOwnKind) {
    const auto type = static_cast<kiv::errorType>(4);
    EXPECT_EQ(catcherOf(kiv::internal::error("", "", "", type)), "internal::error");
    EXPECT_EQ(catcherOf(kiv::data::invalid("", "", "", type)), "data::invalid");
    EXPECT_EQ(catcherOf(kiv::data::error("", "", "", type)), "data::error");
    static_assert(std::is_base_of_v<kiv::data::error, kiv::data::invalid>);
    static_assert(std::is_base_of_v<kiv::Error, kiv::data::error>);
    static_assert(std::is_base_of_v<kiv::Error, kiv::internal::error>);
    static_assert(std::has_virtual_destructor_v<kiv::data::invalid>);
    static_assert(std::has_virtual_destructor_v<kiv::internal::error>);
}

TEST(Error, carriesItsTextsThroughCopies) {
    expectTexts<kiv::internal::error>();
    expectTexts<kiv::data::error>();
    expectTexts<kiv::data::invalid>();
}
