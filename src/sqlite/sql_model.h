// Compiled datetime models in SQL.
//
// A model is compiled once per statement: SQLite keeps it with the call's model argument as long as that is a
// constant.

#ifndef DV_SQL_MODEL_H
#define DV_SQL_MODEL_H

#include "dvtypes/datetime_fmt.h"
#include "sql_function.h"

namespace dv::impl {

inline constexpr int SQL_FRACTION_DIGITS = 9;  // of a TIME or TIMESTAMP in SQL

// What is kept also holds the buffer for the texts written under the model, so that a raise leaves nothing
// behind.
struct compiled_model {
    dt_fmt_ctx_t fmt_ctx;
    dv_type_t type;  // what it was compiled for
    char *setting;   // language setting, NUL ended
    char *text;      // buffer for writing
    int text_size;
};

// SQLite's memory, under its limits and in its accounts; throw_ raises DV_ERR_NO_MEMORY.
extern allocator_t sql_allocator;

// The model of a call, in argument 1, for values of a type; a language setting may follow it. NULL: the call
// has failed, for want of memory or because of the setting. Raises what compiling raises.
compiled_model *sql_model_of(const sql_call &call, dv_type_t type, bool is_for_reading);

}  // namespace dv::impl

#endif  // DV_SQL_MODEL_H
