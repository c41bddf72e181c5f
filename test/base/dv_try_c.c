/* DV_TRY as a C caller uses it; called from dv_try_test.cpp. */

#include <string.h>

#include "dvtypes/base.h"

int c_caller_catches(int code);
int c_caller_counts_nested_raises(void);

/* Raises the code and returns what was caught; code 0 raises nothing and gives 1000. */
int c_caller_catches(int code) {
    volatile int caught = 0;
    DV_TRY {
        if (code != 0) dv_err_and_jmp("dv_try_c.c", 1, "c_caller_catches", 0, 0, code);
        caught = 1000;
    }
    DV_CATCH(error) { caught = strcmp(error->function, "c_caller_catches") == 0 ? error->code : 1; }
    DV_END_TRY;
    return caught;
}

/* Raises in the try block and in the catch block: the outer block catches the second. */
int c_caller_counts_nested_raises(void) {
    volatile int count = 0;
    DV_TRY {
        DV_TRY { dv_err_and_jmp("dv_try_c.c", 2, "inner", 0, 0, -5070); }
        DV_CATCH(error) {
            if (error->code == -5070) ++count;
            dv_rethrow(error);
        }
        DV_END_TRY;
        count = 100;
    }
    DV_CATCH(outer) {
        if (outer->code == -5070 && outer->line == 2) ++count;
    }
    DV_END_TRY;
    return count;
}
