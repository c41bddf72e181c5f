// Zoned timestamps: zones in text both ways, instants that survive text at every change of every region's
// clocks, arithmetic, numbers, the session's zone.

#include <gtest/gtest.h>

#include "dvtypes/timezone_id.h"
#include "zoned_support.h"

using namespace dv::test;

namespace {

// "2024-02-29 13:05:00.5 9:0 of 301": the instant and the bytes of the zone, not through a model.
std::string text_(const dv_ts_tz_t &v) {
    char text[80];
    const auto field = [&](dt_fmt_unit_t unit) { return dv_timestamp_get_field(&v.utc, unit); };
    std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d.%09d %d:%d of %d",
                  field(DT_FMT_UNIT_YEAR), field(DT_FMT_UNIT_MONTH), field(DT_FMT_UNIT_DAY),
                  field(DT_FMT_UNIT_HOUR), field(DT_FMT_UNIT_MINUTE), field(DT_FMT_UNIT_SECOND),
                  field(DT_FMT_UNIT_FSEC), timezone_get_field(&v.tz, TZ_FLD_UTC_HOUR), v.tz.utc_min,
                  timezone_get_field(&v.tz, TZ_FLD_ZONE_ID));
    return text;
}

// The same, or the code that reading raised with its first argument: "-5113 timezone hour".
std::string read_(const char *model, const char *text, const timezone_t &session) {
    dv_ts_tz_t v;
    std::memset(&v, 0x55, sizeof v);  // nothing of it may stay
    dv_error_t error{};
    const int code =
        raise_of([&] { dv_ts_tz_from_str_DEPRECATED(&v, text, 0, model, 0, /*fprec=*/9, &session); }, &error);
    if (code == 0) return text_(v);
    return std::to_string(code) + (error.arg_count > 0 ? std::string(" ") + error.args[0] : "");
}

dv_ts_tz_t value_(const dv_date_t &utc, int id) {
    dv_ts_tz_t v{};
    std::memcpy(&v, &utc, sizeof utc);
    v.tz.zone_id[0] = static_cast<uint8_t>(id >> 8);
    v.tz.zone_id[1] = static_cast<uint8_t>(id);
    timezone_adjust(&v.tz, &utc);
    return v;
}

// Do the records hold an offset as it is? They have no seconds, and no +00:30: minutes take the sign of the
// hour, that of 0 being minus.
bool is_kept_(const tz_info_t &info) {
    return info.utc_sec == 0 && (info.utc_hour != 0 || info.utc_min <= 0);
}

}  // namespace

TEST(ZonedText, ReadsZonesAndRefusesWhatContradicts) {
    constexpr const char *day = "YYYY-MM-DD HH24:MI:SS.FF TZH:TZM", *region = "YYYY-MM-DD HH24:MI:SS TZR",
                         *both = "YYYY-MM-DD HH24:MI:SS TZR TZD", *abbrev = "YYYY-MM-DD HH24:MI:SS TZD";
    constexpr struct {
        const char *model, *text, *session, *want;
    } cases[] = {
        {"YYYY-MM-DD HH24:MI:SS", "2001-02-03 04:05:06", "+09:00",
         "2001-02-02 19:05:06.000000000 9:0 of 581"},
        {day, "2001-02-03 04:05:06.5 +09:00", "UTC", "2001-02-02 19:05:06.500000000 9:0 of 581"},
        {day, "2001-02-03 04:05:06 -05:30", "UTC", "2001-02-03 09:35:06.000000000 -5:30 of 581"},
        {day, "2001-02-03 04:05:06.5", "Asia/Seoul", "2001-02-02 19:05:06.500000000 9:0 of 301"},
        {day, "2001-02-31 00:00:00 +00:00", "UTC", "-5114 day"},
        {day, "2001-02-03", "Asia/Seoul", "2001-02-02 15:00:00.000000000 9:0 of 301"},
        {day, "2001-02-03 04:05:06 +9", "UTC", "2001-02-02 19:05:06.000000000 9:0 of 581"},
        {day, "2001-02-03 04:05:06 +14:01", "UTC", "-5099"},
        {day, "2001-02-03 04:05:06 -12:59", "UTC", "2001-02-03 17:04:06.000000000 -12:59 of 581"},
        {day, "2001-02-03 04:05:06 -13:00", "UTC", "-5114 timezone hour"},
        {day, "2001-02-03 04:05:06 +09:60", "UTC", "-5114 timezone minute"},
        {day, "2001-02-03 04:05:06 +x", "UTC", "-5113 timezone hour"},
        {day, "2001-02-03 04:05:06 +09:-1", "UTC", "-5113 timezone minute"},
        {"TZM:YYYY-MM-DD", "30:2001-02-03", "UTC", "2001-02-03 00:30:00.000000000 0:30 of 581"},
        {"TZH YYYY-MM-DD", "-5 2001-02-03", "UTC", "2001-02-03 05:00:00.000000000 -5:0 of 581"},
        {"FXTZH YYYY-MM-DD", "-5 2001-02-03", "UTC", "-5088"},
        {"FXTZH YYYY-MM-DD", "-05 2001-02-03", "UTC", "2001-02-03 05:00:00.000000000 -5:0 of 581"},
        {region, "2024-07-01 00:00:00 america/new_york", "UTC", "2024-07-01 04:00:00.000000000 -4:0 of 166"},
        {region, "2024-07-01 00:00:00 Europe/Kyiv", "UTC", "2024-06-30 21:00:00.000000000 3:0 of 434"},
        {region, "2024-07-01 00:00:00 +05:45", "UTC", "2024-06-30 18:15:00.000000000 5:45 of 581"},
        {region, "2024-07-01 00:00:00 Mars/Base", "UTC", "-5113 timezone region"},
        {region, "2024-07-01 00:00:00 +5:4x", "UTC", "-5103"},
        {region, "2024-07-01 00:00:00 +15:00", "UTC", "-5098"},
        {region, "2024-07-01 00:00:00 UTC x", "UTC", "-5010"},
        {"YYYY-MM-DD HH24:MI:SSTZR", "2024-07-01 00:00:00", "UTC", "-5113 timezone region"},
        {region, "2024-03-10 02:30:00 America/New_York", "UTC", "-5110"},
        {region, "2024-11-03 01:30:00 America/New_York", "UTC", "2024-11-03 06:30:00.000000000 -5:0 of 166"},
        {both, "2024-11-03 01:30:00 America/New_York est", "UTC",
         "2024-11-03 06:30:00.000000000 -5:0 of 166"},
        {both, "2024-11-03 01:30:00 America/New_York EDT", "UTC",
         "2024-11-03 05:30:00.000000000 -4:0 of 166"},
        {both, "2024-11-03 01:30:00 America/New_York", "UTC", "2024-11-03 06:30:00.000000000 -5:0 of 166"},
        {both, "2024-12-03 01:30:00 America/New_York EDT", "UTC", "-5109"},
        {both, "2024-11-03 01:30:00 America/New_York KST", "UTC", "-5096 TZD"},
        {both, "2024-11-03 01:30:00 America/New_York XXX", "UTC", "-5113 timezone abbreviation"},
        {both, "2024-11-03 01:30:00 +09:00 EDT", "UTC", "2024-11-02 16:30:00.000000000 9:0 of 581"},
        {"TZD TZR YYYY-MM-DD HH24", "EDT America/New_York 2024-11-03 01", "UTC",
         "2024-11-03 05:00:00.000000000 -4:0 of 166"},
        {"TZD TZR YYYY-MM-DD", "KST America/New_York 2024-11-03", "UTC", "-5096 TZR"},
        {abbrev, "2024-11-03 01:30:00 EDT", "America/New_York", "2024-11-03 05:30:00.000000000 -4:0 of 166"},
        {abbrev, "2024-11-03 01:30:00 KST", "America/New_York", "-5109"},
        {abbrev, "2024-11-03 01:30:00 KST", "+09:00", "2024-11-02 16:30:00.000000000 9:0 of 581"},
        {"TZR TZH", "UTC +09", "UTC", "-5097 TZH"},
        {"TZH TZD", "+09 EDT", "UTC", "-5096 TZD"},
        {"YYYY TZR TZR", "2024 UTC UTC", "UTC", "-5112 TZR"},
    };
    for (const auto &[model, text, session, want] : cases)
        EXPECT_EQ(read_(model, text, zone_of(session)), want) << model << ": " << text;
}

// The day of the year counts in the year that UTC has by then: the shift goes from the first of the month
// that reading began with.
TEST(ZonedText, ShiftsBeforeTheDayOfTheYearIsCounted) {
    const dv::test::compiled_model model = dv::test::reading("YYYY-DDD HH24:MI:SS TZH:TZM", DV_TYPE_TS_TZ);
    const timezone_t session = zone_of("UTC");
    for (const auto &[month, want] : {std::pair(11, "2001-02-03 19:05:06.000000000 9:0 of 581"),
                                      std::pair(1, "2000-02-03 19:05:06.000000000 9:0 of 581")}) {
        const dv_date_t as_of = make_date(2024, month, 22);
        dv_ts_tz_t v{};
        dv_ts_tz_from_str_as_of(&v, "2001-034 04:05:06 +09:00", 0, &model.ctx, /*fprec=*/9, &session, &as_of);
        EXPECT_EQ(text_(v), want) << month;
    }
    dv_date_t now;
    dv_date_init(&now);
    dv_ts_tz_t by_clock{}, by_argument{};
    dv_ts_tz_from_str(&by_clock, "2001-034 04:05:06 +09:00", 0, &model.ctx, /*fprec=*/9, &session);
    dv_ts_tz_from_str_as_of(&by_argument, "2001-034 04:05:06 +09:00", 0, &model.ctx, /*fprec=*/9, &session,
                            &now);
    EXPECT_EQ(text_(by_clock), text_(by_argument));
}

TEST(ZonedText, WritesZonesAndCutsAtTheEndOfTheBuffer) {
    constexpr struct {
        const char *model, *zone;
        int size;
        const char *want;
    } cases[] = {
        {"HH24:MI TZH:TZM", "+09:00", 40, "09:00 +09:00"},
        {"HH24:MI TZH:TZM", "-05:30", 40, "18:30 -05:30"},
        {"FMHH24:MI TZH:TZM", "+09:05", 40, "9:5 9:5"},
        {"TZHTH tzmth", "-01:03", 40, "-01ST 03RD"},
        {"TZHSP", "+09:00", 40, "NINE"},
        {"HH24 TZR", "America/New_York", 40, "19 America/New_York"},
        {"TZR", "-00:30", 40, "+00:30"},
        {"HH24TZD", "Asia/Seoul", 40, "09"},
        {"HH24TZD", "Asia/Seoul", 2, "09 cut"},
        {"TZR", "Asia/Seoul", 4, "Asia cut"},
        {"TZH", "+09:00", 1, "+ cut"},
        {"TZH", "+09:00", 2, "+0 cut"},
        {"TZH", "+09:00", 3, "+09"},
    };
    for (const auto &[model, zone, size, want] : cases) {
        dv_ts_tz_t v = value_(make_date(2024, 1, 2), 581);
        v.tz = zone_of(zone);
        timezone_adjust(&v.tz, reinterpret_cast<const dv_date_t *>(&v));
        char text[41] = {};
        const conv_status_t status = dv_ts_tz_to_str_DEPRECATED(&v, text, size, model, 0, /*fprec=*/9);
        EXPECT_EQ(std::string(text) + (status == CONV_STATUS_CUT ? " cut" : ""), want)
            << model << ' ' << size;
    }
}

// A text that names region and abbreviation gives the same 17 bytes back, at every change of every region's
// clocks and one second before; where the abbreviation changes, without which an hour shown twice is
// ambiguous.
TEST(ZonedText, KeepsEveryInstantOfEveryRegion) {
    const compiled_model writing_model = writing("SYYYY-MM-DD HH24:MI:SS.FF9 TZR", DV_TYPE_TS_TZ),
                         reading_model = reading("SYYYY-MM-DD HH24:MI:SS.FF9 TZR TZD", DV_TYPE_TS_TZ);
    const timezone_t session = zone_of("UTC");
    long kept = 0;
    for (int id = 0; id < TZ_ID_MAX && !HasFatalFailure(); ++id) {
        const tz_region_t &region = region_tab_[id];
        for (int i = 0; i < region.info_cnt && region.info_cnt > 1; ++i) {
            const tz_info_t &info = region.infos[i], &other = region.infos[i ^ 1];
            if (!is_kept_(info) || !is_kept_(other) || std::strcmp(info.abbrev, other.abbrev) == 0) continue;
            dv_ts_tz_t v = value_(info.normal, id), back{};
            dv_timestamp_set_field(&v.utc, DT_FMT_UNIT_FSEC, 123456789, 1, 1);
            char text[120];
            dv_ts_tz_to_str(&v, text, sizeof text, &writing_model.ctx, 9);
            std::snprintf(text + std::strlen(text), 12, " %s", info.abbrev);
            const int code =
                raise_of([&] { dv_ts_tz_from_str(&back, text, 0, &reading_model.ctx, 9, &session); });
            ASSERT_TRUE(code == 0 && same_bytes(v, back)) << text << ": " << code << ' ' << text_(back);
            ++kept;
        }
    }
    EXPECT_GT(kept, 80'000);
}

TEST(ZonedArithmetic, WorksInUtcAndRefreshesTheOffset) {
    constexpr const char *zones[] = {"America/New_York", "Asia/Seoul", "Europe/London", "+05:45"};
    number_source source(1);
    for (long round = scaled(20'000); round > 0; --round) {
        const timezone_t session = zone_of(zones[source.pick(0, 3)]);
        dv_ts_tz_t v = value_(make_date(source.pick(1900, 2040), source.pick(1, 12), source.pick(1, 28),
                                        source.pick(0, 23), source.pick(0, 59), source.pick(0, 59)),
                              581);
        v.tz = session;
        timezone_adjust(&v.tz, reinterpret_cast<const dv_date_t *>(&v));
        const dv_ts_tz_t before = v;
        dv_itv_dts_t itv, difference;
        dv_itv_dts_set_field(&itv, DT_FMT_UNIT_FSEC, 0);
        dv_itv_dts_set_total_sec(&itv, source.pick(-100'000'000, 100'000'000));
        dv_ts_tz_add_itv_dts(&v, &itv);
        timezone_t offset;
        dv_date_t utc;
        std::memcpy(&utc, &v, sizeof utc);
        timezone_localize(&session, &utc, &offset);
        ASSERT_EQ(std::memcmp(&offset, &v.tz, sizeof offset), 0) << text_(before) << " to " << text_(v);
        dv_ts_tz_sub_ts_tz_into_itv_dts(&difference, &v, &before);
        ASSERT_EQ(dv_itv_dts_compare(&difference, &itv), 0) << text_(before) << " to " << text_(v);
        dv_ts_tz_sub_itv_dts(&v, &itv);
        ASSERT_TRUE(same_bytes(v, before)) << text_(before) << " came back as " << text_(v);
    }
    dv_ts_tz_t v = value_(make_date(2024, 2, 15), TZ_ID_AMERICA_NEW_YORK);
    dv_itv_ytm_t months;
    dv_itv_ytm_set_total_month(&months, 1);
    dv_ts_tz_add_itv_ytm(&v, &months);
    EXPECT_EQ(text_(v), "2024-03-15 00:00:00.000000000 -4:0 of 166");
    dv_ts_tz_sub_itv_ytm(&v, &months);
    EXPECT_EQ(text_(v), "2024-02-15 00:00:00.000000000 -5:0 of 166");
    v = value_(make_date(2024, 1, 31), TZ_ID_AMERICA_NEW_YORK);
    EXPECT_EQ(raise_of([&] { dv_ts_tz_add_itv_ytm(&v, &months); }), -5005);
}

TEST(ZonedOrder, IsThatOfTheInstants) {
    const timezone_t seoul = zone_of("+09:00"), new_york = zone_of("-05:00");
    const dv_date_t morning = make_date(2024, 1, 2, 9), evening = make_date(2024, 1, 1, 19);
    dv_ts_tz_t a, b;
    dv_ts_tz_from_date(&a, &morning, &seoul);
    dv_ts_tz_from_date(&b, &evening, &new_york);
    EXPECT_EQ(dv_ts_tz_compare(&a, &b), 0);
    EXPECT_EQ(dv_ts_tz_compare(nullptr, &b), -1);
    dv_ts_tz_from_unit_values(&b, 2024, 1, 1, 19, 0, 0, 1, &new_york);
    EXPECT_EQ(dv_ts_tz_compare(&a, &b), -1);
    dv_ts_ltz_t c, d;
    dv_ts_ltz_from_ts_tz(&c, &a);
    dv_ts_ltz_from_ts_tz(&d, &b);
    EXPECT_EQ(dv_ts_ltz_compare(&d, &c), 1);
    dv_ts_tz_from_ts_ltz(&a, &c, &new_york);
    EXPECT_EQ(text_(a), "2024-01-02 00:00:00.000000000 -5:0 of 581");
}

TEST(LocalZoneTimestamp, IsReadAndShownInTheSessionsZone) {
    timezone_t session = zone_of("America/New_York");
    const timezone_t seoul = zone_of("Asia/Seoul");
    const compiled_model in = reading("YYYY-MM-DD HH24:MI", DV_TYPE_TS_LTZ),
                         out = writing("YYYY-MM-DD HH24:MI", DV_TYPE_TS_LTZ),
                         zoned = writing("YYYY TZR", DV_TYPE_TS_LTZ);
    dv_ts_ltz_t v{};
    char text[40];
    dv_ts_ltz_from_str(&v, "2024-07-01 12:00", 0, &in.ctx, 9, &session);
    EXPECT_EQ(timezone_get_field(&session, TZ_FLD_UTC_HOUR), -4);
    dv_ts_ltz_to_str(&v, text, sizeof text, &out.ctx, 9, &seoul);
    EXPECT_STREQ(text, "2024-07-02 01:00");
    const auto write_zoned = [&] { dv_ts_ltz_to_str(&v, text, sizeof text, &zoned.ctx, 9, &seoul); };
    EXPECT_EQ(raise_of(write_zoned), -5011);
    const auto compile_zoned = [&] {
        dv_ts_ltz_to_str_DEPRECATED(&v, text, sizeof text, "YYYY TZR", 0, 9, &seoul);
    };
    EXPECT_EQ(raise_of(compile_zoned), -5012);
    const auto read_zoned = [&] {
        dv_ts_ltz_from_str_DEPRECATED(&v, "2024 UTC", 0, "YYYY TZR", 0, 9, &session);
    };
    EXPECT_EQ(raise_of(read_zoned), -5011);

    // Fields are checked against the record as it was: there is no 31 February on the way to 10 February.
    const dv_date_t last = make_date(2024, 1, 31);
    dv_ts_ltz_from_date(&v, &last, &seoul);
    std::memcpy(&v, &last, sizeof last);
    EXPECT_EQ(raise_of([&] { dv_ts_ltz_from_unit_values(&v, 2024, 2, 10, 0, 0, 0, 0, &seoul); }), -5114);
    dv_ts_ltz_from_unit_values(&v, 2024, 3, 1, 0, 0, 0, 0, &seoul);
    EXPECT_EQ(dv_timestamp_get_field(&v.utc, DT_FMT_UNIT_DAY), 29);
}
