// Loads payments from standard input, exactly, from C: a line has the time on a zone's clocks, the zone and
// an amount. Prints the sum of each month in UTC, in Korean; a line that cannot be read is reported and left
// out. Models are compiled once; a line is read under one recovery point, for the code alone, and again for
// the message where it is shown.
//
//   printf '%s\n' '29 Feb 2024 23:30;Asia/Seoul;1,234.50' '30 Feb 2024 00:00;UTC;1' | load_c
//   line 2: -5114 The value 30 of the field "day" is out of range: 1 to 29 is accepted.
//   2024 2월 1,234.50

#include <dvtypes/number_fmt.h>
#include <dvtypes/number_sum.h>
#include <dvtypes/timestamp_tz.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum { LINE_SIZE = 256, PAYMENTS_MAX = 1000 };
static const char amount_model[] = "999,999,990.99", sum_model[] = "FM999,999,990.00";
static dt_fmt_ctx_t time_model, month_model;  // read only once they are compiled, by any thread

// An instant in UTC and an amount: what is sorted, and what could be stored as it is.
typedef struct payment_s {
    dv_timestamp_t utc;
    number_t amount;
} payment_t;

typedef struct line_s {
    char *time, *zone, *amount;
    payment_t payment;
} line_t;

static void compile_models(void *unused) {
    (void)unused;
    dt_fmt_ctx_set(_system_allocator, &time_model, "DD MON YYYY HH24:MI", 0, DV_TYPE_TIMESTAMP,
                   /*is_from_str=*/1, DVSTR_CHARSET_UTF8);
    static const char american[] = "NLS_DATE_LANGUAGE = AMERICAN";  // Korean unless told
    dt_fmt_ctx_set_user_nls(NULL, &time_model, american, sizeof american - 1);
    dt_fmt_ctx_set(_system_allocator, &month_model, "YYYY FMMONTH", 0, DV_TYPE_DATE, /*is_from_str=*/0,
                   DVSTR_CHARSET_UTF8);
}

static void read_line(void *arg) {
    line_t *line = arg;
    timezone_t zone;
    dv_timestamp_t local;
    dv_ts_tz_t instant;
    dv_timestamp_from_str(&local, line->time, 0, &time_model, 9);
    timezone_parse(&zone, line->zone, (int)strlen(line->zone));
    dv_ts_tz_from_timestamp(&instant, &local, &zone);
    number_from_str_fmt(&line->payment.amount, (int)strlen(line->amount), line->amount,
                        sizeof amount_model - 1, amount_model);
    line->payment.utc = instant.utc;
}

// What stands in front of the next ";"; moves the text behind it.
static char *take_field(char **text) {
    char *field = *text, *end = field + strcspn(field, ";");
    *text = *end == '\0' ? end : end + 1;
    *end = '\0';
    return field;
}

static int compare(const void *x, const void *y) {
    return memcmp(&((const payment_t *)x)->utc, &((const payment_t *)y)->utc, sizeof(dv_timestamp_t));
}

static dv_date_t month_of(const payment_t *payment) {
    dv_date_t month;
    dv_date_from_timestamp(&month, &payment->utc);
    dv_date_trunc(&month, "MM", 0);
    return month;
}

static void print_months(const payment_t *payments, int count) {
    for (int i = 0; i < count;) {
        const dv_date_t month = month_of(&payments[i]);
        number_sum_t sum = {{0}, 0};
        for (; i < count; ++i) {
            const dv_date_t next = month_of(&payments[i]);
            if (dv_date_cmp(&month, &next) != 0) break;
            number_sum_add(&sum, &payments[i].amount);
        }
        number_t total;
        char name[64], text[NUMBER_FMT_TEXT_SIZE];
        number_sum_quotient(&sum, 1, &total);
        number_to_str_fmt(&total, sizeof text, text, sizeof sum_model - 1, sum_model);
        dv_date_to_str(&month, name, sizeof name, &month_model);
        printf("%s %s\n", name, text);
    }
}

int main(void) {
    static payment_t payments[PAYMENTS_MAX];
    int count = 0, status = 0;
    dv_error_t error;
    if (dv_protect(compile_models, NULL, &error) != 0) {
        fprintf(stderr, "%s\n", error.message);
        return 2;
    }
    char text[LINE_SIZE];
    for (int number = 1; count < PAYMENTS_MAX && fgets(text, sizeof text, stdin) != NULL; ++number) {
        text[strcspn(text, "\n")] = '\0';
        char *rest = text;
        line_t line = {take_field(&rest), NULL, NULL, {{0}, {0}}};
        line.zone = take_field(&rest);
        line.amount = take_field(&rest);
        if (dv_protect(read_line, &line, NULL) == 0) {
            payments[count++] = line.payment;
            continue;
        }
        dv_protect(read_line, &line, &error);
        printf("line %d: %d %s\n", number, error.code, error.message);
        status = 1;
    }
    qsort(payments, (size_t)count, sizeof *payments, compare);
    DV_TRY { print_months(payments, count); }
    DV_CATCH(caught) {  // a sum beyond the range of NUMBER
        fprintf(stderr, "%s\n", caught->message);
        status = 2;
    }
    DV_END_TRY;
    dt_fmt_ctx_reset(_system_allocator, &time_model);
    dt_fmt_ctx_reset(_system_allocator, &month_model);
    return status;
}
