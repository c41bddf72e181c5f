// Compiled datetime models in SQL: what functions with a model keep as long as the model, their second
// argument, is constant.

#ifndef DV_SQL_MODEL_H
#define DV_SQL_MODEL_H

#include "dvtypes/datetime_fmt.h"
#include "sql_catalogue.h"
#include "sql_language.h"

namespace dv::impl {

struct compiled_model {
    dt_fmt_ctx_t fmt_ctx;
    dv_type_t type;                  // of the values that it was compiled for
    dt_fmt_unit_t open_fields;       // that reading would take from the present: YEAR, MONTH, both or none
    bool has_lone_abbreviation;      // of a zone, without the zone that it belongs to
    char language[DV_NLS_TEXT_MAX];  // in which it writes and reads, as the argument has it
    int language_length;
    char *text;  // buffer for the texts written under it
    int text_size;
};

extern const sql_keeper writing_model_keeper;    // for values of the first argument's type
extern const sql_keeper date_model_keeper;       // for reading a DATE,
extern const sql_keeper timestamp_model_keeper;  // a TIMESTAMP,
extern const sql_keeper ts_tz_model_keeper;      // a TIMESTAMP WITH TIME ZONE

inline compiled_model &sql_model_of(const sql_call &call) {
    return *static_cast<compiled_model *>(call.kept);
}

}  // namespace dv::impl

#endif  // DV_SQL_MODEL_H
