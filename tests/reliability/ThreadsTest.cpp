#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "support/EveryOperation.h"

TEST(Threads, useTheLibraryAtOnceEachWithObjectsOfItsOwn) {
    const std::string expected = everyOperation::run();
    std::vector<std::string> results(8, "nothing");
    std::vector<std::thread> threads;
    for (std::string& result : results)
        threads.emplace_back([&result, &expected] {
            for (int i = 0; i < 200; ++i) {
                result = everyOperation::run();
                if (result != expected) return;
            }
        });
    for (std::thread& thread : threads) thread.join();
    for (const std::string& result : results) EXPECT_EQ(result, expected);
}
