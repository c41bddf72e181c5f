// DV_TRY: recovery points by longjmp, in C++ and from C.

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "dvtypes/base.h"

extern "C" int c_caller_catches(int code);
extern "C" int c_caller_counts_nested_raises(void);

namespace {

[[noreturn]] void raise_(int code) { dv_err_and_jmp("dv_try_test.cpp", 7, "raise_", 0, 0, code); }

// Nests recovery points to the depth, raises in the innermost and again in each handler: all must run, from
// the innermost outwards. Returns the last code, which each handler lowers by one.
int raise_through_(int depth) {
    volatile int code = 0;
    DV_TRY {
        if (depth == 0) raise_(-1000);
        raise_(raise_through_(depth - 1));
    }
    DV_CATCH(error) { code = error->code - 1; }
    DV_END_TRY;
    return code;
}

TEST(DvTry, CatchesInCAndKeepsWhatWasChangedBefore) {
    EXPECT_EQ(c_caller_catches(-5074), -5074);
    EXPECT_EQ(c_caller_catches(0), 1000);
    EXPECT_EQ(c_caller_counts_nested_raises(), 2);
}

TEST(DvTry, HandlersRunFromTheInnermostOutwards) {
    for (const int depth : {0, 1, 2, 50}) EXPECT_EQ(raise_through_(depth), -1001 - depth);
}

TEST(DvTry, LeavesNoRecoveryPointBehind) {
    for (int i = 0; i < 1000; ++i)
        ASSERT_EQ(c_caller_catches(i % 2 == 0 ? -5005 : 0), i % 2 == 0 ? -5005 : 1000);
    EXPECT_DEATH(raise_(-5070), "raise_: error -5070 raised without a recovery point");
}

TEST(DvTry, MixesWithDvProtect) {
    volatile int inner = 0;
    volatile int outer = 0;
    DV_TRY {
        inner = dv_protect([](void *) { raise_through_(3), raise_(-5068); }, nullptr, nullptr);
        raise_(-5069);
    }
    DV_CATCH(error) { outer = error->code; }
    DV_END_TRY;
    EXPECT_EQ(inner, -5068);
    EXPECT_EQ(outer, -5069);
}

TEST(DvTry, EachThreadHasItsOwnRecoveryPoints) {
    std::atomic<int> wrong = 0;
    constexpr int count = 8;
    std::vector<std::thread> threads;
    threads.reserve(count);
    for (int id = 0; id < count; ++id) {
        threads.emplace_back([id, &wrong] {
            for (int round = 0; round < 500; ++round) {
                if (raise_through_(id) != -1001 - id) ++wrong;
                if (round % 16 == 0) std::this_thread::yield();
            }
        });
    }
    for (std::thread &thread : threads) thread.join();
    EXPECT_EQ(wrong, 0);
}

}  // namespace
