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

void rebuild_(dv_date_t &date, const calendar_day_t &day, int hour = 0, int minute = 0) {
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

// The rule of each format element, none where it is no unit.
constexpr auto _rules = [] {
    std::array<truncation_t *, FMT_TOKEN_IDS_END> rules{};
    const auto set = [&rules](truncation_t *rule, std::initializer_list<dt_fmt_token_id_e> elements) {
        for (const dt_fmt_token_id_e id : elements) rules[id] = rule;
    };
    set(to_century_, {DT_FMT_TOKEN_CC, DT_FMT_TOKEN_SCC});
    set(to_year_, {DT_FMT_TOKEN_YEAR, DT_FMT_TOKEN_SYEAR, DT_FMT_TOKEN_SYYYY, DT_FMT_TOKEN_YYYY,
                   DT_FMT_TOKEN_YYY, DT_FMT_TOKEN_YY, DT_FMT_TOKEN_Y});
    set(to_iso_year_, {DT_FMT_TOKEN_IYYY, DT_FMT_TOKEN_IYY, DT_FMT_TOKEN_IY, DT_FMT_TOKEN_I});
    set(to_quarter_, {DT_FMT_TOKEN_Q});
    set(to_month_, {DT_FMT_TOKEN_MM, DT_FMT_TOKEN_MON, DT_FMT_TOKEN_MONTH, DT_FMT_TOKEN_RM});
    set(to_week_of_year_, {DT_FMT_TOKEN_WW});
    set(to_week_of_month_, {DT_FMT_TOKEN_W});
    set(to_monday_, {DT_FMT_TOKEN_IW});
    set(to_sunday_, {DT_FMT_TOKEN_D, DT_FMT_TOKEN_DAY, DT_FMT_TOKEN_DY});
    set(to_day_, {DT_FMT_TOKEN_DD, DT_FMT_TOKEN_DDD, DT_FMT_TOKEN_J});
    set(to_hour_, {DT_FMT_TOKEN_HH, DT_FMT_TOKEN_HH12, DT_FMT_TOKEN_HH24});
    set(to_minute_, {DT_FMT_TOKEN_MI});
    return rules;
}();

}  // namespace

truncation_t *dv::impl::find_truncation(std::string_view unit) {
    const int id = find_keyword(unit);
    if (id == FMT_TOKEN_NONE) return nullptr;
    const auto element = static_cast<size_t>(id);
    return keyword_of(fmt_tokens_[element]).size() < unit.size() ? nullptr : _rules[element];
}

extern "C" void dt_fmt_trunc_or_round(dv_date_t *date, const char *fmt, int fmt_len, uchar is_trunc) {
    if (!is_given(date) || !DV_ASSERT(fmt != NULL)) return;
    truncation_t *const rule = find_truncation({fmt, static_cast<size_t>(std::max(fmt_len, 0))});
    if (rule == nullptr) raise(ERR_MODEL_ELEMENT);
    rule(*date, is_trunc == 0);
}
