// Divides by zero, and tells who got the raise: run alone, and with preload_raise.c's library preloaded.

#include <stdio.h>

#include "dvtypes/number.h"

static void divide_by_zero_(void *arg) { number_div((number_t *)arg, _number_zero); }

int main(void) {
    number_t x;
    dv_error_t error;
    number_from_int32(&x, 5);
    if (dv_protect(divide_by_zero_, &x, &error) == 0) return 1;
    printf("default %d %s\n", error.code, error.function);
    return 0;
}
