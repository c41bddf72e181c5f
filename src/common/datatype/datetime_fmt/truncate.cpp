// TRUNC and ROUND of dates: one rule per unit, found by the format element that names it.
//
// A rule rebuilds the date from the fields that begin its unit, which checks them and brings a day in the gap
// of October 1582 to the 15th; from there rounding moves on to the next unit. Years step over the year 0 that
// the calendar lacks. WW, IW and the ISO years move the day alone and clear the time of day. Moves by days
// are those of date arithmetic and so refuse results before day number 0.

#include "calendar_week.h"
#include "fmt_element.h"

using namespace dv::impl;

namespace {

inline void rebuild_(dv_date_t &date, const calendar_day_t &day, int hour = 0, int minute = 0) {
    if (is_plain_date(day, hour, minute, 0)) [[likely]] {
        const auto year = static_cast<uint32_t>(day.year);
        const uint32_t century = year / YEARS_PER_CENTURY;
        date_set_packed_day(
            date, packed_day(century, year - century * YEARS_PER_CENTURY, static_cast<uint32_t>(day.month),
                             static_cast<uint32_t>(day.day)));
        return date_set_clock(date, hour, minute, 0);
    }
    const int year = day.year == 0 ? 1 : day.year;
    dv_date_from_unit_values(&date, year, day.month, day.day, hour, minute, 0);
}

// A week of seven days, of which `past` have gone by: back to its first day, or on to the next.
void move_to_week_(dv_date_t &date, int past, bool up) {
    date_add_days(date, up ? DAYS_PER_WEEK - past : -past);
    date.hour = date.minute = date.second = 0;
}

// ---------------------------------------------------------------------------------------------------------
// Rules: round tells TRUNC (false) from ROUND (true)
// ---------------------------------------------------------------------------------------------------------

void to_century_(dv_date_t &date, bool round) {
    const int year = date_year(date);
    const int whole = year / 100 * 100;  // toward zero, so BC years give the later bound
    if (year > 0) return rebuild_(date, {whole + (round && year - whole > 50 ? 101 : 1), 1, 1});
    rebuild_(date, {round && -year % 100 <= 50 ? whole : whole - 100, 1, 1});
}

void to_year_(dv_date_t &date, bool round) {
    const calendar_day_t from = date_calendar_day(date);
    rebuild_(date, {from.year + (round && from.month > 6 ? 1 : 0), 1, 1});
}

// The Monday of ISO week 1 of the calendar year, which may lie behind the date.
void to_iso_year_(dv_date_t &date, bool round) {
    to_year_(date, round);
    date_add_days(date, -iso_week_1_lead(date_year(date)));
}

void to_quarter_(dv_date_t &date, bool round) {
    const calendar_day_t from = date_calendar_day(date);
    // In half months from 1 January, rounding turns at the middle of a quarter's second month: at 3, 9,
    // 15, 21.
    const int half_months = (from.month - 1) * 2 + (from.day >= 16 ? 1 : 0);
    const int quarter = round ? (half_months + 3) / 6 : (from.month - 1) / 3;  // 0..4
    rebuild_(date, {from.year + quarter / 4, quarter % 4 * 3 + 1, 1});
}

void to_month_(dv_date_t &date, bool round) {
    const calendar_day_t from = date_calendar_day(date);
    if (!round || from.day < 16) return rebuild_(date, {from.year, from.month, 1});
    const bool is_december = from.month == MONTHS_PER_YEAR;
    rebuild_(date, {from.year + int{is_december}, is_december ? 1 : from.month + 1, 1});
}

// Weeks that begin on the weekday of 1 January.
void to_week_of_year_(dv_date_t &date, bool round) {
    const int past = (day_of_year(date_calendar_day(date)) - 1) % DAYS_PER_WEEK;
    move_to_week_(date, past, round && past > 3);
}

// Weeks that begin on the weekday of the 1st of the month.
void to_week_of_month_(dv_date_t &date, bool round) {
    const calendar_day_t from = date_calendar_day(date);
    const int past = (from.day - 1) % DAYS_PER_WEEK;
    rebuild_(date, {from.year, from.month, from.day - past});
    if (round && past > 3) date_add_days(date, DAYS_PER_WEEK);
}

void to_monday_(dv_date_t &date, bool round) {
    const int past = weekday(date_day_number(date));
    move_to_week_(date, past, round && past > 3);
}

void to_sunday_(dv_date_t &date, bool round) {
    const int past = (weekday(date_day_number(date)) + 1) % DAYS_PER_WEEK;
    move_to_week_(date, past, round && (past > 3 || (past == 3 && date.hour >= 12)));
    rebuild_(date, date_calendar_day(date));
}

void to_day_(dv_date_t &date, bool round) {
    const bool up = round && date.hour >= 12;
    rebuild_(date, date_calendar_day(date));
    if (up) date_add_days(date, 1);
}

void to_hour_(dv_date_t &date, bool round) {
    const bool up = round && date.minute >= 30;
    rebuild_(date, date_calendar_day(date), date.hour);
    if (up) dv_date_add_field(&date, DT_FMT_UNIT_HOUR, 1);
}

void to_minute_(dv_date_t &date, bool round) {
    const bool up = round && date.second >= 30;
    rebuild_(date, date_calendar_day(date), date.hour, date.minute);
    if (up) dv_date_add_field(&date, DT_FMT_UNIT_MINUTE, 1);
}

// Characters of a text that is not empty: two of one length up to eight have the same word only if they are
// the same. Two halves that may overlap, or the length, the first character, the middle and the last.
constexpr uint64_t word_of_(std::string_view text) {
    const auto byte = [text](size_t i) { return uint64_t{static_cast<uint8_t>(text.data()[i])}; };
    const size_t last = text.size() - 1;
    if (last < 3) return text.size() << 24 | byte(0) << 16 | byte(text.size() / 2) << 8 | byte(last);
    const auto half = [&](size_t i) {
        return byte(i) << 24 | byte(i + 1) << 16 | byte(i + 2) << 8 | byte(i + 3);
    };
    return half(0) << 32 | half(last - 3);
}
constexpr uint64_t _case_bits = in_each_byte('a' - 'A');

struct unit_t {
    uint64_t word;       // of its name in capitals
    uint64_t case_bits;  // of those characters that are letters
    size_t length;
    truncation_t *rule;
};
constexpr unit_t unit_(dt_fmt_token_id_e id, truncation_t *rule) {
    const std::string_view name = keyword_of(fmt_tokens_[id]);
    const uint64_t word = word_of_(name);  // letters have the bit above that of their case, digits do not
    return {word, word >> 1 & _case_bits, name.size(), rule};
}
constexpr unit_t _units[] = {
    unit_(DT_FMT_TOKEN_CC, to_century_),      unit_(DT_FMT_TOKEN_SCC, to_century_),
    unit_(DT_FMT_TOKEN_YEAR, to_year_),       unit_(DT_FMT_TOKEN_SYEAR, to_year_),
    unit_(DT_FMT_TOKEN_SYYYY, to_year_),      unit_(DT_FMT_TOKEN_YYYY, to_year_),
    unit_(DT_FMT_TOKEN_YYY, to_year_),        unit_(DT_FMT_TOKEN_YY, to_year_),
    unit_(DT_FMT_TOKEN_Y, to_year_),          unit_(DT_FMT_TOKEN_IYYY, to_iso_year_),
    unit_(DT_FMT_TOKEN_IYY, to_iso_year_),    unit_(DT_FMT_TOKEN_IY, to_iso_year_),
    unit_(DT_FMT_TOKEN_I, to_iso_year_),      unit_(DT_FMT_TOKEN_Q, to_quarter_),
    unit_(DT_FMT_TOKEN_MM, to_month_),        unit_(DT_FMT_TOKEN_MON, to_month_),
    unit_(DT_FMT_TOKEN_MONTH, to_month_),     unit_(DT_FMT_TOKEN_RM, to_month_),
    unit_(DT_FMT_TOKEN_WW, to_week_of_year_), unit_(DT_FMT_TOKEN_W, to_week_of_month_),
    unit_(DT_FMT_TOKEN_IW, to_monday_),       unit_(DT_FMT_TOKEN_D, to_sunday_),
    unit_(DT_FMT_TOKEN_DAY, to_sunday_),      unit_(DT_FMT_TOKEN_DY, to_sunday_),
    unit_(DT_FMT_TOKEN_DD, to_day_),          unit_(DT_FMT_TOKEN_DDD, to_day_),
    unit_(DT_FMT_TOKEN_J, to_day_),           unit_(DT_FMT_TOKEN_HH, to_hour_),
    unit_(DT_FMT_TOKEN_HH12, to_hour_),       unit_(DT_FMT_TOKEN_HH24, to_hour_),
    unit_(DT_FMT_TOKEN_MI, to_minute_),
};

// Where the unit of a name is, if it is one: a product of its word tells, with a factor that gives each a
// place of its own. (Benchmark trunc/month: the search for an element took a third of the time.)
struct unit_places_t {
    static constexpr int BITS = 7;
    uint64_t factor;
    std::array<uint8_t, size_t{1} << BITS> number;  // in _units

    constexpr size_t place_of(uint64_t word) const { return (word & ~_case_bits) * factor >> (64 - BITS); }

    constexpr bool put_all() {
        std::array<bool, size_t{1} << BITS> is_taken{};
        for (size_t i = 0; i < std::size(_units); ++i) {
            const size_t place = place_of(_units[i].word);
            if (is_taken[place]) return false;
            is_taken[place] = true;
            number[place] = static_cast<uint8_t>(i);
        }
        return true;
    }
};
constexpr unit_places_t _places = [] {
    for (uint64_t factor = 0x9E37'79B9'7F4A'7C15;; factor *= 3) {  // any odd one to begin with
        unit_places_t places{factor, {}};
        if (places.put_all()) return places;
    }
}();

}  // namespace

truncation_t *dv::impl::find_truncation(std::string_view text) {
    if (text.empty()) return nullptr;
    const uint64_t word = word_of_(text);
    const unit_t &unit = _units[_places.number[_places.place_of(word)]];
    // Names are of capitals: a letter may differ from them in the bit of its case.
    const bool is_unit = unit.length == text.size() && ((unit.word ^ word) & ~unit.case_bits) == 0;
    return is_unit ? unit.rule : nullptr;
}

extern "C" void dt_fmt_trunc_or_round(dv_date_t *date, const char *fmt, int fmt_len, uchar is_trunc) {
    if (!is_given(date) || !DV_ASSERT(fmt != NULL)) return;
    truncation_t *const rule = find_truncation({fmt, static_cast<size_t>(std::max(fmt_len, 0))});
    if (rule == nullptr) raise(DV_ERR_MODEL_ELEMENT);
    rule(*date, is_trunc == 0);
}
