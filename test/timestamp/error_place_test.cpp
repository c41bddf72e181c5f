// The errors of timestamps and zones: their codes, the functions that they name, and their arguments.

#include <gtest/gtest.h>

#include "dvtypes/timezone_id.h"
#include "zoned_support.h"

using namespace dv::test;

namespace {

dv_timestamp_t ts{120, 101, 2, 3, 4, 5, 6, 0, {}};
timezone_t tz{100, 0, 0, {TZ_ID_AMERICA_NEW_YORK / 256, TZ_ID_AMERICA_NEW_YORK % 256}};
dv_ts_tz_t ts_tz{ts, tz};
dv_ts_ltz_t ts_ltz{ts};
char out[80];

void read_(const char *text, const char *model, int fprec = 9) {
    dv_timestamp_from_str_DEPRECATED(&ts, text, /*str_len=*/0, model, 0, fprec);
}
void read_zoned_(const char *text, const char *model, int fprec = 9) {
    dv_ts_tz_from_str_DEPRECATED(&ts_tz, text, /*str_len=*/0, model, 0, fprec, &tz);
}
void write_(int size, int fprec) { dv_timestamp_to_str_DEPRECATED(&ts, out, size, "YYYY", 0, fprec); }
void write_zoned_(int size, int fprec) { dv_ts_tz_to_str_DEPRECATED(&ts_tz, out, size, "YYYY", 0, fprec); }
void write_zone_of_timestamp_() {
    static const compiled_model zoned = writing("YYYY TZR", DV_TYPE_TS_TZ);
    dv_timestamp_to_str(&ts, out, sizeof out, &zoned.ctx, 9);
}
void normalize_(int month, int day, int hour, const char *abbrev) {
    dv_date_t date = make_date(2050, month, day, hour, 30);
    timezone_normalize(&tz, &date, abbrev);
}
void parse_(const char *text) { timezone_parse(&tz, text, static_cast<int>(std::strlen(text))); }

struct error_case {
    const char *want;
    void (*call)();
};
const error_case _cases[] = {
    {"-5006 dv_timestamp_get_field", [] { dv_timestamp_get_field(&ts, DT_FMT_UNIT_HH24); }},
    {"-5006 dv_timestamp_set_field", [] { dv_timestamp_set_field(&ts, 0, 1, 0, 0); }},
    {"-5006 timezone_get_field", [] { timezone_get_field(&tz, 4); }},
    {"-5006 timezone_set_field", [] { timezone_set_field(&tz, 4, 0); }},
    {"-5007 dv_timestamp_from_str", [] { read_("", "YYYY"); }},
    {"-5007 dv_timestamp_from_str", [] { dv_timestamp_from_str_DEPRECATED(&ts, "1", -1, "YYYY", 0, 9); }},
    {"-5007 dv_timestamp_to_str", [] { write_(0, 9); }},
    {"-5007 dv_ts_tz_from_str", [] { read_zoned_("", "YYYY"); }},
    {"-5007 dv_ts_tz_from_str", [] { dv_ts_tz_from_str_DEPRECATED(&ts_tz, "1", -1, "YYYY", 0, 9, &tz); }},
    {"-5007 dv_ts_tz_to_str", [] { write_zoned_(0, 9); }},
    {"-5007 dv_ts_tz_to_str", [] { write_zoned_(-1, 9); }},
    {"-5007 dv_timestamp_to_str", [] { dv_ts_ltz_to_str_DEPRECATED(&ts_ltz, out, 0, "YYYY", 0, 9, &tz); }},
    {"-5010 dt_parse_check_input_trailing_space", [] { read_("2001 x", "YYYY"); }},
    {"-5011 dv_timestamp_to_str", write_zone_of_timestamp_},
    {"-5011 dv_timestamp_from_str",
     [] { dv_ts_ltz_from_str_DEPRECATED(&ts_ltz, "2024 U", 0, "YYYY TZR", 0, 9, &tz); }},
    {"-5012 dt_fmt_ctx_set", [] { read_("2001 U", "YYYY TZR"); }},
    {"-5041 dv_timestamp_from_str", [] { read_("2001", "YYYY", 10); }},
    {"-5041 dv_timestamp_to_str", [] { write_(80, 10); }},
    {"-5041 dv_timestamp_trim_fsec", [] { dv_timestamp_trim_fsec(&ts, -1); }},
    {"-5041 dv_timestamp_trim_fsec", [] { dv_ts_tz_trim_fsec(&ts_tz, 10); }},
    {"-5041 dv_ts_tz_from_str", [] { read_zoned_("2001", "YYYY", 10); }},
    {"-5041 dv_ts_tz_to_str", [] { write_zoned_(80, 10); }},
    {"-5098 timezone_set_field", [] { timezone_set_field(&tz, TZ_FLD_UTC_HOUR, 15); }},
    {"-5099 timezone_set_field", [] { timezone_set_field(&tz, TZ_FLD_UTC_MIN, 60); }},
    {"-5100 timezone_set_field", [] { timezone_set_field(&tz, TZ_FLD_UTC_SEC, 60); }},
    {"-5098 timezone_parse", [] { parse_("-13"); }},
    {"-5099 timezone_parse", [] { parse_("+14:01"); }},
    {"-5103 timezone_parse", [] { parse_("+9:00x"); }},
    {"-5104 timezone_parse", [] { parse_("Mars/Base"); }},
    {"-5109 find_overlapped_zone_", [] { normalize_(11, 6, 1, "PST"); }},
    {"-5109 find_local_tzinfo_", [] { normalize_(11, 7, 1, "EDT"); }},
    {"-5110 find_local_tzinfo_", [] { normalize_(3, 13, 2, ""); }},
    {"-5114 dv_timestamp_trim_fsec fractional second -2147483648 0 999999999",
     [] {
         dv_timestamp_t negative = ts;
         negative.csec[0] = 0x80;
         dv_timestamp_trim_fsec(&negative, 3);
     }},
    {"-5114 dv_dt_check_validity_of_unit fractional second -1 0 999999999",
     [] { dv_timestamp_from_unit_values(&ts, 2001, 2, 3, 4, 5, 6, -1); }},
    {"-5114 dv_dt_check_validity_of_unit hour 24 0 23",
     [] { dv_ts_tz_from_unit_values(&ts_tz, 2001, 2, 3, 24, 5, 6, 0, &tz); }},
    {"-5114 dv_date_is_valid day 29 1 28",
     [] { dv_ts_tz_from_unit_values(&ts_tz, 2001, 2, 29, 4, 5, 6, 0, &tz); }},
    {"-5114 dv_dt_check_validity_of_unit hour -1 0 23", [] { dv_timestamp_from_double(-3600, &ts); }},
    {"-5114 dv_dt_check_validity_of_unit minute -1 0 59", [] { dv_timestamp_from_double(-60, &ts); }},
    {"-5114 dv_dt_check_validity_of_unit second -1 0 59", [] { dv_timestamp_from_double(-1, &ts); }},
    {"-5114 dv_dt_check_validity_of_unit month 0 1 12",
     [] { dv_timestamp_from_double(-68662 * 86400.0, &ts); }},
    {"-5114 dv_dt_check_validity_of_unit day 0 1 31",
     [] { dv_timestamp_from_double(-68600 * 86400.0, &ts); }},
    {"-5114 dv_dt_check_validity_of_unit minute 60 0 59",
     [] {
         const dv_date_t broken = make_date(2001, 2, 3, 4, 60, 5);
         dv_timestamp_from_date(&ts, &broken);
     }},
    {"-5114 dv_date_add_day year 9999 -4713 9999",
     [] {
         const dv_date_t last = make_date(9999, 12, 31, 23);
         dv_ts_tz_from_date(&ts_tz, &last, &tz);
     }},
};

}  // namespace

TEST(TimestampErrors, NameTheFunctionAndTheValue) {
    for (const auto &[want, call] : _cases) {
        dv_error_t error{};
        raise_of(call, &error);
        std::string got = std::to_string(error.code) + ' ' + error.function;
        for (int i = 0; i < error.arg_count; ++i) got += std::string(" ") + error.args[i];
        EXPECT_EQ(got, want);
    }
}
