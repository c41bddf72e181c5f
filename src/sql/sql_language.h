// Languages as arguments: by name, or as a setting ("NLS_DATE_LANGUAGE = KOREAN").

#ifndef DV_SQL_LANGUAGE_H
#define DV_SQL_LANGUAGE_H

#include "dvtypes/nls.h"
#include "sql_call.h"

namespace dv::impl {

// A setting, NUL ended.
struct sql_setting {
    char text[DV_NLS_TEXT_MAX + 1];
};

// False when the TEXT argument at a position is longer than a setting may be: the call has failed then.
bool sql_check_language(sql_call &call, int position);

// The setting that an argument of that length is, whether it was written as one or as a language's name.
sql_setting sql_language_setting(const sql_text &text);

// The language of an argument of that length. Raises -11035 when it names none, as a setting of
// something else does.
dv_nls_date_lang_t sql_language_of(const sql_text &text);

}  // namespace dv::impl

#endif  // DV_SQL_LANGUAGE_H
