// Time zone records: fields, shifting by the offset, names.

#include <algorithm>
#include <cstring>

#include "date_word.h"
#include "timezone_internal.h"

using namespace dv::impl;

namespace {

constexpr int _minutes_per_day = MINUTES_PER_HOUR * HOURS_PER_DAY;

// Of 1600 to 9998, so that a day more or less is Gregorian too; all fields in range.
bool is_plain_(const dv_date_t &date, uint64_t word) {
    constexpr uint64_t from = date_word(116, 100, 1), to = date_word(199, 199, 0);
    const int year_of_century = date.year - DATE_YEAR_EXCESS;
    return word - from < to - from && year_of_century >= 0 && year_of_century < YEARS_PER_CENTURY &&
           is_month(date.month) && date.day >= 1 && date.day <= date_month_length(date) && has_clock(word);
}

void to_next_day_(dv_date_t &date) {
    if (!date_is_last_of_month(date)) {
        ++date.day;
    } else if (date.month < MONTHS_PER_YEAR) {
        date_set_calendar(date, date_year(date), date.month + 1, 1);
    } else {
        date_set_calendar(date, date_year(date) + 1, 1, 1);
    }
}

void to_last_day_(dv_date_t &date) {
    if (date.day > 1) {
        --date.day;
    } else if (date.month > 1) {
        date_set_calendar(date, date_year(date), date.month - 1,
                          month_length(date_year(date), date.month - 1));
    } else {
        date_set_calendar(date, date_year(date) - 1, MONTHS_PER_YEAR, 31);
    }
}

// Minutes less than a day either way move by bytes.
void move_by_minutes_(dv_date_t &date, int minutes) {
    const bool is_short = minutes > -_minutes_per_day && minutes < _minutes_per_day;
    if (is_short && shift_date(date, clock_shift(minutes))) return;
    dv_date_add_field(&date, DT_FMT_UNIT_MINUTE, minutes);
}

// At least two digits.
char *put_number_(char *to, unsigned value) {
    if (value >= 100) *to++ = static_cast<char>('0' + value / 100);
    to[0] = static_cast<char>('0' + value / 10 % 10);
    to[1] = static_cast<char>('0' + value % 10);
    return to + 2;
}

constexpr size_t _offset_text_max = std::string_view("-100:255").size();

// As printf's "%+.2d:%.2d" of any two bytes.
std::string_view offset_text_(const timezone_t &tz, char (&text)[_offset_text_max]) {
    const int hour = tz_hour(tz);
    text[0] = hour < 0 ? '-' : '+';
    char *end = put_number_(text + 1, static_cast<unsigned>(hour < 0 ? -hour : hour));
    *end++ = ':';
    end = put_number_(end, tz.utc_min);
    return {text, static_cast<size_t>(end - text)};
}

}  // namespace

extern "C" {

void timezone_init(timezone_t *tz) {
    if (!DV_ASSERT(tz != NULL)) return;
    tz_set_offset(*tz, 0, 0);
    tz_set_zone(*tz, TZ_ID_DEFAULT);
}

void timezone_set_field(timezone_t *tz, tz_field_t field, int value) {
    if (!DV_ASSERT(tz != NULL)) return;
    switch (field) {
        case TZ_FLD_UTC_HOUR:
            if (value < TZ_HOUR_MIN || value > TZ_HOUR_MAX) raise(DV_ERR_ZONE_HOUR);
            return tz_set_hour(*tz, value);
        case TZ_FLD_UTC_MIN:
            if (value < 0 || value >= MINUTES_PER_HOUR) raise(DV_ERR_ZONE_MINUTE);
            tz->utc_min = static_cast<uint8_t>(value);
            return;
        case TZ_FLD_UTC_SEC:
            if (value < 0 || value >= SEC_PER_MINUTE) raise(DV_ERR_ZONE_SECOND);
            tz->utc_sec = static_cast<uint8_t>(value);
            return;
        case TZ_FLD_ZONE_ID:
            DV_ASSERT(value >= 0 && value <= TZ_ID_OFFSET);
            return tz_set_zone(*tz, value);
        default:
            raise(DV_ERR_FIELD_UNSUPPORTED);
    }
}

int timezone_get_field(const timezone_t *tz, tz_field_t field) {
    if (!DV_ASSERT(tz != NULL)) return 0;
    switch (field) {
        case TZ_FLD_UTC_HOUR:
            return tz_hour(*tz);
        case TZ_FLD_UTC_MIN:
            return tz->utc_min;
        case TZ_FLD_UTC_SEC:
            return tz->utc_sec;
        case TZ_FLD_ZONE_ID:
            return tz_zone(*tz);
        default:
            raise(DV_ERR_FIELD_UNSUPPORTED);
    }
}

void timezone_shift_to_east(const timezone_t *local_tz, dv_date_t *date) {
    if (DV_ASSERT(local_tz != NULL) && DV_ASSERT(date != NULL)) {
        move_by_minutes_(*date, tz_applied_minutes(*local_tz));
    }
}

void timezone_shift_to_west(const timezone_t *local_tz, dv_date_t *date) {
    if (DV_ASSERT(local_tz != NULL) && DV_ASSERT(date != NULL)) {
        move_by_minutes_(*date, -tz_applied_minutes(*local_tz));
    }
}

void timezone_get_zone_name(const timezone_t *local_tz, char *buf, int buf_size) {
    if (!DV_ASSERT(local_tz != NULL) || !DV_ASSERT(buf != NULL) || buf_size < 1) return;
    *buf = '\0';
    if (tz_is_offset(*local_tz)) {
        char text[_offset_text_max];
        const std::string_view name = offset_text_(*local_tz, text);
        const size_t length = std::min(name.size(), static_cast<size_t>(buf_size) - 1);
        memcpy(buf, name.data(), length);
        buf[length] = '\0';
        return;
    }
    const tz_region_t *region = region_of(*local_tz);
    if (region != NULL) memcpy(buf, region->canon_name, strlen(region->canon_name) + 1);
}

}  // extern "C"

bool dv::impl::shift_date(dv_date_t &date, int32_t shift) {
    const uint64_t word = date_word(date);
    if (!is_plain_(date, word)) return false;
    const uint64_t shifted = shifted_clock(word, shift);
    constexpr uint64_t clock = uint64_t{0xFFFF} << WORD_MINUTE_AT;
    const bool is_same_day = shifted >> WORD_DAY_AT == word >> WORD_DAY_AT;
    store_date_word(date, (word & ~clock) | (shifted & clock));
    if (!is_same_day) (shifted > word) ? to_next_day_(date) : to_last_day_(date);
    return true;
}

const tz_region_t *dv::impl::region_of(const timezone_t &tz) {
    const int zone_id = tz_zone(tz);
    DV_ASSERT(zone_id < TZ_ID_MAX);
    return zone_id < TZ_ID_MAX ? &region_tab_[zone_id] : NULL;
}
