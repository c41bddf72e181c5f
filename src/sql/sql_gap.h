// Gaps: which local times the clocks of a region skipped; and offsets that they did not have.

#ifndef DV_SQL_GAP_H
#define DV_SQL_GAP_H

#include "sql_catalogue.h"
#include "sql_text_list.h"

namespace dv::impl {

// From `begin` to `end`, which the clocks showed again.
struct sql_gap {
    bool is_found;
    dv_date_t begin, end;
};

// The gap that a local time lies in.
sql_gap sql_find_gap(const tz_region_t &region, const dv_date_t &local);

// Appends the gap into which the local time of a call fell, " In Asia/Seoul clocks were set forward from ...
// to ...", or nothing where it cannot be found. The call raised -5110. Raises DV_ERR_NO_MEMORY.
void sql_append_gap(sql_text_list &text, const sql_call &call, const sql_function &row);

// Appends what is wrong with the UTC offset that stands behind a region in the text of a call, and no gap is:
// "The UTC offset +05:00 is not in force in Asia/Seoul at that local time, but +09:00." False, and nothing,
// where that is not it. The call raised -5110. Raises DV_ERR_NO_MEMORY.
bool sql_append_contradiction(sql_text_list &text, const sql_call &call, const sql_function &row);

}  // namespace dv::impl

#endif  // DV_SQL_GAP_H
