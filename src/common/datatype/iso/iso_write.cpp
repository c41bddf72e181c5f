// Datetimes as texts of ISO 8601's shape. A text is made in a buffer that any value fits, and then handed
// over.

#include <algorithm>
#include <climits>
#include <cstring>

#include "../digits.h"
#include "../timezone/timezone_internal.h"
#include "dvtypes/iso.h"

using namespace dv::impl;

namespace {

// Where a text is made; holds the longest of any value.
class writer_t {
  public:
    void put(char c) { *end_++ = c; }
    void put(std::string_view text) { end_ = std::copy(text.begin(), text.end(), end_); }
    void put_two_digits(int number) {
        store_text<uint16_t>(end_, digit_pair(static_cast<uint32_t>(number)));
        end_ += 2;
    }
    void put_three(int first, int second, int third, char separator) {
        put_two_digits(first);
        put(separator);
        put_two_digits(second);
        put(separator);
        put_two_digits(third);
    }

    // Hands the text over; its length.
    int finish(char *buf, int buf_size, const error_at &too_long) const {
        const auto length = static_cast<size_t>(end_ - text_);
        if (buf_size < 0 || length >= static_cast<size_t>(buf_size)) raise(too_long);
        memcpy(buf, text_, length);
        buf[length] = '\0';
        return static_cast<int>(length);
    }

  private:
    char text_[DV_ISO_TS_TZ_SIZE];
    char *end_ = text_;
};

// Every field has the digits that its place in a text has; how long a month is does not matter.
void check_(const dv_date_t &date) {
    check_calendar(date_year(date), date.month, date.day);
    check_clock(date.hour, date.minute, date.second);
}
void check_fraction_(const dv_time_t &time) {
    const uint32_t nanoseconds = time_nanoseconds(time);
    check_unit(DT_FMT_UNIT_FSEC, static_cast<int>(std::min<uint32_t>(nanoseconds, INT_MAX)));
}

void put_date_(writer_t &text, const dv_date_t &date) {
    check_(date);
    const int year = date_year(date);
    if (year < 0) text.put('-');
    const int digits = year < 0 ? -year : year;
    text.put_two_digits(digits / YEARS_PER_CENTURY);
    text.put_two_digits(digits % YEARS_PER_CENTURY);
    text.put('-');
    text.put_two_digits(date.month);
    text.put('-');
    text.put_two_digits(date.day);
    text.put(' ');
    text.put_three(date.hour, date.minute, date.second, ':');
}

void put_fraction_(writer_t &text, const dv_time_t &time) {
    check_fraction_(time);
    const uint32_t nanoseconds = time_nanoseconds(time);
    char digits[8];
    store_text<uint64_t>(digits, eight_digits(nanoseconds / 10));
    text.put('.');
    text.put({digits, sizeof digits});
    text.put(static_cast<char>('0' + nanoseconds % 10));
}

template <typename Record>
bool is_null_(const Record &record) {
    constexpr Record null{};
    return memcmp(&record, &null, sizeof record) == 0;
}

void put_timestamp_(writer_t &text, const dv_timestamp_t &ts) {
    put_date_(text, date_part(ts));
    put_fraction_(text, time_part(ts));
}

// As printf writes it, but with the sign that is in force: that of the hour, and minus where the hour is 0.
void put_offset_(writer_t &text, timezone_t tz) {
    char offset[TZ_NAME_TEXT_SIZE];
    tz_set_zone(tz, TZ_ID_OFFSET);
    timezone_get_zone_name(&tz, offset, sizeof offset);
    if (tz_hour(tz) == 0 && tz.utc_min != 0) offset[0] = '-';
    text.put(' ');
    text.put(offset);
}

// Behind a region its abbreviation, or the offset where that does not tell it.
void put_zone_(writer_t &text, const dv_ts_tz_t &ts_tz, const dv_date_t &local, const error_at &no_zone) {
    if (tz_is_offset(ts_tz.tz)) return put_offset_(text, ts_tz.tz);
    char name[TZ_NAME_TEXT_SIZE], abbreviation[TZ_ABBREV_TEXT_SIZE];
    timezone_get_zone_name(&ts_tz.tz, name, sizeof name);
    if (name[0] == '\0') raise(no_zone);
    text.put(' ');
    text.put(name);
    timezone_get_zone_abbr(&ts_tz.tz, &date_part(ts_tz.utc), abbreviation, sizeof abbreviation);
    if (!abbreviation_tells_offset(ts_tz.tz, local, abbreviation)) return put_offset_(text, ts_tz.tz);
    text.put(' ');
    text.put(abbreviation);
}

}  // namespace

extern "C" int dv_date_to_iso(const dv_date_t *date, char *buf, int buf_size) {
    if (!DV_ASSERT(date != NULL) || !DV_ASSERT(buf != NULL)) return 0;
    writer_t text;
    if (!is_null_(*date)) put_date_(text, *date);
    return text.finish(buf, buf_size, DV_ERR_TEXT_BUFFER_SIZE);
}

extern "C" int dv_time_to_iso(const dv_time_t *time, char *buf, int buf_size) {
    if (!DV_ASSERT(time != NULL) || !DV_ASSERT(buf != NULL)) return 0;
    check_clock(time->hour, time->minute, time->second);
    writer_t text;
    text.put_three(time->hour, time->minute, time->second, ':');
    put_fraction_(text, *time);
    return text.finish(buf, buf_size, DV_ERR_TEXT_BUFFER_SIZE);
}

extern "C" int dv_timestamp_to_iso(const dv_timestamp_t *ts, char *buf, int buf_size) {
    if (!DV_ASSERT(ts != NULL) || !DV_ASSERT(buf != NULL)) return 0;
    writer_t text;
    if (!is_null_(*ts)) put_timestamp_(text, *ts);
    return text.finish(buf, buf_size, DV_ERR_TEXT_BUFFER_SIZE);
}

extern "C" int dv_ts_tz_to_iso(const dv_ts_tz_t *ts_tz, char *buf, int buf_size) {
    if (!DV_ASSERT(ts_tz != NULL) || !DV_ASSERT(buf != NULL)) return 0;
    writer_t text;
    if (!is_null_(*ts_tz)) {
        dv_timestamp_t local{};
        dv_timestamp_from_ts_tz(&local, ts_tz);
        put_timestamp_(text, local);
        put_zone_(text, *ts_tz, date_part(local), DV_ERR_ZONE_TEXT);
    }
    return text.finish(buf, buf_size, DV_ERR_TEXT_BUFFER_SIZE);
}
