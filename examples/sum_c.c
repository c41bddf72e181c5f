// Adds up the numbers given as arguments, exactly, from C: sum_c 0.1 0.2 0.3 prints .6

#include <dvtypes/number.h>
#include <stdio.h>

int main(int argc, char **argv) {
    number_t sum = {1, 0x80, {0}};
    volatile int status = 0;
    DV_TRY {
        for (int i = 1; i < argc; ++i) {
            number_t value;
            number_from_str(&value, 0, argv[i], NULL);
            number_add(&sum, &value);
        }
        number_println(&sum);
    }
    DV_CATCH(error) {
        fprintf(stderr, "%d: %s\n", error->code, error->message);
        status = 1;
    }
    DV_END_TRY;
    return status;
}
