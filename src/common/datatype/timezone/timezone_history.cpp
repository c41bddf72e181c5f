// A region's history: the offset in force at a time in UTC, and at a local time.
//
// Times of 1900 to 2050 are looked up in a row of their year (zone_years.h): which of at most three periods
// of the year, without a branch, and its offset. What rows cannot tell is looked up in the history.
//
// It has the newest transitions first, each as two entries: the period that begins there (normal: its
// first second in UTC, local: the same on its own clocks) and the period that ends there (normal and local:
// its last second). Times in UTC only fall along the table, so an entry is found by halving.
//
// Local times need not fall: clocks that go back show an hour twice. The answer is that of the first pair,
// from the newest on, which the local time does not lie before. No offset exceeds a day, so pairs that begin,
// in UTC, a year behind the local time are certainly later; halving skips those, and the walk begins there.

#include <algorithm>
#include <cstring>

#include "timezone_internal.h"
#include "zone_lookup.h"

using namespace dv::impl;

namespace {

bool is_abbreviation_(const tz_info_t &info, const char *abbrev) { return strcmp(info.abbrev, abbrev) == 0; }
bool is_named_(const char *abbrev) { return abbrev != NULL && *abbrev != '\0'; }

// The first of the entries, step by step from the newest, that does not begin behind a time in UTC.
const tz_info_t *first_from_(const tz_region_t &region, int step, uint64_t utc_key) {
    int low = 0, high = region.info_cnt / step;
    while (low < high) {
        const int middle = low + (high - low) / 2;
        if (date_order_key(region.infos[middle * step].normal) > utc_key) {
            low = middle + 1;
        } else {
            high = middle;
        }
    }
    return region.infos + low * step;
}

// Of the two periods whose clocks showed a time.
const tz_info_t &find_overlapped_zone_(const tz_info_t &later, const tz_info_t &earlier, const char *abbrev) {
    if (!is_named_(abbrev) || is_abbreviation_(later, abbrev)) return later;
    if (!is_abbreviation_(earlier, abbrev)) raise(DV_ERR_ZONE_ABBREVIATION_TIME);
    return earlier;
}

// Behind a date by a year, in the last year of a century by a century: bytes added, of dates that are none
// too.
uint64_t key_far_behind_(const dv_date_t &date) {
    constexpr int last_year = DATE_YEAR_EXCESS + YEARS_PER_CENTURY - 1;
    constexpr uint64_t year = uint64_t{1} << 40, century = uint64_t{1} << 48;
    return date_order_key(date) + (date.year < last_year ? year : century);
}

// What a local time means: the period whose clocks showed it, and the one before when those of both did. In a
// gap no later one, and the one before. Before the history and without one, abbreviations do not matter.
struct local_periods_t {
    const tz_info_t *later, *earlier;
    bool is_certain;
};

local_periods_t periods_at_(const tz_region_t &region, const dv_date_t &local) {
    const uint64_t key = date_order_key(local);
    const tz_info_t *const end = region.infos + region.info_cnt;
    for (const tz_info_t *info = first_from_(region, 2, key_far_behind_(local)); info + 1 < end; info += 2) {
        const bool is_in_earlier = key <= date_order_key(info[1].local);
        if (key >= date_order_key(info[0].local)) return {&info[0], is_in_earlier ? &info[1] : NULL, false};
        if (!is_in_earlier) return {NULL, &info[1], false};
    }
    return {end - 1, NULL, true};
}

const tz_info_t &find_local_tzinfo_(const tz_region_t *tz_reg, const dv_date_t &local, const char *abbrev) {
    DV_ASSERT(tz_reg->info_cnt > 0);
    if (tz_reg->info_cnt > 1 && tz_reg->info_cnt % 2 != 0) assert_failed("DV_IS_EVEN (tz_reg->info_cnt)");
    const local_periods_t periods = periods_at_(*tz_reg, local);
    if (periods.later == NULL) raise(DV_ERR_ZONE_GAP);
    if (periods.earlier != NULL) return find_overlapped_zone_(*periods.later, *periods.earlier, abbrev);
    if (!periods.is_certain && is_named_(abbrev) && !is_abbreviation_(*periods.later, abbrev)) {
        raise(DV_ERR_ZONE_ABBREVIATION_TIME);
    }
    return *periods.later;
}

void store_offset_(timezone_t &tz, const tz_info_t &info) {
    tz_set_offset(tz, info.utc_hour, info.utc_min < 0 ? -info.utc_min : info.utc_min);
}

void tell_local_times_(tz_local_times_t &times, const local_periods_t &periods) {
    if (periods.earlier == NULL) {
        store_offset_(times.before, *periods.later);
        times.after = times.before;
        return;
    }
    const tz_info_t &old_end = *periods.earlier, &new_begin = periods.earlier[-1];
    times.count = periods.later == NULL ? 0 : 2;
    store_offset_(times.before, old_end);
    store_offset_(times.after, new_begin);
    dv_date_t old_limit = old_end.local;
    dv_date_add_field(&old_limit, DT_FMT_UNIT_SECOND, 1);
    times.begin = times.count == 0 ? old_limit : new_begin.local;
    times.end = times.count == 0 ? new_begin.local : old_limit;
}

// ---- the same by the rows of years ----

// Hidden in a register, lest compilers compute the row's address anew for each of its members: a twelfth of
// the time from local to UTC (bench/timezone).
const zone_year_t &row_(size_t number) {
    const zone_year_t *row = ZONE_YEAR_ROWS + number;
    asm("" : "+r"(row));
    return *row;
}

// The period that a time belongs to; NULL where the rows cannot tell.
const zone_period_t *period_at_utc_(const timezone_t &zone, uint64_t word) {
    const size_t number = zone_row_number<&zone_year_rows_t::utc>(zone, word);
    if (number == 0) return NULL;
    const zone_year_t &row = row_(number);
    return &row.periods[zone_period_number(row, word_in_year(word))];
}

// NULL for times of none or two meanings too; row 0 has only such.
const zone_period_t *period_at_local_(const timezone_t &zone, uint64_t word) {
    const zone_year_t &row = row_(zone_row_number<&zone_year_rows_t::local>(zone, word));
    const uint64_t in_year = word_in_year(word);
    const size_t period = zone_period_number(row, in_year);
    return in_year < row.plain[period] ? NULL : &row.periods[period];
}

void store_offset_(timezone_t &tz, const zone_period_t &period) {
    memcpy(&tz, period.offset, sizeof period.offset);
    tz.utc_sec = 0;
}

// For every zone and date.
[[gnu::noinline]] void normalize_any_(timezone_t *local_tz, dv_date_t *date, const char *abbrev) {
    if (!tz_is_offset(*local_tz)) {
        const tz_region_t *region = region_of(*local_tz);
        if (region == NULL) return;
        store_offset_(*local_tz, find_local_tzinfo_(region, *date, abbrev));
    }
    timezone_shift_to_west(local_tz, date);
}

[[gnu::noinline]] void localize_any_(timezone_t zone, dv_date_t *date, timezone_t *out_tz) {
    if (!tz_is_offset(zone) && region_of(zone) == NULL) return;
    timezone_adjust(&zone, date);
    timezone_shift_to_east(&zone, date);
    if (out_tz != NULL) *out_tz = zone;
}

}  // namespace

const tz_info_t &dv::impl::info_at(const tz_region_t &region, const dv_date_t &utc) {
    const tz_info_t *info = first_from_(region, 1, date_order_key(utc));
    const tz_info_t *const oldest = region.infos + region.info_cnt - 1;
    return info <= oldest ? *info : *oldest;
}

bool dv::impl::abbreviation_tells_offset(const timezone_t &tz, const dv_date_t &local, const char *abbrev) {
    const tz_region_t *const region = region_of(tz);
    if (region == NULL) return false;
    const local_periods_t periods = periods_at_(*region, local);
    if (periods.later == NULL) return false;
    const bool is_later = periods.earlier == NULL || is_abbreviation_(*periods.later, abbrev);
    timezone_t found = tz;
    store_offset_(found, is_later ? *periods.later : *periods.earlier);
    return found.utc_hour == tz.utc_hour && found.utc_min == tz.utc_min;
}

extern "C" {

const tz_info_t *zonetab_get_info(const tz_region_t *region, const dv_date_t *utc) {
    if (!DV_ASSERT(region != NULL) || !DV_ASSERT(utc != NULL)) return nullptr;
    return &info_at(*region, *utc);
}

void timezone_normalize(timezone_t *local_tz, dv_date_t *date, const char *abbrev) {
    if (!DV_ASSERT(local_tz != NULL) || !DV_ASSERT(date != NULL)) return;
    const uint64_t word = date_word(*date);
    const zone_period_t *const period = period_at_local_(*local_tz, word);
    if (period == NULL || is_named_(abbrev) || !has_clock(word))
        return normalize_any_(local_tz, date, abbrev);
    store_offset_(*local_tz, *period);
    const uint64_t utc = shifted_clock(word, period->shift);
    if (!has_certain_day(utc, date->month)) return timezone_shift_to_west(local_tz, date);
    store_date_word(*date, utc);
}

void timezone_get_local_times(const timezone_t *tz, const dv_date_t *local, tz_local_times_t *times) {
    if (!DV_ASSERT(tz != NULL) || !DV_ASSERT(local != NULL) || !DV_ASSERT(times != NULL)) return;
    tz_local_times_t found = {1, *tz, *tz, *local, *local};
    if (!tz_is_offset(*tz)) {
        const tz_region_t *const region = region_of(*tz);
        if (region == NULL) return;
        tell_local_times_(found, periods_at_(*region, *local));
    }
    *times = found;
}

void timezone_localize(const timezone_t *sess_tz, dv_date_t *date, timezone_t *out_tz) {
    if (!DV_ASSERT(sess_tz != NULL) || !DV_ASSERT(date != NULL)) return;
    const uint64_t word = date_word(*date);
    const zone_period_t *const period = period_at_utc_(*sess_tz, word);
    if (period == NULL || !has_clock(word)) return localize_any_(*sess_tz, date, out_tz);
    const uint64_t local = shifted_clock(word, period->shift);
    if (!has_certain_day(local, date->month)) return localize_any_(*sess_tz, date, out_tz);
    store_date_word(*date, local);
    if (out_tz == NULL) return;
    *out_tz = *sess_tz;
    store_offset_(*out_tz, *period);
}

void timezone_adjust(timezone_t *local_tz, const dv_date_t *date) {
    if (!DV_ASSERT(local_tz != NULL) || !DV_ASSERT(date != NULL) || tz_is_offset(*local_tz)) return;
    const zone_period_t *const period = period_at_utc_(*local_tz, date_word(*date));
    if (period != NULL) return store_offset_(*local_tz, *period);
    const tz_region_t *region = region_of(*local_tz);
    if (region != NULL) store_offset_(*local_tz, info_at(*region, *date));
}

void timezone_get_zone_abbr(const timezone_t *local_tz, const dv_date_t *date, char *buf, int buf_size) {
    if (!DV_ASSERT(local_tz != NULL) || !DV_ASSERT(date != NULL) || !DV_ASSERT(buf != NULL)) return;
    if (buf_size < 1) return;
    *buf = '\0';
    if (tz_is_offset(*local_tz)) return;
    const tz_region_t *region = region_of(*local_tz);
    if (region == NULL) return;
    const char *abbrev = info_at(*region, *date).abbrev;
    const size_t length = std::min(strlen(abbrev), static_cast<size_t>(buf_size) - 1);
    memcpy(buf, abbrev, length);
    buf[length] = '\0';
}

}  // extern "C"
