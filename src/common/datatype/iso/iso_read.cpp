// Datetimes from texts of ISO 8601's shape.
//
// A reader takes its parts from the front of the text, each whole or not at all; what it does not find it
// refuses in the name of the exported function.

#include <algorithm>

#include "../ascii.h"
#include "../message_text.h"
#include "../timezone/timezone_internal.h"
#include "dvtypes/iso.h"

using namespace dv::impl;

namespace {

class reader_t {
  public:
    reader_t(const char *str, int str_len, const error_at &refused)
        : whole_(str, str_len > 0 ? static_cast<size_t>(str_len) : 0), rest_(whole_), refused_(&refused) {}

    bool starts_with_digit() const { return !rest_.empty() && is_digit(rest_.front()); }
    bool is_at_end() const { return rest_.empty(); }

    bool take(char c) {
        if (!rest_.starts_with(c)) return false;
        rest_.remove_prefix(1);
        return true;
    }

    // A number of just so many digits, behind which others may follow; refused as `field` where there are
    // fewer.
    template <size_t digits>
    int number(const char *field) {
        if (rest_.size() < digits) refuse(field);
        int value = 0;
        for (size_t i = 0; i < digits; ++i) {
            if (!is_digit(rest_[i])) refuse(field);
            value = value * 10 + digit_of(rest_[i]);
        }
        rest_.remove_prefix(digits);
        return value;
    }

    // The digits of a fraction, in nanoseconds.
    uint32_t fraction() {
        uint32_t nanoseconds = 0;
        size_t digits = 0;
        for (; digits < rest_.size() && is_digit(rest_[digits]); ++digits) {
            if (digits == FRACTION_DIGITS) refuse("fractional second");
            nanoseconds = nanoseconds * 10 + static_cast<uint32_t>(digit_of(rest_[digits]));
        }
        if (digits == 0) refuse("fractional second");
        rest_.remove_prefix(digits);
        return nanoseconds * static_cast<uint32_t>(decimal_power(FRACTION_DIGITS - static_cast<int>(digits)));
    }

    // Up to a blank or the end.
    std::string_view word() {
        const std::string_view found = rest_.substr(0, rest_.find(' '));
        rest_.remove_prefix(found.size());
        return found;
    }

    void check_end() const {
        if (!rest_.empty()) refuse("text");
    }

    [[noreturn]] void refuse(const char *field) const {
        const message_text here(rest_), all(whole_);
        raise(*refused_, field, here.text, all.text);
    }

  private:
    std::string_view whole_, rest_;
    const error_at *refused_;
};

// ---------------------------------------------------------------------------------------------------------
// Date and time of day
// ---------------------------------------------------------------------------------------------------------

// The parts between which ISO's extended form has separators and the compact one has none.
bool take_date_(reader_t &text, dv_date_t &date) {
    const bool is_negative = text.take('-');
    if (!is_negative) text.take('+');
    const int year = text.number<4>("date");
    const bool is_compact = !text.take('-');
    const int month = text.number<2>("date");
    if (!is_compact && !text.take('-')) text.refuse("date");
    const int day = text.number<2>("date");
    check_unit(DT_FMT_UNIT_YEAR, year);
    check_unit(DT_FMT_UNIT_MONTH, month);
    date_set_calendar(date, is_negative ? -year : year, month, day);
    return is_compact;
}

// From the hour to as far as the text goes; the fraction only into `nanoseconds`, if that is given.
void take_time_(reader_t &text, bool is_compact, dv_date_t &clock, uint32_t *nanoseconds) {
    const auto next_field = [&] { return is_compact ? text.starts_with_digit() : text.take(':'); };
    int fields[] = {text.number<2>("time of day"), 0, 0};
    constexpr dt_fmt_unit_e units[] = {DT_FMT_UNIT_HOUR, DT_FMT_UNIT_MINUTE, DT_FMT_UNIT_SECOND};
    size_t count = 1;
    while (count < std::size(fields) && next_field()) fields[count++] = text.number<2>("time of day");
    for (size_t i = 0; i < count; ++i) {
        if (!is_in_range(range_of(units[i]), fields[i])) dv_dt_check_validity_of_unit(units[i], fields[i]);
    }
    date_set_clock(clock, fields[0], fields[1], fields[2]);
    if (count == std::size(fields) && nanoseconds != nullptr && text.take('.'))
        *nanoseconds = text.fraction();
}

// Date, and the time behind it if there is one.
void take_date_and_time_(reader_t &text, dv_date_t &date, uint32_t *nanoseconds) {
    const bool is_compact = take_date_(text, date);
    date_set_clock(date, 0, 0, 0);
    reader_t behind = text;
    if (behind.take('T') || behind.take('t') || (behind.take(' ') && behind.starts_with_digit())) {
        take_time_(behind, is_compact, date, nanoseconds);
        text = behind;
    }
}

// ---------------------------------------------------------------------------------------------------------
// Zones
// ---------------------------------------------------------------------------------------------------------

error_at with_code_(error_at where, int code) {
    where.code = code;
    return where;
}

// Hours and minutes behind the sign. Records give the minutes the sign of the hour, and that of 0 is minus.
timezone_t take_offset_(reader_t &text, int sign, const error_at &refused) {
    const int hour = text.number<2>("time zone");
    const bool has_minute = text.take(':') || text.starts_with_digit();
    const int minute = has_minute ? text.number<2>("time zone") : 0;
    int error = offset_error(sign * hour, minute, sign);
    if (error == 0 && hour == 0 && minute != 0 && sign > 0) error = DV_ERR_ZONE_MINUTE;
    if (error != 0) raise(with_code_(refused, error));
    timezone_t zone{};
    tz_set_offset(zone, sign * hour, minute);
    tz_set_zone(zone, TZ_ID_OFFSET);
    return zone;
}

// A zone as the text tells it.
struct told_zone_t {
    timezone_t zone;
    char abbreviation[TZ_ABBREV_TEXT_SIZE];
    bool has_offset;  // of a region: the one in `zone`
};

// "+09:00" and not "+09", which is an abbreviation.
bool is_offset_in_full_(std::string_view word) {
    return word.size() > 3 && (word[0] == '+' || word[0] == '-') && word[3] == ':';
}

// A region's name; behind it the abbreviation or the offset in force may stand.
told_zone_t take_region_(reader_t &text, const error_at &refused) {
    const reader_t at_name = text;
    const std::string_view name = text.word();
    if (name.empty()) at_name.refuse("time zone");
    const tz_region_t *const region = find_region(name);
    if (region == nullptr) raise(with_code_(refused, DV_ERR_ZONE_TEXT));
    told_zone_t told{};
    if (text.take(' ')) {
        reader_t at_word = text;
        const std::string_view word = text.word();
        told.has_offset = is_offset_in_full_(word);
        if (told.has_offset) {
            const int sign = at_word.take('-') ? -1 : 1;
            if (sign > 0) at_word.take('+');
            told.zone = take_offset_(at_word, sign, refused);
            text = at_word;
        } else {
            if (word.empty() || word.size() >= sizeof told.abbreviation) at_word.refuse("time zone");
            *std::copy(word.begin(), word.end(), told.abbreviation) = '\0';
        }
    }
    tz_set_zone(told.zone, region->id);
    return told;
}

told_zone_t take_zone_(reader_t &text, const error_at &refused) {
    told_zone_t utc{};
    tz_set_offset(utc.zone, 0, 0);
    tz_set_zone(utc.zone, TZ_ID_OFFSET);
    if (text.is_at_end() || text.take('Z') || text.take('z')) return utc;
    const bool has_blank = text.take(' ');
    if (text.take('+')) return {take_offset_(text, 1, refused), "", false};
    if (text.take('-')) return {take_offset_(text, -1, refused), "", false};
    if (!has_blank) text.refuse("time zone");
    return take_region_(text, refused);
}

// Local time to UTC, and the zone's offset.
void normalize_(dv_ts_tz_t &ts_tz, const told_zone_t &told, const error_at &refused) {
    dv_date_t &date = date_part(ts_tz.utc);
    ts_tz.tz = told.zone;
    if (!told.has_offset) return timezone_normalize(&ts_tz.tz, &date, told.abbreviation);
    timezone_shift_to_west(&told.zone, &date);
    timezone_adjust(&ts_tz.tz, &date);
    const bool is_in_force = ts_tz.tz.utc_hour == told.zone.utc_hour && ts_tz.tz.utc_min == told.zone.utc_min;
    if (!is_in_force) raise(with_code_(refused, DV_ERR_ZONE_GAP));
}

}  // namespace

extern "C" void dv_date_from_iso(dv_date_t *date, const char *str, int str_len) {
    if (!DV_ASSERT(date != NULL) || !DV_ASSERT(str != NULL)) return;
    const error_at refused = DV_ERR_FIELD_TEXT;
    reader_t text(str, str_len, refused);
    dv_date_t read{};
    take_date_and_time_(text, read, /*nanoseconds=*/NULL);
    text.check_end();
    dv_date_is_valid(&read);
    *date = read;
}

extern "C" void dv_time_from_iso(dv_time_t *time, const char *str, int str_len) {
    if (!DV_ASSERT(time != NULL) || !DV_ASSERT(str != NULL)) return;
    const error_at refused = DV_ERR_FIELD_TEXT;
    reader_t text(str, str_len, refused);
    dv_date_t clock{};
    uint32_t nanoseconds = 0;
    const bool is_compact = str_len >= 4 && str[2] != ':';
    take_time_(text, is_compact, clock, &nanoseconds);
    text.check_end();
    *time = {clock.hour, clock.minute, clock.second, 0, {}};
    time_set_nanoseconds(*time, nanoseconds);
}

extern "C" void dv_timestamp_from_iso(dv_timestamp_t *ts, const char *str, int str_len) {
    if (!DV_ASSERT(ts != NULL) || !DV_ASSERT(str != NULL)) return;
    const error_at refused = DV_ERR_FIELD_TEXT;
    reader_t text(str, str_len, refused);
    dv_timestamp_t read{};
    uint32_t nanoseconds = 0;
    take_date_and_time_(text, date_part(read), &nanoseconds);
    text.check_end();
    dv_date_is_valid(&date_part(read));
    time_set_nanoseconds(time_part(read), nanoseconds);
    *ts = read;
}

extern "C" void dv_ts_tz_from_iso(dv_ts_tz_t *ts_tz, const char *str, int str_len) {
    if (!DV_ASSERT(ts_tz != NULL) || !DV_ASSERT(str != NULL)) return;
    const error_at refused = DV_ERR_FIELD_TEXT;
    reader_t text(str, str_len, refused);
    dv_ts_tz_t read{};
    uint32_t nanoseconds = 0;
    take_date_and_time_(text, date_part(read.utc), &nanoseconds);
    const told_zone_t told = take_zone_(text, refused);
    text.check_end();
    dv_date_is_valid(&date_part(read.utc));
    time_set_nanoseconds(time_part(read.utc), nanoseconds);
    normalize_(read, told, refused);
    *ts_tz = read;
}
