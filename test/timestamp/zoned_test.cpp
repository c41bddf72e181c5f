// Zoned timestamps: instants that survive text at every change of every region's clocks, arithmetic.

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
}

// There is no 31 February on the way to 10 February.
TEST(LocalZoneTimestamp, ChecksFieldsAgainstTheRecordAsItWas) {
    const timezone_t seoul = zone_of("Asia/Seoul");
    dv_ts_ltz_t v{};
    const dv_date_t last = make_date(2024, 1, 31);
    dv_ts_ltz_from_date(&v, &last, &seoul);
    std::memcpy(&v, &last, sizeof last);
    EXPECT_EQ(raise_of([&] { dv_ts_ltz_from_unit_values(&v, 2024, 2, 10, 0, 0, 0, 0, &seoul); }), -5114);
    dv_ts_ltz_from_unit_values(&v, 2024, 3, 1, 0, 0, 0, 0, &seoul);
    EXPECT_EQ(dv_timestamp_get_field(&v.utc, DT_FMT_UNIT_DAY), 29);
}
