// dv_greatest and dv_least: of two to four values of one type, in the order of dv_cmp.

#include "sql_datetime.h"

using namespace dv::impl;

namespace {

// The first of those that are the greatest (Sign 1) or the least (-1).
template <auto Record, auto Compare, int Sign>
void extreme_(sql_call &call) {
    int found = 0;
    for (int i = 1; i < call.argc; ++i) {
        if (Sign * Compare(&(call.args[i].*Record), &(call.args[found].*Record)) > 0) found = i;
    }
    sql_return(call, call.args[found]);
}

template <sql_kind Kind, auto Record, auto Compare>
constexpr sql_function _rows_of[] = {
    {{"dv_greatest", {Kind, Kind}, "a, b", Kind, "the greatest"}, extreme_<Record, Compare, 1>},
    {{"dv_greatest", {Kind, Kind, Kind}, "a, b, c", Kind, "the greatest"}, extreme_<Record, Compare, 1>},
    {{"dv_greatest", {Kind, Kind, Kind, Kind}, "a, b, c, d", Kind, "the greatest"},
     extreme_<Record, Compare, 1>},
    {{"dv_least", {Kind, Kind}, "a, b", Kind, "the least"}, extreme_<Record, Compare, -1>},
    {{"dv_least", {Kind, Kind, Kind}, "a, b, c", Kind, "the least"}, extreme_<Record, Compare, -1>},
    {{"dv_least", {Kind, Kind, Kind, Kind}, "a, b, c, d", Kind, "the least"}, extreme_<Record, Compare, -1>},
};
constexpr auto _functions =
    sql_join<_rows_of<SQL_KIND_NUMBER, &sql_value::number, number_cmp>,
             _rows_of<SQL_KIND_DATE, &sql_value::date, dv_date_compare>,
             _rows_of<SQL_KIND_TIME, &sql_value::time, dv_time_compare>,
             _rows_of<SQL_KIND_TIMESTAMP, &sql_value::timestamp, dv_timestamp_compare>,
             _rows_of<SQL_KIND_TS_TZ, &sql_value::ts_tz, dv_ts_tz_compare>,
             _rows_of<SQL_KIND_ITV_YTM, &sql_value::ytm, dv_itv_ytm_compare>,
             _rows_of<SQL_KIND_ITV_DTS, &sql_value::dts, dv_itv_dts_compare>>();

}  // namespace

constinit const sql_function_table dv::impl::greatest_functions = _functions;
