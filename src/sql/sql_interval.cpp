// INTERVAL YEAR TO MONTH and INTERVAL DAY TO SECOND in SQL: their bytes, which are the records, and their
// functions.
//
// In SQL an interval has at most nine digits of years or days, so that its text can be read again, and fields
// of one sign within their ranges, so that the order of the bytes is the order of the values. Every result is
// brought into that form: the library leaves a carry of nanoseconds in the seconds, and its totals of months
// wrap at 32 bits.

#include "sql_datetime.h"
#include "sql_try.h"

using namespace dv::impl;

namespace {

constexpr int _leading_digits = 9;
constexpr int _leading_max = 999'999'999;  // years or days of either sign

constexpr bool is_leading_(int64_t value) { return value >= -_leading_max && value <= _leading_max; }

// ---------------------------------------------------------------------------------------------------------
// INTERVAL YEAR TO MONTH, computed on its total of months: at most 12 * 10^9 of either sign, so that no sum
// of two leaves 64 bits
// ---------------------------------------------------------------------------------------------------------

// Cut toward zero.
void return_months_(sql_call &call, const number_t &months) {
    if (number_range_check(&months, NUMBER_TYPE_INT64) == 0) sql_raise(SQL_ERR_ITV_LEADING_PRECISION);
    int64_t whole = 0;
    number_to_int64(&months, &whole);
    sql_return_ytm(call, whole);
}

void read_ytm_(sql_call &call) {
    const sql_text &text = call.args[0].text;
    dv_itv_ytm_t itv;
    dv_itv_ytm_from_str(&itv, text.bytes, text.length, DV_ITV_YEAR_TO_MONTH, _leading_digits);
    sql_return_ytm(call, sql_total_months(itv));
}

void ytm_to_text_(sql_call &call) {
    static_assert(DV_ITV_YTM_TEXT_SIZE <= SQL_ROOM_SIZE);
    dv_itv_ytm_to_str(&call.args[0].ytm, call.room, /*prec=*/2, DV_ITV_YTM_TEXT_SIZE);
    sql_return_text(call, call.room);
}

template <int Sign>
void add_ytm_(sql_call &call) {
    sql_return_ytm(call, sql_total_months(call.args[0].ytm) + Sign * sql_total_months(call.args[1].ytm));
}

void negate_ytm_(sql_call &call) { sql_return_ytm(call, -sql_total_months(call.args[0].ytm)); }

void mul_months_(sql_call &call, int64_t months, const number_t &factor) {
    number_t product;
    number_from_int64(&product, months);
    number_mul(&product, &factor);
    return_months_(call, product);
}

// The place of the interval in a product, where it may stand first or second.
int interval_place_(const sql_call &call) { return call.args[0].kind == SQL_KIND_NUMBER ? 1 : 0; }

void mul_ytm_(sql_call &call) {
    const int place = interval_place_(call);
    mul_months_(call, sql_total_months(call.args[place].ytm), call.args[1 - place].number);
}

void div_ytm_(sql_call &call) {
    const number_t &divisor = call.args[1].number;
    if (number_cmp(&divisor, _number_zero) == 0) sql_raise(SQL_ERR_ITV_DIVISION_BY_ZERO);
    number_t quotient;
    number_from_int64(&quotient, sql_total_months(call.args[0].ytm));
    number_div(&quotient, &divisor);
    return_months_(call, quotient);
}

void number_to_ytm_(sql_call &call) {
    constexpr sql_word units[] = {{"YEAR", SQL_MONTHS_PER_YEAR}, {"MONTH", 1}};
    const int months = sql_get_word(call, 1, units);
    if (months != 0) mul_months_(call, months, call.args[0].number);
}

// ---------------------------------------------------------------------------------------------------------
// INTERVAL DAY TO SECOND
// ---------------------------------------------------------------------------------------------------------

void read_dts_(sql_call &call) {
    const sql_text &text = call.args[0].text;
    dv_itv_dts_t itv;
    dv_itv_dts_from_str(&itv, text.bytes, text.length, DV_ITV_DAY_TO_SECOND, _leading_digits,
                        SQL_FRACTION_DIGITS);
    sql_return_dts(call, itv);
}

void dts_to_text_(sql_call &call) {
    static_assert(DV_ITV_DTS_TEXT_SIZE <= SQL_ROOM_SIZE);
    dv_itv_dts_to_str(&call.args[0].dts, call.room, /*prec=*/2, SQL_FRACTION_DIGITS, DV_ITV_DTS_TEXT_SIZE);
    sql_return_text(call, call.room);
}

template <auto Operation>
void combine_dts_(sql_call &call) {
    dv_itv_dts_t &itv = call.args[0].dts;
    Operation(&itv, &call.args[1].dts);
    sql_return_dts(call, itv);
}

void negate_dts_(sql_call &call) {
    dv_itv_dts_t &itv = call.args[0].dts;
    for (const dt_fmt_unit_t unit : {DT_FMT_UNIT_DAY, DT_FMT_UNIT_SECOND, DT_FMT_UNIT_FSEC})
        dv_itv_dts_set_field(&itv, unit, -dv_itv_dts_get_field(&itv, unit));
    sql_return_dts(call, itv);
}

void mul_dts_(sql_call &call) {
    const int place = interval_place_(call);
    dv_itv_dts_t &itv = call.args[place].dts;
    dv_itv_dts_mul(&itv, &call.args[1 - place].number);
    sql_return_dts(call, itv);
}

void div_dts_(sql_call &call) {
    dv_itv_dts_t &itv = call.args[0].dts;
    dv_itv_dts_div(&itv, &call.args[1].number);
    sql_return_dts(call, itv);
}

// So many units, by the exact product of an interval and a NUMBER.
void number_to_dts_(sql_call &call) {
    constexpr sql_word units[] = {
        {"DAY", SQL_SEC_PER_DAY}, {"HOUR", SQL_SEC_PER_HOUR}, {"MINUTE", SQL_SEC_PER_MINUTE}, {"SECOND", 1}};
    const int seconds = sql_get_word(call, 1, units);
    if (seconds == 0) return;
    dv_itv_dts_t itv = sql_dts_of({seconds, 0});
    dv_itv_dts_mul(&itv, &call.args[0].number);
    sql_return_dts(call, itv);
}

constexpr sql_kind _ytm = SQL_KIND_ITV_YTM;
constexpr sql_kind _dts = SQL_KIND_ITV_DTS;
constexpr sql_kind _number = SQL_KIND_NUMBER;
constexpr sql_kind _integer = SQL_KIND_INTEGER;
constexpr sql_kind _text = SQL_KIND_TEXT;

constexpr sql_function _rows[] = {
    {{"to_yminterval", {_text}, "v", _ytm, "reads years-months"}, read_ytm_},
    {{"to_yminterval", {_ytm}, "v", _ytm, "the interval itself"}, sql_return_argument},
    {{"to_dsinterval", {_text}, "v", _dts, "reads days hours:minutes:seconds, with a fraction or without"},
     read_dts_},
    {{"to_dsinterval", {_dts}, "v", _dts, "the interval itself"}, sql_return_argument},
    {{"numtoyminterval", {_number, _text}, "n, field", _ytm, "n YEAR or MONTH; a part of a month is cut off"},
     number_to_ytm_},
    {{"numtodsinterval",
      {_number, _text},
      "n, field",
      _dts,
      "n DAY, HOUR, MINUTE or SECOND, exact to the nanosecond; what is below is cut off"},
     number_to_dts_},
    {{"dv_text", {_ytm}, "v", _text, "as text that to_yminterval reads back"}, ytm_to_text_},
    {{"dv_text", {_dts}, "v", _text, "as text that to_dsinterval reads back"}, dts_to_text_},
    {{"to_char", {_ytm}, "v", _text, "as text that to_yminterval reads back"}, ytm_to_text_},
    {{"to_char", {_dts}, "v", _text, "as text that to_dsinterval reads back"}, dts_to_text_},
    {{"dv_cmp", {_ytm, _ytm}, "a, b", _integer, "-1, 0 or 1 as a is below, equal to or above b"},
     sql_compare_records<&sql_value::ytm, dv_itv_ytm_compare>},
    {{"dv_cmp", {_dts, _dts}, "a, b", _integer, "-1, 0 or 1 as a is below, equal to or above b"},
     sql_compare_records<&sql_value::dts, dv_itv_dts_compare>},
    {{"dv_add", {_ytm, _ytm}, "a, b", _ytm, "a + b"}, add_ytm_<1>},
    {{"dv_add", {_dts, _dts}, "a, b", _dts, "a + b"}, combine_dts_<dv_itv_dts_add_itv_dts>},
    {{"dv_sub", {_ytm, _ytm}, "a, b", _ytm, "a - b"}, add_ytm_<-1>},
    {{"dv_sub", {_dts, _dts}, "a, b", _dts, "a - b"}, combine_dts_<dv_itv_dts_sub_itv_dts>},
    {{"dv_mul", {_ytm, _number}, "a, b", _ytm, "a * b, cut to a month"}, mul_ytm_},
    {{"dv_mul", {_number, _ytm}, "a, b", _ytm, "a * b, cut to a month"}, mul_ytm_},
    {{"dv_mul", {_dts, _number}, "a, b", _dts, "a * b, cut to a nanosecond"}, mul_dts_},
    {{"dv_mul", {_number, _dts}, "a, b", _dts, "a * b, cut to a nanosecond"}, mul_dts_},
    {{"dv_div", {_ytm, _number}, "a, n", _ytm, "a / n, cut to a month"}, div_ytm_},
    {{"dv_div", {_dts, _number}, "a, n", _dts, "a / n, cut to a nanosecond"}, div_dts_},
    {{"dv_neg", {_ytm}, "v", _ytm, "-v"}, negate_ytm_},
    {{"dv_neg", {_dts}, "v", _dts, "-v"}, negate_dts_},
};
constexpr auto _functions = sql_with_tries<_rows>();

}  // namespace

void dv::impl::sql_return_ytm(sql_call &call, int64_t months) {
    if (!is_leading_(months / SQL_MONTHS_PER_YEAR)) sql_raise(SQL_ERR_ITV_LEADING_PRECISION);
    sql_value value{};
    value.kind = SQL_KIND_ITV_YTM;
    dv_itv_ytm_set_total_month(&value.ytm, months);
    sql_return(call, value);
}

sql_seconds dv::impl::sql_total(const dv_itv_dts_t &itv) {
    const int fraction = dv_itv_dts_get_field(&itv, DT_FMT_UNIT_FSEC);
    sql_seconds total{dv_itv_dts_get_total_sec(&itv) + fraction / SQL_NSEC_PER_SEC,
                      fraction % SQL_NSEC_PER_SEC};
    const int borrow = total.whole > 0 && total.nanoseconds < 0   ? 1
                       : total.whole < 0 && total.nanoseconds > 0 ? -1
                                                                  : 0;
    total.whole -= borrow;
    total.nanoseconds += borrow * SQL_NSEC_PER_SEC;
    return total;
}

dv_itv_dts_t dv::impl::sql_dts_of(const sql_seconds &seconds) {
    dv_itv_dts_t itv;
    dv_itv_dts_set_field(&itv, DT_FMT_UNIT_DAY, static_cast<int>(seconds.whole / SQL_SEC_PER_DAY));
    dv_itv_dts_set_field(&itv, DT_FMT_UNIT_SECOND, static_cast<int>(seconds.whole % SQL_SEC_PER_DAY));
    dv_itv_dts_set_field(&itv, DT_FMT_UNIT_FSEC, seconds.nanoseconds);
    return itv;
}

void dv::impl::sql_return_dts(sql_call &call, const sql_seconds &total) {
    if (!is_leading_(total.whole / SQL_SEC_PER_DAY)) sql_raise(SQL_ERR_ITV_LEADING_PRECISION);
    sql_value value{};
    value.kind = SQL_KIND_ITV_DTS;
    value.dts = sql_dts_of(total);
    sql_return(call, value);
}

constinit const sql_type dv::impl::itv_ytm_type = {
    SQL_KIND_ITV_YTM,
    "INTERVAL YEAR TO MONTH",
    "to_yminterval",
    sql_decode_record<&sql_value::ytm, dv_itv_ytm_get_fault>,
    sql_encode_record<&sql_value::ytm>,
};

constinit const sql_type dv::impl::itv_dts_type = {
    SQL_KIND_ITV_DTS,
    "INTERVAL DAY TO SECOND",
    "to_dsinterval",
    sql_decode_record<&sql_value::dts, dv_itv_dts_get_fault>,
    sql_encode_record<&sql_value::dts>,
};

constinit const sql_function_table dv::impl::interval_functions = _functions;
