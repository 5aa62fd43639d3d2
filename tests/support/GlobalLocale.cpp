// Runs the program's tests under the global locale that the environment variable KIV_TEST_LOCALE
// names: one of the system, which need not be installed, or "hostile", one of our own.

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <locale>
#include <string>

namespace {

class HostileNumbers : public std::numpunct<char> {
    char do_decimal_point() const override { return ';'; }
    char do_thousands_sep() const override { return '#'; }
    std::string do_grouping() const override { return "\1"; }
};

class GlobalLocale : public testing::Environment {
    void SetUp() override {
        const char* name = std::getenv("KIV_TEST_LOCALE");
        if (name == nullptr) return;
        if (std::string(name) == "hostile") {
            std::locale::global(std::locale(std::locale(), new HostileNumbers));
        } else if (std::setlocale(LC_ALL, name) == nullptr) {
            GTEST_SKIP() << "no locale " << name;
        }
    }
};

const auto* const kEnvironment = testing::AddGlobalTestEnvironment(new GlobalLocale);

}  // namespace
