// Timestamps and time zones without one of their pointers, every exported function.

#include "null_pointers.h"

#include "dvtypes/timestamp_tz.h"

using namespace dv::test;

#define DV_CHECK(function, ...) expect_nothing_without_pointers(#function, function, __VA_ARGS__)

TEST(NullPointers, OfTimestampsAreReportedAndNothingElseHappens) {
    const std::string number = "number_is_valid_ptr(num)", number_out = "number_is_nonnull_ptr(num)";
    DV_CHECK(dv_timestamp_get_field, {"ts"});
    DV_CHECK(dv_timestamp_set_field, {"ts"});
    DV_CHECK(dv_timestamp_from_unit_values, {"ts"});
    DV_CHECK(dv_timestamp_from_date, {"ts", "date"});
    DV_CHECK(dv_timestamp_from_ts_tz, {"ts", "ts_tz"});
    DV_CHECK(dv_timestamp_from_ts_ltz, {"ts", "ts_ltz", "sess_tz"});
    DV_CHECK(dv_timestamp_current, {"ts"});
    DV_CHECK(dv_timestamp_trim_fsec, {"ts"});
    DV_CHECK(dv_timestamp_to_double, {"ts"});
    DV_CHECK(dv_timestamp_to_number, {"ts", number_out});
    DV_CHECK(dv_timestamp_from_double, {"ts"});
    DV_CHECK(dv_timestamp_from_number, {number, "ts"});
    DV_CHECK(dv_timestamp_add_itv_dts, {"ts", "dts"});
    DV_CHECK(dv_timestamp_sub_itv_dts, {"ts", "dts"});
    DV_CHECK(dv_timestamp_sub_timestamp_into_itv_dts, {"dest", "left", "right"});
    DV_CHECK(dv_timestamp_sub_timestamp_into_itv_ytm, {"dest", "left", "right"});
    DV_CHECK(dv_timestamp_from_str, {"ts", "str", "fmt_ctx"});
    DV_CHECK(dv_timestamp_from_str_as_of, {"ts", "str", "fmt_ctx", "as_of"});
    DV_CHECK(dv_timestamp_from_str_DEPRECATED, {"ts", "str", "fmt"});
    DV_CHECK(dv_timestamp_to_str, {"ts", "str", "fmt_ctx"});
    DV_CHECK(dv_timestamp_to_str_DEPRECATED, {"ts", "str", "fmt"});
    DV_CHECK(dv_timestamp_current_str, {"buf", "fmt"});
    DV_CHECK(dv_timestamp_get_length, {"fmt"});
    DV_CHECK(dv_timestamp_check_format, {"fmt"});
}

TEST(NullPointers, OfZonedTimestampsAreReportedAndNothingElseHappens) {
    const std::string number = "number_is_valid_ptr(num)", number_out = "number_is_nonnull_ptr(num)";
    DV_CHECK(dv_ts_tz_from_unit_values, {"ts_tz", "sess_tz"});
    DV_CHECK(dv_ts_tz_from_date, {"ts_tz", "date", "sess_tz"});
    DV_CHECK(dv_ts_tz_from_timestamp, {"ts_tz", "ts", "sess_tz"});
    DV_CHECK(dv_ts_tz_from_ts_ltz, {"ts_tz", "ts_ltz", "sess_tz"});
    DV_CHECK(dv_ts_tz_current, {"ts_tz", "sess_tz"});
    DV_CHECK(dv_ts_tz_trim_fsec, {"ts_tz"});
    DV_CHECK(dv_ts_tz_to_double, {"ts_tz"});
    DV_CHECK(dv_ts_tz_to_number, {"ts_tz", number_out});
    DV_CHECK(dv_ts_tz_from_double, {"ts_tz", "sess_tz"});
    DV_CHECK(dv_ts_tz_from_number, {number, "ts_tz", "sess_tz"});
    DV_CHECK(dv_ts_tz_add_itv_ytm, {"ts_tz", "ytm"});
    DV_CHECK(dv_ts_tz_sub_itv_ytm, {"ts_tz", "ytm"});
    DV_CHECK(dv_ts_tz_add_itv_dts, {"ts_tz", "dts"});
    DV_CHECK(dv_ts_tz_sub_itv_dts, {"ts_tz", "dts"});
    DV_CHECK(dv_ts_tz_sub_ts_tz_into_itv_ytm, {"dest", "left", "right"});
    DV_CHECK(dv_ts_tz_sub_ts_tz_into_itv_dts, {"dest", "left", "right"});
    DV_CHECK(dv_ts_tz_from_str, {"ts_tz", "str", "fmt_ctx", "sess_tz"});
    DV_CHECK(dv_ts_tz_from_str_as_of, {"ts_tz", "str", "fmt_ctx", "sess_tz", "as_of"});
    DV_CHECK(dv_ts_tz_from_str_DEPRECATED, {"ts_tz", "str", "fmt", "sess_tz"});
    DV_CHECK(dv_ts_tz_to_str, {"ts_tz", "str", "fmt_ctx"});
    DV_CHECK(dv_ts_tz_to_str_DEPRECATED, {"ts_tz", "str", "fmt"});
    DV_CHECK(dv_ts_tz_current_str, {"buf", "fmt", "sess_tz"});
    DV_CHECK(dv_ts_tz_get_length, {"fmt"});
    DV_CHECK(dv_ts_tz_check_format, {"fmt"});
    DV_CHECK(dv_ts_ltz_from_unit_values, {"ts_ltz", "sess_tz"});
    DV_CHECK(dv_ts_ltz_from_date, {"ts_ltz", "date", "sess_tz"});
    DV_CHECK(dv_ts_ltz_from_timestamp, {"ts_ltz", "ts", "sess_tz"});
    DV_CHECK(dv_ts_ltz_from_ts_tz, {"ts_ltz", "ts_tz"});
    DV_CHECK(dv_ts_ltz_current, {"ts_ltz", "sess_tz"});
    DV_CHECK(dv_ts_ltz_trim_fsec, {"ts_ltz"});
    DV_CHECK(dv_ts_ltz_to_double, {"ts_ltz", "sess_tz"});
    DV_CHECK(dv_ts_ltz_to_number, {"ts_ltz", number_out, "sess_tz"});
    DV_CHECK(dv_ts_ltz_from_double, {"ts_ltz", "sess_tz"});
    DV_CHECK(dv_ts_ltz_from_number, {number, "ts_ltz", "sess_tz"});
    DV_CHECK(dv_ts_ltz_from_str, {"ts_ltz", "str", "fmt", "sess_tz"});
    DV_CHECK(dv_ts_ltz_from_str_DEPRECATED, {"ts_ltz", "str", "fmt", "sess_tz"});
    DV_CHECK(dv_ts_ltz_to_str, {"ts_ltz", "str", "fmt", "sess_tz"});
    DV_CHECK(dv_ts_ltz_to_str_DEPRECATED, {"ts_ltz", "str", "fmt", "sess_tz"});
}

TEST(NullPointers, OfTimeZonesAreReportedAndNothingElseHappens) {
    DV_CHECK(timezone_init, {"tz"});
    DV_CHECK(timezone_set_field, {"tz"});
    DV_CHECK(timezone_get_field, {"tz"});
    DV_CHECK(timezone_parse, {"tz", ""});
    DV_CHECK(parse_offset_, {"tz", ""}, -5103);
    DV_CHECK(timezone_shift_to_east, {"local_tz", "date"});
    DV_CHECK(timezone_shift_to_west, {"local_tz", "date"});
    DV_CHECK(timezone_normalize, {"local_tz", "date", ""});
    DV_CHECK(timezone_localize, {"sess_tz", "date", ""});
    DV_CHECK(timezone_adjust, {"local_tz", "date"});
    DV_CHECK(timezone_get_zone_name, {"local_tz", "buf"});
    DV_CHECK(timezone_get_zone_abbr, {"local_tz", "date", "buf"});
    DV_CHECK(timezone_get_system_default, {"tz"});
}
