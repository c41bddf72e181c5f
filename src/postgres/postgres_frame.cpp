// What window frames with RANGE go by: is a value within an offset of that of the current row?
//
// Each gets value, row, offset, whether the offset goes back, and whether the value shall be before the end
// of the frame or behind its beginning. A sum that leaves the range of NUMBER is beyond every value; one that
// leaves the calendar is an error, as it is in arithmetic. Months end at the last day of a month that does
// not have the day, for a frame shall not fail where the data have a 31st.

#include "postgres_value.h"
#include "sql_datetime.h"

using namespace dv::impl;

namespace {

struct frame_end {
    bool goes_back, is_upper;

    explicit frame_end(FunctionCallInfo fcinfo) : goes_back(PG_GETARG_BOOL(3)), is_upper(PG_GETARG_BOOL(4)) {}
    int sign() const { return goes_back ? -1 : 1; }
    bool has(int order) const { return is_upper ? order <= 0 : order >= 0; }  // of the value and the end
};

void check_offset_(bool is_negative) {
    if (!is_negative) return;
    ereport(ERROR, (errcode(ERRCODE_INVALID_PRECEDING_OR_FOLLOWING_SIZE),
                    errmsg("invalid preceding or following size in window function")));
}

// ---------------------------------------------------------------------------------------------------------
// NUMBER
// ---------------------------------------------------------------------------------------------------------

// Would the sum of two numbers leave the range? Neither is negative.
bool leaves_range_(const number_t &x, const number_t &y) {
    number_t room;
    number_assign(&room, _number_max);
    number_sub(&room, &x);
    return number_cmp(&y, &room) >= 0;
}

bool is_within_(const number_t &value, const number_t &row, const number_t &offset, const frame_end &end) {
    number_t sum = row;
    if (end.goes_back) number_negate(&sum);
    if (number_cmp(&sum, _number_zero) >= 0 && leaves_range_(sum, offset))
        return end.is_upper != end.goes_back;
    number_add(&sum, &offset);
    if (end.goes_back) number_negate(&sum);
    return end.has(number_cmp(&value, &sum));
}

// ---------------------------------------------------------------------------------------------------------
// DATE and the timestamps: the latter by their first bytes, which are the instant
// ---------------------------------------------------------------------------------------------------------

template <typename Record>
Record take_(Datum datum) {
    if constexpr (sizeof(Record) == sizeof datum)
        return postgres_take_word<Record>(datum);
    else
        return postgres_take_record<Record>(datum);
}

int order_(const dv_date_t &x, const dv_date_t &y) { return dv_date_compare(&x, &y); }
int order_(const dv_timestamp_t &x, const dv_timestamp_t &y) { return dv_timestamp_compare(&x, &y); }

void move_(dv_date_t &date, const dv_itv_dts_t &offset, int sign) {
    sign > 0 ? dv_date_add_itv_dts(&date, &offset) : dv_date_sub_itv_dts(&date, &offset);
}
void move_(dv_timestamp_t &ts, const dv_itv_dts_t &offset, int sign) {
    sign > 0 ? dv_timestamp_add_itv_dts(&ts, &offset) : dv_timestamp_sub_itv_dts(&ts, &offset);
}

template <typename Record>
Datum within_seconds_(FunctionCallInfo fcinfo) {
    const frame_end end(fcinfo);
    const auto offset = postgres_take_record<dv_itv_dts_t>(PG_GETARG_DATUM(2));
    const sql_seconds total = sql_total(offset);
    check_offset_(total.whole < 0 || total.nanoseconds < 0);
    auto moved = take_<Record>(PG_GETARG_DATUM(1));
    move_(moved, offset, end.sign());
    PG_RETURN_BOOL(end.has(order_(take_<Record>(PG_GETARG_DATUM(0)), moved)));
}

template <typename Record>
Datum within_months_(FunctionCallInfo fcinfo) {
    const frame_end end(fcinfo);
    const int64_t offset = sql_total_months(postgres_take_record<dv_itv_ytm_t>(PG_GETARG_DATUM(2)));
    check_offset_(offset < 0);
    const int months_held = static_cast<int>(Min(offset, INT_MAX));  // long beyond the calendar
    auto moved = take_<Record>(PG_GETARG_DATUM(1));
    dv_date_add_month(&sql_date_part(moved), end.sign() * months_held, /*is_from_itv=*/0);
    PG_RETURN_BOOL(end.has(order_(take_<Record>(PG_GETARG_DATUM(0)), moved)));
}

}  // namespace

DV_POSTGRES_FUNCTION(dvpg_number_in_range) {
    number_t value, row, offset;
    postgres_take_number(value, PG_GETARG_DATUM(0));
    postgres_take_number(row, PG_GETARG_DATUM(1));
    postgres_take_number(offset, PG_GETARG_DATUM(2));
    check_offset_(number_cmp(&offset, _number_zero) < 0);
    PG_RETURN_BOOL(is_within_(value, row, offset, frame_end(fcinfo)));
}

// Days, of which a part is rounded to the second.
DV_POSTGRES_FUNCTION(dvpg_date_in_range_days) {
    const frame_end end(fcinfo);
    number_t offset;
    postgres_take_number(offset, PG_GETARG_DATUM(2));
    check_offset_(number_cmp(&offset, _number_zero) < 0);
    double days = 0;
    number_to_double(&offset, &days);
    auto moved = postgres_take_word<dv_date_t>(PG_GETARG_DATUM(1));
    dv_date_add_day(&moved, end.sign() * days);
    PG_RETURN_BOOL(end.has(order_(postgres_take_word<dv_date_t>(PG_GETARG_DATUM(0)), moved)));
}

DV_POSTGRES_FUNCTION(dvpg_date_in_range_seconds) { return within_seconds_<dv_date_t>(fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_date_in_range_months) { return within_months_<dv_date_t>(fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_timestamp_in_range_seconds) { return within_seconds_<dv_timestamp_t>(fcinfo); }
DV_POSTGRES_FUNCTION(dvpg_timestamp_in_range_months) { return within_months_<dv_timestamp_t>(fcinfo); }
