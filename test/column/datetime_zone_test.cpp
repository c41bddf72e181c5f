#include <gtest/gtest.h>

#include "datetime_rows.h"
#include "dvtypes/column_zone.h"

namespace dv::test {
namespace {

using columns_t = dv_column_t *const *;

// Random times, and those around the changes of a zone's clocks.
dv_timestamp_t time_near_change_(number_source &source, const timezone_t &zone) {
    const tz_region_t &region = region_tab_[zone.zone_id[0] * 256 + zone.zone_id[1]];
    const tz_info_t &info = region.infos[source.pick(0, region.info_cnt - 1)];
    dv_date_t date = source.pick(0, 1) != 0 ? info.normal : info.local;
    raise_of([&] { dv_date_add_field(&date, DT_FMT_UNIT_SECOND, source.pick(-7300, 7300)); });
    dv_timestamp_t ts = random_timestamp(source);
    std::memcpy(&ts, &date, sizeof date);
    return ts;
}

struct zoned_rows_t {
    rows_t times, zones;
};

// Any zone for each row, or one for all; and then times of all centuries, or some years' in their order.
enum class zoned_e { any, one, in_order };

zoned_rows_t zoned_rows_(number_source &source, zoned_e kind) {
    zoned_rows_t rows;
    const timezone_t one = zone_of("America/New_York");
    const auto count = static_cast<size_t>(scaled(20'000));
    rows.zones = rows_made(count, source, [&] { return kind != zoned_e::any ? one : any_zone(source); });
    dv_timestamp_t last = random_timestamp(source);
    const dv_date_t first = make_date(2018, 12, 30);
    std::memcpy(&last, &first, sizeof first);
    for (const row_t &zone : rows.zones) {
        const timezone_t tz = zone ? value_of<timezone_t>(*zone) : one;
        const bool is_region = tz.zone_id[0] * 256 + tz.zone_id[1] < TZ_ID_MAX;
        const bool is_near = is_region && source.pick(0, 1) != 0;
        dv_timestamp_t ts = is_near ? time_near_change_(source, tz) : any_timestamp(source);
        if (kind == zoned_e::in_order) {
            dv_date_t date = date_of(last);
            dv_date_add_field(&date, DT_FMT_UNIT_MINUTE, 15 * source.pick(0, 8));  // the clocks' changes too
            std::memcpy(&last, &date, sizeof date);
            if (source.pick(0, 99) != 0) ts = last;
        }
        rows.times.push_back(bytes_of(ts));
    }
    return rows;
}

template <typename To, typename From, auto Columns, auto Single>
std::string fault_in_zone_(zoned_e kind) {
    number_source source(20261122);
    const assertion_watch quiet;
    const zoned_rows_t rows = zoned_rows_(source, kind);
    const auto run = [](columns_t x, dv_column_t *result, dv_column_faults_t *faults) {
        Columns(x[0], x[1], result, faults);
    };
    const auto single = [](const From &from, const timezone_t &zone) {
        To to{};
        Single(&to, &from, &zone);
        return to;
    };
    rows_t times = with_any_byte<dv_timestamp_t>(rows.times);
    for (row_t &row : times) row->resize(sizeof(From));
    return each_row_fault<From, timezone_t>({times, rows.zones}, run, single);
}

template <typename To, typename From, auto Columns, auto Single>
void expect_same_in_zone_() {
    for (const zoned_e kind : {zoned_e::any, zoned_e::one, zoned_e::in_order})
        EXPECT_EQ((fault_in_zone_<To, From, Columns, Single>(kind)), "");
}

template <typename To, typename From, auto Columns, auto Single>
void expect_same_() {
    number_source source(20261123);
    const assertion_watch quiet;
    const rows_t rows = with_any_byte<From>(rows_made(static_cast<size_t>(scaled(10'000)), source,
                                                      [&] { return any_record<dv_ts_tz_t>(source); }));
    const auto run = [](columns_t x, dv_column_t *result, dv_column_faults_t *faults) {
        Columns(x[0], result, faults);
    };
    const auto single = [](const From &from) {
        To to{};
        Single(&to, &from);
        return to;
    };
    EXPECT_EQ(each_row_fault<From>({rows}, run, single), "");
}

TEST(ZoneColumn, TurnsUtcIntoLocalTime) {
    expect_same_in_zone_<dv_timestamp_t, dv_ts_ltz_t, dv_timestamp_column_from_ts_ltz,
                         dv_timestamp_from_ts_ltz>();
    expect_same_in_zone_<dv_date_t, dv_ts_ltz_t, dv_date_column_from_ts_ltz, dv_date_from_ts_ltz>();
    expect_same_<dv_timestamp_t, dv_ts_tz_t, dv_timestamp_column_from_ts_tz, dv_timestamp_from_ts_tz>();
    expect_same_<dv_date_t, dv_ts_tz_t, dv_date_column_from_ts_tz, dv_date_from_ts_tz>();
}

TEST(ZoneColumn, TurnsLocalTimeIntoUtc) {
    expect_same_in_zone_<dv_ts_ltz_t, dv_timestamp_t, dv_ts_ltz_column_from_timestamp,
                         dv_ts_ltz_from_timestamp>();
    expect_same_in_zone_<dv_ts_tz_t, dv_timestamp_t, dv_ts_tz_column_from_timestamp,
                         dv_ts_tz_from_timestamp>();
    expect_same_in_zone_<dv_ts_ltz_t, dv_date_t, dv_ts_ltz_column_from_date, dv_ts_ltz_from_date>();
    expect_same_in_zone_<dv_ts_tz_t, dv_date_t, dv_ts_tz_column_from_date, dv_ts_tz_from_date>();
}

TEST(ZoneColumn, KeepsInstants) {
    expect_same_in_zone_<dv_ts_tz_t, dv_ts_ltz_t, dv_ts_tz_column_from_ts_ltz, dv_ts_tz_from_ts_ltz>();
    expect_same_<dv_ts_ltz_t, dv_ts_tz_t, dv_ts_ltz_column_from_ts_tz, dv_ts_ltz_from_ts_tz>();
}

}  // namespace
}  // namespace dv::test
