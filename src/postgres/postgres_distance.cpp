// Distances as double precision, by which GiST indexes of ranges decide where to split, and days that are
// double precision.

#include "postgres_value.h"
#include "sql_datetime.h"

using namespace dv::impl;

namespace {

double real_of_(Datum datum) {
    number_t number;
    postgres_take_number(number, datum);
    double real = 0;
    number_to_double(&number, &real);
    return real;
}

Datum later_date_(FunctionCallInfo fcinfo, int sign) {
    const double days = PG_GETARG_FLOAT8(1);
    if (!std::isfinite(days)) {
        ereport(ERROR,
                (errcode(ERRCODE_DATETIME_VALUE_OUT_OF_RANGE), errmsg("the number of days is not finite")));
    }
    auto date = postgres_take_word<dv_date_t>(PG_GETARG_DATUM(0));
    dv_date_add_day(&date, sign * days);
    dv_date_is_valid(&date);
    return postgres_give_word(date);
}

}  // namespace

DV_POSTGRES_FUNCTION(dvpg_number_distance) {
    PG_RETURN_FLOAT8(real_of_(PG_GETARG_DATUM(0)) - real_of_(PG_GETARG_DATUM(1)));
}

// In seconds, between instants where the values have zones.
DV_POSTGRES_FUNCTION(dvpg_timestamp_distance) {
    const auto x = postgres_take_record<dv_timestamp_t>(PG_GETARG_DATUM(0));
    const auto y = postgres_take_record<dv_timestamp_t>(PG_GETARG_DATUM(1));
    dv_itv_dts_t difference;
    dv_timestamp_sub_timestamp_into_itv_dts(&difference, &x, &y);
    const sql_seconds total = sql_total(difference);
    PG_RETURN_FLOAT8(static_cast<double>(total.whole) +
                     static_cast<double>(total.nanoseconds) / SQL_NSEC_PER_SEC);
}

DV_POSTGRES_FUNCTION(dvpg_date_add_real_days) { return later_date_(fcinfo, 1); }
DV_POSTGRES_FUNCTION(dvpg_date_sub_real_days) { return later_date_(fcinfo, -1); }
