// DV_TRY: recovery points by longjmp, in C++ and from C.

#include <gtest/gtest.h>

#include <thread>

#include "dvtypes/base.h"

extern "C" void c_caller_raises_through(int depth);

namespace {

// What comes out of so many recovery points and a raise in each of their catch blocks; 1: no raise.
int caught_(int depth) {
    volatile int code = 0;
    DV_TRY {
        code = 1;
        std::this_thread::yield();
        c_caller_raises_through(depth);
    }
    DV_CATCH(error) { code = code * error->code; }
    DV_END_TRY;
    return code;
}

TEST(DvTry, LeavesNoRecoveryPointBehind) {
    EXPECT_EQ(caught_(-1), 1);
    EXPECT_DEATH(c_caller_raises_through(2), "c_caller: error -1003 raised without a recovery point");
}

TEST(DvTry, RaiseInTheCatchBlockGoesOutwardsInItsOwnThread) {
    std::jthread threads[8];
    for (std::jthread &thread : threads) {
        const int depth = static_cast<int>(&thread - threads);
        thread = std::jthread([depth] {
            for (int round = 0; round < 200; ++round) EXPECT_EQ(caught_(depth), -1001 - depth);
        });
    }
}

}  // namespace
