// A server's own base library, by exceptions, from C++: its dv_err_and_jmp takes the place of the default one
// and throws. Everything else is the default's. Nothing is left behind by a failed statement.
//
//   host_cpp '29.02.2024' 'DD.MM.YYYY' '30.02.2024' 'DD.MM.YYYY'

#include <dvtypes/datetime.h>

#include <iostream>
#include <span>

// What the server throws to end a statement.
struct statement_failed {
    dv_error_t error;
};

extern "C" void dv_err_and_jmp(const char *src_file, int line, const char *func_name, int, int, int code,
                               ...) {
    statement_failed failure;
    va_list args;
    va_start(args, code);
    dv_error_fill(&failure.error, src_file, line, func_name, code, args);
    va_end(args);
    throw failure;
}

// One statement: a text under a model, compiled for this one call, as the day before it.
static void print_day_before(const char *text, const char *model) {
    dv_date_t day;
    char written[32];
    dv_date_from_str_DEPRECATED(&day, text, 0, model, 0);
    dv_date_add_day(&day, -1);
    dv_date_to_str_DEPRECATED(&day, written, sizeof written, "YYYY-MM-DD", 0);
    std::cout << written << '\n';
}

int main(int argc, char **argv) {
    const std::span<char *> arguments(argv, static_cast<size_t>(argc));
    for (size_t i = 1; i + 1 < arguments.size(); i += 2) {
        try {
            print_day_before(arguments[i], arguments[i + 1]);
        } catch (const statement_failed &failure) {
            const dv_error_t &error = failure.error;
            std::cout << "error " << error.code << " in " << error.function << ": " << error.message << '\n';
        }
    }
}
