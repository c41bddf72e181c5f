/* DV_TRY as a C caller uses it; called from dv_try_test.cpp. */

#include "dvtypes/base.h"

void c_caller_raises_through(int depth);

/* Raises -1000 in the innermost of depth + 1 recovery points, and a code lower by one in each catch block;
   a depth below 0 raises nothing. */
void c_caller_raises_through(int depth) {
    DV_TRY {
        if (depth == 0) dv_err_and_jmp("dv_try_c.c", 1, "c_caller", 0, 0, -1000);
        if (depth > 0) c_caller_raises_through(depth - 1);
    }
    DV_CATCH(error) { dv_err_and_jmp("dv_try_c.c", 2, "c_caller", 0, 0, error->code - 1); }
    DV_END_TRY;
}
