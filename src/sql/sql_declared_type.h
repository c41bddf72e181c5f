// Types of columns as tables declare them: NUMBER(10,2), "TIMESTAMP(3) WITH TIME ZONE",
// "INTERVAL DAY(3) TO SECOND(2)".

#ifndef DV_SQL_DECLARED_TYPE_H
#define DV_SQL_DECLARED_TYPE_H

#include "sql_value.h"

namespace dv::impl {

struct declared_type {
    const sql_type *type;  // NULL: none of the library's
    bool is_sound;         // false: its precision is none of the type's, or out of range
    int precision;         // of a NUMBER; 0: none
    int scale;             // of a NUMBER with a precision
    int fraction;          // digits of a fraction of a second; -1: all
    int leading;           // digits of an interval's years or days; -1: all
};

// In any letter case, with any blanks.
declared_type sql_parse_declared_type(const char *declared);

}  // namespace dv::impl

#endif  // DV_SQL_DECLARED_TYPE_H
