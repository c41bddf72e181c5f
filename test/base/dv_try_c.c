/* DV_TRY as C callers use it; called from dv_try_test.cpp. */

#include "dvtypes/base.h"

void c_caller_raises_through(int depth);
int c_caller_leaves_by(int way);

static void raise_(int code) { dv_err_and_jmp("dv_try_c.c", 1, "c_caller", 0, 0, code); }

/* Raises -1000 in the innermost of depth + 1 recovery points, and a code lower by one in each catch block;
   a depth below 0 raises nothing. */
void c_caller_raises_through(int depth) {
    DV_TRY {
        if (depth == 0) raise_(-1000);
        if (depth > 0) c_caller_raises_through(depth - 1);
    }
    DV_CATCH(error) { raise_(error->code - 1); }
    DV_END_TRY;
}

/* Leaves two recovery points by a jump: from the inner try block (ways 0 to 3) or the inner catch block (4 to
   7). Returns how often the loop around them began: 1 for return, goto and break, 3 for continue; 0 for no
   way. */
int c_caller_leaves_by(int way) {
    volatile int rounds = 0;
    while (rounds < 3) {
        ++rounds;
        DV_TRY {
            DV_TRY {
                if (way >= 4) raise_(-1000);
                if (way == 0) return rounds;
                if (way == 1) goto out;
                if (way == 2) break;
                if (way == 3) continue;
            }
            DV_CATCH(error) {
                if (error->code != -1000) return -1;
                if (way == 4) return rounds;
                if (way == 5) goto out;
                if (way == 6) break;
                if (way == 7) continue;
            }
            DV_END_TRY;
            return 0;
        }
        DV_CATCH(error) { return -2; }
        DV_END_TRY;
    }
out:
    return rounds;
}
