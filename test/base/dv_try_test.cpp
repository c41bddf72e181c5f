// DV_TRY: recovery points by longjmp, in C++ and from C.

#include <gtest/gtest.h>

#include <thread>

#include "dvtypes/base.h"

extern "C" void c_caller_raises_through(int depth);
extern "C" int c_caller_leaves_by(int way);

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

TEST(DvTry, MayBeLeftByReturnGotoBreakAndContinue) {
    for (const int way : {0, 1, 2, 3, 4, 5, 6, 7}) {
        EXPECT_EQ(c_caller_leaves_by(way), way % 4 == 3 ? 3 : 1) << "way " << way;
        EXPECT_EQ(caught_(0), -1001) << "behind way " << way;
        EXPECT_DEATH(c_caller_raises_through(0), "raised without a recovery point") << "behind way " << way;
    }
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
