// What is said of a call that raised: the one place where the texts of such errors are composed.
//
//     to_timestamp_tz: <message of the code> The text is "2024-03-10 02:30:00 America/New_York". In
//     America/New_York clocks were set forward from 2024-03-10 02:00:00 to 2024-03-10 03:00:00. (dv-5110)

#ifndef DV_SQL_EXPLAIN_H
#define DV_SQL_EXPLAIN_H

#include "sql_catalogue.h"

namespace dv::impl {

// Makes an error that a row raised the failure of its call: the message, the texts that the call was given
// where the message does not show them, and what would have been possible. False when there is no memory for
// it. Costs up to a millisecond, so a try_ form, whose error nobody reads, does without.
[[gnu::cold]] bool sql_explain(sql_call &call, const sql_function &row, const dv_error_t &error);

}  // namespace dv::impl

#endif  // DV_SQL_EXPLAIN_H
