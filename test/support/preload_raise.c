// A stand-in for a host's base library: its dv_err_and_jmp prints the code and the function, and ends the
// process.

#include <stdio.h>
#include <stdlib.h>

#include "dvtypes/base.h"

void dv_err_and_jmp(const char *src_file, int line, const char *func_name, int reserved1, int reserved2,
                    int code, ...) {
    (void)src_file;
    (void)line;
    printf("preloaded %d %s\n", code, reserved1 == 0 && reserved2 == 0 ? func_name : "?");
    exit(0);
}
