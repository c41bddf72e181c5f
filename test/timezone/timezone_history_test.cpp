// UTC and local time by the histories of regions: every answer against the stated scan from the newest entry
// on, and minutes added by dv_date_add_field. zones_2011_test has these tests too, over older tables.

#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <set>

#include "datetime_support.h"
#include "dvtypes/timezone.h"

using namespace dv::test;

namespace {

// What an operation leaves: the bytes of its zone and date, and the code that it raised.
struct outcome_t {
    timezone_t tz;
    dv_date_t date;
    int code = 0;
};
bool operator==(const outcome_t &x, const outcome_t &y) {
    return std::memcmp(&x.tz, &y.tz, sizeof x.tz) == 0 && x.date == y.date && x.code == y.code;
}
void PrintTo(const outcome_t &o, std::ostream *out) {
    *out << describe(o.date) << ", " << o.tz.utc_hour - 100 << ':' << int{o.tz.utc_min} << ':'
         << int{o.tz.utc_sec} << ", code " << o.code;
}

timezone_t zone_(int id) {
    timezone_t tz = {100, 0, 0, {static_cast<uint8_t>(id / 256), static_cast<uint8_t>(id % 256)}};
    return tz;
}
int id_of_(const timezone_t &tz) { return tz.zone_id[0] * 256 + tz.zone_id[1]; }

dv_date_t moved_(dv_date_t date, int seconds) {
    dv_date_add_field(&date, DT_FMT_UNIT_SECOND, seconds);
    return date;
}

// ---- the scan ----

const tz_info_t &scan_utc_(const tz_region_t &region, const dv_date_t &utc) {
    for (int i = 0; i < region.info_cnt; ++i) {
        if (dv_date_compare(&region.infos[i].normal, &utc) <= 0) return region.infos[i];
    }
    return region.infos[region.info_cnt - 1];
}

struct scanned_t {
    int code;
    const tz_info_t *info;
};
scanned_t scan_local_(const tz_region_t &region, const dv_date_t &local, const char *abbrev) {
    if (region.info_cnt == 1) return {0, region.infos};
    const auto is = [&](const tz_info_t &info) { return std::strcmp(info.abbrev, abbrev) == 0; };
    for (int i = 0; i < region.info_cnt; i += 2) {
        const tz_info_t &n = region.infos[i], &p = region.infos[i + 1];
        const bool is_from_n = dv_date_compare(&local, &n.local) >= 0,
                   is_to_p = dv_date_compare(&local, &p.local) <= 0;
        if (is_from_n && is_to_p) {
            if (*abbrev == '\0' || is(n)) return {0, &n};
            return is(p) ? scanned_t{0, &p} : scanned_t{-5109, nullptr};
        }
        if (is_from_n) return *abbrev == '\0' || is(n) ? scanned_t{0, &n} : scanned_t{-5109, nullptr};
        if (!is_to_p) return {-5110, nullptr};
    }
    return {0, &region.infos[region.info_cnt - 1]};
}

void set_offset_(timezone_t &tz, const tz_info_t &info) {
    tz.utc_hour = static_cast<uint8_t>(info.utc_hour + 100);
    tz.utc_min = static_cast<uint8_t>(std::abs(info.utc_min));
    tz.utc_sec = 0;
}

void add_offset_(outcome_t &to, int sign) {
    const int hour = to.tz.utc_hour - 100, minute = to.tz.utc_min;
    const int minutes = hour * 60 + (hour > 0 ? minute : -minute);
    to.code = raise_of([&] { dv_date_add_field(&to.date, DT_FMT_UNIT_MINUTE, sign * minutes); });
}

outcome_t localized_by_scan_(const timezone_t &tz, const dv_date_t &utc) {
    outcome_t outcome = {tz, utc};
    const int id = id_of_(tz);
    if (id != TZ_ID_OFFSET && id >= TZ_ID_MAX) return outcome;
    if (id < TZ_ID_MAX) set_offset_(outcome.tz, scan_utc_(region_tab_[id], utc));
    add_offset_(outcome, 1);
    return outcome;
}

outcome_t normalized_by_scan_(const timezone_t &tz, const dv_date_t &local, const char *abbrev) {
    outcome_t outcome = {tz, local};
    const int id = id_of_(tz);
    if (id != TZ_ID_OFFSET && id >= TZ_ID_MAX) return outcome;
    if (id < TZ_ID_MAX) {
        const scanned_t found = scan_local_(region_tab_[id], local, abbrev);
        if (found.code != 0) return {tz, local, found.code};
        set_offset_(outcome.tz, *found.info);
    }
    add_offset_(outcome, -1);
    return outcome;
}

// ---- comparing ----

void expect_utc_scan_(const timezone_t &tz, const dv_date_t &utc) {
    const outcome_t want = localized_by_scan_(tz, utc);
    outcome_t got = {tz, utc};
    got.code = raise_of([&] { timezone_localize(&tz, &got.date, &got.tz); });
    if (want.code != 0) got.tz = want.tz;  // not stored
    ASSERT_EQ(got, want) << id_of_(tz) << " localize " << describe(utc);
    got = {tz, utc};
    timezone_adjust(&got.tz, &got.date);
    ASSERT_EQ(got, (outcome_t{want.tz, utc})) << id_of_(tz) << " adjust";
    if (id_of_(tz) >= TZ_ID_MAX) return;
    char abbrev[16];
    timezone_get_zone_abbr(&tz, &utc, abbrev, sizeof abbrev);
    const tz_region_t &region = region_tab_[id_of_(tz)];
    ASSERT_STREQ(abbrev, scan_utc_(region, utc).abbrev);
    ASSERT_EQ(zonetab_get_info(&region, &utc), &scan_utc_(region, utc)) << region.canon_name;
}

void expect_local_scan_(const timezone_t &tz, const dv_date_t &local, const char *abbrev) {
    outcome_t got = {tz, local};
    got.code = raise_of([&] { timezone_normalize(&got.tz, &got.date, abbrev); });
    ASSERT_EQ(got, normalized_by_scan_(tz, local, abbrev))
        << id_of_(tz) << " normalize " << describe(local) << ' ' << abbrev;
}

void expect_scan_(int id, const dv_date_t &date) {
    expect_utc_scan_(zone_(id), date);
    for (const char *abbrev : {"", scan_utc_(region_tab_[id], date).abbrev, "XXX"})
        expect_local_scan_(zone_(id), date, abbrev);
}

// ---- what a local time is ----

int seconds_of_(const tz_info_t &info) { return (info.utc_hour * 60 + info.utc_min) * 60 + info.utc_sec; }

// The instants at which clocks showed a time, earliest first: of each offset that the region ever had, the
// one that it gives, where it is in force then.
std::vector<const tz_info_t *> shown_at_(const tz_region_t &region, const dv_date_t &local) {
    std::map<int, const tz_info_t *, std::greater<>> in_force;
    std::set<int> offsets;
    for (int i = 0; i < region.info_cnt; ++i) offsets.insert(seconds_of_(region.infos[i]));
    for (const int offset : offsets) {
        const dv_date_t utc = moved_(local, -offset);
        const tz_info_t &info = *zonetab_get_info(&region, &utc);
        if (seconds_of_(info) == offset) in_force[offset] = &info;
    }
    std::vector<const tz_info_t *> shown;
    shown.reserve(in_force.size());
    for (const auto &[offset, info] : in_force) shown.push_back(info);
    return shown;
}

bool has_offset_of_(const timezone_t &tz, const tz_info_t &info) {
    timezone_t wanted = tz;
    set_offset_(wanted, info);
    return std::memcmp(&tz, &wanted, sizeof tz) == 0;
}

tz_local_times_t local_times_(int id, const dv_date_t &local) {
    tz_local_times_t times{};
    const timezone_t tz = zone_(id);
    timezone_get_local_times(&tz, &local, &times);
    return times;
}

// The ends of what was skipped or repeated around a time: clocks showed all that lies between as often, and
// what lies outside otherwise.
void expect_ends_(const tz_region_t &region, const tz_local_times_t &times, const dv_date_t &local) {
    const auto count = [&](const dv_date_t &at) { return static_cast<int>(shown_at_(region, at).size()); };
    EXPECT_LE(dv_date_compare(&times.begin, &local), 0);
    EXPECT_LT(dv_date_compare(&local, &times.end), 0);
    EXPECT_NE(count(moved_(times.begin, -1)), times.count);
    EXPECT_EQ(count(times.begin), times.count);
    EXPECT_EQ(count(moved_(times.end, -1)), times.count);
    EXPECT_NE(count(times.end), times.count);
}

void expect_local_times_(int id, const dv_date_t &local) {
    const tz_region_t &region = region_tab_[id];
    SCOPED_TRACE(region.canon_name + (' ' + describe(local)));
    const tz_local_times_t times = local_times_(id, local);
    const auto shown = shown_at_(region, local);
    ASSERT_EQ(static_cast<size_t>(times.count), shown.size());
    if (!shown.empty()) {
        EXPECT_TRUE(has_offset_of_(times.before, *shown.front()));
        EXPECT_TRUE(has_offset_of_(times.after, *shown.back()));
    }
    if (times.count != 1) return expect_ends_(region, times, local);
    EXPECT_EQ(times.begin, local);
    EXPECT_EQ(times.end, local);
}

}  // namespace

// At, one second before and one second behind every entry of every region, in UTC and in local time.
TEST(TimezoneHistory, IsFoundAsByTheScanFromTheNewest) {
    for (int id = 0; id < TZ_ID_MAX; ++id) {
        const tz_region_t &region = region_tab_[id];
        if (region.info_cnt == 1) continue;
        for (int i = 0; i < region.info_cnt && !testing::Test::HasFatalFailure(); i += 2) {
            for (const int seconds : {-1, 0, 1}) {
                expect_scan_(id, moved_(region.infos[i].normal, seconds));
                expect_scan_(id, moved_(region.infos[i].local, seconds));
                expect_scan_(id, moved_(region.infos[i + 1].local, seconds));
            }
        }
    }
}

// In all years, more of those that have rows, and where these years begin and end.
TEST(TimezoneHistory, IsFoundAsByTheScanAtAnyTime) {
    number_source source(42);
    for (int id = 0; id < TZ_ID_MAX && !testing::Test::HasFatalFailure(); ++id) {
        for (const int year : {-4713, -1, 1, 1900, 1901, 2024, 2050, 2051, 9999}) {
            expect_scan_(id, make_date(year, 1, 1));
            expect_scan_(id, make_date(year, 12, 31, 23, 59, 59));
            expect_scan_(id, make_date(year == 1 ? -1 : year - 1, 12, 31, 23, 59, 59));
        }
        for (long i = 0; i < scaled(50); ++i) {
            dv_date_t date = random_date(source);
            expect_scan_(id, date);
            date.century = static_cast<uint8_t>(source.pick(119, 120));
            date.year = static_cast<uint8_t>(source.pick(100, 199));
            expect_scan_(id, date);
        }
    }
}

// What no record should hold neither leads out of the tables nor gives another answer.
TEST(TimezoneHistory, TakesAnyBytesAsTheScanDoes) {
    const assertion_watch watch;
    number_source source(43);
    for (long i = 0; i < scaled(100'000) && !testing::Test::HasFatalFailure(); ++i) {
        dv_date_t date;
        timezone_t tz;
        source.fill(&date, sizeof date);
        source.fill(&tz, sizeof tz);
        if (source.pick(0, 7) != 0) {
            date.century = static_cast<uint8_t>(source.pick(118, 121));
            tz.zone_id[0] = static_cast<uint8_t>(source.pick(0, 2));
        }
        uint8_t *const field = &date.century + source.pick(1, 6);
        for (uint8_t *other = &date.year; other <= &date.second; ++other) {
            if (other != field || source.pick(0, 1) == 0) *other = static_cast<uint8_t>(source.pick(0, 33));
        }
        if (source.pick(0, 3) != 0) date.year = static_cast<uint8_t>(100 + date.year * 3);
        expect_utc_scan_(tz, date);
        expect_local_scan_(tz, date, i % 5 == 0 ? "EST" : "");
    }
}

// Every change of every region, on both of its sides: the last second and the one behind it.
TEST(TimezoneHistory, TellsGapsAndRepeatedTimesWithTheirOffsets) {
    std::set<const tz_info_t *> seen;  // histories, which regions share
    for (int id = 0; id < TZ_ID_MAX && !testing::Test::HasFailure(); ++id) {
        const tz_region_t &region = region_tab_[id];
        if (!seen.insert(region.infos).second) continue;
        for (int i = 0; i + 1 < region.info_cnt; i += 2) {
            const dv_date_t &begin = region.infos[i].local, &end = region.infos[i + 1].local;
            for (const dv_date_t &local : {moved_(begin, -1), begin, end, moved_(end, 1)}) {
                expect_local_times_(id, local);
            }
        }
        expect_local_times_(id, make_date(2024, 1, 1));
    }
    const tz_local_times_t gap =
        local_times_(zonetab_search_region("Europe/Paris")->id, make_date(2026, 3, 29, 2, 30));
    EXPECT_EQ(gap.count, 0);
    EXPECT_EQ(gap.begin, make_date(2026, 3, 29, 2));
    EXPECT_EQ(gap.end, make_date(2026, 3, 29, 3));
    EXPECT_EQ(gap.before.utc_hour, 101);
    EXPECT_EQ(gap.after.utc_hour, 102);
    timezone_t fixed = zone_(TZ_ID_OFFSET);
    fixed.utc_hour = 95;
    tz_local_times_t times{};
    const dv_date_t local = make_date(2026, 3, 29, 2, 30);
    timezone_get_local_times(&fixed, &local, &times);
    EXPECT_EQ(times.count, 1);
    EXPECT_EQ(times.before.utc_hour, 95);
}
