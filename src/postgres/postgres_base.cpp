// The server as the base library: errors, assertions, memory, clock.
//
// A raise goes to the recovery point that the library itself has set up, if there is one, and to the server
// otherwise: no object with a destructor is alive on the way to either.

#include "error_message.h"
#include "postgres_call.h"
#include "postgres_sqlstate.h"
#include "sql_clock.h"
#include "sql_explain.h"

extern "C" {
#include <access/xact.h>
#include <pgtime.h>
#include <utils/datetime.h>
#include <utils/timestamp.h>

PG_MODULE_MAGIC;
}

using namespace dv::impl;

namespace {

struct broken_down {
    pg_tm fields;
    fsec_t microsecond;
    int offset;  // east of UTC, in seconds
};

// The statement's time in the session's zone.
broken_down statement_time_() {
    broken_down now{};
    const TimestampTz at = GetCurrentStatementStartTimestamp();
    int west = 0;
    if (timestamp2tm(at, &west, &now.fields, &now.microsecond, nullptr, nullptr) != 0)
        ereport(ERROR, (errcode(ERRCODE_DATETIME_VALUE_OUT_OF_RANGE), errmsg("timestamp out of range")));
    now.offset = -west;
    return now;
}

sql_instant statement_instant_() {
    const TimestampTz at = GetCurrentStatementStartTimestamp();
    return {timestamptz_to_time_t(at), statement_time_().offset};
}

// The text of the error of the running call, with its hint apart.
struct text_parts {
    char *message;
    char *hint;  // NULL: none
};

text_parts explain_(const postgres_running &running, const dv_error_t &error) {
    sql_call &call = *running.call;
    if (error.code == DV_ERR_NO_MEMORY || !sql_explain(call, *running.row, error))
        return {pstrdup(error.message), nullptr};
    const char *hint = call.hint > 0 ? call.failure + call.hint + 1 : nullptr;
    const int length = hint == nullptr ? static_cast<int>(strlen(call.failure)) : call.hint;
    return {postgres_give_cstring({call.failure, length}),
            hint == nullptr ? nullptr : postgres_give_cstring({hint, static_cast<int>(strlen(hint))})};
}

}  // namespace

// Raises the server's error: with the text of the call that is running, or with the message alone.
void dv::impl::error_abort(const dv_error_t &error) {
    const postgres_running running = postgres_current;
    postgres_current.row = nullptr;
    text_parts shown = {};
    if (running.row != nullptr) {
        shown = explain_(running, error);
    } else {
        shown.message = postgres_give_cstring({error.message, static_cast<int>(strlen(error.message))});
    }
    ereport(ERROR, (errcode(postgres_sqlstate(error.code)), errmsg("%s", shown.message),
                    errdetail("dv%d in %s.", error.code, error.function),
                    shown.hint == nullptr ? 0 : errhint("%s", shown.hint)));
    pg_unreachable();
}

extern "C" {

// An error of the server's while it writes the line would leave the library's recovery points behind.
void dv_assert_msg(const char *cond_text, const char *src_file, int line) {
    MemoryContext outside = CurrentMemoryContext;
    PG_TRY();
    {
        ereport(LOG,
                (errmsg("dvtypes: the assertion \"%s\" of %s:%d does not hold", cond_text, src_file, line)));
    }
    PG_CATCH();
    {
        MemoryContextSwitchTo(outside);
        FlushErrorState();
    }
    PG_END_TRY();
}

void dv_thr_assert_cmd(void) {}

allocator_t *_system_allocator = &postgres_memory;

void dv_getlocaltime(int *year, int *month, int *day, int *hour, int *minute, int *second, int *usec) {
    const broken_down now = statement_time_();
    *year = now.fields.tm_year;
    *month = now.fields.tm_mon;
    *day = now.fields.tm_mday;
    *hour = now.fields.tm_hour;
    *minute = now.fields.tm_min;
    *second = now.fields.tm_sec;
    *usec = now.microsecond;
}

// Called by the server when it loads the module.
[[gnu::visibility("default")]] void _PG_init(void) { sql_present = statement_instant_; }

}  // extern "C"
