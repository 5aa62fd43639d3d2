#include <thread>

#include "support/EveryOperation.h"

TEST(Threads, useTheLibraryAtOnceEachWithObjectsOfItsOwn) {
    const auto runAll = [] {
        std::string text;
        for (const auto operation : everyOperation::kOperations) text += operation();
        return text;
    };
    const std::string expected = runAll();
    std::vector<std::string> results(8, "nothing");
    std::vector<std::thread> threads;
    threads.reserve(results.size());
    for (std::string& result : results)
        threads.emplace_back([&] {
            result = expected;
            for (int i = 0; i < 200 && result == expected; ++i) result = runAll();
        });
    for (std::thread& thread : threads) thread.join();
    for (const std::string& result : results) EXPECT_EQ(result, expected);
}
