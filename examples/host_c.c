// A server's own base library, by longjmp, from C: its dv_err_and_jmp takes the place of the default one and
// ends the statement that raised. Everything else is the default's. Nothing is left behind by a failed
// statement.
//
//   host_c '29.02.2024' 'DD.MM.YYYY' '30.02.2024' 'DD.MM.YYYY'

#include <dvtypes/datetime.h>
#include <setjmp.h>
#include <stdio.h>
#include <stdlib.h>

// What the server knows of a session: where a failed statement goes to, and why it failed.
static _Thread_local struct {
    jmp_buf statement_failed;
    dv_error_t error;
} session;

void dv_err_and_jmp(const char *src_file, int line, const char *func_name, int reserved1, int reserved2,
                    int code, ...) {
    (void)reserved1, (void)reserved2;
    va_list args;
    va_start(args, code);
    dv_error_fill(&session.error, src_file, line, func_name, code, args);
    va_end(args);
    longjmp(session.statement_failed, 1);
}

// One statement: a text under a model, compiled for this one call, as the day before it.
static void day_before(const char *text, const char *model) {
    if (_setjmp(session.statement_failed) != 0) {
        printf("error %d in %s: %s\n", session.error.code, session.error.function, session.error.message);
        return;
    }
    dv_date_t day;
    char written[32];
    dv_date_from_str_DEPRECATED(&day, text, 0, model, 0);
    dv_date_add_day(&day, -1);
    dv_date_to_str_DEPRECATED(&day, written, sizeof written, "YYYY-MM-DD", 0);
    puts(written);
}

int main(int argc, char **argv) {
    for (int i = 1; i + 1 < argc; i += 2) day_before(argv[i], argv[i + 1]);
    return 0;
}
