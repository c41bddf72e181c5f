// Local times of DATE and both TIMESTAMPs: taken, changed and put back.

#ifndef DV_SQL_LOCAL_H
#define DV_SQL_LOCAL_H

#include "sql_datetime.h"

namespace dv::impl {

// What becomes of a local time that the clocks of a region skipped.
enum sql_gap_rule : uint8_t {
    SQL_GAP_IS_ERROR,  // -5110
    SQL_GAP_IS_LEFT    // it is the end of the gap
};

// Makes a local time that of a TIMESTAMP WITH TIME ZONE. It keeps its offset where the zone has it then, too;
// otherwise it has the one by which the region's clocks show the time, the later one where there are two.
// When it raises, the value is as it was.
void sql_set_local(dv_ts_tz_t &ts_tz, const dv_timestamp_t &local, sql_gap_rule rule);

// The local time of a value: the value itself where it has no zone, so that it is changed in its place.
template <typename Record>
Record &sql_local_of(Record &record) {
    return record;
}
inline dv_timestamp_t sql_local_of(dv_ts_tz_t &ts_tz) {
    dv_timestamp_t local;
    dv_timestamp_from_ts_tz(&local, &ts_tz);
    return local;
}

// Puts a changed local time back.
template <typename Record>
void sql_put_local(Record & /*of*/, const Record & /*local*/, sql_gap_rule = SQL_GAP_IS_ERROR) {}
inline void sql_put_local(dv_ts_tz_t &of, const dv_timestamp_t &local, sql_gap_rule rule = SQL_GAP_IS_ERROR) {
    sql_set_local(of, local, rule);
}

}  // namespace dv::impl

#endif  // DV_SQL_LOCAL_H
